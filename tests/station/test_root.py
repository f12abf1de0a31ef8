"""Root is refused before any file is touched, whatever the files are."""

import os
import subprocess

from case import StationCase, main
from station.launcher import binary


class Root(StationCase):
    def test_is_refused_and_leaves_every_file_alone(self):
        self.home.write("config/fennel-tuner/session.conf", "callsign = 'M0TWK'\n")
        before = self.home.files(".")
        environment = {**os.environ, **self.home.variables}
        for arguments in ([], ["--config", self.home.path("config/fennel-tuner/session.conf")]):
            with self.subTest(arguments):
                answer = subprocess.run([binary("tarnwick-gui"), *arguments], env=environment, capture_output=True,
                                        text=True, timeout=20, check=False)
                self.assertEqual((answer.returncode, answer.stdout, answer.stderr),
                                 (1, "", "Launcher: Run the launcher as your normal desktop user. Service controls request "
                                         "administrator authorization separately.\n"))
                self.assertEqual(self.home.files("."), before)


if __name__ == "__main__":
    main()
