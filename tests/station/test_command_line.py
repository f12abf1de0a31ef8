"""What the launcher answers before it has a window."""

import os
import subprocess

from case import StationCase, main
from station.launcher import binary


class CommandLine(StationCase):
    def run_launcher(self, *arguments, **variables):
        return subprocess.run([binary("tarnwick-gui"), *arguments], env={**os.environ, **self.home.variables, **variables},
                              capture_output=True, text=True, timeout=20, check=False)

    def test_answers(self):
        usage = "Tarnwick graphical launcher\nUsage: tarnwick-gui [--config FILE] [--tuner EXECUTABLE]\n"

        def unknown(argument):
            return f"Launcher: Unknown or incomplete option: {argument}\n"
        for arguments, status, out, error in (
                (["--help"], 0, usage, ""),
                (["--help", "--rubbish"], 0, usage, ""),
                (["--config", "/nowhere", "--help"], 0, usage, ""),
                (["--rubbish"], 1, "", unknown("--rubbish")),
                (["--rubbish", "--help"], 1, "", unknown("--rubbish")),
                (["--config"], 1, "", unknown("--config")),
                (["--tuner"], 1, "", unknown("--tuner")),
                (["--sharing-check", "A", "B"], 1, "", unknown("--sharing-check")),
                (["profile.conf"], 1, "", unknown("profile.conf")),
                ([""], 1, "", unknown(""))):
            with self.subTest(arguments):
                answer = self.run_launcher(*arguments)
                self.assertEqual((answer.returncode, answer.stdout, answer.stderr), (status, out, error))

    def test_without_a_display(self):
        answer = self.run_launcher(DISPLAY="", GDK_BACKEND="x11")
        self.assertEqual((answer.returncode, answer.stderr),
                         (1, "Launcher: No graphical display is available. Run tarnwick for the CLI.\n"))


if __name__ == "__main__":
    main()
