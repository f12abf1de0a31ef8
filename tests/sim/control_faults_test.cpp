// What can go wrong on the engine's control socket, as a launcher sees it.
#include <chrono>
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "receiver/control_client.h"
#include "receiver/control_replies.h"
#include "run_engine.h"

namespace {

using testing::AllOf;
using testing::SizeIs;
using testing::StartsWith;

class ControlFaults : public testing::Test {
 protected:
  /// Starts an engine and asks it until `told_enough` holds of an answer; then, or after 20 seconds, the engine is
  /// stopped. Returns the last answer, or the words of the failure.
  std::string ask(
      const std::string& faults, const std::string& request, int timeout,
      const std::function<bool(const std::string&)>& told_enough = [](const auto&) { return true; }) {
    const std::string profile =
        files_.write("p.conf", "mode = decoder\nserial = 1706026B40\nbands = 20\nmodes = FT8\nall-txt = '" +
                                   (files_ / "ALL.TXT") + "'\naudio-control = '" + socket_ + "'\n");
    std::string answer;
    bool told = false;
    EngineSetup setup{.scenario = "[faults]\n" + faults + "\n", .enough = [&](const std::string& output) {
                        if (told || output.find("Decoder channels") == std::string::npos) return told;
                        answer = one_answer(request, timeout);
                        return told = told_enough(answer);
                      }};
    EXPECT_EQ(run_engine(files_, {"--config", profile, "--no-daemon"}, setup).status, 0) << faults;
    EXPECT_FALSE(std::filesystem::exists(socket_)) << faults;
    return answer;
  }

  std::string one_answer(const std::string& request, int timeout) const {
    try {
      return receiver::control_request(socket_, request, timeout);
    } catch (const std::exception& error) {
      return error.what();
    }
  }

  test::TemporaryDirectory files_;
  const std::string socket_ = files_ / "control.sock";
};

TEST_F(ControlFaults, ComeOneByOne) {
  constexpr const char* agc_off = "RADIO SET agc=off";
  constexpr const char* refusing = "control-refuse=agc,retune";
  struct Case {
    const char* faults;
    const char* request;
    int timeout;
    testing::Matcher<std::string> answer;
  };
  const Case cases[] = {
      {"", agc_off, 5000, "OK RADIO agc=off"},
      {"", "RADIO METER", 5000, StartsWith("OK LEVELS ")},
      {refusing, agc_off, 5000, "ERR The hardware refused agc"},
      {refusing, "RADIO SET ppm=1", 5000, "OK RADIO ppm=1"},
      {refusing, "RADIO RETUNE CHECK 14100000 FT8:14074000", 5000, "ERR The hardware refused a retune"},
      {"control-late=0.2", agc_off, 50, "Audio request timed out"},
      {"control-late=0.2", agc_off, 5000, "OK RADIO agc=off"},
      {"control-hang=true", "RADIO METER", 100, "Audio request timed out"},
      {"control-close=true", "RADIO METER", 5000, "Audio control disconnected"},
      {"control-long=true", "RADIO METER", 5000, AllOf(StartsWith("OK LEVELS "), SizeIs(receiver::longest_reply))},
  };
  for (const Case& c : cases)
    EXPECT_THAT(ask(c.faults, c.request, c.timeout), c.answer) << c.faults;
  EXPECT_THROW(receiver::parse_meter(ask("control-rubbish=true", "RADIO METER", 5000)), std::runtime_error);
}

TEST_F(ControlFaults, TheSocketDisappearsWhileTheEngineRuns) {
  const auto begin = std::chrono::steady_clock::now();
  const auto gone = [](const std::string& answer) { return !answer.starts_with("OK"); };
  EXPECT_EQ(ask("control-disappear-after=0.5", "RADIO METER", 5000, gone), "Audio receiver control is unavailable");
  EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(500));
}

TEST_F(ControlFaults, TheJournalHasEachRequestButForTheMeters) {
  const std::string journal = files_ / "journal";
  const char* const requests[] = {"RADIO METER", "RADIO SET agc=off", "RADIO SET ppm=1"};
  ask("control-refuse=ppm\ncontrol-journal=" + journal, "RADIO STATUS", 5000, [&](const std::string&) {
    for (const char* request : requests)
      one_answer(request, 5000);
    return true;
  });
  EXPECT_EQ(test::content(journal),
            "RADIO SET agc=off -> OK RADIO agc=off\nRADIO SET ppm=1 -> ERR The hardware refused ppm\n");
}

}  // namespace
