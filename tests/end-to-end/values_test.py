#!/usr/bin/env python3
"""Values in and out against other programs: what Icarus Verilog dumps is applied here, what is dumped here is read by
GTKWave's tools and compared with what Icarus says; the examples that work with tables and from Python."""
import os
import pathlib
import random
import subprocess
import unittest

from kolv_session import BIN, SOURCE, expand, work_directory

BENCH = """`timescale 10ns/1ps
module tb; reg clk = 0, rst = 1, en = 0; wire [3:0] count; wire carry; integer k;
  counter dut(clk, rst, en, count, carry);
  initial begin
    $dumpfile("in.vcd"); $dumpvars(0, clk, rst, en);
%s    $finish;
  end
  initial begin : watch integer file; file = $fopen("sampled"); forever begin #19.999 $fdisplay(file, "%%0d %%b %%b", $time, count, carry); #0.001; end end
endmodule
"""


def batch(directory, commands):
    subprocess.run([BIN / "kolv-batch", "--quiet", ".", "TYP", "-", "design_yx"], input=commands, text=True, check=True,
                   cwd=directory, start_new_session=True, env=dict(os.environ, QUILLARN=str(SOURCE / "share")))


def changes(path):
    """By full name the values at their times, of one time the last one."""
    names, scope, found, time = {}, [], {}, 0
    words = iter(path.read_text().split())
    for word in words:
        if word == "$scope":
            scope.append([next(words), next(words)][1])
        elif word == "$upscope":
            scope.pop()
        elif word == "$var":
            _, _, code, name = (next(words) for _ in range(4))
            names.setdefault(code, []).append(".".join([*scope, name]))
        elif word[0] == "#":
            time = int(word[1:])
        elif word[0] in "b01xz" and names:
            value, code = (word[1:], next(words)) if word[0] == "b" else (word[0], word[1:])
            for name in names[code]:
                found.setdefault(name, {})[time] = value
    return found


def value_at(values, time):
    return values[max(t for t in values if t <= time)]


class ValuesTest(unittest.TestCase):
    def test_what_icarus_dumps_is_applied_and_what_is_dumped_is_read(self):
        draw = random.Random(7)
        steps = "    #45 rst = 0;\n" + "".join("    #20 clk = %d; %s\n" % (k % 2, "#5 en = %d; rst = %d; #15;" % (
            draw.randint(0, 3) > 0, draw.randint(0, 15) == 0)) for k in range(1, 400))
        with work_directory() as name:
            directory = pathlib.Path(name)
            (directory / "tb.v").write_text(BENCH % steps)
            subprocess.run(["iverilog", "-g2012", "-o", "tb", "tb.v", SOURCE / "examples/counter/counter.v"], cwd=name, check=True)
            subprocess.run(["vvp", "-n", "tb"], cwd=name, check=True, stdout=subprocess.DEVNULL)
            expand("examples/counter/counter.json", directory / "design_yx")
            batch(name, "SPIKE CHECK OFF\nDUMP out.vcd\nTRACE count[0] clk\nAPPLY VCD in.vcd\nRUN 170000\nWRITE VCD w.vcd\n")
            ours = changes(directory / "out.vcd")
            sampled = [line.split() for line in (directory / "sampled").read_text().splitlines()]
            self.assertGreater(len(sampled), 700)
            for time, count, carry in sampled:
                if "x" in count:
                    continue
                self.assertEqual(value_at(ours["top.count"], 10 * int(time) - 1), count, time)
                self.assertEqual(value_at(ours["top.carry"], 10 * int(time) - 1), carry, time)
            self.assertEqual(changes(directory / "w.vcd")["top.clk"], ours["top.clk"])
            for vcd in ("out", "w"):
                subprocess.run(["vcd2fst", vcd + ".vcd", vcd + ".fst"], cwd=name, check=True, stdout=subprocess.DEVNULL)
                with open(directory / (vcd + ".back"), "w") as back:
                    subprocess.run(["fst2vcd", vcd + ".fst"], cwd=name, check=True, stdout=back)
                self.assertEqual(changes(directory / (vcd + ".vcd")), changes(directory / (vcd + ".back")))

    def test_the_regression_from_verilog_and_the_tests_in_python(self):
        with work_directory() as name:
            make = ["make", "-s", "-C", SOURCE / "examples/regression", "BIN=%s" % BIN, "OUT=" + name]
            subprocess.run(make, check=True, stdout=subprocess.DEVNULL, start_new_session=True)
            table = pathlib.Path(name) / "processor/port.tab"
            table.write_text(table.read_text().replace("262    1      13", "262    1      14"))
            (table.parent / "passed").unlink()
            result = subprocess.run(make, capture_output=True, text=True, start_new_session=True)
            self.assertIn('# !! Error : CHECK : time = 262700.000 : "port" expected 14 got 13', result.stderr)
            self.assertNotEqual(result.returncode, 0)
            expand("examples/counter/counter.json", pathlib.Path(name) / "design_yx")
            subprocess.run(["python3", "-B", "-m", "unittest", "discover", "-q", "-s", SOURCE / "examples/python"], check=True,
                           stderr=subprocess.DEVNULL, env=dict(os.environ, KOLV_BATCH=str(BIN / "kolv-batch"),
                                                               DESIGN_DIRECTORY=name, QUILLARN=str(SOURCE / "share")))


if __name__ == "__main__":
    unittest.main()
