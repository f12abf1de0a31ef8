"""One run of the built launcher: started with folders of its own, found on the accessibility bus, pressed and read."""

import collections
import os
import re
import signal
import subprocess
import time

from . import screen
from .accessible import program, wait_until

TABS = ("Modes / Frequencies", "SDR Config", "Settings", "Audio Receivers", "Sharing", "Live Map", "Live FT8", "Live JS8",
        "Live WSPR", "Live Text Modes", "Live Images", "Stats", "Logs")
SDR_CONFIG = 1
LIVE_FT8 = 6
COMPLAINT = re.compile(r"-(CRITICAL|WARNING|ERROR) \*\*|runtime error:|ERROR: \w+Sanitizer|WARNING: ThreadSanitizer")
# GTK's notebook asks for the tab of a page that it has just let go, whenever an assistive tool listens.
TOOLKITS_OWN = re.compile(r"gtk_notebook_get_tab_label: assertion 'list != NULL' failed")
TOTALS = re.compile(r"(\d+) spots  /  (\d+) spots/hr  /  PSKR24: (\d+)")


def decoders():
    """The folder of the stand-ins for the decoder programs."""
    return os.path.normpath(os.path.join(os.path.dirname(__file__), "../../../sim/decoders"))


def binary(name):
    return os.path.join(os.environ["TARNWICK_BIN"], name)


class Launcher:
    """`home` gives the folders; `scenario` is a file for the simulated engine; `arguments` go to the launcher."""

    def __init__(self, home, arguments=(), scenario=None, variables=None):
        self.home = home
        self.errors_path = os.path.join(home.root, "launcher-errors.txt")
        environment = {**os.environ, "PATH": f"{decoders()}:{os.environ['PATH']}", **home.variables, **(variables or {})}
        environment.pop("TARNWICK_SIM_SCENARIO", None)
        if scenario:
            environment["TARNWICK_SIM_SCENARIO"] = scenario
        with open(self.errors_path, "ab") as errors:
            self.process = subprocess.Popen([binary("tarnwick-gui"), *arguments], env=environment, cwd=home.root,
                                            stdin=subprocess.DEVNULL, stdout=errors, stderr=errors)
        self._tree = self._notebook = self._panes = None

    @property
    def identity(self):
        return self.process.pid

    # ---- what is on the screen

    @property
    def tree(self):
        """The program on the accessibility bus, once it is there."""
        if self._tree is None:
            self._tree = wait_until(self._look_for_tree, "the launcher on the accessibility bus", 30)
        return self._tree

    def _look_for_tree(self):
        self.require_alive()
        return program(self.identity)

    def require_alive(self):
        if self.process.poll() is not None:
            raise RuntimeError(f"the launcher ended with {self.process.returncode}: {self.errors()}")

    @property
    def main_window(self):
        """The identity of the main window for the window manager."""
        def look():
            self.require_alive()
            return next((each for each, title in screen.windows(self.identity).items() if title.startswith("Tarnwick")),
                        None)
        return wait_until(look, "the main window on the screen", 30)

    @property
    def notebook(self):
        """The thirteen tabs; a page may hold a notebook of its own."""
        if self._notebook is None:
            self._notebook = self.tree.find("page tab list", where=lambda each: len(each.children) == len(TABS), seconds=30)
        return self._notebook

    @property
    def tab_names(self):
        return [tab.name for tab in self.notebook.children]

    @property
    def current_tab(self):
        return self.notebook.selected_index

    def show_tab(self, index):
        notebook = self.notebook
        notebook.select(index)
        wait_until(lambda: notebook.selected_index == index, f"the tab {TABS[index]}")
        return notebook.children[index]

    def button(self, name, seconds=10.0):
        return self.tree.find("push button", name, seconds=seconds)

    def press(self, name, seconds=10.0):
        """Presses a button as soon as it can be."""
        button = self.button(name, seconds)
        wait_until(lambda: button.sensitive, f"the button {name} sensitive", seconds)
        button.press()

    @property
    def totals_text(self):
        """The text at the right end of the tab bar; the notebook carries it as its description."""
        return self.notebook.description

    @property
    def spots(self):
        found = TOTALS.fullmatch(self.totals_text)
        assert found, f"no totals: \"{self.totals_text}\""
        return int(found[1])

    def _alerts(self):
        """(dialog, its text) of every message or question that stands open."""
        found = [each for each in self.tree.children if each.role in ("alert", "dialog") and each.showing]
        return [(each, "\n".join(label.name for label in each.find_all("label") if label.name)) for each in found]

    def dialogs(self):
        return [words for _, words in self._alerts()]

    def answer_dialog(self, button, text=None, seconds=10.0):
        """Waits for a dialog whose text holds the pattern, presses the button, and gives the text."""
        def look():
            return next((each for each in self._alerts() if re.search(text or "", each[1])), None)
        alert, words = wait_until(look, lambda: f"a dialog with \"{text}\"; there is {self.dialogs()}", seconds)
        alert.find("push button", button).press()
        wait_until(lambda: not alert.showing, "the dialog gone")
        return words

    def log(self):
        """What stands in the panes of the Logs tab, whatever tab is shown."""
        if self._panes is None:
            self._panes = self.notebook.children[len(TABS) - 1].find_all("text")
        return "\n".join(pane.text for pane in self._panes)

    def wait_for_log(self, text, seconds=10.0):
        return wait_until(lambda: text in self.log(),
                          lambda: f"\"{text}\" in the log, which reads\n{self.log()[-3000:]}", seconds)

    def levels(self):
        """What the level meters of the SDR Config tab say, one text a card; the tab has to be shown."""
        return [each.description for each in self.notebook.children[SDR_CONFIG].find_all(name="IQ level")]

    # ---- processes and the end

    def engines(self):
        """The process ids of the engines that this launcher has started."""
        listing = subprocess.run(["ps", "-o", "pid=,args=", "--ppid", str(self.identity)], capture_output=True, text=True,
                                 check=False).stdout
        return [int(line.split()[0]) for line in listing.splitlines()
                if "session-" in line and "--no-daemon" in line and "<defunct>" not in line]

    def close_window(self):
        screen.close(self.main_window)

    def wait_for_end(self, seconds=20.0):
        """The exit status."""
        try:
            return self.process.wait(seconds)
        except subprocess.TimeoutExpired:
            raise AssertionError(f"the launcher has not ended within {seconds:g} s") from None

    def quit(self, seconds=30.0):
        """Closes the window the way a person does, with OK to the question where receivers run."""
        self.close_window()
        end = time.monotonic() + seconds
        while self.process.poll() is None and time.monotonic() < end:
            if any("Stop all receivers" in words for words in self.dialogs()):
                self.answer_dialog("OK", "Stop all receivers")
            time.sleep(0.1)
        return self.wait_for_end(max(0.1, end - time.monotonic()))

    def kill(self):
        """Ends it without a word, if it still runs, and the engines with it. For clean-up, and for tests of sudden ends."""
        engines = self.engines()
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()
        for engine in engines:
            try:
                os.kill(engine, signal.SIGKILL)
            except ProcessLookupError:
                pass

    def errors(self):
        """What it printed."""
        return self.home.read(self.errors_path)

    def complaints(self):
        """What the toolkit found wrong with the launcher, and what a sanitizer found: each thing once, with a count."""
        found = collections.Counter(re.sub("0x[0-9a-f]+", "0x…", re.sub(r"^.*?\d\d:\d\d:\d\d\.\d+: ", "", line))
                                    for line in self.errors().splitlines()
                                    if COMPLAINT.search(line) and not TOOLKITS_OWN.search(line))
        return [f"{count} times: {text}" for text, count in found.items()]
