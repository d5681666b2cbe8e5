#!/usr/bin/env python3
"""The window as a place to point at things: cursors, zoom and wheel, completion, paths that are clicked, what was not
recorded, and leaving after a save; on a usual screen without a window manager and on a fine one with it."""
import shutil
import time
import unittest

import kolv_session
import window_session


class Usual(window_session.Window):
    screen, dpi, scale, manager = "1920x1080x24", 96, 1, None

    def setUp(self):
        super().setUp()
        for file in (kolv_session.SOURCE / "examples/uart").glob("*.cmd"):
            shutil.copy(file, self.directory)
        kolv_session.expand("examples/uart/uart.json", self.directory / "design_yx", "--sheets")

    def after(self, word, *keys):
        """The last word of the line that the keys lead to in the transcript."""
        before = sum(line.startswith(word) for line in self.transcript())
        self.xdotool(*keys)
        self.wait_for(lambda: sum(line.startswith(word) for line in self.transcript()) > before, word)
        time.sleep(0.3)
        return [line.split()[-1] for line in self.transcript() if line.startswith(word)][-1]

    def line_at(self, x):
        """How many lines have a dot of the cursor's colour there, as near as times are whole."""
        return sum("g" in line[x - 2:x + 2] for line in self.page())

    def test_a_day_of_pointing(self):
        self.open("DO show.cmd\n")
        self.wait_for(lambda: self.transcript().count("# End of DO ") >= 7, "the examples' commands")
        self.send("VIEW WINDOW TRACE")
        self.see(" VIEw WINdow TRACE ", 2)
        time.sleep(0.5)
        width, x, y = len(self.page()[0]), 400 * self.scale, 130 * self.scale
        per_pixel = 18000 / (width - 300 * self.scale)
        self.move_to(x, y)
        clicked = float(self.after(" CURsor", "click", "2"))
        self.assertAlmostEqual(clicked, (x - 24 * self.scale) * per_pixel, delta=per_pixel)
        self.assertGreater(self.line_at(x), 200)
        self.after(" CURsor SECOND", "mousemove_relative", "50", "0", "keydown", "shift", "click", "2", "keyup", "shift")
        whole = self.page()
        self.xdotool("mousemove_relative", "--", "-50", "0")
        self.after(" ZOOm IN POINTER", "keydown", "ctrl", "click", "4", "keyup", "ctrl")
        self.assertGreater(self.line_at(x), 200, "what is under the pointer stays there")
        self.send("ZOOM BACK")
        self.see(" ZOOm BACK ")
        time.sleep(0.3)
        self.assertEqual(self.page(), whole)
        before = float(self.after(" CURsor", "key", "ctrl+p"))
        self.assertGreater(float(self.after(" CURsor", "key", "ctrl+n")), before)

        self.xdotool("type", "cur"), self.xdotool("key", "Tab"), self.xdotool("type", "off"), self.xdotool("key", "Return")
        self.see(" CURsor off ")
        grey = sum(line.count("e") for line in self.page())
        self.xdotool("type", "TRACE /fifo/ful"), self.xdotool("key", "Tab", "Return")
        self.see(" TRACe /fifo/full ")
        self.xdotool("type", "--delay", "3", "TRACE" + " write empty clk" * 10), self.xdotool("key", "Return")
        self.wait_for(lambda: sum(line.startswith(" TRACe write") for line in self.transcript()) > 1, "several lines")
        self.xdotool("click", "--repeat", "30", "5")  # to the last rows
        time.sleep(0.5)
        self.assertGreaterEqual(sum(line.count("e") for line in self.page()), grey)

        path = "/fifo/read_pointer/at_reg[0]/D"
        self.send("LIST B " + path)
        self.see(" LIST B %s " % path)
        height = int(self.xdotool("getwindowgeometry", "--shell", self.window)[-2].split("=")[1])
        for up in range(30 * self.scale, 120 * self.scale, 6 * self.scale):
            self.xdotool("mousemove", "--window", self.window, 95 * self.scale, height - up, "click", 1)
            time.sleep(0.1)
            if self.transcript()[-1].startswith(" VIEw PIN "):
                break
        self.see(" VIEw PIN %s " % path)
        self.wait_for(lambda: "/fifo/read_pointer/" in self.xdotool("getwindowname", self.window), "the path in the title")
        self.send("SAVE STATE kept")
        self.see(" SAVe STAte kept ")
        self.xdotool("mousemove", "--window", self.window, x, 200 * self.scale, "key", "ctrl+c")
        self.expect_end()


class Fine(Usual):
    screen, dpi, scale, manager = "3840x2160x24", 192, 2, ["openbox"]


if __name__ == "__main__":
    unittest.main()
