#include "gui/launcher_arguments.h"

#include <gtest/gtest.h>

namespace gui {
namespace {

TEST(LauncherArguments, AreReadFromTheLeft) {
  const auto both = parse_arguments({"--config", "/a/b.conf", "--tuner", "/opt/engine"});
  EXPECT_EQ(both.config_path, "/a/b.conf");
  EXPECT_EQ(both.tuner, "/opt/engine");
  EXPECT_TRUE(parse_arguments({"--config", "relative.conf"}).config_path.starts_with('/'));
  EXPECT_TRUE(parse_arguments({"--config", "x", "--help", "--nonsense"}).help) << "what follows is not looked at";
  EXPECT_EQ(parse_arguments({"--config", "--help"})
                .config_path.substr(parse_arguments({"--config", "--help"}).config_path.size() - 6),
            "--help");
}

TEST(LauncherArguments, RefuseWhatTheyDoNotKnow) {
  const struct {
    std::vector<std::string> arguments;
    const char* named;
  } cases[] = {{{"--config"}, "--config"}, {{"--tuner"}, "--tuner"}, {{"--tuner", "x", "-h"}, "-h"}, {{""}, ""}};
  for (const auto& example : cases) {
    try {
      parse_arguments(example.arguments);
      ADD_FAILURE() << example.named;
    } catch (const std::runtime_error& error) {
      EXPECT_EQ(error.what(), std::string("Unknown or incomplete option: ") + example.named);
    }
  }
}

}  // namespace
}  // namespace gui
