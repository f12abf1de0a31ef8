"""Closing the window while receivers run, wait for a restart, or will not go."""

import os
import time

from case import BURST, LABELS, StationCase, main
from station import screen

QUESTION = ("Stop all receivers started by this launcher and close?\n\n"
            "An enabled system service continues independently of this window.")


def is_running(process_id):
    try:
        with open(f"/proc/{process_id}/stat", encoding="ascii", errors="replace") as file:
            return file.read().rsplit(")", 1)[1].split()[0] != "Z"
    except OSError:
        return False


class Closing(StationCase):
    def test_asks_while_receivers_run(self):
        launcher = self.open_station()
        self.start(launcher)
        engines = launcher.engines()

        launcher.close_window()
        self.assertEqual(launcher.answer_dialog("Cancel"), QUESTION)
        self.assertEqual(launcher.engines(), engines, "Cancel changes nothing")
        self.assertTrue(launcher.button("Stop").sensitive)

        launcher.close_window()
        launcher.answer_dialog("OK", "Stop all receivers")
        self.assertEqual(launcher.wait_for_end(10), 0)
        self.assertEqual([each for each in engines if is_running(each)], [])
        self.assertEqual(self.home.session_profiles(), [])
        self.assertTrue(os.path.exists(self.home.config("session.conf")))

    def test_asks_for_a_waiting_restart_and_then_closes_at_once(self):
        launcher = self.open_station(scenario="[faults]\nexit-after=0.5\n")
        launcher.press("Start receivers", 20)
        for label in LABELS:
            launcher.wait_for_log(f"[{label}] Starting it again in 5 s (attempt 1).", 8)
        launcher.close_window()
        self.assertEqual(launcher.answer_dialog("OK"), QUESTION)
        self.assertEqual(launcher.wait_for_end(3), 0)
        self.assertEqual(self.home.session_profiles(), [])

    def test_waits_for_an_engine_that_ignores_it_and_asks_once(self):
        launcher = self.open_station(scenario=BURST + "[faults]\nignore-term=true\n")
        self.start(launcher)
        engines = launcher.engines()
        window = launcher.main_window
        launcher.close_window()
        launcher.answer_dialog("OK", "Stop all receivers")
        answered = time.monotonic()
        stopping = launcher.tree.find("label", "Stopping the receivers. The window closes when they have stopped.")
        self.assertTrue(stopping.showing)
        self.assertFalse(launcher.button("Start receivers").sensitive)
        screen.close(window)
        time.sleep(0.5)
        self.assertEqual(launcher.dialogs(), [])
        self.assertEqual(launcher.wait_for_end(16), 0)
        self.assertGreater(time.monotonic() - answered, 9.5, "they get their ten seconds")
        self.assertEqual([each for each in engines if is_running(each)], [])
        self.assertEqual(self.home.session_profiles(), [])
        logged = self.home.read(self.home.state("gui.log"))
        for label in LABELS:
            self.assertIn(f"[{label}] It had not stopped 10 seconds after Stop, so Tarnwick ended it.", logged)

    def test_killed_without_a_word(self):
        """A launcher that dies leaves the profiles that its engines read, and engines that end with their next line."""
        launcher = self.open_station(scenario="[station]\nrewind=3600\ntime-scale=30\n")
        self.start(launcher)
        self.wait(lambda: launcher.spots > 0, "spots", 20)
        engines = launcher.engines()
        profiles = self.home.session_profiles()
        launcher.process.kill()
        launcher.process.wait()
        self.wait(lambda: not any(is_running(each) for each in engines), "the engines gone", 15)
        self.assertEqual(self.home.session_profiles(), profiles)
        self.assertEqual([name for name in self.home.files() if "conf." in name], [], "no half-written file")
        self.assertTrue(self.home.read(self.home.state("gui.log")).endswith("\n"))

        again = self.open()
        self.start(again)
        self.assertEqual(len(self.home.session_profiles()), len(profiles) + len(LABELS), "the names never collide")
        self.assertEqual(again.quit(), 0)
        self.assertEqual(self.home.session_profiles(), profiles)


if __name__ == "__main__":
    main()
