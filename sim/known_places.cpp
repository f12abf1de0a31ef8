#include "sim/known_places.h"

namespace sim {

std::vector<KnownPlace> known_places(const Profile&) {
  return {};
}

}  // namespace sim
