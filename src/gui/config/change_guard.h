// Keeps what the program puts on controls from being taken for the operator's edits.
#pragma once

namespace gui {

/// One for a page. While a Quiet stands, no control of the page tells of a change.
class ChangeGuard {
 public:
  class Quiet {
   public:
    explicit Quiet(ChangeGuard& guard) : guard_(guard) { ++guard_.depth_; }
    ~Quiet() { --guard_.depth_; }
    Quiet(const Quiet&) = delete;
    Quiet& operator=(const Quiet&) = delete;

   private:
    ChangeGuard& guard_;
  };
  [[nodiscard]] bool quiet() const { return depth_ > 0; }

 private:
  int depth_ = 0;
};

}  // namespace gui
