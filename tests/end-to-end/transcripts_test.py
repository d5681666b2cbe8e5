#!/usr/bin/env python3
"""Sessions whose transcript is compared line by line with a stored one.

    transcripts_test.py             compare
    transcripts_test.py --record    write the stored transcripts anew; read the difference before committing it"""
import pathlib
import re
import shutil
import subprocess
import sys
import unittest

from kolv_session import BIN, SOURCE, Display, expand, work_directory

GOLDEN = pathlib.Path(__file__).with_name("golden")
MULTIPLIER = SOURCE / "examples/multiplier"


class Transcripts(unittest.TestCase):
    record = False

    def setUp(self):
        folder = work_directory()
        self.addCleanup(folder.cleanup)
        self.directory = pathlib.Path(folder.name)

    def session(self, commands, name):
        """Runs the commands and compares the transcript with the stored one of that name."""
        with Display() as display:
            result = display.run(self.directory, commands, QUILLARN="")
        stored = GOLDEN / (name + ".txt")
        if self.record:
            stored.write_text("\n".join(result.transcript) + "\n")
        self.maxDiff = None
        self.assertEqual(result.transcript, stored.read_text().splitlines())
        return result

    def test_every_kind_of_wrong_command_is_reported(self):
        for file in GOLDEN.glob("*.cmd"):
            shutil.copy(file, self.directory)
        expand("designs/iscas85/c17.json", self.directory / "design_yx")
        result = self.session((GOLDEN / "wrong_commands.cmd").read_text(), "wrong_commands")
        self.assertIn(" -- KOLV  Execution complete...", result.stdout)

    def test_every_command_of_the_sheets_answers(self):
        subprocess.run([BIN / "example_sheets", self.directory], check=True, stdout=subprocess.DEVNULL)
        self.session((GOLDEN / "sheets.cmd").read_text(), "sheets")

    def test_the_multiplier_multiplies(self):
        commands = (MULTIPLIER / "multiplier.cmd").read_text()
        expand("designs/iscas85/c6288.json", self.directory / "design_yx")
        self.session(commands + "QUIT\n", "multiplier")
        rows = (self.directory / "products").read_text().splitlines()[6:]
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
    Transcripts.record = "--record" in sys.argv
    unittest.main(argv=sys.argv[:1])
