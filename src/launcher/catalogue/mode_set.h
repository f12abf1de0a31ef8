// A set of signal kinds. A plain value.
#pragma once

#include <cstdint>
#include <initializer_list>

#include "options/channels/signal_mode.h"

namespace sig {

class ModeSet {
 public:
  constexpr ModeSet() = default;
  constexpr ModeSet(std::initializer_list<SignalMode> modes) {
    for (const SignalMode mode : modes)
      insert(mode);
  }
  static constexpr ModeSet all() {
    ModeSet set;
    for (std::size_t i = 1; i < signal_mode_texts.size(); ++i)
      set.insert(static_cast<SignalMode>(i));
    return set;
  }

  constexpr void insert(SignalMode mode) { bits_ |= bit(mode); }
  [[nodiscard]] constexpr bool contains(SignalMode mode) const { return (bits_ & bit(mode)) != 0; }
  [[nodiscard]] constexpr bool empty() const { return bits_ == 0; }
  /// Everything of this set that is not in the other.
  [[nodiscard]] constexpr ModeSet without(ModeSet other) const {
    ModeSet set;
    set.bits_ = bits_ & ~other.bits_;
    return set;
  }
  [[nodiscard]] constexpr ModeSet with(ModeSet other) const {
    ModeSet set;
    set.bits_ = bits_ | other.bits_;
    return set;
  }
  constexpr bool operator==(const ModeSet&) const = default;

 private:
  static constexpr std::uint32_t bit(SignalMode mode) { return std::uint32_t{1} << static_cast<unsigned>(mode); }

  std::uint32_t bits_ = 0;
};

}  // namespace sig
