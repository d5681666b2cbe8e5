#!/usr/bin/env python3
"""A user goes two levels down in examples/sheets, points at a wire, lists and probes it, and runs: the value beside
the wire is read from the picture of the screen and compared with the list file."""
import subprocess
import unittest

import kolv_session
import window_session

window_session.TITLE = "^kolv  |^ Logic Simulator Kolv  "  # the title names the directory once the page has changed
YELLOW = b"\xff\xff\x00"
CELL, HEIGHT, GAP = 10, 16, 6  # of a probe's text in pixels: of a character, and beside and above its place
WIRE = (1.4, 1.0)  # the output of K1, on net M of the sheet at /U1/P1


class Sheets(window_session.Window):
    def setUp(self):
        super().setUp()
        subprocess.run([kolv_session.BIN / "example_sheets", self.directory], check=True, stdout=subprocess.DEVNULL)
        self.open("SPIKE CHECK OFF\nDEF KEY F7 'PROBE p'\nVIEW SHEET\nVIEW DOWN U1\nVIEW DOWN P1\n")

    def pointer(self):
        place = dict(word.split(":") for word in self.xdotool("getmouselocation"))
        return int(place["x"]), int(place["y"])

    def marked(self):
        """Where the pointer stands on the sheet, as MARK says."""
        marks = sum(line.startswith(" MARK ") for line in self.transcript())
        self.xdotool("key", "alt+F8")
        self.wait_for(lambda: sum(line.startswith(" MARK ") for line in self.transcript()) > marks, "a mark")
        return [float(n) for n in [line for line in self.transcript() if line.startswith(" MARK ")][-1].split()[1:]]

    def point_at(self, spot):
        """Moves the pointer to a place of the sheet, found between two others."""
        self.at(0.25, 0.25)
        (px, py), (x, y) = self.pointer(), self.marked()
        self.at(0.75, 0.45)
        (qx, qy), (u, v) = self.pointer(), self.marked()
        self.assertTrue(u > x and v < y, "x grows to the right, y upward")
        self.xdotool("mousemove", px + round((spot[0] - x) / (u - x) * (qx - px)),
                     py + round((spot[1] - y) / (v - y) * (qy - py)))
        return self.pointer()

    def value_at(self, place):
        """The value that the text "p" and a state beside a place of the screen shows."""
        left, top = place[0] + GAP + 2 * CELL, place[1] - GAP - HEIGHT - 4
        rgb = subprocess.run(
            ["import", "-window", "root", "-crop", "%dx%d+%d+%d" % (CELL, HEIGHT, left, top), "-depth", "8", "rgb:-"],
            check=True, capture_output=True, env=self.display.environment("/")).stdout
        rows = [[rgb[3 * (y * CELL + x):][:3] == YELLOW for x in range(CELL)] for y in range(HEIGHT)]
        used = [row for row in rows if any(row)]
        if not used:
            return ""
        strokes = [sum(b and not a for a, b in zip([False] + row, row)) for row in used]
        return {(2, 2): "0", (1, 1): "1"}.get((strokes[len(strokes) // 2], strokes[len(strokes) * 3 // 4]), "?")

    def test_a_picked_wire_is_listed_and_its_probe_shows_what_the_list_says(self):
        place = self.point_at(WIRE)
        self.xdotool("key", "F10")
        self.see(" LIST Binary ")
        self.xdotool("key", "F7")
        self.see(" PROBe p ")
        shown = []
        for commands, run in (("FORCE A /D[0] 1 0;FORCE A /D[1] 1 0", "RUN 100"), ("FORCE A /D[1] 0 150", "RUN 110")):
            self.send(commands + ";" + run)
            self.see(" %s " % run)
            self.wait_for(lambda: self.value_at(place) in ("0", "1"), "a value, not %r" % self.value_at(place))
            shown.append(self.value_at(place))
        self.send("WRITE LIST;STATUS PROBE;VIEW UP;VIEW UP")
        self.see(" VIEw UP   ", times=2)
        self.assertIn("# Net sim_path   : \"/U1/P1/M\" ", self.transcript())
        rows = [line.split() for line in (self.directory / "kolv_list_result").read_text().splitlines()]
        values = {float(row[0]): row[-1][0] for row in rows if len(row) > 1 and row[0].replace(".", "").isdigit()}
        at = lambda time: values[max(t for t in values if t <= time)]
        self.assertEqual(shown, [at(100), at(210)])
        self.assertEqual(shown, ["0", "1"])


if __name__ == "__main__":
    unittest.main()
