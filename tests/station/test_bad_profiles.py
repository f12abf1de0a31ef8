"""Profiles given on the command line that cannot be used: words that say why, and a window that stays usable."""

import os

from case import READY, STATION, StationCase, main


class BadProfiles(StationCase):
    def make(self, kind):
        """A profile of that kind; gives its path."""
        path = self.home.path(f"{kind}.conf")
        if kind == "directory":
            os.mkdir(path)
        elif kind == "dangling":
            os.symlink(self.home.path("nowhere.conf"), path)
        elif kind == "pipe":
            os.mkfifo(path)
        elif kind != "missing":
            self.home.write(f"{kind}.conf", {
                "unreadable": STATION,
                "long": "# a comment of 63 letters, again and again and again and so on\n" * 32768,
                "one-line": "callsign = " + "A" * 2_000_000,
                "nuls": b"\0" * 4096,
                "nul-in-value": STATION.encode() + b"grid = 'IO\x0091'\n",
                "newer": "gui-format = multi-receiver-v2\n",
            }[kind])
        if kind == "unreadable":
            os.chmod(path, 0)
        return path

    def test_each_is_refused_in_words(self):
        for kind, words in (
                ("missing", "Cannot open configuration file: {path}"),
                ("dangling", "Cannot open configuration file: {path}"),
                ("unreadable", "Cannot open configuration file: {path}"),
                ("directory", "(Cannot open|Failed reading) configuration file: {path}"),
                ("pipe", "(Cannot open|Failed reading) configuration file: {path}"),
                ("long", r"{path} line \d+: Configuration file exceeds size limit"),
                ("one-line", "{path} line 1: Configuration file exceeds size limit"),
                ("nuls", "{path} line 1: (Expected option = value|Configuration file exceeds size limit)"),
                ("nul-in-value", r"{path} line \d+: .+"),
                ("newer", "Unsupported GUI profile format")):
            with self.subTest(kind):
                path = self.make(kind)
                launcher = self.launch("--config", path)
                told = launcher.answer_dialog("Close", seconds=20)
                self.assertRegex(told, "^" + words.format(path=path) + "$")
                launcher.wait_for_log(f"Error: {told}")
                launcher.wait_for_log(READY)
                self.wait_discovered(launcher)
                launcher.show_tab(2)
                launcher.close_window()
                self.assertEqual(launcher.wait_for_end(8), 0)

    def test_a_link_to_a_profile_is_read_and_never_written(self):
        target = self.home.write("target.conf", STATION)
        link = self.home.path("link.conf")
        os.symlink(target, link)
        launcher = self.open("--config", link)
        callsign = launcher.show_tab(2).find("text", where=lambda field: field.text == "M0TWK")
        callsign.type("M0NEW")
        launcher.press("Apply and Save")
        launcher.answer_dialog("Close", "rather than a symbolic link")
        self.assertIn("M0NEW", self.home.read(self.home.config("session.conf")), "the session is saved all the same")
        launcher.close_window()
        self.assertEqual(launcher.wait_for_end(8), 0)
        self.assertTrue(os.path.islink(link))
        self.assertEqual(self.home.read(target), STATION)


if __name__ == "__main__":
    main()
