#include "sim/recordings.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <stdexcept>

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/text.h"
#include "sim/replay.h"

namespace sim {
namespace {

constexpr std::size_t message_column = 24;

/// A directory for what jt9 leaves behind, gone with its owner.
class WorkDirectory {
 public:
  WorkDirectory() {
    base::ErrorSlot error;
    const base::GStringPtr path(g_dir_make_tmp("tarnwick-jt9-XXXXXX", error.out()));
    if (!path) throw std::runtime_error(error.message());
    path_ = path.get();
  }
  WorkDirectory(const WorkDirectory&) = delete;
  WorkDirectory& operator=(const WorkDirectory&) = delete;
  ~WorkDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  std::string path_;
};

std::optional<Decode> parse_jt9_line(std::string_view line) {
  if (line.size() <= message_column) return {};
  const auto words = base::words(line.substr(0, message_column));
  if (words.size() != 5 || words[0].size() != 6 || !base::parse_unsigned(words[0])) return {};
  const auto snr = base::parse_int(words[1]);
  const auto dt = base::parse_double(words[2]);
  const auto audio = base::parse_unsigned(words[3]);
  const auto message = without_marks(base::trim(line.substr(message_column)));
  if (!snr || !dt || !audio || message.empty()) return {};
  return Decode{static_cast<int>(*snr), *dt, static_cast<int>(*audio), std::string(message),
                sender_of(Mode::ft8, message)};
}

std::vector<Decode> decodes_of(GSubprocess* decoder) {
  char* text = nullptr;
  g_subprocess_communicate_utf8(decoder, nullptr, nullptr, &text, nullptr, nullptr);
  const base::GStringPtr owned(text);
  return parse_jt9(text ? text : "");
}

}  // namespace

std::vector<Decode> parse_jt9(std::string_view output) {
  std::vector<Decode> decodes;
  for (const auto line : base::split(output, '\n')) {
    if (auto decode = parse_jt9_line(line)) decodes.push_back(std::move(*decode));
  }
  return decodes;
}

Recordings::Recordings(const std::string& folder) {
  const base::GStringPtr program(g_find_program_in_path("jt9"));
  if (!program) throw std::runtime_error("jt9 is not installed (Debian's package wsjtx brings it)");
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
    if (entry.path().extension() == ".wav") files_.push_back(entry.path().string());
  }
  if (files_.empty()) throw std::runtime_error(fmt::format("{} holds no .wav file", folder));
  std::sort(files_.begin(), files_.end());
  begin();
}

Recordings::~Recordings() {
  if (decoder_) g_subprocess_force_exit(decoder_.get());
  if (decodes_.valid()) decodes_.wait();
}

void Recordings::begin() {
  const auto work = std::make_shared<WorkDirectory>();
  base::ErrorSlot error;
  decoder_ = base::GObjectPtr<GSubprocess>::adopt(g_subprocess_new(
      static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_PIPE | G_SUBPROCESS_FLAGS_STDERR_SILENCE), error.out(),
      "jt9", "-8", "-p", "15", "-d", "1", "-a", work->path().c_str(), files_[position_++ % files_.size()].c_str(),
      nullptr));
  if (!decoder_) throw std::runtime_error(error.message());
  decodes_ = std::async(std::launch::async, [decoder = decoder_, work] { return decodes_of(decoder.get()); });
}

std::optional<std::vector<Decode>> Recordings::next() {
  if (decodes_.wait_for(std::chrono::seconds(0)) != std::future_status::ready) return {};
  auto decodes = decodes_.get();
  begin();
  return decodes;
}

}  // namespace sim
