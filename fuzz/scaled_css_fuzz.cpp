#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/scaled_css.h"
#include "base/text.h"

// Whatever the text, only numbers change: with digits and points left out, what goes in comes out.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view css(reinterpret_cast<const char*>(data), size);
  const auto without_numbers = [](std::string_view text) {
    std::string rest;
    for (const char c : text)
      if (c != '.' && !base::is_digit(c)) rest += c;
    return rest;
  };
  for (const double factor : {0.5, 1.0, 2.5})
    if (without_numbers(ui_scale::scaled_css(css, factor)) != without_numbers(css)) std::abort();
  return 0;
}
