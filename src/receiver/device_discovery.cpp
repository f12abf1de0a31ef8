#include "receiver/device_discovery.h"

#include <exception>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "base/text.h"

namespace receiver {
namespace {

// More than any station says; a program that prints without end is not kept in memory.
constexpr std::size_t longest_output = 4UL << 20;
// Of what a failed listing says, for one line of the log.
constexpr std::size_t longest_reason = 300;

std::string last_words(std::string_view output) {
  const std::string_view text = base::trim(output);
  const auto before = text.rfind('\n');
  const std::string_view line = before == std::string_view::npos ? text : text.substr(before + 1);
  return base::valid_utf8(base::trim(line).substr(0, longest_reason));
}

std::string exit_text(int code, std::string_view output) {
  const std::string words = last_words(output);
  return words.empty() ? "receiver listing exited unsuccessfully." : fmt::format("{} (exit code {})", words, code);
}

std::string read_error_text(const std::string& reason) {
  return fmt::format("not read: {}", reason.empty() ? "unknown error" : reason);
}

DiscoveryFailure failure(std::string reason) {
  std::string message = "Device discovery failed: " + reason;
  return {std::move(reason), std::move(message),
          "Last device list and settings retained. If USB sees the receivers, check the SDRplay API service and "
          "conflicting kernel drivers (see the launcher guide)."};
}

std::vector<std::string> command_line(const DiscoveryRequest& request) {
  std::vector<std::string> words{request.engine, "--list-devices"};
  if (!request.api_library.empty()) words.insert(words.end(), {"--api-library", request.api_library});
  if (request.return_wait > 0) words.insert(words.end(), {"--rx888-return-wait", std::to_string(request.return_wait)});
  return words;
}

}  // namespace

std::optional<DiscoveryFailure> classify(const ListingEnd& end, const std::string& program, std::string_view output) {
  if (!end.not_started.empty()) return failure(fmt::format("could not start {}: {}", program, end.not_started));
  if (end.timed_out)
    return DiscoveryFailure{
        "timed out", "Device discovery failed: timed out. Check the SDRplay API service, then retry Refresh receivers.",
        ""};
  if (end.ended_abnormally) return failure("receiver listing ended abnormally.");
  if (end.exit_code != 0) return failure(exit_text(end.exit_code, output));
  if (end.read_error) return failure(read_error_text(*end.read_error));
  return std::nullopt;
}

DeviceDiscovery::~DeviceDiscovery() {
  if (process_ && !exit_seen_) g_subprocess_force_exit(process_.get());
}

bool DeviceDiscovery::start(const DiscoveryRequest& request, Done done) {
  if (running()) return false;
  program_ = request.engine;
  done_ = std::move(done);
  end_ = {};
  output_.clear();
  exit_seen_ = output_ended_ = false;
  try {
    process_ = spawn(command_line(request));
    attach();
    limit_ = base::Timer::once(request.timeout, [this] {
      end_.timed_out = true;
      finish();
    });
  } catch (const std::exception& error) {
    end_.not_started = error.what();
    limit_ = base::Timer::idle([this] { finish(); });
  }
  return true;
}

void DeviceDiscovery::attach() {
  LineReader::Sink sink;
  sink.line = [this](std::string_view line) { take_line(line); };
  sink.cut = [] {};
  sink.ended = [this](const std::string& error) {
    output_ended_ = true;
    if (!error.empty()) end_.read_error = error;
    finish_when_ended();
  };
  reader_ = LineReader(pump_, g_subprocess_get_stdout_pipe(process_.get()), std::move(sink));
  exit_watch_ = ExitWatch(process_.get(), [this](bool, const std::string& error) { exited(error); });
}

void DeviceDiscovery::take_line(std::string_view line) {
  if (output_.size() + line.size() < longest_output) output_.append(line).push_back('\n');
}

void DeviceDiscovery::exited(const std::string& wait_error) {
  exit_seen_ = true;
  if (!wait_error.empty() || !g_subprocess_get_if_exited(process_.get()))
    end_.ended_abnormally = true;
  else
    end_.exit_code = g_subprocess_get_exit_status(process_.get());
  finish_when_ended();
}

void DeviceDiscovery::finish_when_ended() {
  // Through the loop, since what calls this is about to be destroyed.
  if (exit_seen_ && output_ended_) limit_ = base::Timer::idle([this] { finish(); });
}

void DeviceDiscovery::finish() {
  limit_.cancel();
  reader_ = LineReader();
  exit_watch_ = ExitWatch();
  if (process_ && !exit_seen_) g_subprocess_force_exit(process_.get());
  process_.reset();
  DiscoveryResult result;
  result.failure = classify(end_, program_, output_);
  result.output = std::move(output_);
  if (!result.failure) result.listing = launcher::parse_device_listing(result.output);
  std::exchange(done_, nullptr)(result);
}

}  // namespace receiver
