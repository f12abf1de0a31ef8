// A launcher of few words around a supervisor, for tests: engines are shell scripts, and everything said is kept.
#pragma once

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "receiver/supervisor.h"
#include "support/main_loop.h"
#include "support/temporary_directory.h"

namespace receiver::testing_station {

using std::chrono::milliseconds;

/// The shipped limits of a stop, which no healthy process comes near, and restarts without a wait.
inline Timing quick_timing() {
  return {.back_off = {milliseconds(2), milliseconds(3), milliseconds(4), milliseconds(5), milliseconds(6)}};
}

class Station {
 public:
  explicit Station(const Timing& timing = quick_timing()) {
    engine = directory.write("bin/engine", "#!/bin/sh\n. \"$2\"\n");
    std::filesystem::permissions(engine, std::filesystem::perms::owner_all);
    std::filesystem::create_directory(config);
    supervisor = std::make_unique<Supervisor>(hooks(), SessionFiles(config, directory / "state", 77), timing,
                                              [this] { return now; });
    supervisor->use_engine(engine);
  }
  // What a process of this test left to be read is read before the next test turns the loop.
  ~Station() {
    supervisor.reset();
    test::run_for(milliseconds(2));
  }

  /// A receiver whose engine does what the script says; "$dir" is a directory for marks.
  launcher::ReceiverLaunch receiver(const std::string& name, const std::string& script) {
    launcher::ReceiverLaunch launch;
    launch.name = name;
    launch.model = "R";
    launch.profile["run"] = "dir=" + directory.path().string() + "\n" + script + "\n";
    return launch;
  }

  /// A start as the launcher makes it. False when it failed; `error` then holds the words.
  bool start(std::vector<launcher::ReceiverLaunch> launches) {
    try {
      PreparedStart prepared = supervisor->prepare(launches);
      supervisor->begin_session();
      plan = launches;
      supervisor->launch_all(std::move(prepared), plan);
      return true;
    } catch (const std::exception& failure) {
      error = failure.what();
      files_at_failure = files();
      supervisor->stop_receivers();
      return false;
    }
  }

  [[nodiscard]] std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const auto& [name, text] : test::tree(config))
      names.push_back(name);
    return names;
  }
  [[nodiscard]] bool printed(const std::string& line) const { return count(lines, line) > 0; }
  [[nodiscard]] bool reported(const std::string& text) const { return count(said, text) > 0; }
  [[nodiscard]] std::string pid(size_t child) const {
    return g_subprocess_get_identifier(supervisor->children().at(child)->process.get());
  }
  void until_printed(const std::string& line) {
    test::run_until([&] { return printed(line); });
  }
  void until_over() {
    test::run_until([&] { return supervisor->children().empty() && !supervisor->receiving(); });
  }
  void mark(const std::string& name) { (void)directory.write(name, ""); }
  [[nodiscard]] bool marked(const std::string& name) const { return std::filesystem::exists(directory / name); }

  template <typename List>
  static long count(const List& list, const std::string& text) {
    return std::count(list.begin(), list.end(), text);
  }

  test::TemporaryDirectory directory;
  std::string config = directory / "config";
  std::string engine;
  std::chrono::nanoseconds now{};
  std::vector<launcher::ReceiverLaunch> plan;
  std::string error;
  std::vector<std::string> files_at_failure;
  std::string refused_profile;  ///< the file name that cannot be written
  bool saving_fails = false;
  std::vector<std::string> said;   ///< "{name}: {text}"
  std::vector<std::string> lines;  ///< "{name}: {line}", with " (late)" when it does not count
  int saved = 0;
  int sessions_ended = 0;
  bool ended_to_start_again = false;  ///< the last of them
  int changes = 0;
  int starts_again = 0;
  int quits = 0;
  std::function<void(const std::string&)> on_report = [](const std::string&) {};
  std::unique_ptr<Supervisor> supervisor;

 private:
  static std::string named(const std::string& label, std::string_view text) {
    const size_t dot = label.rfind(' ');
    return (label.empty() ? std::string() : label.substr(dot + 1) + ": ") + std::string(text);
  }

  SupervisorHooks hooks() {
    SupervisorHooks hooks;
    hooks.report = [this](const std::string& text, const std::string& label) {
      said.push_back(named(label, text));
      on_report(said.back());
    };
    hooks.line = [this](std::string_view line, bool counts, const std::string& label) {
      lines.push_back(named(label, line) + (counts ? "" : " (late)"));
    };
    hooks.write_profile = [this](const std::string& path, const std::map<std::string, std::string>& profile) {
      if (std::filesystem::path(path).filename() == refused_profile) throw std::runtime_error("disk full");
      base::replace_file(path, profile.at("run"));
    };
    hooks.save_session = [this] {
      ++saved;
      if (saving_fails) throw std::runtime_error("read-only");
    };
    hooks.session_ended = [this] {
      ++sessions_ended;
      ended_to_start_again = supervisor->restart_all();
    };
    hooks.find_launch = [this](const std::string& name) -> const launcher::ReceiverLaunch* {
      for (const auto& launch : plan)
        if (launch.name == name) return &launch;
      return nullptr;
    };
    hooks.changed = [this] { ++changes; };
    hooks.start_again = [this] {
      EXPECT_FALSE(supervisor->receiving());
      ++starts_again;
    };
    hooks.quit = [this] { ++quits; };
    return hooks;
  }
};

inline const std::string runs = "echo up; exec sleep 30";
inline const std::string ignores_term = "trap '' TERM; echo up; while :; do sleep 0.01; done";

}  // namespace receiver::testing_station
