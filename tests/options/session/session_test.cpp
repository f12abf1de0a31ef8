#include "options/session.h"

#include <stdexcept>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/file_write.h"
#include "support/main_loop.h"
#include "support/temporary_directory.h"

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using options::Profile;
using options::Session;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string station_text =
    "gui-format = 'multi-receiver-v1'\nmode = 'decoder'\nbands = '40,20'\nband.40.receiver = 'A1'\n"
    "receiver.A1.enabled = true\nreceiver.A1.model = RSPdx\nreceiver.A1.gain-reduction = 33\n"
    "receiver.GONE.enabled = false\nreceiver.GONE.remote-key = kept\n";

// A launcher's surroundings, and the session that lives in them.
struct SessionTest : testing::Test {
  test::TemporaryDirectory home;
  std::vector<std::string> reports;
  int changes = 0, saves = 0;
  bool busy = false, closing = false;
  std::unique_ptr<Session> session = make();

  std::unique_ptr<Session> make() {
    options::SessionHooks hooks;
    hooks.report = [this](const std::string& text) { reports.push_back(text); };
    hooks.changed = [this] { ++changes; };
    hooks.saved = [this] { ++saves; };
    hooks.busy = [this] { return busy; };
    hooks.closing = [this] { return closing; };
    return std::make_unique<Session>(
        options::SessionPlace{home / "config", home / "state", 20ms, [] { return 1759478402.0; }}, std::move(hooks));
  }
  std::string config(const std::string& name) const { return home / ("config/" + name); }
  std::string journal() const { return test::content(home / "state/settings.log"); }
  static std::string failure_of(const std::function<void()>& action) {
    try {
      action();
    } catch (const std::exception& error) {
      return error.what();
    }
    return "";
  }
};

TEST_F(SessionTest, AFirstStartHasTheDefaultsWithoutAWord) {
  session->load_receivers();
  session->restore();
  EXPECT_THAT(reports, IsEmpty());
  EXPECT_EQ(session->config_path(), config("gui.conf"));
  EXPECT_EQ(session->value("modes"), "FT8");
  EXPECT_EQ(session->value("history-db"), home / "state/history.sqlite3");
  EXPECT_EQ(session->value("wav", "none"), "none");
  EXPECT_FALSE(session->differs());
  EXPECT_FALSE(fs::exists(home / "config")) << "nothing is written before something is set";
}

TEST_F(SessionTest, WhatIsSavedIsThereAtTheNextStart) {
  home.write("config/gui.conf", "callsign = 'K1OLD'\n");
  home.write("config/session.conf", station_text);
  session->restore();
  EXPECT_THAT(reports, ElementsAre("Configuration restored: " + config("session.conf")));
  EXPECT_EQ(session->config_path(), config("session.conf"));
  EXPECT_EQ(session->value("history-db", "none"), "none") << "a restored profile stands for itself";
  session->edit("callsign", "K1ABC");
  session->edit("receiver.A1.gain-reduction", "40");
  const Profile settings = session->profile();
  session->save();

  session = make();
  session->restore();
  EXPECT_EQ(session->profile(), settings);
  EXPECT_EQ(session->value("receiver.GONE.remote-key"), "kept");
  EXPECT_EQ(session->station().assignments.at("40"), "A1");
}

TEST_F(SessionTest, TheFallbackProfileIsRestoredWhenThereIsNoSession) {
  home.write("config/gui.conf", "callsign = 'K1OLD'\nserial = 'A1'\n");
  session->restore();
  EXPECT_THAT(reports, ElementsAre("Configuration restored: " + config("gui.conf")));
  EXPECT_EQ(session->value("callsign"), "K1OLD");
  ASSERT_EQ(session->station().receivers.size(), 1U) << "one receiver's profile is a station of that receiver";
  EXPECT_EQ(session->value("receiver.A1.enabled"), "true");
}

TEST_F(SessionTest, AnUnreadableSessionIsKeptAsideAndLeftInPlace) {
  const std::string newer = station_text + "receiver.A1.future = 1\n";
  const std::string path = home.write("config/session.conf", newer);
  home.write("config/session.conf.unreadable", "of an earlier time");
  home.write("config/gui.conf", "gui-format = 'multi-receiver-v2'\n");
  session->restore();
  EXPECT_THAT(reports,
              ElementsAre("Saved session.conf could not be loaded: Unsupported receiver profile option: future",
                          "Saved gui.conf could not be loaded: Unsupported GUI profile format"));
  EXPECT_EQ(test::content(path), newer);
  EXPECT_EQ(test::content(path + ".unreadable"), newer);
  EXPECT_FALSE(fs::exists(config("gui.conf.unreadable"))) << "one note, one copy";
  EXPECT_EQ(
      session->take_unreadable_note(),
      "Saved settings could not be loaded: Unsupported receiver profile option: future.\n\nThey were probably saved "
      "by a newer Tarnwick. The file is kept as " +
          path + ".unreadable; this version starts with its defaults.");
  EXPECT_EQ(session->take_unreadable_note(), std::nullopt);
  EXPECT_EQ(session->value("bands"), "20");
  EXPECT_EQ(changes, 1);
  test::run_for(60ms);
  EXPECT_EQ(test::content(path), newer) << "a restore saves nothing";
}

TEST_F(SessionTest, WhatCannotBeCopiedAsideIsNamedItself) {
  fs::create_directories(config("session.conf"));
  home.write("config/gui.conf", "callsign = 'K1OLD'\n");
  session->restore();
  EXPECT_THAT(session->take_unreadable_note().value_or(""),
              testing::HasSubstr("The file is kept as " + config("session.conf") + "; this version"));
  EXPECT_EQ(session->value("callsign"), "K1OLD") << "the other file is tried all the same";
}

TEST_F(SessionTest, AnOpenedProfileIsTheLaunchersOwn) {
  const std::string path = home.write("elsewhere/station.conf", station_text);
  session->open(path);
  EXPECT_EQ(session->config_path(), path);
  EXPECT_FALSE(session->differs());
  session->edit("callsign", "K1ABC");
  session->save();
  EXPECT_EQ(test::content(path), station_text);
  session->save_opened();
  EXPECT_EQ(options::read_profile(path), session->profile());

  const Profile before = session->profile();
  home.write("elsewhere/bad.conf", "no line\n");
  EXPECT_EQ(failure_of([&] { session->open(home / "elsewhere/bad.conf"); }),
            (home / "elsewhere/bad.conf") + " line 1: Expected option = value");
  EXPECT_EQ(session->profile(), before);
  EXPECT_EQ(session->config_path(), path);
}

TEST_F(SessionTest, TheFilesOfTheSessionAreNoOpenedProfile) {
  for (const char* name : {"session.conf", "gui.conf"}) {
    const std::string path = home.write(std::string("config/") + name, station_text);
    session->open(path);
    session->edit("callsign", std::string("K1") + name);
    session->save_opened();
    EXPECT_EQ(test::content(path), station_text) << name;
  }
}

TEST_F(SessionTest, ManyEditsGiveOneSave) {
  for (int i = 1; i <= 50; ++i)
    session->edit("history-days", std::to_string(i));
  session->edit("history-days", "50");
  EXPECT_EQ(changes, 50) << "the same value again is no edit";
  EXPECT_FALSE(fs::exists(config("session.conf")));
  test::run_until([&] { return saves > 0; });
  test::run_for(60ms);
  EXPECT_EQ(saves, 1);
  EXPECT_EQ(options::read_profile(config("session.conf")), session->profile());
  EXPECT_EQ(session->value("history-days"), "50");
}

TEST_F(SessionTest, AnAutosaveWaitsForAnOperationAndEndsWithTheWindow) {
  busy = true;
  session->edit("callsign", "K1ABC");
  test::run_for(80ms);
  EXPECT_EQ(saves, 0);
  busy = false;
  test::run_until([&] { return saves == 1; });

  session->edit("callsign", "K2ABC");
  closing = true;
  test::run_for(60ms);
  EXPECT_EQ(saves, 1);
  closing = false;

  session->edit("callsign", "K3ABC");
  session->save();
  test::run_for(60ms);
  EXPECT_EQ(saves, 2) << "a save takes the waiting one with it";

  session->edit("callsign", "K4ABC");
  session.reset();
  test::run_for(60ms);
  EXPECT_EQ(saves, 2);
}

TEST_F(SessionTest, AFailedSaveIsTheCallersToReport) {
  const std::string refusal = "Choose a regular configuration file, rather than a symbolic link";
  fs::create_directories(home / "config");
  fs::create_symlink("elsewhere", config("session.conf"));
  EXPECT_EQ(failure_of([&] { session->save(); }), refusal);
  EXPECT_EQ(saves, 0);
  session->edit("callsign", "K1ABC");
  test::run_until([&] { return !reports.empty(); });
  EXPECT_THAT(reports, ElementsAre("Could not autosave settings: " + refusal));
  fs::remove(config("session.conf"));
  session->save();
  EXPECT_EQ(options::read_profile(config("session.conf")), session->profile());
}

TEST_F(SessionTest, ARefusedEditChangesNothing) {
  const Profile before = session->profile();
  EXPECT_EQ(failure_of([&] { session->edit("receiver.A1.future", "1"); }),
            "Unsupported receiver profile option: future");
  EXPECT_EQ(session->profile(), before);
  EXPECT_EQ(changes, 0);
}

TEST_F(SessionTest, TheFingerprintTellsEditsFromWhatIsInUse) {
  session->edit("callsign", "K1ABC");
  EXPECT_TRUE(session->differs());
  session->save();
  EXPECT_TRUE(session->differs()) << "saved is not yet in use";
  session->store_fingerprint();
  EXPECT_FALSE(session->differs());
  session->edit("wav", "a\nb");  // cannot be written, so it cannot be compared either
  EXPECT_TRUE(session->differs());
  session->erase("wav");
  EXPECT_FALSE(session->differs());
}

TEST_F(SessionTest, ReceiversAndTheJournalFollowEverySave) {
  session->open(home.write("station.conf", station_text));
  session->save();
  EXPECT_EQ(
      journal(),
      "2025-10-03 08:00:02Z RSPdx · A1: first saved with enabled='true', gain-reduction='33', model='RSPdx', "
      "share='true', spot='true'\n"
      "2025-10-03 08:00:02Z GONE: first saved with enabled='false', remote-key='kept', share='true', spot='true'\n");
  const auto written = fs::last_write_time(config("receivers.conf"));
  session->edit("callsign", "K1ABC");
  session->save();
  EXPECT_EQ(fs::last_write_time(config("receivers.conf")), written) << "no receiver changed";

  session = make();
  session->load_receivers();
  session->restore();
  session->edit("receiver.A1.gain-reduction", "40");
  session->remove_receiver("A1");
  session->remove_receiver("never seen");
  session->save();
  const std::string log = journal();
  EXPECT_EQ(log.substr(log.find("GONE")),
            "GONE: first saved with enabled='false', remote-key='kept', share='true', spot='true'\n"
            "2025-10-03 08:00:02Z RSPdx · A1: gain-reduction: '33' -> '40'\n"
            "2025-10-03 08:00:02Z RSPdx · A1: removed from the session by the user; its settings are kept\n");
  EXPECT_EQ(session->value("receiver.A1.model", "none"), "none");
  EXPECT_THAT(session->station().assignments, IsEmpty()) << "its pins are dropped";
  ASSERT_NE(session->receivers().find("A1"), nullptr);
  EXPECT_EQ(options::read_profile(config("receivers.conf")).at("receiver.A1.gain-reduction"), "40");
}

TEST_F(SessionTest, FailuresOfReceiversAndJournalDoNotStopASave) {
  fs::create_directories(config("receivers.conf"));
  home.write("state", "in the way of the journal");
  session->load_receivers();
  session->open(home.write("station.conf", station_text));
  session->save();
  session->save();
  ASSERT_EQ(reports.size(), 3U);
  EXPECT_THAT(reports[0], testing::StartsWith("Saved receiver settings could not be read: "));
  EXPECT_THAT(reports[1], testing::StartsWith("Could not save receiver settings: Cannot replace configuration: "));
  EXPECT_EQ(reports[2], reports[1]) << "what is not yet written is tried again";
  EXPECT_EQ(saves, 2);
  fs::remove(config("receivers.conf"));
  session->save();
  EXPECT_EQ(options::read_profile(config("receivers.conf")).at("receiver.A1.gain-reduction"), "33");
}

TEST_F(SessionTest, UnreadableReceiversAreKeptAside) {
  const std::string path =
      home.write("config/receivers.conf", "receiver.A1.future = 1\ngui-format = 'multi-receiver-v1'\n");
  const std::string bytes = test::content(path);
  session->load_receivers();
  EXPECT_THAT(reports,
              ElementsAre("Saved receiver settings could not be read: Unsupported receiver profile option: future"));
  EXPECT_THAT(session->receivers().sections(), IsEmpty());
  session->edit("receiver.B2.enabled", "true");
  session->save();
  EXPECT_EQ(test::content(path + ".unreadable"), bytes);
  EXPECT_EQ(options::read_profile(path).count("receiver.B2.enabled"), 1U);
}

}  // namespace
