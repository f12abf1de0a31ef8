"""What the station tests share: folders of their own, launchers that never outlive a test, and a word when one fails."""

import os
import sys
import unittest

from station import screen
from station.accessible import wait_until
from station.home import Home
from station.launcher import Launcher

# Two receivers of the simulated station, from a profile that any launcher can open.
STATION = """
gui-format = multi-receiver-v1
callsign = M0TWK
grid = IO91wm
mode = decoder
modes = FT8
bands = 40,20
history-db = off
receiver.1706026B40.enabled = true
receiver.1706026B40.model = RSPdx
receiver.009028E61B4A1F2C.enabled = true
receiver.009028E61B4A1F2C.model = RX-888 MKII
receiver.009028E61B4A1F2C.backend = rx888
band.40.receiver = 1706026B40
band.20.receiver = 009028E61B4A1F2C
"""
LABELS = ("RSPdx · 1706026B40", "RX-888 MKII · 009028E61B4A1F2C")
READY = "Ready. Start reception explicitly; no receiver or reporting is started by opening this window."
DISCOVERED = ("Device list refreshed.", "No local SDRplay receivers found.", "Device discovery failed:")
BURST = "[station]\nstart-burst=true\n"


class StationCase(unittest.TestCase):
    """Every launcher's output is searched at the end for complaints of the toolkit, and none may be there."""

    def setUp(self):
        self.home = Home()
        self.addCleanup(self.home.close)
        self._launchers = []
        self.addCleanup(self._end_launchers)

    def launch(self, *arguments, scenario=None, variables=None, home=None):
        """Starts the launcher. `scenario` is the text of a scenario for the simulated engine."""
        home = home or self.home
        path = home.write("scenario.ini", scenario) if scenario else None
        launcher = Launcher(home, arguments, path, variables)
        self._launchers.append(launcher)
        return launcher

    def open(self, *arguments, **more):
        """Starts the launcher and waits until it says that it is ready."""
        launcher = self.launch(*arguments, **more)
        launcher.wait_for_log(READY, 30)
        self.wait_discovered(launcher)
        return launcher

    def wait_discovered(self, launcher, seconds=15.0):
        """Waits until the launcher knows which receivers are attached, or that it cannot know."""
        self.wait(lambda: any(words in launcher.log() for words in DISCOVERED), "the discovery over", seconds)

    def open_station(self, scenario=BURST, **more):
        """The launcher with the profile of two receivers."""
        return self.open("--config", self.home.write("station.conf", STATION), scenario=scenario, **more)

    def start(self, launcher, receivers=len(LABELS)):
        """Presses Start and waits for that many engines."""
        launcher.press("Start receivers", 20)
        self.wait(lambda: len(launcher.engines()) == receivers, f"{receivers} engines running", 15)

    wait = staticmethod(wait_until)

    def wait_stopped(self, launcher, seconds=15.0):
        """Waits until no engine runs and Start can be pressed again."""
        start = launcher.button("Start receivers")
        self.wait(lambda: not launcher.engines() and start.sensitive, "the session over and Start on", seconds)

    def _end_launchers(self):
        complaints = []
        for launcher in self._launchers:
            if self._failed():
                self._show(launcher)
            launcher.kill()
            complaints += launcher.complaints()
        self.assertEqual(complaints, [])

    def _failed(self):
        return any(error and test is self for test, error in self._outcome.errors) if hasattr(self._outcome, "errors") \
            else not self._outcome.success

    def _show(self, launcher):
        """For whoever reads the failure: what the launcher printed, and a picture where one is asked for."""
        print(f"--- printed by the launcher of {self.id()}:\n{launcher.errors()[-4000:]}", file=sys.stderr)
        folder = os.environ.get("TARNWICK_PICTURES")
        if folder:
            screen.picture(os.path.join(folder, f"{self.id()}.png"))


def main():
    unittest.main(verbosity=2)
