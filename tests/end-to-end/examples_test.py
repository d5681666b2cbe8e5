#!/usr/bin/env python3
"""Runs the command files under examples/ in the real program; transcript and list files must be the stored ones.

    examples_test.py             compare
    examples_test.py --record    write the stored files anew; read the difference before committing it"""
import pathlib
import shutil
import sys
import unittest

from kolv_session import SOURCE, Display, expand, work_directory

GOLDEN = pathlib.Path(__file__).with_name("golden")

# folder, netlist, command file, files that it writes, options of the expander
EXAMPLES = [
    ("counter", "counter/counter.json", "counter.cmd", ["count_by_period", "count_by_change"]),
    ("arbiter", "arbiter/arbiter.json", "arbiter.cmd", ["grants"]),
    ("timing", "timing/capture.json", "hunt.cmd", ["sums"]),
    ("regression", "counter/counter.json", "regression.cmd", ["whole", "resumed", "verdict"]),
    ("uart", "uart/uart.json", "show.cmd", ["received"], "--sheets"),
]


class Examples(unittest.TestCase):
    record = False
    maxDiff = None

    def session(self, folder, netlist, commands, options):
        """Lines of the transcript, and the text of a file of the session by its name."""
        work = work_directory()
        self.addCleanup(work.cleanup)
        directory = pathlib.Path(work.name)
        for file in (SOURCE / "examples" / folder).glob("*.cmd"):
            shutil.copy(file, directory)
        expand(pathlib.Path("examples") / netlist, directory / "design_yx", *options)
        with Display() as display:
            result = display.run(directory, (directory / commands).read_text() + "QUIT\n", QUILLARN="")
        return result.transcript, lambda name: (directory / name).read_text()

    def compare(self, name, text):
        stored = GOLDEN / "examples" / name
        if self.record:
            stored.parent.mkdir(exist_ok=True)
            stored.write_text(text)
        self.assertEqual(text, stored.read_text(), name)

    def test_every_example_does_what_it_did(self):
        for folder, netlist, commands, files, *options in EXAMPLES:
            with self.subTest(folder):
                transcript, text_of = self.session(folder, netlist, commands, options)
                self.assertFalse([line for line in transcript if "Unknown Command" in line])
                self.compare(folder + ".txt", "\n".join(transcript) + "\n")
                for name in files:
                    self.compare(folder + "." + name, text_of(name))

    def test_every_folder_is_run_and_described(self):
        run = {folder for folder, *_ in EXAMPLES} | {"multiplier", "sheets", "processor"}  # in transcripts_test.py, verilog_test.py
        self.assertEqual({path.name for path in (SOURCE / "examples").iterdir() if path.is_dir()}, run)
        for folder in run:
            self.assertTrue((SOURCE / "examples" / folder / "README.md").exists(), folder)


if __name__ == "__main__":
    Examples.record = "--record" in sys.argv
    unittest.main(argv=sys.argv[:1])
