"""The demo without a person: opens the station, starts it, watches, takes a picture of every tab, stops and closes.

Ends with 0 only if all of that worked.
"""

import argparse
import os
import re
import sys
import time

from . import screen
from .accessible import wait_until
from .home import Home
from .launcher import SDR_CONFIG, TABS, Launcher


def say(text):
    print(text, flush=True)


def picture_name(index):
    return f"{index + 1:02}-{re.sub('[^a-z0-9]+', '-', TABS[index].lower())}.png"


def open_station(home, options):
    here = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
    launcher = Launcher(home, ["--config", os.path.join(here, "demo.conf")], os.path.join(here, "demo.scenario"))
    window = launcher.main_window
    width, height = (int(side) for side in options.size.split("x"))
    screen.resize(window, width, height)
    wait_until(lambda: screen.size(window) == (width, height),
               lambda: f"the window at {options.size}; it is {screen.size(window)}")
    screen.move_pointer(width - 1, height - 1)
    say(f"opened: {len(launcher.tab_names)} tabs, {launcher.totals_text}")
    assert tuple(launcher.tab_names) == TABS, launcher.tab_names
    return launcher


def start_and_watch(launcher, seconds):
    launcher.press("Start receivers", 30)
    receivers = wait_until(launcher.home.session_profiles, "the receivers started")
    wait_until(lambda: len(launcher.engines()) == len(receivers), f"{len(receivers)} receive engines running")
    end = time.monotonic() + seconds
    wait_until(lambda: launcher.spots > 0, lambda: f"spots counted; the log reads\n{launcher.log()[-2000:]}", max(seconds, 20))
    time.sleep(max(0, end - time.monotonic()))
    launcher.require_alive()
    engines = launcher.engines()
    assert len(engines) == len(receivers), f"only {len(engines)} of {len(receivers)} engines run; the log reads\n{launcher.log()}"
    say(f"running: {len(engines)} engines, {launcher.totals_text}")


def watch_meters(launcher):
    launcher.show_tab(SDR_CONFIG)
    wait_until(lambda: all("dB" in level for level in launcher.levels()), lambda: f"live levels: {launcher.levels()}")
    say(f"levels: {', '.join(launcher.levels())}")


def take_pictures(launcher, folder):
    for index, name in enumerate(TABS):
        launcher.show_tab(index)
        time.sleep(0.5)  # until the page has been drawn
        path = os.path.join(folder, picture_name(index))
        screen.picture(path)
        assert os.path.getsize(path) > 1000, f"the picture of {name} is empty"
    say(f"pictures: {len(TABS)} in {folder}")


def stop_and_close(launcher):
    launcher.press("Stop")
    start = launcher.button("Start receivers")
    wait_until(lambda: not launcher.engines() and start.sensitive, "the receivers stopped", 20)
    say(f"stopped: {launcher.totals_text}, {launcher.spots} spots counted")
    launcher.close_window()
    status = launcher.wait_for_end(20)
    assert status == 0, f"the launcher ended with {status}"
    assert not launcher.complaints(), "\n".join(launcher.complaints())
    say("closed: the launcher ended with 0")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--seconds", type=float, default=20)
    parser.add_argument("--screenshots")
    parser.add_argument("--size", default="1120x820")
    parser.add_argument("--home")
    options = parser.parse_args()
    home = Home(options.home)
    launcher = None
    try:
        launcher = open_station(home, options)
        start_and_watch(launcher, options.seconds)
        watch_meters(launcher)
        if options.screenshots:
            take_pictures(launcher, options.screenshots)
        stop_and_close(launcher)
        return 0
    except (AssertionError, RuntimeError) as error:
        say(f"FAILED: {error}")
        if launcher:
            say(f"the launcher printed: {launcher.errors()[-3000:]}")
        return 1
    finally:
        if launcher:
            launcher.kill()
        if not options.home:
            home.close()


if __name__ == "__main__":
    sys.exit(main())
