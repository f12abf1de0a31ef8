// The dongle catalogue: whatever the file holds, models have printable names and can be matched.
#include <cstdint>
#include <cstdlib>

#include "launcher/catalogue/radios.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  radios::Catalogue catalogue;
  radios::add_to_catalogue(catalogue, text, "radios.conf");
  for (const auto& model : catalogue.models) {
    if (model.name.empty() || (model.product.empty() && model.manufacturer.empty())) std::abort();
    if (!radios::find_model(catalogue, model.manufacturer, model.product)) std::abort();
    radios::hf_tooltip(radios::hf_class(catalogue, model.name));
  }
  return 0;
}
