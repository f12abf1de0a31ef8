"""Start, count, stop: the main job, with living engines."""

import re
import time

from case import BURST, LABELS, StationCase, main
from station.launcher import LIVE_FT8


class Session(StationCase):
    def test_spots_of_several_receivers_are_counted(self):
        launcher = self.open_station()
        self.assertTrue(launcher.button("Start receivers").sensitive)
        self.start(launcher)
        self.assertEqual(launcher.current_tab, LIVE_FT8)
        expected = [f"session-{launcher.identity}-{index}.conf" for index in range(len(LABELS))]
        self.assertEqual(self.home.session_profiles(), expected)
        self.assertFalse(launcher.button("Start receivers").sensitive)
        self.assertTrue(launcher.button("Stop").sensitive)

        for label in LABELS:
            launcher.wait_for_log(f"[{label}] Starting receiver using the current settings.")
        summaries = r"\[%s\] FT8 \d{6}_\d{6} \d+\.\d{6} MHz: [1-9]\d* spots"
        for label in LABELS:
            self.wait(lambda label=label: re.search(summaries % re.escape(label), launcher.log()),
                      f"a spot summary of {label}", 30)
        self.wait(lambda: launcher.spots > 0, "spots in the totals", 5)

        launcher.press("Stop")
        self.wait_stopped(launcher)
        for label in LABELS:
            launcher.wait_for_log(f"[{label}] Receiver stopped.")
        self.assertEqual(self.home.session_profiles(), [])
        self.assert_totals(launcher, launcher.log())
        logged = self.home.read(self.home.state("gui.log"))
        self.assertRegex(logged, rf"\d{{4}}-\d\d-\d\d \d\d:\d\d:\d\dZ \[{re.escape(LABELS[0])}\] Receiver stopped\.")

    def assert_totals(self, launcher, log):
        """Every summary of the log is counted once."""
        shown = sum(int(count) for count in re.findall(r"MHz: (\d+) spots", log))
        self.wait(lambda: launcher.spots == shown, lambda: f"{shown} spots in \"{launcher.totals_text}\"", 3)

    def test_a_second_session_counts_from_nothing(self):
        launcher = self.open_station()
        self.start(launcher)
        self.wait(lambda: launcher.spots > 0, "spots in the totals", 30)
        launcher.press("Stop")
        self.wait_stopped(launcher)
        first = launcher.log()
        self.start(launcher)
        self.wait(lambda: launcher.log().count(" spots") > first.count(" spots"), "spots of the second session", 30)
        launcher.press("Stop")
        self.wait_stopped(launcher)
        earlier = set(first.splitlines())
        self.assert_totals(launcher, "\n".join(line for line in launcher.log().splitlines() if line not in earlier))

    def test_stop_ends_an_engine_that_ignores_it(self):
        stubborn = BURST + f"[receiver {LABELS[0].split()[-1]}]\nignore-term=true\n"
        launcher = self.open_station(scenario=stubborn)
        self.start(launcher)
        pressed = time.monotonic()
        launcher.press("Stop")
        launcher.wait_for_log(f"[{LABELS[1]}] Receiver stopped.", 5)
        self.assertEqual(len(launcher.engines()), 1)
        self.assertFalse(launcher.button("Start receivers").sensitive)
        launcher.wait_for_log(f"[{LABELS[0]}] It had not stopped 10 seconds after Stop, so Tarnwick ended it.", 15)
        self.assertGreater(time.monotonic() - pressed, 9.5)
        self.wait_stopped(launcher, 3)
        launcher.wait_for_log(f"[{LABELS[0]}] Receiver stopped.")
        self.assertEqual(self.home.session_profiles(), [])

    def test_a_crash_is_restarted_and_leaves_the_others_alone(self):
        crashing = BURST + f"[receiver {LABELS[0].split()[-1]}]\nexit-after=1.5\nexit-status=3\n"
        launcher = self.open_station(scenario=crashing)
        self.start(launcher)
        launcher.wait_for_log(f"[{LABELS[0]}] Receiver exited with an error. Other receivers continue.", 10)
        launcher.wait_for_log(f"[{LABELS[0]}] Starting it again in 5 s (attempt 1).", 2)
        self.assertEqual(len(launcher.engines()), 1)
        self.assertEqual(len(self.home.session_profiles()), 2, "the profile waits for the restart")
        self.assertFalse(launcher.button("Start receivers").sensitive)
        self.assertTrue(launcher.button("Stop").sensitive)
        self.wait(lambda: len(launcher.engines()) == 2, "the crashed engine again", 8)
        launcher.wait_for_log(f"[{LABELS[0]}] Starting it again in 15 s (attempt 2).", 6)
        launcher.press("Stop")
        launcher.wait_for_log(f"[{LABELS[0]}] Automatic restart cancelled.", 3)
        self.wait_stopped(launcher)
        self.assertEqual(launcher.log().count("Stopping receiver…"), 1)
        self.assertEqual(self.home.session_profiles(), [])

    def test_nothing_of_an_engine_that_outlives_its_pipe_is_lost(self):
        """A grandchild keeps the output open: the receiver has not gone until that ends too."""
        held = BURST + f"[receiver {LABELS[0].split()[-1]}]\nexit-after=1\nhold-pipe=4\n"
        launcher = self.open_station(scenario=held)
        self.start(launcher)
        self.wait(lambda: len(launcher.engines()) == 1, "the engine gone", 6)
        self.assertNotIn("Receiver exited with an error.", launcher.log())
        launcher.press("Stop")
        self.wait_stopped(launcher, 12)
        self.assertNotIn("Starting it again", launcher.log())
        launcher.wait_for_log(f"[{LABELS[0]}] Receiver stopped.")


if __name__ == "__main__":
    main()
