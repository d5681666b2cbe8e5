#!/usr/bin/env python3
"""The window used as a user does: typing, keys, buttons and menus, under a window manager (and without one)."""
import time
import unittest

from window_session import PLAIN, Window


class UnderAWindowManager(Window):
    resources = PLAIN
    def test_typed_commands_run_and_their_results_are_drawn(self):
        self.open("SPIKE CHECK OFF\n")
        drawn = self.picture().white_dots() + 300  # what the frame has, and the least that a table needs
        self.send("FORCE A N1 1 0")  # the first key clears the first text of the entry
        self.see(" FORCE A N1 1 0 ")
        self.send("LIST B N1 N22")
        self.see(" LIST B N1 N22 ")
        self.at(0.5, 0.4)  # typing reaches the entry from everywhere
        self.send("RUN 100")
        self.see(" RUN 100 ")
        self.assertGreater(self.picture().white_dots(), drawn)
        for disturbance in (["windowunmap", self.window, "sleep", "0.3", "windowmap", self.window], ["windowsize", self.window, 900, 600]):
            self.xdotool(*disturbance)
            time.sleep(1)
            self.assertGreater(self.picture().white_dots(), drawn, disturbance)
        self.send("Gri?")
        self.see(" GRId ON ")
        self.assertNotIn("#  !!! Unknown Command  ?? ", self.transcript())

    def test_bound_keys_and_buttons_run_their_texts(self):
        self.open("DEF KEY F12C 'SPIKE MIN 1'\nDEF KEY F5U 'SPIKE MIN 2'\nDEF KEY AU 'SPIKE MIN 3'\nDEF KEY B2 'SPIKE MIN 4'\n"
                  "DEF KEY CNTL_N 'SPIKE MIN 5'\nDEF KEY F9C 'SPIKE MIN 6'\nDEF KEY F9S 'SPIKE MIN 7'\nDEF KEY F9 'SPIKE MIN 8'\n")
        self.xdotool("key", "ctrl+F12")  # from the entry as well
        self.see(" SPIke MIN 1.000")
        self.at(0.5, 0.4)
        self.xdotool("key", "F5", "Up", "ctrl+n", "click", "2")
        self.see(" SPIke MIN 5.000")
        self.see(" SPIke MIN 4.000")
        self.see(" SPIke MIN 3.000", times=2)  # arrow keys act on the press and on the release
        self.see(" SPIke MIN 2.000")
        for key, value in (("ctrl+shift+F9", 6), ("ctrl+alt+n", 5), ("shift+alt+F9", 7)):  # one of two counts
            before = self.transcript().count(" SPIke MIN %d.000" % value)
            self.xdotool("key", key)
            self.see(" SPIke MIN %d.000" % value, times=before + 1)
        for lock in ("Num_Lock", "Caps_Lock"):
            before = self.transcript().count(" SPIke MIN 8.000")
            self.xdotool("key", lock, "F9", lock)
            self.see(" SPIke MIN 8.000", times=before + 1)
        self.xdotool("key", "Prior")  # the programs of the installation
        self.see(" HELp MENUS ")
        self.xdotool("key", "Next")
        self.see(" STAtus KEY ")
        self.xdotool("key", "ctrl+c")
        self.see(" BYE ")
        self.expect_end()

    def test_every_modifier_of_a_key_has_texts_for_press_and_release(self):
        modifiers = {"": "", "shift": "S", "ctrl": "C", "alt": "A"}
        self.open("".join("DEF KEY F7%s 'SPIKE MIN %d'\nDEF KEY F7U%s 'SPIKE MIN %d'\nDEF KEY AR%s 'SPIKE MIN %d'\n" %
                          (name, 10 * n, name, 10 * n + 1, name, 10 * n + 2)
                          for n, name in enumerate(modifiers.values(), start=1)) + "".join(
                              "DEF KEY B%s 'SPIKE MIN %d'\n" % (name, 100 + n)
                              for n, name in enumerate(("1", "1U", "2", "2U", "3", "3U"))))
        self.at(0.5, 0.4)
        expected = []
        for n, modifier in enumerate(modifiers, start=1):
            hold, release = (("keydown", modifier), ("keyup", modifier)) if modifier else ((), ())
            self.xdotool(*hold, "key", "F7", "sleep", "0.2", "key", "Right", "sleep", "0.2", *release)
            expected += [10 * n, 10 * n + 1, 10 * n + 2, 10 * n + 2]
        for button in (1, 2, 3, 4):  # the wheel acts as button 3 pressed, both ways
            self.xdotool("click", button, "sleep", "0.1")
        expected += [100, 101, 102, 103, 104, 105, 104, 104]
        said = [" SPIke MIN %d.000" % value for value in expected]
        self.wait_for(lambda: len(self.transcript()) >= len(said) and self.transcript()[-1] == said[-1], said[-1])
        self.assertEqual(self.transcript()[-len(said):], said)

    def test_the_entry_recalls_what_was_typed(self):
        self.open("SPIKE CHECK OFF\n")
        for value in (1, 2):
            self.send("SPIKE MIN %d" % value)
        self.see(" SPIke MIN 2.000")
        self.at(0.5, 0.11)  # over the entry: arrow keys over a page are keys of the page
        self.xdotool("type", "--delay", "15", "SPIKE MIN 3")
        self.xdotool("key", "Tab", "Up", "Up", "Up", "Return")  # nothing else takes the keyboard
        self.see(" SPIke MIN 1.000", times=2)
        self.xdotool("key", "Up", "Up", "Down", "Down", "Down")
        self.send("SPIKE MIN 4")
        self.see(" SPIke MIN 4.000")
        self.assertNotIn(" SPIke MIN 3.000", self.transcript())
        self.xdotool("key", "alt+F4")  # the window manager asks the window to close
        self.expect_end()

    def test_control_a_stops_a_command_file(self):
        (self.directory / "long.cmd").write_text("SYSTEM 'sleep 0.05'\n" * 400)
        self.open("SPIKE CHECK OFF\n")
        self.send("DO long.cmd")
        self.see(" SYSTem 'sleep 0.05' ", times=3)
        self.xdotool("key", "ctrl+a")
        self.see("# End of DO ", times=3)  # that of the key file, of the start and of long.cmd
        self.assertLess(self.transcript().count(" SYSTem 'sleep 0.05' "), 400)


class WithoutAWindowManager(Window):
    resources = PLAIN
    manager = None

    def test_typed_commands_run(self):
        self.open("SPIKE CHECK OFF\n")
        self.at(0.5, 0.4)
        self.send("SPIKE MIN 7")
        self.see(" SPIke MIN 7.000")
        self.send("QUIT")
        self.expect_end()


if __name__ == "__main__":
    unittest.main()
