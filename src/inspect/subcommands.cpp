#include <array>

#include "inspect/subcommand.h"

namespace inspect {

extern const Subcommand change_subcommand;
extern const Subcommand channel_subcommand;
extern const Subcommand check_subcommand;
extern const Subcommand devices_subcommand;
extern const Subcommand gain_subcommand;
extern const Subcommand known_subcommand;
extern const Subcommand lines_subcommand;
extern const Subcommand choices_subcommand;
extern const Subcommand meter_subcommand;
extern const Subcommand plan_subcommand;
extern const Subcommand profile_subcommand;
extern const Subcommand scale_subcommand;
extern const Subcommand spectrum_subcommand;

std::span<const Subcommand* const> subcommands() {
  static constexpr std::array all{&profile_subcommand, &check_subcommand,   &channel_subcommand,  &known_subcommand,
                                  &gain_subcommand,    &devices_subcommand, &plan_subcommand,     &choices_subcommand,
                                  &change_subcommand,  &meter_subcommand,   &spectrum_subcommand, &lines_subcommand,
                                  &scale_subcommand};
  return all;
}

}  // namespace inspect
