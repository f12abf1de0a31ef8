// A cursor over a line for the hand-written parsers: every step either matches and moves on, or stays.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace results {

class Scan {
 public:
  explicit Scan(std::string_view text) : rest_(text) {}

  [[nodiscard]] std::string_view rest() const { return rest_; }
  [[nodiscard]] bool done() const { return rest_.empty(); }
  [[nodiscard]] bool at(char c) const { return !rest_.empty() && rest_.front() == c; }

  bool literal(std::string_view text) {
    if (!rest_.starts_with(text)) return false;
    rest_.remove_prefix(text.size());
    return true;
  }
  /// The next `length` bytes, or none when fewer are left.
  std::string_view fixed(std::size_t length) { return take(length <= rest_.size() ? length : 0); }
  /// The longest run of bytes that fit; may be empty.
  template <typename Fits>
  std::string_view run(Fits fits) {
    const auto end = std::find_if_not(rest_.begin(), rest_.end(), fits);
    return take(static_cast<std::size_t>(end - rest_.begin()));
  }

 private:
  std::string_view take(std::size_t length) {
    const std::string_view taken = rest_.substr(0, length);
    rest_.remove_prefix(length);
    return taken;
  }

  std::string_view rest_;
};

}  // namespace results
