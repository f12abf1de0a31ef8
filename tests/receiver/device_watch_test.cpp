// Discovery as it runs: the simulated engine, its faults, and the files of a system of the test's own.
#include "receiver/device_watch.h"

#include <filesystem>
#include <sys/stat.h>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/file_write.h"
#include "receiver/sharing_holds.h"
#include "support/main_loop.h"
#include "support/temporary_directory.h"

namespace receiver {
namespace {

namespace fs = std::filesystem;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

class DeviceWatchTest : public ::testing::Test {
 protected:
  DeviceWatchTest() {
    programs_ = {STAND_INS "/pkexec", STAND_INS "/tarnwick-service", files_ / "usb", files_ / "proc"};
    g_setenv("TARNWICK_SIM_SERVICE_LOG", (files_ / "helper.log").c_str(), TRUE);
    fs::create_directories(programs_.usb_devices);
    fs::create_directories(programs_.processes);
    make_watch();
  }

  void write_script(const char* name, const std::string& script) {
    ::chmod(files_.write(name, "#!/bin/sh\n" + script + "\n").c_str(), 0700);
  }

  void make_watch() {
    DeviceWatchHooks hooks;
    hooks.station = [this] { return station_; };
    hooks.saved = [this]() -> const options::ReceiverStore& { return saved_; };
    hooks.running = [] { return std::set<std::string>(); };
    hooks.take = [this](const options::Station& station) { station_ = station; };
    hooks.report = [this](const std::string& text) { log_.push_back(text); };
    hooks.changed = [] {};
    hooks.ask = [this](const std::string& question, std::function<void()> yes, std::function<void()> no) {
      question_ = question;
      (agree_ ? yes : no)();
    };
    watch_ = std::make_unique<DeviceWatch>(std::move(hooks), programs_, timing_);
  }

  // One discovery by the simulated engine, from its beginning to its end.
  void discover(const std::string& scenario, const std::string& engine = ENGINE) {
    g_setenv("TARNWICK_SIM_SCENARIO", files_.write("scenario.ini", "[station]\nlisting-delay=0\n" + scenario).c_str(),
             TRUE);
    log_.clear();
    watch_->use_engine(engine);
    watch_->refresh(DiscoveryCause::asked);
    test::run_until([this] { return !watch_->busy(); });
  }

  // A device of the bus, in the order of the kernel's folders.
  void plug(const std::string& controller, const std::string& bus, const std::string& position,
            const std::map<std::string, std::string>& attributes) {
    const std::string folder = files_ / ("devices/" + controller + "/" + bus + "/" + position);
    fs::create_directories(folder);
    for (const auto& [name, value] : attributes)
      base::replace_file(folder + "/" + name, value + "\n");
    fs::create_directory_symlink(folder, fs::path(programs_.usb_devices) / position);
  }

  test::TemporaryDirectory files_;
  OutsidePrograms programs_;
  DeviceTiming timing_;
  options::Station station_;
  options::ReceiverStore saved_;
  std::vector<std::string> log_;
  std::string question_;
  bool agree_ = true;
  std::unique_ptr<DeviceWatch> watch_;
};

TEST_F(DeviceWatchTest, EveryFailureKeepsTheReceiversAndTheNextSuccessRepairs) {
  discover("receivers=2\n");
  ASSERT_EQ(station_.receivers.size(), 2U);
  EXPECT_THAT(watch_->status_text(), StartsWith("Checked 2 receivers\nDevice list refreshed."));
  const auto station = station_;
  timing_.listing_limit = std::chrono::milliseconds(300);
  make_watch();
  write_script("silent", "exit 3");
  write_script("rude", "echo one; echo two >&2; exit 3");
  write_script("holding", "sleep 5 & exit 0");
  const struct {
    const char* scenario;
    std::string engine;
    const char* message;
  } cases[] = {
      {"listing-fault=hang\n", ENGINE,
       "Device discovery failed: timed out. Check the SDRplay API service, then retry Refresh receivers."},
      {"listing-fault=die\n", ENGINE, "Device discovery failed: receiver listing ended abnormally."},
      {"", files_ / "silent", "Device discovery failed: receiver listing exited unsuccessfully."},
      {"", files_ / "rude", "Device discovery failed: two (exit code 3)"},
      {"", files_ / "holding", "Device discovery failed: timed out."},
      {"", files_ / "missing", "Device discovery failed: could not start "},
  };
  for (const auto& example : cases) {
    discover(example.scenario, example.engine);
    EXPECT_TRUE(watch_->failed()) << example.message;
    EXPECT_THAT(log_, Contains(StartsWith(example.message)));
    EXPECT_THAT(log_, Not(Contains(HasSubstr("No local SDRplay receivers found"))));
    EXPECT_THAT(watch_->status_text(), StartsWith("Check failed "));
    EXPECT_EQ(station_, station);
  }
  timing_ = {};
  make_watch();
  discover("receivers=1\n");
  EXPECT_FALSE(watch_->failed());
  EXPECT_THAT(watch_->status_text(), StartsWith("Checked 1 receiver\n"));
  EXPECT_EQ(station_.receivers.size(), 2U) << "what is not listed stays";
}

TEST_F(DeviceWatchTest, AListingThatHoldsNothingIsToldAsSuch) {
  for (const char* scenario : {"receivers=none\n", "listing-fault=rubbish\n"}) {
    discover(scenario);
    EXPECT_FALSE(watch_->failed());
    EXPECT_THAT(log_, ElementsAre("No local SDRplay receivers found. Check its API service."));
  }
}

TEST_F(DeviceWatchTest, NotesAndReportsGoToTheLog) {
  discover("receivers=16\n[receiver 009028E61B4A1F2C]\npresence=needs-firmware\n[receiver 00000001]\npresence=busy\n");
  EXPECT_EQ(station_.receivers.size(), 15U);
  EXPECT_THAT(log_, Contains("Device discovery: The RTL-SDR 00000001 is in use by another program. Close other SDR "
                             "programs and press Refresh receivers."));
  EXPECT_THAT(log_, Contains("RX-888 on usb-2-2 needs firmware. Put SDDC_FX3.img in ~/.local/share/tarnwick/firmware/ "
                             "and press Refresh receivers."));
  EXPECT_THAT(watch_->status_text(), HasSubstr("\nRX-888 on 2-2 needs firmware."));
  EXPECT_EQ(watch_->statuses().at("00000001"), launcher::DeviceStatus::busy);
}

TEST_F(DeviceWatchTest, OneAtATimeAndSafeToEndInBetween) {
  watch_->use_engine(ENGINE);
  watch_->refresh(DiscoveryCause::asked);
  watch_->refresh(DiscoveryCause::asked);
  EXPECT_THAT(log_, ElementsAre("Busy with another receiver operation; try again shortly"));
  watch_.reset();
  log_.clear();
  test::run_for(std::chrono::milliseconds(600));
  EXPECT_THAT(log_, IsEmpty());
}

TEST_F(DeviceWatchTest, AnRx888OffUsbIsBroughtBackByItsController) {
  plug("0000:00:14.0", "usb1", "1-3", {{"product", "Keyboard"}});
  plug("0000:07:00.3", "usb2", "2-1", {{"product", "RX-888"}, {"serial", "009028E61B4A1F2C"}});
  plug("0000:07:00.3", "usb2", "2-2", {{"bDeviceClass", "09"}, {"product", "Hub"}});
  plug("0000:07:00.3", "usb2", "2-2.4", {{"idVendor", "1d50"}, {"idProduct", "6018"}});
  plug("0000:07:00.3", "usb3", "3-1", {{"product", "Disk"}});
  const std::string dead = "receivers=1\nlisting-fault=usb-dead\n";
  discover(dead);
  EXPECT_EQ(question_, "") << "no RX-888 was there";

  discover("");
  test::run_for(std::chrono::milliseconds(100));
  fs::remove(fs::path(programs_.usb_devices) / "2-1");
  agree_ = false;
  discover(dead);
  test::run_until([this] { return !question_.empty(); });
  EXPECT_EQ(
      question_,
      "The RX-888 has dropped off USB and its USB controller (0000:07:00.3) is not answering. Restarting the "
      "controller's driver brings the RX-888 back; press Start afterwards.\n\nEverything on that controller "
      "disconnects for about 5 seconds:\n  • USB device 1d50:6018\n  • Disk\n\nDo not continue while one of these "
      "is being written to, for example a board being flashed. Administrator authorization is required.\n\nReset "
      "the USB controller now?");
  EXPECT_THAT(log_,
              Contains("RX-888 is off USB and the kernel cannot enumerate it: USB controller 0000:07:00.3 needs a "
                       "reset."));
  EXPECT_THAT(log_, Contains("USB controller reset declined. Press Refresh receivers after fixing it another way."));
  EXPECT_FALSE(fs::exists(files_ / "helper.log"));

  plug("0000:07:00.3", "usb2", "2-1", {});
  discover("");
  test::run_for(std::chrono::milliseconds(100));
  agree_ = true;
  watch_->hear("usb 2-1: Device not responding to setup address.");
  test::run_until([this] { return fs::exists(files_ / "helper.log") && !watch_->busy(); });
  EXPECT_EQ(base::read_file(files_ / "helper.log"), "usb-reset 0000:07:00.3\n");
  EXPECT_THAT(log_.back(), StartsWith("Device list refreshed.")) << "it looks again by itself";
}

TEST_F(DeviceWatchTest, WhatTheSharingServiceHoldsIsReadFromItsProcesses) {
  plug("0000:07:00.3", "usb2", "2-1", {{"serial", "ABC"}, {"busnum", "2"}, {"devnum", "5"}});
  using std::string_literals::operator""s;
  const struct {
    const char* process;
    std::string command;
  } processes[] = {{"12", "/usr/lib/corvane/corvane-broker\0--serial\0ONE\0--serial=TWO\0"s},
                   {"13", "/usr/bin/corvaneering\0--serial\0THREE\0"s},
                   {"14", "vi\0corvane\0--serial\0FOUR\0"s},
                   {"15", ""},
                   {"self", "corvane\0--serial\0FIVE\0"s}};
  for (const auto& [process, command] : processes) {
    const auto folder = fs::path(programs_.processes) / process;
    fs::create_directories(folder / "fd");
    base::replace_file(folder / "cmdline", command);
    fs::create_symlink(*process == '1' && process[1] == '2' ? "/dev/bus/usb/002/005" : "/dev/null", folder / "fd/7");
  }
  EXPECT_THAT(receivers_held_by_sharing(programs_), ElementsAre("ABC", "ONE", "TWO", "rtl-usb-2-1", "usb-2-1"));
  EXPECT_THAT(receivers_held_by_sharing({"", "", "/sys/bus/usb/devices", "/proc"}), IsEmpty()) << "reads a real system";
}

}  // namespace
}  // namespace receiver
