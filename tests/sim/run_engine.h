// Runs the built engine the way a launcher does.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "support/temporary_directory.h"

struct EngineRun {
  std::string output;  ///< standard output and error together
  int status = -1;     ///< exit status; -1 when a signal ended it
  int signal = 0;
  double seconds = 0;       ///< until the process had ended
  double pipe_seconds = 0;  ///< until its output had ended
};

enum class Reader { reads_all, reads_nothing, goes_away };

struct EngineSetup {
  std::string scenario;                                   ///< text of the scenario file
  std::function<bool(const std::string& output)> enough;  ///< SIGTERM is sent as soon as this holds
  double term_after = 20;                                 ///< seconds until SIGTERM in any case
  double kill_after = 30;                                 ///< seconds until SIGKILL
  Reader reader = Reader::reads_all;
};

/// Runs the engine with these arguments in `files`, where its scenario is put.
EngineRun run_engine(const test::TemporaryDirectory& files, const std::vector<std::string>& arguments,
                     const EngineSetup& setup);
