#include "receiver/line_reader.h"

#include <csignal>
#include <functional>
#include <memory>
#include <thread>
#include <unistd.h>
#include <vector>

#include <gio/gunixinputstream.h>
#include <gmock/gmock.h>

#include "base/gobject_ptr.h"
#include "base/timer.h"
#include "support/main_loop.h"

namespace receiver {
namespace {

using testing::ElementsAre;
using namespace std::string_literals;

// A pipe with its reader, and all that the reader said.
class Pipe {
 public:
  explicit Pipe(LinePump& pump) {
    int ends[2];
    if (::pipe(ends) != 0) throw std::runtime_error("pipe");
    write_end_ = ends[1];
    stream_ = base::GObjectPtr<GInputStream>::adopt(g_unix_input_stream_new(ends[0], TRUE));
    reader = std::make_unique<LineReader>(
        pump, stream_.get(),
        LineReader::Sink{[this](std::string_view line) {
                           lines.emplace_back(line);
                           if (on_line) on_line();
                         },
                         [this] { ++cuts; }, [this](const std::string&) { ended = true; }});
  }
  ~Pipe() { finish(); }

  // From another thread, as a pipe holds only so much.
  void print(std::string bytes, bool and_end = true) {
    writer_ = std::thread([this, bytes = std::move(bytes), and_end] {
      size_t done = 0;
      while (done < bytes.size()) {
        const ssize_t count = ::write(write_end_, bytes.data() + done, bytes.size() - done);
        if (count < 0) break;
        done += static_cast<size_t>(count);
      }
      if (and_end) ::close(std::exchange(write_end_, -1));
    });
  }
  void finish() {
    if (writer_.joinable()) writer_.join();
    if (write_end_ >= 0) ::close(std::exchange(write_end_, -1));
  }

  std::unique_ptr<LineReader> reader;
  std::vector<std::string> lines;
  std::function<void()> on_line;
  int cuts = 0;
  bool ended = false;

 private:
  int write_end_ = -1;
  base::GObjectPtr<GInputStream> stream_;
  std::thread writer_;
};

std::vector<std::string> read_all(const std::string& bytes) {
  LinePump pump;
  Pipe pipe(pump);
  pipe.print(bytes);
  test::run_until([&] { return pipe.ended; });
  return pipe.lines;
}

TEST(LineReader, CutsLinesAndLeavesBytesAlone) {
  const std::string bad = "\xff\xfe caf\xc3";
  EXPECT_THAT(read_all(""), ElementsAre());
  EXPECT_THAT(read_all("one\ntwo\n"), ElementsAre("one", "two"));
  EXPECT_THAT(read_all("one\n\n\ntwo"), ElementsAre("one", "", "", "two"));
  EXPECT_THAT(read_all("dos\r\ntwice\r\r\nin\rside\n\r\nlast\r"),
              ElementsAre("dos", "twice\r", "in\rside", "", "last"));
  EXPECT_THAT(read_all(bad + "\n" + "nul\0inside\n"s), ElementsAre(bad, "nul\0inside"s));
}

TEST(LineReader, HandsOnALineOfAMegabyteWhole) {
  const std::string large(1UL << 20, 'x');
  EXPECT_THAT(read_all("before\n" + large + "\nafter\n" + large), ElementsAre("before", large, "after", large));
}

TEST(LineReader, CutsAnEndlessLineOnceAndGoesOnAfterIt) {
  LinePump pump;
  Pipe pipe(pump);
  const std::string endless(LineReader::longest_line + (1UL << 20), 'x');
  pipe.print("a\n" + endless + "\nb\n" + endless + "\nc\n" + endless);
  test::run_until([&] { return pipe.ended; });
  const std::string beginning = endless.substr(0, LineReader::longest_line);
  ASSERT_EQ(pipe.lines.size(), 6U);
  EXPECT_EQ(pipe.lines[0] + pipe.lines[2] + pipe.lines[4], "abc");
  for (const size_t i : {1U, 3U, 5U})
    EXPECT_TRUE(pipe.lines[i] == beginning) << i;
  EXPECT_EQ(pipe.cuts, 1);
}

TEST(LineReader, GivesEveryReaderItsTurnAndKeepsOrder) {
  LinePump pump;
  Pipe flood(pump);
  Pipe quiet(pump);
  std::string bytes;
  std::vector<std::string> numbers;
  for (int i = 0; i < 10'000; ++i) {
    numbers.push_back(std::to_string(i));
    bytes += numbers.back() + "\n";
  }
  size_t flooded_before = 0;
  quiet.on_line = [&] { flooded_before = flood.lines.size(); };
  flood.print(bytes);
  quiet.print("here\n");
  flood.finish();
  quiet.finish();  // all of it is in the pipes
  test::run_until([&] { return flood.ended && quiet.ended; });
  EXPECT_EQ(flood.lines, numbers);
  EXPECT_LT(flooded_before, numbers.size() / 2);
}

TEST(LineReader, LetsRedrawsInBetween) {
  LinePump pump(std::chrono::microseconds(0));  // no budget: one line at a time
  Pipe pipe(pump);
  std::vector<size_t> drawn;  // lines seen at each redraw
  pipe.on_line = [&] {
    g_idle_add_full(
        G_PRIORITY_HIGH_IDLE + 20,
        [](gpointer data) -> gboolean {
          (*static_cast<std::function<void()>*>(data))();
          return G_SOURCE_REMOVE;
        },
        new std::function<void()>([&] { drawn.push_back(pipe.lines.size()); }),
        [](gpointer data) { delete static_cast<std::function<void()>*>(data); });
  };
  pipe.print("1\n2\n3\n4\n");
  test::run_until([&] { return pipe.ended; });
  EXPECT_THAT(drawn, ElementsAre(1, 2, 3, 4));
}

TEST(LineReader, SaysNothingMoreOnceItIsGone) {
  LinePump pump;
  Pipe from_callback(pump);
  from_callback.on_line = [&] {
    if (from_callback.lines.size() == 2) from_callback.reader.reset();
  };
  from_callback.print("1\n2\n3\n4\n");
  Pipe while_reading(pump);
  while_reading.print("1\n", false);
  test::run_until([&] { return from_callback.lines.size() == 2 && while_reading.lines.size() == 1; });
  while_reading.reader.reset();
  while_reading.finish();
  auto short_lived = std::make_unique<LinePump>();
  Pipe queued(*short_lived);
  queued.print("1\n2\n");
  queued.finish();
  test::run_for(std::chrono::milliseconds(1));
  queued.reader.reset();
  short_lived.reset();
  const size_t heard = queued.lines.size();
  test::run_for(std::chrono::milliseconds(30));
  EXPECT_THAT(from_callback.lines, ElementsAre("1", "2"));
  EXPECT_THAT(while_reading.lines, ElementsAre("1"));
  EXPECT_EQ(queued.lines.size(), heard);
  EXPECT_FALSE(from_callback.ended || while_reading.ended);
}

TEST(LineReader, ClosesTheStreamSoThatThePrinterIsNotHeldUp) {
  signal(SIGPIPE, SIG_IGN);
  LinePump pump;
  Pipe pipe(pump);
  pipe.on_line = [&] { pipe.reader.reset(); };
  pipe.print(std::string(1UL << 20, '\n'));  // more than a pipe holds: ends only when the other side is closed
  test::run_until([&] { return !pipe.reader; });
  pipe.finish();
  EXPECT_EQ(pipe.lines.size(), 1U);
}

}  // namespace
}  // namespace receiver
