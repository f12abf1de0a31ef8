#include "run_engine.h"

#include <array>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

double now() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

pid_t start(const std::vector<std::string>& arguments, const std::string& scenario, int output) {
  std::vector<char*> argv{const_cast<char*>(ENGINE)};
  for (const std::string& argument : arguments)
    argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);
  const pid_t child = fork();
  if (child != 0) return child;
  setenv("TARNWICK_SIM_SCENARIO", scenario.c_str(), 1);
  dup2(output, STDOUT_FILENO);
  dup2(output, STDERR_FILENO);
  execv(ENGINE, argv.data());
  _exit(127);
}

/// One engine and the reading end of its output.
class Watched {
 public:
  Watched(const std::vector<std::string>& arguments, const EngineSetup& setup, const std::string& scenario)
      : setup_(setup) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("pipe failed");
    child_ = start(arguments, scenario, ends[1]);
    close(ends[1]);
    pipe_ = ends[0];
    if (setup.reader == Reader::goes_away) close_pipe();
  }

  EngineRun until_ended() {
    while (pipe_ >= 0 || !ended_) {
      send_what_is_due();
      reap();
      read_some();
    }
    return run_;
  }

 private:
  [[nodiscard]] double age() const { return now() - began_; }

  void send_what_is_due() {
    if (ended_) return;
    const bool due = age() >= setup_.term_after || (setup_.enough && setup_.enough(run_.output));
    if (due && !termed_) termed_ = kill(child_, SIGTERM) == 0;
    if (age() >= setup_.kill_after) kill(child_, SIGKILL);
  }

  void reap() {
    int status = 0;
    if (ended_ || waitpid(child_, &status, WNOHANG) != child_) return;
    ended_ = true;
    run_.seconds = age();
    if (WIFEXITED(status)) run_.status = WEXITSTATUS(status);
    if (WIFSIGNALED(status)) run_.signal = WTERMSIG(status);
  }

  void read_some() {
    const bool reading = pipe_ >= 0 && (ended_ || setup_.reader == Reader::reads_all);
    pollfd waiting{reading ? pipe_ : -1, POLLIN, 0};
    if (poll(&waiting, 1, 5) <= 0) return;
    std::array<char, 65536> block;
    const ssize_t size = read(pipe_, block.data(), block.size());
    if (size > 0)
      run_.output.append(block.data(), static_cast<std::size_t>(size));
    else
      close_pipe();
  }

  void close_pipe() {
    run_.pipe_seconds = age();
    close(pipe_);
    pipe_ = -1;
  }

  const EngineSetup& setup_;
  double began_ = now();
  pid_t child_ = -1;
  int pipe_ = -1;
  bool ended_ = false;
  bool termed_ = false;
  EngineRun run_;
};

}  // namespace

EngineRun run_engine(const test::TemporaryDirectory& files, const std::vector<std::string>& arguments,
                     const EngineSetup& setup) {
  return Watched(arguments, setup, files.write("scenario.ini", setup.scenario)).until_ended();
}
