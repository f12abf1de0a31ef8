// The format of radios.conf: "key = value" lines under sections, one section per model.
#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <utility>

#include <fmt/format.h>
#include <glib.h>

#include "base/text.h"
#include "launcher/catalogue/radios.h"

namespace radios {
namespace {

constexpr glong longest_name = 88;

/// By HfClass.
constexpr std::array<std::string_view, 4> hf_texts{"unknown", "none", "direct-q", "upconverter"};

struct ModelKey {
  std::string_view key;
  std::string RtlModel::*field;
};
constexpr std::array<ModelKey, 4> model_keys{{{"name", &RtlModel::name},
                                              {"product", &RtlModel::product},
                                              {"manufacturer", &RtlModel::manufacturer},
                                              {"source", &RtlModel::source}}};

std::optional<std::uint16_t> parse_hex(std::string_view text) {
  std::uint16_t value{};
  const char* const end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, value, 16);
  if (text.empty() || text.size() > 4 || result.ec != std::errc() || result.ptr != end) return std::nullopt;
  return value;
}

bool is_good_name(const std::string& name) {
  if (name.empty() || base::valid_utf8(name) != name || g_utf8_strlen(name.c_str(), -1) > longest_name) return false;
  for (const char* at = name.c_str(); *at != '\0'; at = g_utf8_next_char(at))
    if (!g_unichar_isprint(g_utf8_get_char(at))) return false;
  return true;
}

class Reader {
 public:
  Reader(Catalogue& catalogue, std::string_view file) : catalogue_(catalogue), file_(file) {}

  void read(std::string_view text) {
    for (const std::string_view raw : base::split(text, '\n')) {
      ++line_;
      const std::string_view line = base::trim(raw);
      if (line.empty() || line.starts_with('#') || line.starts_with(';')) continue;
      if (line.starts_with('[') && line.ends_with(']'))
        open_section(line.substr(1, line.size() - 2));
      else
        read_line(line);
    }
    close_section();
  }

 private:
  enum class Section : std::uint8_t { none, left_out, usb, model };

  void warn(int line, std::string_view problem) {
    catalogue_.warnings.push_back(fmt::format("{}:{}: {}, left out", file_, line, problem));
  }

  void open_section(std::string_view name) {
    close_section();
    section_line_ = line_;
    if (name == "rtl-sdr usb") {
      section_ = Section::usb;
    } else if (name == "rtl-sdr model") {
      section_ = Section::model;
    } else {
      section_ = Section::left_out;
      warn(line_, fmt::format("unknown section [{}]", name));
    }
  }

  void close_section() {
    if (section_ != Section::model) return;
    section_ = Section::none;
    RtlModel model = std::exchange(model_, {});
    if (!is_good_name(model.name))
      warn(section_line_, "a model needs a name (printable, at most 88 characters)");
    else if (model.product.empty() && model.manufacturer.empty())
      warn(section_line_, "a model needs a product or a manufacturer");
    else
      catalogue_.models.push_back(std::move(model));
  }

  void read_line(std::string_view line) {
    switch (section_) {
      case Section::none:
        return warn(line_, "outside any section");
      case Section::left_out:
        return;
      case Section::usb:
        return read_usb(line);
      case Section::model:
        return read_model(line);
    }
  }

  void read_usb(std::string_view line) {
    const auto colon = line.find(':');
    const auto vendor = parse_hex(line.substr(0, colon));
    const auto product = parse_hex(colon == std::string_view::npos ? "" : line.substr(colon + 1));
    if (!vendor || !product) return warn(line_, "not a USB ID (vendor:product in hex)");
    catalogue_.usb.push_back({*vendor, *product});
  }

  void read_model(std::string_view line) {
    const auto equals = line.find('=');
    if (equals == std::string_view::npos || equals == 0) return warn(line_, "not \"key = value\"");
    const std::string_view key = base::trim(line.substr(0, equals));
    const std::string_view value = base::trim(line.substr(equals + 1));
    if (key == "hf") return read_hf(value);
    const auto* const found =
        std::find_if(model_keys.begin(), model_keys.end(), [key](const ModelKey& row) { return row.key == key; });
    if (found == model_keys.end()) return warn(line_, fmt::format("unknown key {}", key));
    model_.*found->field = value;
  }

  void read_hf(std::string_view value) {
    const auto* const found = std::find(hf_texts.begin(), hf_texts.end(), value);
    if (found == hf_texts.end()) return warn(line_, "hf must be direct-q, upconverter, none or unknown");
    model_.hf = static_cast<HfClass>(found - hf_texts.begin());
  }

  Catalogue& catalogue_;
  std::string_view file_;
  Section section_ = Section::none;
  RtlModel model_;
  int line_ = 0;
  int section_line_ = 0;
};

}  // namespace

void add_to_catalogue(Catalogue& catalogue, std::string_view text, std::string_view file) {
  Reader(catalogue, file).read(text);
}

}  // namespace radios
