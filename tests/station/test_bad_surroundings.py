"""Engines that cannot be started and folders that cannot be written: words, nothing left behind, a usable window."""

import os

from case import LABELS, STATION, StationCase, main
from station.launcher import binary


class BadSurroundings(StationCase):
    def open_with(self, *arguments, **more):
        return self.open("--config", self.home.write("station.conf", STATION), *arguments, **more)

    def make_engine(self, name, script):
        """An engine that lists the two receivers as it should and does no more than the script to receive; its path."""
        path = self.home.write(name, f"#!/bin/sh\n[ \"$1\" = --list-devices ] && exec {binary('tarnwick')} \"$@\"\n{script}\n")
        os.chmod(path, 0o755)
        return path

    def assert_usable(self, launcher):
        self.assertEqual(launcher.engines(), [])
        self.assertEqual(self.home.session_profiles(), [])
        self.wait(lambda: launcher.button("Start receivers").sensitive, "Start on")
        launcher.show_tab(2)
        self.assertEqual(launcher.quit(), 0)

    def test_an_engine_that_cannot_be_started(self):
        for name, content, words in (("missing", None, "No such file or directory"),
                                     ("not-executable", "#!/bin/sh\n", "Permission denied"),
                                     ("folder/", None, "Permission denied|Is a directory")):
            with self.subTest(name):
                path = self.home.path(name)
                if name.endswith("/"):
                    os.mkdir(path)
                elif content is not None:
                    self.home.write(name, content)
                    os.chmod(path, 0o644)
                launcher = self.open_with("--tuner", path)
                self.assertRegex(launcher.log(), f"Device discovery failed: could not start {path}: .*({words})")
                self.assertFalse(launcher.button("Start receivers").sensitive)
                self.assertEqual(launcher.quit(), 0)

    def test_an_engine_that_is_gone_when_it_is_started(self):
        path = self.make_engine("fleeting", "exit 0")
        launcher = self.open_with("--tuner", path)
        os.chmod(path, 0o644)
        launcher.press("Start receivers")
        self.assertRegex(launcher.answer_dialog("Close"), "Permission denied")
        self.assert_usable(launcher)

    def test_an_engine_that_dies_at_once(self):
        dying = self.make_engine("dying", "echo 'no such radio'\nexit 7")
        launcher = self.open_with("--tuner", dying)
        launcher.press("Start receivers")
        for label in LABELS:
            launcher.wait_for_log(f"[{label}] no such radio")
            launcher.wait_for_log(f"[{label}] Starting it again in 5 s (attempt 1).")
            launcher.wait_for_log(f"[{label}] Starting it again in 15 s (attempt 2).", 8)
        launcher.press("Stop")
        self.assert_usable(launcher)

    def test_an_engine_that_ends_by_itself_is_not_started_again(self):
        done = self.make_engine("done", "exit 0")
        launcher = self.open_with("--tuner", done)
        launcher.press("Start receivers")
        for label in LABELS:
            launcher.wait_for_log(f"[{label}] Receiver stopped.")
        self.assertNotIn("Starting it again", launcher.log())
        self.assert_usable(launcher)

    def test_folders_that_cannot_be_written(self):
        for variable, obstacle, words in (
                ("XDG_STATE_HOME", "read-only", "^{base}/tarnwick: Permission denied$"),
                ("XDG_STATE_HOME", "file", "^{base}/tarnwick: (File exists|Not a directory)$"),
                ("XDG_CONFIG_HOME", "read-only", "^Cannot create configuration: Permission denied$"),
                ("XDG_CONFIG_HOME", "file", "^Cannot create configuration: (File exists|Not a directory)$")):
            with self.subTest(variable, obstacle=obstacle):
                base = self.home.path(f"{variable}-{obstacle}")
                if obstacle == "file":
                    self.home.write(os.path.basename(base), "in the way")
                else:
                    os.mkdir(base, 0o500)
                launcher = self.open_with(variables={variable: base})
                launcher.press("Start receivers")
                told = launcher.answer_dialog("Close")
                self.assertRegex(told, words.format(base=base))
                launcher.wait_for_log(f"Error: {told}")
                self.assert_usable(launcher)


if __name__ == "__main__":
    main()
