"""Changes to receivers that run: a slider and its meter, bands without a restart, an engine that hangs."""

import re

from case import LABELS, StationCase, main
from station.launcher import SDR_CONFIG

RETUNED = "Retuned to selected bands; receivers continue running."


def decibels(level):
    """The number of "−31.2 dBFS"; nothing where no level is told."""
    found = re.search("(−?)([0-9.]+) dB", level)
    return found and float(found[2]) * (-1 if found[1] else 1)


class Changes(StationCase):
    def open_running(self, **more):
        launcher = self.open_station(**more)
        self.start(launcher)
        launcher.show_tab(SDR_CONFIG)
        self.wait(lambda: len(self.live(launcher)) == len(LABELS), lambda: f"levels: {launcher.levels()}")
        return launcher

    @staticmethod
    def live(launcher):
        """The levels of the receivers that run, in dB."""
        return [decibels(level) for level in launcher.levels() if decibels(level)]

    def control(self, launcher, role, name):
        """The first control of the SDR Config tab that this label names; not all cards have each."""
        return launcher.notebook.children[SDR_CONFIG].find(role, where=lambda each: each.label == name)

    def saved(self):
        return self.home.read(self.home.config("session.conf"))

    def test_a_slider_moves_the_meter_and_is_saved_when_the_hardware_has_it(self):
        journal = self.home.path("journal")
        launcher = self.open_running(scenario=f"[faults]\ncontrol-journal={journal}\ncontrol-refuse=rx888-gain\n")
        engines = launcher.engines()
        # The band itself breathes by a few decibels.
        before = min(self.live(launcher))
        self.control(launcher, "slider", "HF attenuator (dB)").set_value(31.5)
        self.wait(lambda: min(self.live(launcher)) < before - 15,
                  lambda: f"the level at least 15 dB below {before}: {launcher.levels()}")
        self.wait(lambda: "rx888-attenuation = '31.5'" in self.saved(), "the attenuator saved")

        gain = self.control(launcher, "slider", "VGA gain (dB)")
        stood = gain.value
        gain.set_value(20)
        launcher.wait_for_log("Live SDR update failed: ERR The hardware refused rx888-gain")
        self.wait(lambda: gain.value == stood, lambda: f"the slider back at {stood}; it is at {gain.value}")
        self.assertNotIn("rx888-gain", self.saved())
        self.assertEqual(launcher.engines(), engines)
        self.assertEqual(self.home.read(journal).count("RADIO SET "), 2)

    def test_bands_move_without_a_restart(self):
        launcher = self.open_running()
        engines = launcher.engines()
        launcher.show_tab(0)
        launcher.tree.find("check box", "30m").press()
        launcher.press("Apply and Save")
        launcher.wait_for_log("partial decode intervals discarded.")
        self.wait(lambda: any(label.name == RETUNED for label in launcher.tree.find_all("label")), RETUNED)
        self.assertEqual(launcher.engines(), engines)
        self.wait(lambda: "30" in re.search("bands = '(.*)'", self.saved())[1].split(","), "30 m saved")

        transfer = self.control(launcher, "combo box", "USB transfer")
        self.assertFalse(transfer.sensitive, "only a restart changes it")
        launcher.press("Apply and Save")
        launcher.wait_for_log("Settings saved; the running receivers already use them.")
        self.assertEqual(launcher.engines(), engines)

    def test_a_receiver_that_hangs_has_no_level_and_holds_up_nobody(self):
        launcher = self.open_station(scenario="[receiver 009028E61B4A1F2C]\nmodel=RX-888 MKII\nbackend=rx888\n"
                                              "control-hang=true\n")
        self.start(launcher)
        launcher.show_tab(SDR_CONFIG)
        self.wait(lambda: self.live(launcher), lambda: f"a level: {launcher.levels()}")
        self.assertEqual(len(self.live(launcher)), 1, launcher.levels())
        self.control(launcher, "slider", "HF attenuator (dB)").set_value(20)
        launcher.wait_for_log("Live SDR update failed: Audio request timed out", 8)
        self.assertNotIn("rx888-attenuation", self.saved())
        launcher.press("Stop")
        self.wait_stopped(launcher)


if __name__ == "__main__":
    main()
