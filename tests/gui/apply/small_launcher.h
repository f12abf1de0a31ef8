// A launcher without a window around the flow of changes: real files, real processes that weigh nothing, and engines
// whose replies the test holds in its hand.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "gui/apply/held_engines.h"
#include "gui/apply_flow.h"
#include "support/temporary_directory.h"

namespace gui::testing_apply {

/// Serials of the receivers of the test station; one of each family.
inline const std::string dx = "1706026B40", rx = "009028E61B4A1F2C", dongle = "00000001";

/// Bands 40 and 20 on an RSPdx and an RX-888; with the dongle also 10.
options::Station test_station(bool with_dongle, const std::string& state_directory);

class SmallLauncher {
 public:
  explicit SmallLauncher(const options::Station& station);
  ~SmallLauncher();
  SmallLauncher(const SmallLauncher&) = delete;
  SmallLauncher& operator=(const SmallLauncher&) = delete;

  // The operator's buttons, as the launcher has them.
  void start();
  void stop() { supervisor_->stop_receivers(); }
  void close() { supervisor_->close(); }
  void apply() { flow_->apply_and_save(); }

  /// A common setting, or a receiver's by its whole key.
  void edit(const std::string& key, const std::string& value);
  void change(const options::Station& station);
  /// Makes an end of the flow while its requests are out; nothing may be called from then on.
  void end_flow();

  /// Sends a signal to the receiver's process. False when it has none.
  bool kill(const std::string& name, int signal);

  /// One turn of the main loop.
  static bool turn();
  [[nodiscard]] bool is_running(const std::string& name) const;
  /// Nothing is starting, stopping or waiting, and what runs can be talked to.
  [[nodiscard]] bool at_rest() const;
  /// Jobs on worker threads whose completion has not run.
  [[nodiscard]] long jobs() const { return token_.use_count() - tokens_at_rest_; }
  [[nodiscard]] const launcher::ReceiverLaunch* find_launch(const std::string& name) const;
  [[nodiscard]] std::string conf_of(const std::string& name) const;  ///< its path; empty for none
  [[nodiscard]] std::vector<std::string> profiles() const;           ///< session-*.conf that are there
  [[nodiscard]] std::string session_file() const { return config_ + (saving_fails_ ? "/kept.conf" : "/session.conf"); }
  [[nodiscard]] bool said(const std::string& text) const;
  void let_saving_fail(bool fails);
  void let_engine_be_missing(bool missing);

  options::Session& session() { return *session_; }
  receiver::Supervisor& supervisor() { return *supervisor_; }
  ApplyFlow& flow() { return *flow_; }
  std::vector<launcher::ReceiverLaunch>& launches() { return launches_; }

  HeldEngines engines;
  std::set<std::string> unwritable;   ///< receivers whose profile cannot be written
  std::set<std::string> stale;        ///< receivers whose last profile could not be
  std::map<std::string, int> starts;  ///< of each receiver's processes
  std::vector<std::string> reports, errors;
  std::string status;
  std::map<std::string, receiver::Settings> shown;
  int quits = 0;
  int calls_after_end = 0;
  bool start_failed = false;

 private:
  receiver::SupervisorHooks supervisor_hooks();
  ApplySurroundings surroundings();
  options::SessionHooks session_hooks();
  void take_report(const std::string& text, const std::string& label);
  void take_line(std::string_view line, const std::string& label);
  void write_profile(const std::string& path, const options::Profile& profile);
  [[nodiscard]] std::string name_of(const std::string& label) const;

  test::TemporaryDirectory directory_{test::memory_place()};
  std::string config_ = directory_ / "config";
  std::shared_ptr<int> token_ = std::make_shared<int>(0);
  long tokens_at_rest_ = 0;
  bool saving_fails_ = false;
  bool flow_ended_ = false;
  std::map<std::string, std::string> printed_;  ///< by receiver, since its process began
  std::set<std::string> up_;
  std::unique_ptr<options::Session> session_;
  std::vector<launcher::ReceiverLaunch> launches_;
  std::unique_ptr<receiver::Supervisor> supervisor_;
  std::unique_ptr<ApplyFlow> flow_;
};

}  // namespace gui::testing_apply
