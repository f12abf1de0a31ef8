#include "launcher/placement/names.h"

#include <algorithm>
#include <iterator>

#include "base/text.h"

namespace launcher {

std::string spoken_name(const Group& group) {
  if (group.is_consumer()) return (group.is_analysis ? "analysis channel " : "audio receiver ") + group.consumer_id;
  return group.band.empty() ? group.frequency : band_display_name(group.band);
}

std::string opening_name(const Group& group) {
  std::string name = spoken_name(group);
  if (group.is_consumer()) name.front() = 'A';
  return name;
}

std::string spoken_names(const std::vector<Group>& groups) {
  std::vector<std::string> names;
  std::transform(groups.begin(), groups.end(), std::back_inserter(names), spoken_name);
  return base::enumerate(names, "and");
}

}  // namespace launcher
