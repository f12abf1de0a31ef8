// Engines whose control desks are the simulated engine's, behind a transport that holds every request until the test
// says what becomes of it. Keeps the journal that the launcher's view is judged by.
#pragma once

#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "options/profile.h"
#include "receiver/live_pairs.h"
#include "sim/radio_desk.h"

namespace gui::testing_apply {

/// How a held request ends.
enum class Fate {
  answered,   ///< the engine's reply arrives
  lost,       ///< the engine does as it is told, and its reply comes too late
  timed_out,  ///< the engine hangs
  closed,     ///< the engine closes the connection
  rubbish     ///< what arrives is no reply
};

/// A request of the launcher.
struct Request {
  unsigned id = 0;
  std::string name;  ///< of the receiver
  std::string text;
  bool taken = false;          ///< the engine has done as it was told, or refused; its reply is on the way
  receiver::Settings pairs{};  ///< of "RADIO SET" and "RADIO SETTING"
  bool hardware = false;       ///< "RADIO SET"
  bool unreachable = false;    ///< nothing listened: it failed at once
};

/// What came of a request.
struct Ending {
  bool accepted = false;  ///< the launcher is told so
  receiver::Settings echo;
};

/// One running engine as it is.
struct EngineView {
  options::Profile settings;          ///< what it runs with: its profile, and what it accepted since
  std::set<std::string> unsure;       ///< what it accepted without the launcher having been told
  std::vector<std::string> channels;  ///< "FT8:7074000", in order
  std::string capture;                ///< "capture=7500000 span=8000000"
  bool retuned = false;               ///< its centre is not that of its profile any more
  bool retune_unsure = false;
  bool operator==(const EngineView&) const = default;
};

class HeldEngines {
 public:
  HeldEngines() = default;
  HeldEngines(const HeldEngines&) = delete;
  HeldEngines& operator=(const HeldEngines&) = delete;
  ~HeldEngines() { end_all(); }

  /// The launcher's receiver::Transport; returns when the request's end has been told. Any thread.
  std::string request(const std::string& path, const std::string& text);

  // All below: main thread.

  /// An engine listens at `path`, started with this profile.
  void started(const std::string& name, const std::string& path, const options::Profile& profile);
  /// Its process has ended: what is held of it is disconnected.
  void gone(const std::string& name);
  void end_all();
  /// Keys that the hardware refuses, or "retune".
  void refuse(const std::string& name, const std::set<std::string>& keys);
  /// Nothing listens at the engine's socket, although it runs.
  void hide(const std::string& name, bool hidden);

  /// What it was told may not be known to the launcher.
  void make_unsure(const std::string& name);

  [[nodiscard]] std::vector<Request> held() const;
  /// Requests that have come since the last call, in order.
  std::vector<Request> take_arrivals();
  /// The engine does as it is told, or refuses; its reply is held on.
  void take(unsigned id);
  Ending finish(unsigned id, Fate fate);

  [[nodiscard]] std::optional<EngineView> engine(const std::string& name) const;
  /// What no launcher should have done, in words.
  std::vector<std::string> take_faults();
  /// Requests that an engine has accepted.
  [[nodiscard]] unsigned accepted() const;

 private:
  struct Engine {
    std::string name;
    sim::RadioDesk desk;
    EngineView view;
    options::Profile told;  ///< what the launcher knows it to run with
    std::string told_retune;
    std::set<std::string> refused;
    bool hidden = false;
  };
  struct Held {
    Request request;
    std::shared_ptr<Engine> engine;
    std::string reply;
    std::optional<std::string> failure;
    bool ended = false;
  };

  void judge_arrival(const Request& request, const Engine& engine);
  static void perform(Held& held);
  static std::string reply_of(Engine& engine, const Request& request);
  Held* find(unsigned id);

  mutable std::mutex lock_;
  std::condition_variable ended_;
  std::map<std::string, std::shared_ptr<Engine>> engines_;  ///< by path
  std::vector<std::shared_ptr<Held>> held_;
  std::vector<Request> arrivals_;
  std::vector<std::string> faults_;
  unsigned last_id_ = 0;
  unsigned accepted_ = 0;
};

}  // namespace gui::testing_apply
