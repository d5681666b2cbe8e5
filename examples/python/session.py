"""A session of kolv-batch for tests: commands go to its standard input, each answer comes back, and what the
session counted is in its JSON file.  KOLV_BATCH names the program, QUILLARN the installation."""
import json
import os
import pathlib
import subprocess

PROGRAM = os.environ.get("KOLV_BATCH", "kolv-batch")


class Session:
    def __init__(self, directory, design="design_yx", timing="TYP"):
        self.report = pathlib.Path(directory) / "session.json"
        self.process = subprocess.Popen(
            [PROGRAM, "--json", str(self.report), str(directory), timing, "-", design], stdin=subprocess.PIPE,
            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, start_new_session=True)
        self.answers = 0
        self.answer_to("")

    def answer_to(self, command):
        """The lines in front of the echo of a second command, which gives a variable the answer's number."""
        self.answers += 1
        self.process.stdin.write("%s\nASSIGN $VAR30 %d\n" % (command, self.answers))
        self.process.stdin.flush()
        lines = []
        for line in self.process.stdout:
            if line == " ASSIgn $VAR30 %d \n" % self.answers:
                return lines
            lines.append(line.rstrip("\n"))
        raise RuntimeError("the session has ended: " + "\n".join(lines))

    def __call__(self, *commands):
        answer = [line for command in commands for line in self.answer_to(command)]
        refused = [line for line in answer if line.startswith("# !! Error")]
        assert not refused, "\n".join(answer)
        return answer

    def value(self, bus, radix="D"):
        return self("STATUS BUS %s %s" % (bus, radix))[1].split('"')[1]

    def end(self):
        self.process.stdin.write("QUIT\n")
        self.process.communicate()
        return json.loads(self.report.read_text())
