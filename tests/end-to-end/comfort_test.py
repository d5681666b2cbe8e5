#!/usr/bin/env python3
"""What a user's hands expect of the window: editing and pasting in the entry, keys and buttons let go in any order,
questions before something is lost, dialogs that keep the keyboard, pages that fit the window at any size."""
import subprocess
import time
import unittest

from window_session import Window

NO_AREA = "# !! Error : No area marked ( MARK RECTANGLE ) ? "


class Hands(Window):
    def clip(self, selection, text):
        program = subprocess.Popen(["xclip", "-quiet", "-selection", selection], stdin=subprocess.PIPE, text=True,
                                   env=self.display.environment(self.directory), stderr=subprocess.DEVNULL)
        self.addCleanup(program.wait)
        self.addCleanup(program.kill)
        program.stdin.write(text)
        program.stdin.close()
        time.sleep(0.3)

    def type(self, text):
        self.xdotool("type", "--delay", "15", text)

    def tabs(self):
        """The strip of the tabs, dot by dot."""
        time.sleep(0.3)
        return subprocess.run(["import", "-window", self.window, "-crop", "400x30+0+108", "-depth", "8", "rgb:-"],
                              capture_output=True, check=True, env=self.display.environment("/")).stdout

    def shown(self, title):
        return bool(self.xdotool("search", "--onlyvisible", "--name", title, check=False))

    def test_the_entry_is_edited_as_texts_are(self):
        self.open("SPIKE CHECK OFF\n")
        self.at(0.5, 0.11)
        for typed, keys, value in (
                ("wrong", ("ctrl+u",), 1), ("", (), 2), ("SPIKE MIN 35", ("BackSpace",), None),
                ("SPIKE MIN 46 7 8", ("ctrl+w", "ctrl+w", "BackSpace", "BackSpace"), None),
                ("MIN 57", ("Home", "S", "P", "I", "K", "E", "space", "ctrl+e", "BackSpace"), None),
                ("SPIKE MIN 6 no", ("Left", "Left", "ctrl+k", "Return"), None)):
            self.type(typed)
            self.xdotool("key", "--delay", "30", *keys) if keys else None
            if value:
                self.type("SPIKE M")
                self.xdotool("key", "ctrl+b", "ctrl+g")  # no characters at all
                self.type("IN %d" % value)
            self.xdotool("key", "Return")
        for value in range(1, 7):
            self.see(" SPIke MIN %d.000" % value)
        self.at(0.5, 0.4)  # over the page: the entry holds a text, so the arrow is the entry's
        self.type("SPIKE MIN 178")
        self.xdotool("key", "--delay", "30", "Left", "BackSpace", "BackSpace", "Return")
        self.see(" SPIke MIN 8.000")
        self.at(0.5, 0.11)
        self.clip("clipboard", "SPIKE MIN 11\nSPIKE MIN 12\nSPIKE MIN 1")
        self.xdotool("key", "ctrl+v")
        self.type("3")
        self.xdotool("key", "Return")
        self.clip("primary", "SPIKE MIN 14\n")
        self.xdotool("click", 2)
        for value in range(11, 15):
            self.see(" SPIke MIN %d.000" % value)
        self.assertNotIn("#  !!! Unknown Command  ?? ", self.transcript())

    def test_keys_and_buttons_are_let_go_in_any_order(self):
        self.open("TRACE N1\nVIEW WINDOW TRACE\n")
        self.move_to(200, 100)
        self.xdotool("keydown", "shift", "keydown", "F12", "sleep", "0.2", "keyup", "shift", "keyup", "F12")
        self.see(" VIEw ALl ")
        self.xdotool("mousedown", 1, "sleep", "0.2", "key", "Escape", "sleep", "0.2", "mouseup", 1)
        self.xdotool("keydown", "F12", "sleep", "0.2", "key", "Escape", "sleep", "0.2", "keyup", "F12")
        self.see(" MARK RECTangle ", times=2)
        self.xdotool("click", 2, "key", "shift+F3")
        self.see("# !! Error : texts of sheets are not moved here ( CHANGE PROPERTY POSITION ) ")
        self.send("SPIKE MIN 1")
        self.see(" SPIke MIN 1.000")
        for line in (NO_AREA, "#  !!! Unknown Command  ?? "):
            self.assertNotIn(line, self.transcript())

    def test_closing_asks_when_something_would_be_lost(self):
        self.open("LIST B N1\n")
        self.at(0.5, 0.4)
        self.send("LIST B N2")
        self.see(" LIST B N2 ")
        for gesture in ("alt+F4", "ctrl+c", "ctrl+n", "alt+F6"):
            self.xdotool("key", gesture)
            self.dialog("^Kolv$")
            self.xdotool("key", "Escape")
            self.wait_for(lambda: not self.shown("^Kolv$"), "no answer to " + gesture)
            time.sleep(0.5)  # the keyboard goes back
        self.assertNotIn(" RESet SIM TIMe ", self.transcript())
        self.xdotool("key", "alt+F4")
        self.dialog("^Kolv$")
        self.xdotool("key", "Return")
        self.expect_end()

    def test_a_dialog_keeps_the_keyboard_and_nothing_is_dragged(self):
        self.open("SPIKE CHECK OFF\n")
        self.menu("l", "r")
        self.dialog("^Run Extra")
        self.at(0.5, 0.5)
        self.xdotool("click", 1)
        self.send("250")
        self.see("# RUN 250 ")
        tabs = self.tabs()
        self.xdotool("keydown", "alt", "sleep", "0.1", "key", "s", "sleep", "0.1", "keyup", "alt", "sleep", "0.3",
                     "key", "Escape", "Escape")
        self.wait_for(lambda: self.tabs() == tabs, "tabs as they were before a menu lay over them")
        self.at(0.99, 0.07)  # the button "Quit"
        self.xdotool("mousedown", 2)
        self.xdotool("mousemove_relative", "--", -300, 200)
        other = subprocess.run(["timeout", "5", "xprop", "-root"], capture_output=True,
                               env=self.display.environment(self.directory))
        self.xdotool("mouseup", 2)
        self.assertEqual(other.returncode, 0, "another program waits for the display")


class HandsAlone(Hands):
    """Without a window manager."""
    manager = None
    test_the_entry_is_edited_as_texts_are = test_closing_asks_when_something_would_be_lost = None
    test_keys_and_buttons_are_let_go_in_any_order = None


class LargeScreen(Window):
    """Twice as fine and far larger than usual."""
    screen, dpi = "3840x2160x24", 192

    def ink(self):
        """The height of the page, and the lowest line of it on which something white stands."""
        lines = self.page()
        return len(lines), max(y for y, line in enumerate(lines) if "w" in line)

    def test_panes_and_the_results_page_follow_the_window(self):
        self.open("LIST B N1\nTRACE N1\nFORCE A N1 1 0\nRUN 1000\n")
        height, header = self.ink()
        self.assertGreater(height, 1100)
        for width, lower, view in ((3000, 500, "LIST"), (1600, 700, "TRACE")):
            self.xdotool("windowsize", self.window, width, 2100 - lower)
            self.send("VIEW WINDOW " + view)
            self.see(" VIEw WINdow %s " % view)
            time.sleep(1)
            now, lowest = self.ink()
            self.assertLess(now, height - 100)
            # Twice as large: the header begins at line H / 44 - 10 of 40, the labels stand below H / 84 - 6 rows of 80.
            top = 40 * (now // 44 - 10) if view == "LIST" else 80 * (now // 84 - 5) + 100 + 24
            self.assertTrue(top <= lowest <= top + 42, (view, now, lowest, top))


if __name__ == "__main__":
    unittest.main()
