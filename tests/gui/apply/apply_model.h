// One random sequence of what an operator, the engines and the disk can do while settings change, and what has to hold
// whatever they do.
//
// The model knows for each hardware setting of each receiver what the saved settings have to say: the operator's latest
// edit of it that has not come to nothing. An edit on the card of a running receiver counts when the engine has said so
// (with the value that the engine gives), and comes to nothing when the engine refuses it, or the request fails. One
// that was not sent when its receiver stopped, or that asks for what the engine has already, and one of a receiver that
// does not run count at once; the latter wait for "Apply and Save".
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "gui/apply/small_launcher.h"

namespace gui::testing_apply {

class ApplyModel {
 public:
  explicit ApplyModel(unsigned seed);

  /// Runs the sequence; the words of the first thing that was wrong and the steps before it, or nothing.
  std::string run();
  [[nodiscard]] unsigned accepted() const { return launcher_.engines.accepted(); }

 private:
  using Key = std::pair<std::string, std::string>;  ///< a receiver and a setting
  struct Edit {
    unsigned number = 0;
    std::string value;  ///< empty for Automatic
  };
  struct Choice {
    unsigned weight;
    void (ApplyModel::*step)();
  };
  static const std::vector<Choice> choices;

  // What may happen.
  void start();
  void stop();
  void end_process();
  void crash_and_return();
  void edit_card();
  void edit_card_wrongly();
  void choose_automatic();
  void send_at_once();
  void edit_live_set();
  void edit_selection();
  void edit_restart_only();
  void edit_station_wide();
  void tick_receiver();
  void apply();
  void serve();
  void change_fault();
  void change_disk();
  void turn();
  void settle();

  // How it ends.
  void end_settled();
  void end_closing();
  void end_without_flow();
  void repair();
  void converge();

  // What has to hold.
  void check_step();
  void check_file();
  void check_settled();
  void check_settings();
  void check_engine(const std::string& name);
  void check_restarts(const launcher::PlanChange& change);

  void end_process(const std::string& name, int signal);
  void notice_arrivals();
  void await_arrivals();
  void drain();
  void finish(const Request& request, Fate fate);
  Fate fate_of(const std::string& name);
  void fail_edits(unsigned id);
  void commit(const Key& key, const Edit& edit);
  void commit_waiting();
  void commit_told_later(std::map<Key, Edit>& edits);
  void keep_saved(const Key& key);
  bool until(const std::function<bool()>& reached);

  void wrong(const std::string& words);
  void note(const std::string& words) { trace_.push_back(words); }
  unsigned below(unsigned limit) { return static_cast<unsigned>(random_() % limit); }
  bool one_in(unsigned count) { return below(count) == 0; }
  const std::string& some_receiver() { return names_[below(static_cast<unsigned>(names_.size()))]; }
  [[nodiscard]] std::pair<std::string, std::string> some_setting(const std::string& name);
  [[nodiscard]] bool can_plan();

  std::mt19937 random_;
  bool with_dongle_;
  std::vector<std::string> names_;
  SmallLauncher launcher_;
  std::vector<std::string> trace_;
  std::string wrong_;

  unsigned edits_ = 0;
  Key last_edited_;
  std::map<Key, Edit> saved_;                     ///< what the settings have to say
  std::map<Key, std::set<std::string>> ever_;     ///< what they may have said; empty for nothing
  std::map<Key, Edit> waiting_;                   ///< edits on cards that were not sent
  std::map<unsigned, std::map<Key, Edit>> sent_;  ///< by request
  std::map<std::string, Fate> fates_;
  std::map<std::string, int> allowed_starts_, starts_at_apply_;
  std::set<std::string> restart_causes_;  ///< receivers with edits that may need a restart
  size_t ended_calls_ = 0;                ///< of the transport, whose completions may not have run
  bool file_behind_ = false;              ///< a save may have failed since the last one
  bool engine_missing_ = false;
  bool repaired_ = false;          ///< nothing is to go wrong any more
  bool stopped_ = false;           ///< Stop was the operator's last word
  bool starts_uncounted_ = false;  ///< it may be tried any number of times to start an engine
  bool starts_again_ = false;      ///< a restart of all is under way
};

}  // namespace gui::testing_apply
