// What the footer says and allows: a plain function of the station's state, tested without a display.
#pragma once

#include <optional>
#include <string>

namespace gui {

/// The facts the footer looks at.
struct FooterFacts {
  std::optional<std::string> plan_error;       ///< why the selection cannot be started
  std::optional<std::string> absent_receiver;  ///< "{model · name}" of a selected receiver that is busy or not attached
  bool discovery_failed = false;
  bool any_receiver_usable = true;
  int planned_receivers = 0;
  bool receiving = false;
  bool stopping = false;  ///< every receiver has been asked to stop
  bool busy = false;
  bool service_active = false;
  bool service_busy = false;
  bool audio_change = false;
  bool frequency_check = false;
  bool applying = false;
  bool settings_differ = false;
};

struct FooterState {
  std::string text;
  bool text_is_error = false;
  bool start_sensitive = false;
  std::string start_tooltip;
  bool stop_sensitive = false;
  bool apply_sensitive = false;
  bool apply_primary = false;
  std::string apply_label;
  std::string apply_tooltip;
};

FooterState footer_state(const FooterFacts& facts);

}  // namespace gui
