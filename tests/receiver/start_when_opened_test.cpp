#include "receiver/start_when_opened.h"

#include <gmock/gmock.h>

#include "support/main_loop.h"

namespace receiver {
namespace {

using testing::ElementsAre;

constexpr const char* announced = "Receivers start when Tarnwick opens (Settings): starting them in a few seconds.";

struct Fake {
  bool settled = false;
  bool occupied = false;
  bool can_start = false;
  int looks = 0;
  int starts = 0;
  std::vector<std::string> said;
  std::function<void()> on_look = [] {};
  StartWhenOpened opener{{[this] {
                            ++looks;
                            on_look();
                            return settled;
                          },
                          [this] { return occupied; }, [this] { return can_start; },
                          [] { return std::string("Receiver RSPdx · 1 is busy or missing."); },
                          [this](const std::string& text) { said.push_back(text); }, [this] { ++starts; }},
                         {.start_period = std::chrono::milliseconds(1)}};

  void run() {
    opener.arm();
    test::run_until([this] { return !opener.armed(); });
    test::run_for(std::chrono::milliseconds(5));
  }
};

TEST(StartWhenOpened, StartsOnceAsSoonAsStartIsSensitive) {
  Fake fake;
  fake.occupied = true;
  fake.on_look = [&] {
    if (fake.looks == 3) fake.occupied = false;
    if (fake.looks == 5) fake.can_start = true;
  };
  fake.run();
  EXPECT_EQ(fake.looks, 5);
  EXPECT_EQ(fake.starts, 1);
  EXPECT_THAT(fake.said, ElementsAre(announced, "Starting the receivers (start when Tarnwick opens)."));
}

TEST(StartWhenOpened, GivesUpAfterThirtyLooksAndSaysWhy) {
  Fake busy;
  busy.occupied = busy.can_start = true;
  busy.run();
  EXPECT_EQ(busy.looks, 30);
  EXPECT_THAT(busy.said, ElementsAre(announced, "Did not start the receivers on their own: the launcher stayed busy."));

  Fake absent;
  absent.run();
  EXPECT_EQ(absent.looks, 30);
  EXPECT_THAT(absent.said, ElementsAre(announced,
                                       "Did not start the receivers on their own: Receiver RSPdx · 1 is busy "
                                       "or missing."));
  EXPECT_EQ(busy.starts + absent.starts, 0);
}

TEST(StartWhenOpened, EndsSilentlyWhenTheOperatorWasFaster) {
  Fake fake;
  fake.can_start = true;
  fake.settled = true;
  fake.run();
  EXPECT_EQ(fake.starts, 0);
  EXPECT_THAT(fake.said, ElementsAre(announced));
}

}  // namespace
}  // namespace receiver
