#!/usr/bin/env python3
"""kolv-batch: what its exit status, its options and its sources of commands do."""
import json
import os
import pathlib
import pty
import re
import select
import subprocess
import time
import unittest

from kolv_session import BIN, SOURCE, batch, expand, run, work_directory

SPIKES = "FORCE A N1 0 0; FORCE A N2 0 0; FORCE A N3 0 0; FORCE A N6 0 0; FORCE A N7 0 0\nRUN 60\n"


class Batch(unittest.TestCase):
    def setUp(self):
        folder = work_directory()
        self.addCleanup(folder.cleanup)
        self.directory = pathlib.Path(folder.name)
        expand("designs/iscas85/c17.json", self.directory / "design_yx")

    def start(self, *arguments, **environment):
        program = batch(arguments, self.directory, **environment)
        stdout, _ = program.communicate(timeout=60)
        return program.returncode, stdout.decode()

    def test_the_status_tells_what_failed(self):
        broken = "# !! More than 0 errors or warnings"
        rows = [  # commands, options, status, what is said
            ("RUN 5\n", [], 0, "# !! Warning"), ("RUN x\n", [], 1, "1 failure\n"), ("NONSENSE\nRUN\n", [], 1, "2 failures\n"),
            (SPIKES, [], 0, "# !! SPIKE"), (SPIKES, ["--warnings-as-errors"], 1, "2 failures\n"),
            (SPIKES, ["--limit", "0"], 1, broken), (SPIKES, ["--limit", "2"], 0, "# !! SPIKE"),
            ("WRITE LIST none/x\n", [], 1, "impossible to open"), ("SYSTEM 'exit 3'\n", [], 1, "ended with status 3\n"),
            ("! kill $$\n", [], 1, "ended with status 143\n"), ("SYSTEM true\n", ["--no-shell"], 1, "not started here"),
            ("DO /dev/zero\nDO .\n", [], 1, "2 failures\n"), ("QUIT\nNONSENSE\n", [], 0, ""), ("", ["--nonsense"], 2, "--nonsense"),
            ("", ["--limit", "-1"], 2, "--limit"), ("", ["--expect-no-difference", "none"], 2, "cannot be read : none"),
        ]
        for commands, options, status, text in rows:
            with self.subTest(commands=commands, options=options):
                self.assertIn(text, run(self.directory, commands, options, status=status).stdout)
        self.assertIn("not started here", run(self.directory, "! true\n", status=1, KOLV_NO_SHELL="1").stdout)
        self.assertEqual(run(self.directory, SPIKES, ["--quiet"]).stdout, "")
        for arguments in ([], ["none"], [".", "MX"], [".", "TYP", "", "none"], [".", "TYP", "", "d" * 199], [".", "TYP", "\xe9"],
                          [".", *"x" * 34]):
            with self.subTest(arguments):
                self.assertEqual(self.start(*arguments)[0], 2)
        design = bytearray((self.directory / "design_yx").read_bytes())
        (self.directory / "design_yx").write_bytes(design.replace(b"NAND", b"NINE"))
        self.assertEqual(self.start(".", "TYP", "session.cmd")[0], 1, "a model that is not known")

    def test_reports_and_transcripts_are_where_they_are_wanted(self):
        run(self.directory, SPIKES, ["--json", "report", "--transcript", "kept"])
        report = json.loads((self.directory / "report").read_text())
        self.assertEqual({k: report[k] for k in ("status", "end_time", "spikes", "errors")},
                         {"status": 0, "end_time": 60, "spikes": 2, "errors": 0})
        self.assertGreater(report["events"], 10)
        self.assertFalse((self.directory / "current_session").exists())
        run(self.directory, SPIKES, ["--expect-no-difference", "kept"])
        stdout = run(self.directory, SPIKES + "RUN 9\n", ["--expect-no-difference", "kept"], status=1).stdout
        self.assertIn(': expected "# End of DO "\n', stdout)
        self.start("--json", "report", ".", "MX")
        self.assertEqual(json.loads((self.directory / "report").read_text())["fatal_stops"], 1)

    def test_command_files_are_opened_as_they_are_named(self):
        name = "a b; 'c\" $ARG1 # !touch x"
        (self.directory / name).write_text("COMMAND '<$ARG1>'\n")
        status, stdout = self.start(".", "TYP", name, "design_yx", "one")
        self.assertEqual(status, 0)
        self.assertEqual(stdout.splitlines()[-4:-1], ["# DO %s one " % name, "# COMmand '<one>' ", "<one> "])

    def test_a_line_of_a_fifo_is_done_before_the_next_is_waited_for(self):
        os.mkfifo(self.directory / "fifo")
        program = batch([".", "TYP", "fifo"], self.directory)
        with open(self.directory / "fifo", "w") as commands:
            commands.write("RUN 5\n")
            commands.flush()
            for line in program.stdout:
                if line.startswith(b"# !! Warning : No new FORCE"):
                    break
            commands.write("DO -\nBYE\n")
        self.assertEqual(program.communicate(timeout=60)[0].decode().split("\n"),
                         ["# DO - ", "# End of DO ", " BYE ", ""])
        self.assertEqual(program.returncode, 0)

    def test_a_terminal_has_a_prompt_and_two_interrupts_end_it(self):
        child, terminal = pty.fork()
        if child == 0:
            os.chdir(self.directory)
            os.execve(BIN / "kolv-batch", ["kolv-batch", ".", "TYP", "-"], os.environ | {"TERM": "dumb"})
        self.addCleanup(os.close, terminal)  # which ends what still runs there
        self.expect(terminal, b"kolv> ", b"")
        self.expect(terminal, b"\n RUN 7 ", b"FORCE A N1 1 0\nFORCE A N1 0 5\nRUN 6\x7f7\n")
        self.expect(terminal, b"kolv> ", b"")
        self.expect(terminal, b"time_start: 7.000", b"\x1b[A\n")  # the line before
        self.expect(terminal, b"kolv> ", b"")
        os.write(terminal, b"\x03")
        time.sleep(0.5)
        os.write(terminal, b"\x03")
        self.assertEqual(os.waitstatus_to_exitcode(os.waitpid(child, 0)[1]), -2)

    def expect(self, terminal, text, typed):
        """Types and reads up to the text."""
        os.write(terminal, typed)
        seen = b""
        while not seen.endswith(text):
            self.assertTrue(select.select([terminal], [], [], 20)[0], seen)
            seen += os.read(terminal, 1)

    def test_the_script_of_the_documents_notices_what_failed(self):
        text = (SOURCE / "docs/batch.md").read_text()
        script = re.search(r"^    #!/bin/sh\n(?:    .*\n)+", text, re.M).group()
        said = re.search(r"it prints\n\n((?:    .*\n)+)", text).group(1)
        (self.directory / "three.sh").write_text(re.sub("^    ", "", script, flags=re.M))
        done = subprocess.run(["sh", "three.sh", "."], cwd=self.directory, capture_output=True, text=True,
                              env=os.environ | {"PATH": "%s:%s" % (BIN, os.environ["PATH"])})
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stderr + done.stdout, re.sub("^    ", "", said, flags=re.M))


if __name__ == "__main__":
    unittest.main()
