#include "receiver/line_reader.h"

#include <algorithm>
#include <deque>
#include <utility>

#include "base/gobject_ptr.h"
#include "base/timer.h"

namespace receiver {

namespace {

using SteadyClock = std::chrono::steady_clock;

// What a pipe holds at most by default, so that one read empties it.
constexpr gsize usual_buffer = 64UL << 10;
// How many lines a reader hands on before the next one has its turn.
constexpr int lines_per_turn = 64;

}  // namespace

// The readers that have something to hand on, in the order of their turns.
class LineQueue : public std::enable_shared_from_this<LineQueue> {
 public:
  explicit LineQueue(std::chrono::microseconds budget) : budget_(budget) {}
  void add(std::shared_ptr<LineChain> chain);
  /// Lets go of all readers; those still wanted have no pump any more.
  void clear() { waiting_.clear(); }

 private:
  void run();
  void run_when_idle();

  std::chrono::microseconds budget_;
  std::deque<std::shared_ptr<LineChain>> waiting_;
  base::Timer idle_;
};

// The chain of reads of one stream: fill the buffer, hand on its lines, fill again. GLib's pending read and the queue
// hold it too, so it outlives a reader that ends in between; then it says nothing more.
class LineChain : public std::enable_shared_from_this<LineChain> {
 public:
  LineChain(std::shared_ptr<LineQueue> queue, GInputStream* stream, LineReader::Sink sink);

  void fill();
  /// Hands on lines for one turn. True when there are more in the buffer.
  bool take_turn(SteadyClock::time_point deadline);
  void stop();

 private:
  static void filled(GObject* stream, GAsyncResult* result, gpointer data);
  bool hand_on_lines(std::string_view buffer, size_t& used, SteadyClock::time_point deadline);
  void hand_on(std::string_view line);
  void make_room(size_t unfinished);
  void cut(size_t unfinished);
  void finish();
  void skip(size_t count);
  void close();
  [[nodiscard]] std::string_view buffer() const;
  [[nodiscard]] GBufferedInputStream* stream() const { return G_BUFFERED_INPUT_STREAM(stream_.get()); }

  std::shared_ptr<LineQueue> queue_;
  base::GObjectPtr<GInputStream> stream_;
  base::GObjectPtr<GCancellable> cancellable_ = base::GObjectPtr<GCancellable>::adopt(g_cancellable_new());
  LineReader::Sink sink_;
  size_t scanned_ = 0;     // bytes at the start of the buffer that are known to hold no line feed
  bool wanted_ = true;     // the reader is there
  bool reading_ = false;   // GLib holds the stream
  bool at_end_ = false;    // no more bytes will come
  bool dropping_ = false;  // in the rest of a line that was cut
  bool cut_reported_ = false;
  std::string error_;
};

LineChain::LineChain(std::shared_ptr<LineQueue> queue, GInputStream* stream, LineReader::Sink sink)
    : queue_(std::move(queue)),
      stream_(base::GObjectPtr<GInputStream>::adopt(g_buffered_input_stream_new_sized(stream, usual_buffer))),
      sink_(std::move(sink)) {}

std::string_view LineChain::buffer() const {
  gsize size = 0;
  const void* bytes = g_buffered_input_stream_peek_buffer(stream(), &size);
  return {static_cast<const char*>(bytes), size};
}

void LineChain::fill() {
  reading_ = true;
  g_buffered_input_stream_fill_async(stream(), -1, G_PRIORITY_DEFAULT_IDLE, cancellable_.get(), filled,
                                     new std::shared_ptr<LineChain>(shared_from_this()));
}

void LineChain::filled(GObject* stream, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<std::shared_ptr<LineChain>> holder(static_cast<std::shared_ptr<LineChain>*>(data));
  LineChain& chain = **holder;
  base::ErrorSlot error;
  const gssize count = g_buffered_input_stream_fill_finish(G_BUFFERED_INPUT_STREAM(stream), result, error.out());
  chain.reading_ = false;
  if (!chain.wanted_) return chain.close();
  if (count < 0) chain.error_ = error.message();
  chain.at_end_ = count <= 0;
  chain.queue_->add(*holder);
}

bool LineChain::take_turn(SteadyClock::time_point deadline) {
  if (!wanted_) return false;
  size_t used = 0;
  const std::string_view bytes = buffer();
  const bool more = hand_on_lines(bytes, used, deadline);
  if (!wanted_) return close(), false;
  skip(used);
  if (more) return true;
  const size_t unfinished = bytes.size() - used;
  if (at_end_) return finish(), false;
  make_room(unfinished);
  if (wanted_) fill();
  return false;
}

// Walks the whole lines of the buffer; true when it stopped before the last of them.
bool LineChain::hand_on_lines(std::string_view bytes, size_t& used, SteadyClock::time_point deadline) {
  for (int lines = 0;; ++lines) {
    const size_t end = bytes.find('\n', used + scanned_);
    if (end == std::string_view::npos) {
      scanned_ = bytes.size() - used;
      return false;
    }
    if (lines == lines_per_turn || (lines > 0 && SteadyClock::now() >= deadline)) return true;
    const std::string_view line = bytes.substr(used, end - used);
    used = end + 1;
    scanned_ = 0;
    if (std::exchange(dropping_, false)) continue;
    hand_on(line);
    if (!wanted_) return false;
  }
}

void LineChain::hand_on(std::string_view line) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  sink_.line(line);
}

// A line that fills the buffer gets a larger one, up to the limit; afterwards the usual size is enough again.
void LineChain::make_room(size_t unfinished) {
  if (unfinished >= LineReader::longest_line || dropping_) return cut(unfinished);
  const gsize size = g_buffered_input_stream_get_buffer_size(stream());
  if (unfinished == size)
    g_buffered_input_stream_set_buffer_size(stream(), std::min(2 * size, LineReader::longest_line));
  else if (size > usual_buffer && unfinished < usual_buffer / 2)
    g_buffered_input_stream_set_buffer_size(stream(), usual_buffer);
}

void LineChain::cut(size_t unfinished) {
  if (!std::exchange(dropping_, true)) {
    hand_on(buffer());
    if (wanted_ && !std::exchange(cut_reported_, true)) sink_.cut();
    if (!wanted_) return close();
  }
  skip(unfinished);
  scanned_ = 0;
  g_buffered_input_stream_set_buffer_size(stream(), usual_buffer);
}

void LineChain::finish() {
  const std::string_view rest = buffer();
  if (!rest.empty() && !dropping_) hand_on(rest);
  if (!std::exchange(wanted_, false)) return close();
  close();
  sink_.ended(error_);
}

void LineChain::skip(size_t count) {
  if (count > 0) g_input_stream_skip(stream_.get(), count, nullptr, nullptr);
}

void LineChain::close() {
  // A turn that is under way, or GLib's pending read, closes when it is through.
  if (stream_ && !reading_) g_input_stream_close(stream_.get(), nullptr, nullptr);
}

void LineChain::stop() {
  wanted_ = false;
  g_cancellable_cancel(cancellable_.get());
}

LinePump::LinePump(std::chrono::microseconds budget) : queue_(std::make_shared<LineQueue>(budget)) {}
LinePump::~LinePump() {
  queue_->clear();
}

void LineQueue::add(std::shared_ptr<LineChain> chain) {
  waiting_.push_back(std::move(chain));
  run_when_idle();
}

void LineQueue::run_when_idle() {
  if (idle_.armed()) return;
  idle_ = base::Timer::idle([queue = weak_from_this()] {
    if (const auto held = queue.lock()) held->run();
  });
}

void LineQueue::run() {
  const auto deadline = SteadyClock::now() + budget_;
  while (!waiting_.empty()) {
    const std::shared_ptr<LineChain> chain = std::move(waiting_.front());
    waiting_.pop_front();
    if (chain->take_turn(deadline)) waiting_.push_back(chain);
    if (SteadyClock::now() >= deadline) break;
  }
  if (!waiting_.empty()) run_when_idle();
}

LineReader::LineReader(LinePump& pump, GInputStream* stream, Sink sink)
    : chain_(std::make_shared<LineChain>(pump.queue_, stream, std::move(sink))) {
  chain_->fill();
}

LineReader& LineReader::operator=(LineReader&& other) noexcept {
  stop();
  chain_ = std::move(other.chain_);
  return *this;
}

LineReader::~LineReader() {
  stop();
}

void LineReader::stop() {
  if (chain_) chain_->stop();
  chain_.reset();
}

}  // namespace receiver
