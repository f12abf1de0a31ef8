"""The window as it opens: its tabs, its footer, its size, and closing it with nothing running."""

from case import STATION, StationCase, main
from station import screen
from station.launcher import TABS


class Window(StationCase):
    def test_opens_whole_and_closes_without_a_question(self):
        launcher = self.open()
        self.assertEqual(tuple(launcher.tab_names), TABS)
        self.assertEqual(launcher.tab_names.index("Sharing"), 4)
        self.assertEqual(launcher.current_tab, 0)
        self.assertEqual(launcher.totals_text, "0 spots  /  0 spots/hr  /  PSKR24: 0")
        self.assertEqual(screen.windows(launcher.identity)[launcher.main_window], "Tarnwick · Ostrand")
        self.assertEqual(screen.size(launcher.main_window), (1120, 820))
        for index in range(len(TABS)):
            page = launcher.show_tab(index)
            self.wait(lambda page=page: page.children[0].showing, f"the page of {TABS[index]} on the screen")
        footer = [button.name for button in launcher.tree.find_all("push button")
                  if button.name in ("Start receivers", "Stop", "Open .conf", "Apply and Save")]
        self.assertEqual(footer, ["Start receivers", "Stop", "Open .conf", "Apply and Save"])
        self.assertFalse(launcher.button("Stop").sensitive)

        launcher.close_window()
        self.assertEqual(launcher.wait_for_end(5), 0)
        self.assertEqual(launcher.engines(), [])

    def test_every_control_has_a_name(self):
        launcher = self.open("--config", self.home.write("station.conf", STATION))
        controls = ("push button", "check box", "combo box", "spin button", "text", "toggle button", "slider",
                    "password text", "radio button")
        nameless = []
        for index, tab in enumerate(launcher.notebook.children):
            nameless += [f"{TABS[index]}: {control.role}" for control in tab.walk()
                         if control.role in controls and not control.label]
        self.assertEqual(nameless, [])

    def test_fits_a_small_screen(self):
        """Nothing makes the window wider or higher than it was asked to be."""
        launcher = self.open()
        window = launcher.main_window
        for width, height in ((1120, 738), (1009, 700)):
            screen.resize(window, width, height)
            self.wait(lambda size=(width, height): screen.size(window) == size, f"the window at {width}x{height}")


if __name__ == "__main__":
    main()
