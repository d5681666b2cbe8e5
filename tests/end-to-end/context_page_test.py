#!/usr/bin/env python3
"""The sheets of examples/sheets on the Context page, looked at through the colours of the page's pixels."""
import collections
import subprocess
import unittest

import kolv_session
import window_session

window_session.TITLE = "^kolv  |^ Logic Simulator Kolv  "  # the title names the directory once the page has changed

PALETTE = {b"\xff\xff\xff": "white", b"\x00\xff\x00": "green", b"\x00\xff\xff": "cyan",
           b"\xff\xff\x00": "yellow", b"\xff\x00\x00": "red", b"\x00\x00\xff": "blue"}

# The top sheet in model units: its border, and points on shapes by colour.
INSET, WIDTH, HEIGHT, BORDER = 2000, 400000, 300000, "cyan"
SHAPES = {
    "arc, a whole circle": ("yellow", [(310000, 30000), (330000, 30000), (320000, 40000), (320000, 20000)]),
    "circle and its filling": ("red", [(345000, 30000), (342000, 27000)]),
    "rectangle and its filling": ("cyan", [(360000, 30000), (357000, 34000)]),
    "polyline": ("yellow", [(373000, 35000), (374500, 30000), (388000, 25000)]),
    "module as drawn": ("yellow", [(110000, 185000), (170000, 215000), (105000, 210000), (175000, 190000)]),
    "module flipped": ("yellow", [(310000, 185000), (250000, 215000), (315000, 210000), (245000, 190000)]),
    "OR turned by 270 degrees": ("yellow", [(210000, 115000), (200000, 165000), (220000, 165000), (223000, 135000)]),
    "inverter turned by 180 degrees": ("yellow", [(180000, 112000), (185000, 100000), (160000, 107500), (137000, 103000)]),
}
EMPTY = [(320000, 30000), (140000, 200000), (210000, 225000), (240000, 100000), (205000, 140000)]


class ContextPage(window_session.Window):
    resources = window_session.PLAIN
    def setUp(self):
        super().setUp()
        subprocess.run([kolv_session.BIN / "example_sheets", self.directory], check=True, stdout=subprocess.DEVNULL)
        self.open("VIEW SHEET\n")
        self.at(0.3, 0.12)
        self.xdotool("click", 1)  # the command entry
        self.whole = self.settled()

    def colours(self):
        """How many pixels of the screen have each colour that only the drawing pages have."""
        picture = subprocess.run(["import", "-window", "root", "-depth", "8", "rgb:-"], check=True, capture_output=True,
                                 env=self.display.environment("/")).stdout
        counts = collections.Counter(picture[i:i + 3] for i in range(0, len(picture), 3))
        return {name: counts[colour] for colour, name in PALETTE.items()}

    def settled(self):
        before, now = None, self.colours()
        while before != now:
            before, now = now, self.colours()
        return now

    def expect_whole_page(self, after):
        self.wait_for(lambda: self.colours() == self.whole, "the whole page again after " + after)

    def run_command(self, text, echo):
        self.send(text)
        self.see(echo)

    def test_levels_are_seen_and_the_way_back_shows_the_same_picture(self):
        for colour in ("white", "green", "cyan", "yellow", "red", "blue"):
            self.assertGreater(self.whole[colour], 50, colour)
        self.run_command("VIEW DOWN U1", " VIEw DOWn  U1 ")
        self.wait_for(lambda: self.colours()["red"] < self.whole["red"], "the sheet below, without a red circle")
        self.run_command("VIEW DOWN P1", " VIEw DOWn  P1 ")
        self.run_command("VIEW UP", " VIEw UP   ")
        self.send("VIEW UP")
        self.expect_whole_page("two levels")

    def test_views_are_moved_and_restored(self):
        self.xdotool("mousemove_relative", 0, 250, "mousedown", 1, "sleep", "0.2", "mousemove_relative", 150, 120, "sleep",
                     "0.2", "mouseup", 1)
        self.see(" VIEw ARea ")
        self.wait_for(lambda: self.colours()["blue"] < self.whole["blue"], "a part of the page")
        near = self.settled()
        self.xdotool("key", "shift+Right")
        self.wait_for(lambda: self.colours() != near, "a move")
        self.xdotool("key", "shift+Left")
        self.wait_for(lambda: self.colours() == near, "the move back")
        self.xdotool("key", "shift+F12")
        self.expect_whole_page("View All")

    def page_colour(self):
        """A function from a model point to the colours of the dots around it; the border gives the scale."""
        lines = subprocess.run(["import", "-window", "root", "-depth", "8", "ppm:-"], check=True, capture_output=True,
                               env=self.display.environment("/")).stdout.split(b"\n", 3)
        width, rgb = int(lines[1].split()[0]), lines[3]
        at = [i for i in range(0, len(rgb), 3) if PALETTE.get(rgb[i:i + 3]) == BORDER]
        left, right = (edge(i // 3 % width for i in at) for edge in (min, max))
        top, bottom = (edge(i // 3 // width for i in at) for edge in (min, max))

        def colours(x, y):
            column = round(left + (right - left) * (x - INSET) / (WIDTH - 2 * INSET))
            row = round(bottom - (bottom - top) * (y - INSET) / (HEIGHT - 2 * INSET))
            return {PALETTE.get(rgb[i:i + 3], "") for line in (row - 1, row, row + 1)
                    for i in range(3 * (line * width + column - 1), 3 * (line * width + column + 2), 3)}
        return colours

    def test_shapes_stand_where_their_symbols_are_placed_flipped_and_turned(self):
        colours = self.page_colour()
        for name, (colour, points) in SHAPES.items():
            for x, y in points:
                self.assertIn(colour, colours(x, y), (name, x, y))
        for x, y in EMPTY:
            self.assertNotIn("yellow", colours(x, y), (x, y))
        dashes = ["yellow" in colours(x, 20000) for x in range(300000, 390000, 1000)]
        self.assertTrue(True in dashes and False in dashes, dashes)
        self.assertEqual(colours(50000, 200000), {"yellow"})  # the bus is three dots wide
        self.assertEqual(colours(200000, 220000), {"green", ""})


if __name__ == "__main__":
    unittest.main()
