#!/usr/bin/env python3
"""The Results page as a user sees it: colours and dashes of the trace, columns of the list, zooming, scrolling, moving
signals, the rubber band, resizing, and stopping a run."""
import time
import unittest

from window_session import PLAIN, Window

# Pixels on and off.
SOLID, DASHED, DOTTED, DASH_DOT, DASH_DOT_DOT = (1, 0), (6, 6), (3, 6), (12, 6, 3, 6), (12, 6, 3, 6, 3, 6)
HIGH, MIDDLE, LOW = -13, 0, 13  # of a waveform, from the middle of its row
LEFT, NAMES = 24, 276  # margins of the plot
STATES = [  # a net, its state, where and how it is drawn: letter, dash
    ("N1", "1S", HIGH, "y", SOLID), ("N2", "0W", LOW, "y", DASHED), ("N3", "1R", HIGH, "y", DOTTED),
    ("N6", "0Z", LOW, "y", DASH_DOT), ("N7", None, MIDDLE, "c", DASH_DOT_DOT)]  # nothing has driven it


def dashes(pattern, letter, length):
    """A line of that many dots, beginning with the first dash."""
    period = "".join((letter if i % 2 == 0 else ".") * n for i, n in enumerate(pattern))
    return (period * (length // len(period) + 1))[:length]


class ResultsPage(Window):
    resources = PLAIN
    def start(self, *commands):
        self.open("SPIKE CHECK OFF\n" + "\n".join(commands) + "\n")
        self.look()

    def look(self):
        self.lines = self.page()
        self.plot = len(self.lines[0]) - LEFT - NAMES

    def row(self, row, height=0):
        return self.lines[50 + 40 * (row - 1) + height]

    def x_of(self, time, begin=0, span=1000):
        return LEFT + (time - begin) * self.plot // span

    def expect_line(self, row, height, left, right, letter, pattern):
        """A line of a waveform between two columns; dots of the grid may stand on it."""
        seen = self.row(row, height)[left:right]
        wanted = dashes(pattern, letter, right - left)
        if height == MIDDLE:
            wanted = "".join("w" if s == "w" else w for s, w in zip(seen, wanted))
        self.assertEqual(seen, wanted, "row %d, height %d" % (row, height))

    def text_cells(self, lines, columns):
        """Which cells of 12 x 20 dots have ink, as rows of blanks and crosses."""
        return ["".join("x" if any("w" in line[12 * c:12 * c + 12] for line in self.lines[20 * r:20 * r + 20]) else " "
                        for c in range(columns)) for r in range(1, lines + 1)]

    def drag(self, x0, y0, x1, y1):
        self.move_to(x0, y0)
        self.xdotool("mousedown", 1)
        self.see(" MARK RECTangle ", times=1 + self.marks)
        self.marks += 1
        self.move_to(x1, y1)
        time.sleep(0.2)

    marks = 0

    def test_trace_shows_states_in_their_colours_and_dashes(self):
        forces = ["FORCE A %s %s 0" % state[:2] for state in STATES if state[1]]
        self.start("TRACE N1 N2 N3 N6 N7", *forces, "FORCE A N1 0W 300", "RUN 1000", "SCALE TRACE TIME 50",
                   "VIEW WINDOW TRACE")
        change = self.x_of(300)
        for row, (_, _, height, letter, pattern) in enumerate(STATES, start=1):
            self.expect_line(row, height, LEFT, change, letter, pattern)
        self.expect_line(1, LOW, change + 1, LEFT + self.plot, "y", (5, 6) + DASHED * 100)
        self.assertEqual({line[change] for line in self.lines[50 - 12:50 - 13 + 6]}, {"y"})  # on the way down
        self.assertEqual({self.row(1, height)[change] for height in range(-13 + 7, -13 + 12) if height}, {"."})
        for row, height in ((1, HIGH), (2, HIGH), (4, HIGH)):
            self.assertNotIn("y", self.row(row, height)[change + 2:LEFT + self.plot])
        self.assertIn("w", self.row(1, 5)[-252:])  # its name
        self.assertEqual(self.row(1)[LEFT - 1:LEFT + 1], "ww")  # the first dot of the grid

    def test_list_stands_in_columns(self):
        self.start("LIST B N1 N7 N2", "FORCE A N1 1 0", "FORCE A N2 0W 25", "RUN 100")
        rows = [(0.0, "1S iU iU"), (25.0, "1S iU 0W"), (100.0, "1S iU 0W")]
        texts = [("%.3f" % time if time else "0.0").rjust(14) + "  " + values for time, values in rows] + [" " * 24]
        self.assertEqual(self.text_cells(4, 24), ["".join(" " if c == " " else "x" for c in text) for text in texts])

    def test_a_rectangle_zooms_in_and_keys_move_through_time(self):
        self.start("TRACE N1 N2", "FORCE A N1 0 0", "FORCE A N1 1 300", "FORCE A N1 0 500", "RUN 1000",
                   "SCALE TRACE TIME 50", "VIEW WINDOW TRACE")
        begin, end = self.x_of(200), self.x_of(600)
        self.drag(begin, 30, end, 120)
        self.look()
        self.assertEqual({self.lines[30][begin:end + 1].strip("w"), self.lines[120][begin:end + 1].strip("w")}, {""})
        self.assertEqual({line[begin] for line in self.lines[30:121]}, {"w"})
        self.xdotool("mouseup", 1)
        self.see(" VIEw ARea ")
        time.sleep(0.3)
        self.look()
        view = self.window_of_view(begin, end)
        self.assertEqual(self.lines[30].count("w"), 0)  # the frame is gone
        self.expect_line(1, HIGH, self.x_of(300, *view), self.x_of(500, *view), "y", SOLID)
        self.expect_line(1, LOW, LEFT, self.x_of(300, *view), "y", SOLID)
        self.xdotool("key", "Right")  # twice a hundredth of the simulated time: on the press and on the release
        time.sleep(0.5)
        self.look()
        moved = (view[0] + 20, view[1])
        self.expect_line(1, HIGH, self.x_of(300, *moved), self.x_of(500, *moved), "y", SOLID)
        self.drag(300, 60, 301, 60)
        self.xdotool("mouseup", 1)
        self.see("# !! Error : Marked area too narrow ( at least 3 pixels ) ? ")
        self.xdotool("key", "shift+F12")
        self.see(" VIEw ALl ")
        self.xdotool("windowsize", self.window, 800, 600)
        time.sleep(1)
        self.look()
        self.expect_line(1, HIGH, self.x_of(300), self.x_of(500), "y", SOLID)

    def test_a_frame_is_taken_away_by_escape_and_by_what_uses_no_area(self):
        self.start("TRACE N1", "VIEW WINDOW TRACE")
        no_frame = self.page()
        for end in (("key", "Escape", "mouseup", 1), ("mouseup", 3)):
            self.move_to(300, 60)
            self.xdotool("mousedown", end[-1])
            self.move_to(400, 100)
            self.wait_for(lambda: self.page()[60][300:401] == "w" * 101, "a frame")
            self.xdotool(*end)
            self.wait_for(lambda: self.page() == no_frame, "the page without the frame")
        self.xdotool("click", 4)  # the wheel
        self.see(" MARK RECTangle ", times=4)
        self.move_to(100, 200)
        self.assertEqual(self.page(), no_frame)

    def window_of_view(self, begin, end):
        """First time and span that a marked area gives."""
        first, last = ((x - LEFT) * 1000 // self.plot for x in (begin, end))
        return first, (last - first + 19) // 20 * 20

    def test_signals_change_places_under_the_pointer(self):
        self.start("TRACE N1 N2 N3", "FORCE A N1 1 0", "FORCE A N2 0 0", "FORCE A N3 i 0", "RUN 1000",
                   "SCALE TRACE TIME 50", "VIEW WINDOW TRACE", "DEF KEY F11U 'MOVE SIGNAL TRACE'", "DEF KEY F11 'MARK'")
        self.move_to(200, 52)
        self.xdotool("keydown", "F11")
        self.see(" MARK ")
        self.move_to(200, 125)
        self.xdotool("keyup", "F11")
        self.see("# MOVe SIGnal Trace 1 3 ")
        time.sleep(0.3)
        self.look()
        for row, height, letter in ((1, MIDDLE, "r"), (2, LOW, "y"), (3, HIGH, "y")):
            self.expect_line(row, height, LEFT, LEFT + self.plot, letter, SOLID)

    def test_keys_answer_during_a_long_run(self):
        self.start("CLOCK PERIOD 20", "FORCE A N1 0 0 R", "FORCE A N1 1 10 R", "FORCE A N3 0 5 R", "FORCE A N3 1 15 R")
        self.send("RUN 30000000")
        self.see("#  RUN -> time_start: 0.0 ->time_end: 30000000.000")
        self.xdotool("key", "ctrl+b")
        self.wait_for(lambda: any(line.startswith("# !! Simulation STATUS : time = ") for line in self.transcript()),
                      "the time of the run")
        self.xdotool("key", "ctrl+s")
        self.see("# !! Simulation BREAKED Request ")
        self.send("SPIKE MIN 3")
        self.see(" SPIke MIN 3.000")

    def test_the_pages_change_by_their_tabs(self):
        self.start("TRACE N1", "FORCE A N1 1 0", "RUN 1000", "VIEW WINDOW TRACE")
        self.move_to(200, -20)
        self.xdotool("click", 1)
        self.wait_for(lambda: not any(set(line) & set("wy") for line in self.page()), "an empty Context page")
        title = self.xdotool("getwindowname", self.window)
        self.assertEqual(title[:3], ["Logic", "Simulator", "Kolv"])
        self.send("POP")
        self.wait_for(lambda: any("y" in line for line in self.page()), "the trace")


if __name__ == "__main__":
    unittest.main()
