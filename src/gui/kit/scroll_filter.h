// Keeps the scroll wheel from changing values that happen to lie under the pointer.
#pragma once

namespace kit {

/// From now on a scroll event over a combo box, spin button or slider goes to the scrolled area around it, or nowhere;
/// every other event goes its normal way. Once, after the toolkit has been opened.
void install_scroll_filter();

}  // namespace kit
