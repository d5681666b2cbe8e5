#!/usr/bin/env python3
"""Sessions whose transcript and files are compared with stored ones, and those of kolv-batch with the window's.

    sessions_test.py             compare
    sessions_test.py --record    write the stored files anew; read the difference before committing it"""
import collections
import pathlib
import re
import shutil
import subprocess
import sys
import unittest

from kolv_session import BIN, SOURCE, Display, expand, run, work_directory

GOLDEN = pathlib.Path(__file__).with_name("golden")
OWN = {"debug_kolv", "debug_kolv2", "debug_yxdfi", "session.cmd"}  # of each program, not of the session

# The netlist, none for the sheets of the examples; the command file; what else is stored; the exit status.
Session = collections.namedtuple("Session", "netlist commands files status options", defaults=[[], 0, []])
EXAMPLES, HERE = "examples/", "tests/end-to-end/golden/"
SESSIONS = {
    "arbiter": Session("examples/arbiter/arbiter.json", EXAMPLES + "arbiter/arbiter.cmd", ["grants"]),
    "counter": Session("examples/counter/counter.json", EXAMPLES + "counter/counter.cmd", ["count_by_period", "count_by_change"]),
    "multiplier": Session("designs/iscas85/c6288.json", EXAMPLES + "multiplier/multiplier.cmd"),
    "regression": Session("examples/counter/counter.json", EXAMPLES + "regression/regression.cmd", ["whole", "resumed", "verdict"], 1),
    "sheets": Session(None, HERE + "sheets.cmd", [], 1),
    "timing": Session("examples/timing/capture.json", EXAMPLES + "timing/hunt.cmd", ["sums"]),
    "uart": Session("examples/uart/uart.json", EXAMPLES + "uart/show.cmd", ["received"], 0, ["--sheets"]),
    "wrong_commands": Session("designs/iscas85/c17.json", HERE + "wrong_commands.cmd", [], 1),
}
PLOTS = "PLOT TRACE trace.svg\nHARDCOPY list.hpgl\nPLOT SHEET sheet.png\nPOP\nHARDCOPY page.png\nSAVE STATE state\n"


class Sessions(unittest.TestCase):
    record = False
    maxDiff = None

    def prepare(self, session):
        """A directory with the design and the command files, and the text of the session's."""
        folder = work_directory()
        self.addCleanup(folder.cleanup)
        directory, commands = pathlib.Path(folder.name), SOURCE / session.commands
        for file in commands.parent.glob("*.cmd"):
            shutil.copy(file, directory)
        if session.netlist:
            expand(session.netlist, directory / "design_yx", *session.options)
        else:
            subprocess.run([BIN / "example_sheets", directory], check=True, stdout=subprocess.DEVNULL)
        return directory, commands.read_text()

    def compare(self, name, text):
        stored = GOLDEN / name
        if self.record:
            stored.write_text(text)
        self.assertEqual(text, stored.read_text(), name)

    def test_every_session_does_what_it_did(self):
        for name, session in SESSIONS.items():
            with self.subTest(name):
                directory, commands = self.prepare(session)
                result = run(directory, commands + "QUIT\n", status=session.status, QUILLARN="")
                self.compare(name + ".txt", "\n".join(result.transcript) + "\n")
                for file in session.files:
                    self.compare(name + "." + file, (directory / file).read_text())
                if name == "multiplier":
                    self.check_products(commands, (directory / "products").read_text().splitlines()[6:])

    def test_both_programs_write_the_same_bytes(self):
        with Display() as display:
            for name, session in SESSIONS.items():
                with self.subTest(name):
                    seen = []
                    for on in (display, None):
                        directory, commands = self.prepare(session)
                        run(directory, commands + PLOTS + "QUIT\n", display=on, status=None, QUILLARN="")
                        seen.append({p.name: p.read_bytes() for p in directory.rglob("*") if p.is_file() and p.name not in OWN})
                    self.assertGreater(len(seen[0]), 4)
                    self.assertEqual(seen[0].keys(), seen[1].keys())
                    self.assertEqual([], [file for file in seen[0] if seen[0][file] != seen[1][file]])

    def test_every_folder_is_run_and_described(self):
        run_here = {session.commands.split("/")[1] for session in SESSIONS.values()} | {"sheets", "processor", "python"}  # in verilog_test.py, values_test.py
        for folder in (path for path in (SOURCE / "examples").iterdir() if path.is_dir()):
            self.assertIn(folder.name, run_here)
            self.assertTrue((folder / "README.md").exists(), folder)

    def check_products(self, commands, rows):
        operands = [tuple(map(int, m)) for m in re.findall(r"^# (\d+) x (\d+) =", commands, re.M)]
        self.assertGreaterEqual(len(operands), 20)
        self.assertLessEqual({(0, 0), (65535, 65535), (43690, 21845)}, set(operands))
        for k, (a, b) in enumerate(operands):
            settled = [row for row in rows if float(row[:12]) < (k + 1) * 1000][-1]
            self.assertEqual(self.buses(settled), (a, b, a * b))

    @staticmethod
    def buses(row):
        """a, b and p of a row: 16, 16 and 32 states of two characters side by side."""
        states = [row[14 + 2 * i:16 + 2 * i] for i in range(64)]
        bits = "".join({"0S": "0", "1S": "1"}.get(state, "?") for state in states)
        return int(bits[:16], 2), int(bits[16:32], 2), int(bits[32:], 2)


if __name__ == "__main__":
    Sessions.record = "--record" in sys.argv
    unittest.main(argv=sys.argv[:1])
