#!/usr/bin/env python3
"""A user who does anything with pointer, wheel, keys, menus, dialogs, sizes and commands.  Whatever he leaves behind,
the page is the page that is drawn anew, and the program ends when it is told to.

    random_user_test.py [ACTIONS [SEED]]"""
import os
import random
import shutil
import sys
import time
import unittest

import kolv_session
import window_session

ACTIONS = int(sys.argv.pop(1)) if len(sys.argv) > 1 and sys.argv[1].isdigit() else 500
SEED = int(sys.argv.pop(1)) if len(sys.argv) > 1 and sys.argv[1].isdigit() else int(os.environ.get("KOLV_SEED", 7))
BETWEEN_CHECKS = 12

COMMANDS = """VIEW WINDOW LIST|VIEW WINDOW TRACE|VIEW ALL|POP|RUN 400|RUN|LIST B clk tx|LIST D dout|TRACE write full din
TRACE /fifo/full|LIST B /fifo/empty|CURSOR 900|CURSOR SECOND 4000|CURSOR NEXT tx|CURSOR PREVIOUS clk|CURSOR OFF
CURSOR PROBES ON|CURSOR PROBES OFF|ZOOM IN|ZOOM OUT|ZOOM BACK|ZOOM FIT|VIEW DOWN fifo|VIEW DOWN sender|VIEW UP
VIEW PIN /fifo/read_pointer/at_reg[0]/D|VIEW INSTANCE /sender|VIEW NET /fifo/full|VIEW SHEET|SCALE TRACE TIME 70
SCALE TRACE TIME 4000|VIEW TIME TRACE 3000|VIEW TIME LIST 2500|PERIOD LIST 100|SWITCHE LIST PERIOD|SWITCHE LIST CHANGE
SWITCHE LIST VALUE|SWITCHE LIST STATE|MOVE SIGNAL TRACE 1 2|MOVE SIGNAL LIST 2 1|FORGET LIST tx|FORGET TRACE clk|GRID ON
GRID OFF|UNSELECT ALL|SELECT OBJECT 12|MARK RECTANGLE 100 80 400 200; VIEW AREA|UPDATE Trace|UPDATE List|STATUS KEY|$CU4
$VPTD80|$VPTL20|HELP CURSOR|LIST B nosuch|ZOOM SIDEWAYS|CURSOR -1|'|;;|LIST "|VIEW PIN /no/such/pin""".replace("\n", "|").split("|")
MODIFIERS = ([], [], [], ["shift"], ["ctrl"], ["shift", "ctrl"])
ENDS = {("ctrl", "F9"), ("alt", "F9"), ("alt", "F4"), ("alt", "F6"), ("alt", "F12"), ("alt", "F10")}


class RandomUser(window_session.Window):
    screen = "1280x1024x24"

    def setUp(self):
        super().setUp()
        for file in (kolv_session.SOURCE / "examples/uart").glob("*.cmd"):
            shutil.copy(file, self.directory)
        kolv_session.expand("examples/uart/uart.json", self.directory / "design_yx", "--sheets")
        self.random = random.Random(SEED)
        self.size = 1000, 800
        self.done = []
        self.checks = 0
        self.random.shuffle(COMMANDS)

    def do(self, *arguments):
        self.done.append(" ".join(map(str, arguments)))
        self.xdotool(*arguments)

    def place(self):
        return self.random.randrange(5, self.size[0] - 30), self.random.randrange(115, self.size[1] - 5)

    def point(self):
        self.do("mousemove", "--window", self.window, *self.place())

    def press(self, kind, what, between=()):
        """Keys or buttons go down with modifiers and come up in any order."""
        held = self.random.choice(MODIFIERS)
        down = [word for key in held for word in ("keydown", key)]
        ups = [("keyup", key) for key in held] + [(kind + "up", what)]
        self.random.shuffle(ups)
        self.do(*down, kind + "down", what, *between, *[word for up in ups for word in up])

    def click(self):
        self.point()
        self.press("mouse", self.random.choice((1, 2, 3)))

    def drag(self):
        self.point()
        inside = ["mousemove", "--window", self.window, *self.place()]
        if self.random.random() < 0.2:
            inside += ["key", "Escape"]
        self.press("mouse", self.random.choice((1, 1, 3)), inside)

    def wheel(self):
        self.point()
        self.press("mouse", self.random.choice((4, 5, 4, 5, 6, 7)))

    def key(self):
        self.point()
        key = self.random.choice(["F%d" % n for n in range(1, 13)] + ["Up", "Down", "Left", "Right", "Escape", "Tab"])
        self.press("key", key) if key not in ("F9", "F6") else self.do("key", key)

    def alt_key(self):
        key = "F%d" % self.random.randrange(1, 13)
        if ("alt", key) not in ENDS:
            self.do("keydown", "alt", "keydown", key, "keyup", "alt", "keyup", key)

    def command(self):
        self.do("type", "--delay", "2", self.random.choice(COMMANDS))
        self.do("key", self.random.choice(("Return", "Return", "Return", "Return", "Tab")))

    def menu(self):
        menu = self.random.choice("odvsulw")
        self.do("keydown", "alt", "key", menu, "keyup", "alt", "sleep", "0.1", "key", self.random.choice("abcdelrt"))

    def resize(self):
        self.size = self.random.randrange(500, 1240), self.random.randrange(420, 980)
        self.do("windowsize", self.window, *self.size)

    def close_dialogs(self):
        """Whatever has come up goes, and nothing is half done."""
        self.do("key", "Escape", "Escape", "sleep", "0.2")
        for title in ("^Quick_Message", "^Run Extra", "^View Time", "^Open a sheet", "^Kolv$"):
            for window in self.xdotool("search", "--onlyvisible", "--name", title, check=False):
                self.do("windowfocus", window, "sleep", "0.2", "key", "Return" if "Quick" in title else "Escape",
                        "sleep", "0.2")
        self.do("windowfocus", self.window, "mousemove", "--window", self.window, 300, 15, "sleep", "0.1", "key", "Escape",
                "ctrl+u", "ctrl+k")

    def drawn_anew(self):
        shown = self.transcript().count(" DISplay ON ")
        self.send("DISPLAY ON")
        self.see(" DISplay ON ", shown + 1)
        time.sleep(0.2)
        return self.page()

    def check(self):
        """Behind a command, which are all taken in turn; whatever it was, the page shows it."""
        self.do("type", "--delay", "2", COMMANDS[self.checks % len(COMMANDS)])
        self.do("key", "Return")
        self.checks += 1
        self.close_dialogs()
        shown = self.transcript().count(" SPIke CHEck  OFF ")
        self.send("SPIKE CHECK OFF")  # what was done before is over
        self.see(" SPIke CHEck  OFF ", shown + 1)
        time.sleep(0.3)
        page = self.page()
        self.assertEqual(page, self.drawn_anew(), "the page is not the page drawn anew")

    def test_leaves_pages_that_are_whole(self):
        self.open("DO show.cmd\n")
        self.wait_for(lambda: self.transcript().count("# End of DO ") >= 7, "the examples' commands")
        deeds = [self.click, self.click, self.drag, self.drag, self.wheel, self.wheel, self.key, self.key, self.alt_key,
                 self.command, self.command, self.command, self.menu, self.resize]
        try:
            for action in range(1, ACTIONS + 1):
                self.random.choice(deeds)()
                if action % BETWEEN_CHECKS == 0:
                    self.check()
        except Exception:
            print("seed %d, action %d, the last deeds:\n%s" % (SEED, action, "\n".join(self.done[-60:])))
            raise
        self.check()
        self.send("QUIT")
        stdout, _ = self.program.communicate(timeout=20)
        self.assertIn(b"Execution complete", stdout)


if __name__ == "__main__":
    unittest.main()
