// Lines of any bytes through the whole intake: what is shown is valid text of one line's worth, only summaries count,
// and what the cards say can always be made.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include <glib.h>

#include "base/text.h"
#include "results/line_intake.h"

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  results::ActivityModel activity;
  launcher::ReceiverLaunch launch;
  launch.model = "RSPdx";
  launch.name = "7";
  launch.channels = {{"FT8", 14074000}};
  activity.begin_session({launch});

  results::GuiLog log;
  results::IntakeSinks sinks;
  sinks.pane = [](results::Pane, results::Tag, std::string_view text) {
    require(g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr) && text.ends_with('\n'));
  };
  sinks.images = [](const sig::ParsedSigLine& line, std::string_view) { require(line.field("ch") != nullptr); };
  sinks.rate = [](const results::RateObservation& seen) { require(seen.cycle_seconds > 0 && !seen.key.empty()); };
  results::LineIntake intake(
      activity, log, [] { return 1791028800.0; }, std::move(sinks));

  for (const auto line : base::split({reinterpret_cast<const char*>(data), size}, '\n')) {
    const std::uint64_t before = activity.total_decodes();
    intake.take(line, true, line.size() % 2 ? launch.label() : "");
    require(activity.total_decodes() == before || results::classify_line(line).summary);
    (void)results::is_result_line(line);
  }
  activity.refresh(1791028800);
  for (const auto family : {results::Family::ft, results::Family::js8, results::Family::wspr})
    for (const auto& card : activity.cards(family))
      require(!activity.sum_text(card).empty());
  return 0;
}
