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


class ContextPage(window_session.Window):
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

    def test_selected_instances_stand_out_and_probes_follow_the_run(self):
        self.run_command("VIEW INSTANCE U1", " VIEw INStance U1 ")
        self.wait_for(lambda: self.colours()["white"] > self.whole["white"] + 500, "a white instance")
        self.run_command("UNSELECT ALL", " UNSelect ALl ")
        self.run_command("VIEW ALL", " VIEw ALl ")
        self.expect_whole_page("UNSELECT ALL")
        self.run_command("PROBE COUT 2.1 1.0", " PROBe COUT 2.1 1.0 ")
        self.wait_for(lambda: self.colours()["yellow"] > self.whole["yellow"], "a probe")
        unknown = self.settled()
        for force in ("FORCE A CIN 1 0", "FORCE A D[0] 1 0", "FORCE A D[1] 1 0"):
            self.run_command(force, " %s " % force)
        self.run_command("RUN 1000", " RUN 1000 ")
        self.wait_for(lambda: self.colours()["yellow"] not in (unknown["yellow"], self.whole["yellow"]), "another value")


if __name__ == "__main__":
    unittest.main()
