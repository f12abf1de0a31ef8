#include <array>

#include "inspect/subcommand.h"

namespace inspect {

extern const Subcommand lines_subcommand;

std::span<const Subcommand* const> subcommands() {
  static constexpr std::array all{&lines_subcommand};
  return all;
}

}  // namespace inspect
