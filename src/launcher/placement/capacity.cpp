#include "launcher/placement/capacity.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/text.h"
#include "launcher/placement/names.h"
#include "launcher/receiver_overlay.h"
#include "launcher/setting_names.h"

namespace launcher {
namespace {

std::vector<Group> groups_in(const GroupTable& table, Mask mask) {
  std::vector<Group> groups;
  for (std::size_t index = 0; index < table.size(); ++index)
    if ((mask >> index & 1) != 0) groups.push_back(table.groups()[index]);
  return groups;
}

std::string limits_of(const Planner& planner, const Slot& slot) {
  if (slot.family() == Family::rx888) return fmt::format(" ({})", rx888_range(planner.common(), slot.receiver()));
  const CaptureCapability& record = planner.capability(slot);
  if (record.limit_keys.empty()) return {};
  if (record.limit_keys.front() == "center-frequency") return " fixed at " + record.center_text;
  return fmt::format(" ({} {} MS/s)", setting_name("sample-rate"), mega_text(record.set_rate, 3));
}

bool can_take(const Planner& planner, Slot& slot, const Group& group) {
  const auto pin = planner.pins().find(group.name());
  if (pin != planner.pins().end() && pin->second != slot.serial()) return false;
  return slot.fit(GroupTable({group}), 1) == FitStatus::fits;
}

}  // namespace

Remainder most_that_fit(const Slots& slots, const GroupTable& table, const Pins& pins) {
  const auto placed = [&](Mask kept) { return solve(slots, GroupTable(groups_in(table, kept)), pins); };
  Mask kept = table.all();
  for (std::size_t index = table.size(); index-- > 0 && placed(kept).empty();)
    kept &= ~(Mask(1) << index);
  for (std::size_t index = 0; index < table.size(); ++index) {
    const Mask more = kept | Mask(1) << index;
    if (more != kept && !placed(more).empty()) kept = more;
  }
  return {GroupTable(groups_in(table, kept)), placed(kept), groups_in(table, table.all() & ~kept)};
}

std::string capacity_lines(const Planner& planner, const GroupTable& table, const std::vector<Mask>& placement,
                           const Group* wanted) {
  std::vector<std::string> lines;
  for (std::size_t index = 0; index < planner.slots().size(); ++index) {
    Slot& slot = *planner.slots()[index];
    const Mask held = placement.empty() ? 0 : placement[index];
    std::string line = fmt::format("{}: {}, one capture up to {} MHz wide{}", slot.receiver().label(),
                                   held == 0 ? "idle" : spoken_names(groups_in(table, held)),
                                   mega_text(planner.capability(slot).set_span, 2), limits_of(planner, slot));
    if (wanted != nullptr && !can_take(planner, slot, *wanted)) line += ", cannot take " + spoken_name(*wanted);
    lines.push_back(std::move(line));
  }
  return base::join(lines, "\n");
}

std::string rx888_range(const options::Profile& common, const options::ReceiverProfile& receiver) {
  const auto setting = [&](const char* key) {
    const auto own = receiver.settings.find(key);
    return own != receiver.settings.end() ? std::string_view(own->second) : value_or(common, key, "");
  };
  const bool half = setting("rx888-rate") == "half";
  if (setting("rx888-coverage") == "all")
    return half ? "0-28.8 MHz with Coverage set to 0 Hz and up" : "0-57.6 MHz with Coverage set to 0 Hz and up";
  return half ? "0-32 MHz at ADC sample rate Half" : "0-64 MHz at ADC sample rate Full";
}

}  // namespace launcher
