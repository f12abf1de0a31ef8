#include "launcher/catalogue/radios.h"

#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace radios {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

Catalogue parsed(std::string_view text) {
  Catalogue catalogue;
  add_to_catalogue(catalogue, text, "r.conf");
  return catalogue;
}

TEST(Radios, FaultsCostTheirLineOrSectionOnly) {
  const std::pair<std::string, std::vector<std::string>> cases[] = {
      {"# nothing\n; here\n\n \t\r\n", {}},
      {"name = x\n", {"r.conf:1: outside any section, left out"}},
      {"\n[hackrf]\nanything\n=\n", {"r.conf:2: unknown section [hackrf], left out"}},
      {"[rtl-sdr usb]\n0bda:2838\r\n0BDA:2832\n0bda\n0bda:28380\n0bda:-1\nx:y\n",
       {"r.conf:4: not a USB ID (vendor:product in hex), left out",
        "r.conf:5: not a USB ID (vendor:product in hex), left out",
        "r.conf:6: not a USB ID (vendor:product in hex), left out",
        "r.conf:7: not a USB ID (vendor:product in hex), left out"}},
      {"[rtl-sdr model]\nname = A\nproduct = p\nhf = maybe\ncolour = red\nwords\n= x\n",
       {"r.conf:4: hf must be direct-q, upconverter, none or unknown, left out",
        "r.conf:5: unknown key colour, left out", "r.conf:6: not \"key = value\", left out",
        "r.conf:7: not \"key = value\", left out"}},
      {"[rtl-sdr model]\nproduct = p\n[rtl-sdr model]\nname = A\n[rtl-sdr usb]",
       {"r.conf:1: a model needs a name (printable, at most 88 characters), left out",
        "r.conf:3: a model needs a product or a manufacturer, left out"}},
      {"[rtl-sdr model]\nproduct = p\nname = a\tb\n[rtl-sdr model]\nproduct = p\nname = \xFF\n",
       {"r.conf:1: a model needs a name (printable, at most 88 characters), left out",
        "r.conf:4: a model needs a name (printable, at most 88 characters), left out"}},
  };
  for (const auto& [text, warnings] : cases)
    EXPECT_EQ(parsed(text).warnings, warnings) << text;
  EXPECT_THAT(parsed(cases[3].first).usb, ElementsAre(UsbId{0x0bda, 0x2838}, UsbId{0x0bda, 0x2832}));
  EXPECT_EQ(parsed(cases[4].first).models.size(), 1U);
}

TEST(Radios, LongestNameIsCountedInCharacters) {
  std::string umlauts;
  for (int i = 0; i < 88; ++i)
    umlauts += "ü";
  const auto names = [](const std::string& name) {
    const auto catalogue =
        parsed("[rtl-sdr model]\nproduct = p\nname = " + name + "\n[rtl-sdr model]\nname = Next\nproduct = n\n");
    return catalogue.models.size();
  };
  EXPECT_EQ(names(umlauts), 2U);
  EXPECT_EQ(names(umlauts + "x"), 1U);
}

TEST(Radios, FirstEntryThatFitsNamesTheDongle) {
  const auto catalogue = parsed(
      "[rtl-sdr model]\nname = Exact\nproduct = Stick 1\nmanufacturer = M\nhf = none\n"
      "[rtl-sdr model]\nname = Family\nproduct = Stick {product} Pro\nhf = direct-q\n"
      "[rtl-sdr model]\nname = Maker\nmanufacturer = M\nhf = upconverter\n");
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"M", "Stick 1", "Exact"},       {"N", "Stick 1", "none"},
      {"N", "Stick 12 Pro", "Family"}, {"N", "Stick  Pro", "Family"},
      {"N", "Stick Pro", "none"},      {"M", "anything", "Maker"},
      {"m", "anything", "none"},       {"", "", "none"}};
  for (const auto& [manufacturer, product, name] : cases) {
    const RtlModel* const found = find_model(catalogue, manufacturer, product);
    EXPECT_EQ(found ? found->name : "none", name) << manufacturer << "/" << product;
  }
  EXPECT_EQ(hf_class(catalogue, "Family"), HfClass::direct_q);
  EXPECT_EQ(hf_class(catalogue, "Other"), HfClass::unknown);
  EXPECT_EQ(hf_tooltip(HfClass::none), "About 2 MHz at a time. HF needs an upconverter in front of it.");
}

class RadiosFiles : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string name = (fs::temp_directory_path() / "radios-XXXXXX").string();
    root_ = mkdtemp(name.data());
    fs::create_directories(root_ / "bin");
    fs::create_directories(root_ / "share/tarnwick");
  }
  void TearDown() override { fs::remove_all(root_); }

  void write(const fs::path& path, const std::string& product) const {
    std::ofstream(root_ / path) << "[rtl-sdr model]\nname = " << path.string() << "\nproduct = " << product << "\n";
  }
  [[nodiscard]] Catalogue read() const { return read_catalogue(root_ / "radios.conf", root_ / "bin"); }

  fs::path root_;
};

TEST_F(RadiosFiles, OperatorsEntriesComeBeforeTheInstalledOnes) {
  EXPECT_THAT(read().warnings, ElementsAre("radios.conf, Tarnwick's radio list, is not installed"));
  write("share/tarnwick/radios.conf", "p");
  EXPECT_EQ(find_model(read(), "", "p")->name, "share/tarnwick/radios.conf");
  write("bin/radios.conf", "p");  // beside the program, as in a build tree
  EXPECT_EQ(find_model(read(), "", "p")->name, "bin/radios.conf");
  write("radios.conf", "p");
  const auto merged = read();
  EXPECT_EQ(find_model(merged, "", "p")->name, "radios.conf");
  EXPECT_EQ(merged.models.size(), 2U);
  EXPECT_THAT(merged.warnings, IsEmpty());
}

TEST_F(RadiosFiles, AnOperatorsFileIsNoReasonToMissTheInstalledOne) {
  write("radios.conf", "p");
  EXPECT_EQ(read().models.size(), 1U);
  EXPECT_THAT(read().warnings, ElementsAre("radios.conf, Tarnwick's radio list, is not installed"));
}

TEST(RadiosData, ShippedListIsWholeAndKnowsTheCommonDongles) {
  const fs::path shipped = fs::path(TARNWICK_DATA) / "radios.conf";
  const auto catalogue = read_catalogue("", shipped.parent_path());
  EXPECT_THAT(catalogue.warnings, IsEmpty());
  EXPECT_THAT(catalogue.usb, ::testing::Contains(UsbId{0x0bda, 0x2838}));
  const std::tuple<const char*, const char*, const char*, HfClass> cases[] = {
      {"RTLSDRBlog", "Blog V4", "RTL-SDR Blog V4", HfClass::upconverter},
      {"RTLSDRBlog", "Blog V3", "RTL-SDR Blog V3", HfClass::direct_q},
      {"Realtek", "RTL2838UHIDIR", "RTL-SDR (generic RTL2838)", HfClass::unknown},
      {"Generic", "RTL2832U", "RTL-SDR (generic RTL2832U)", HfClass::unknown},
      {"NooElec", "NESDR SMArt v5", "NooElec NESDR SMArt v5", HfClass::unknown},
      {"NOXON", "DAB Stick", "Terratec NOXON DAB", HfClass::none}};
  for (const auto& [manufacturer, product, name, hf] : cases) {
    const RtlModel* const found = find_model(catalogue, manufacturer, product);
    ASSERT_TRUE(found) << product;
    EXPECT_EQ(found->name, name);
    EXPECT_EQ(found->hf, hf);
    EXPECT_FALSE(found->source.empty());
  }
  EXPECT_EQ(find_model(catalogue, "", ""), nullptr);
}

}  // namespace
}  // namespace radios
