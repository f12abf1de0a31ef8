"""Under a locale with a decimal comma every file keeps its decimal points."""

import os
import re
import shutil
import subprocess
import unittest

from case import STATION, StationCase, main

LOCALE = "de_DE.UTF-8"


class DecimalComma(StationCase):
    def locale(self):
        """The variables of a locale with a decimal comma, made for this test alone."""
        if not shutil.which("localedef") or not os.path.exists("/usr/share/i18n/locales/de_DE"):
            raise unittest.SkipTest("the package locales is not installed")
        folder = self.home.path("locales")
        os.mkdir(folder)
        subprocess.run(["localedef", "-i", "de_DE", "-f", "UTF-8", os.path.join(folder, LOCALE)], check=True,
                       capture_output=True)
        variables = {"LOCPATH": folder, "LC_ALL": LOCALE, "LANG": LOCALE}
        point = subprocess.run(["locale", "decimal_point"], env={**os.environ, **variables}, capture_output=True, text=True,
                               check=True).stdout.strip()
        self.assertEqual(point, ",")
        return variables

    def test_files_keep_decimal_points(self):
        station = self.home.write("station.conf", STATION + "decoder-timeout = 12.5\n")
        launcher = self.open("--config", station, scenario="[station]\nstart-burst=true\n", variables=self.locale())
        self.start(launcher)
        self.wait(lambda: launcher.spots > 0, "spots, read with their decimal points", 30)
        engine = self.home.read(self.home.config(self.home.session_profiles()[0]))
        self.assertIn("decoder-timeout = '12.5'", engine)
        self.assertEqual(launcher.quit(), 0)
        self.assertIn("decoder-timeout = '12.5'", self.home.read(self.home.config("session.conf")))
        for path in self.home.files("config", "state"):
            if path.endswith((".conf", ".ini", ".log")):
                numbers = re.findall(r"^(?!bands)[\w.-]+ ?= ?'?-?\d+,\d+'?$|\d+,\d+ MHz",
                                     self.home.read(self.home.path(path)), re.MULTILINE)
                self.assertEqual(numbers, [], path)


if __name__ == "__main__":
    main()
