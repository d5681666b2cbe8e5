#!/usr/bin/env python3
"""Designs written in Verilog and synthesised by Yosys, their memories kept, against Icarus Verilog on the netlist."""
import pathlib
import random
import shutil
import unittest

from differential import compare, yosys
from kolv_session import SOURCE, work_directory

HERE = SOURCE / "tests/end-to-end/verilog"


def cycle(changes=(), clock="clk"):
    """Inputs, then the clock up and down again."""
    return [*changes, (clock, 1, 0.3), (clock, 0, 0.6)]


class VerilogTest(unittest.TestCase):
    def check(self, source, steps, period=200):
        """The known bits of the outputs."""
        with work_directory() as name:
            shutil.copy(source, name)
            yosys(name, "read_verilog %s; synth -top %s -run begin:fine; opt; techmap; opt; abc; opt_clean; write_json d.json"
                  % (source.name, source.stem))
            return compare(self, pathlib.Path(name) / "d.json", steps, period=period)

    def test_a_clock_gate(self):
        draw = random.Random(4)
        steps = [[("clk", 0), ("enable", 1), ("reset", 1)], [("reset", 0)]]
        for _ in range(220):
            steps.append([("enable", draw.randint(0, 1), 0.1), ("clk", 1, 0.3), ("enable", draw.randint(0, 1), 0.5), ("clk", 0, 0.7)])
            steps.append([("clk", 1)])
            steps.append([("enable", draw.randint(0, 1), 0.2), ("clk", 0, 0.5)])
        self.assertGreater(self.check(HERE / "gated.v", steps), 3200)

    def test_a_pipeline_of_latches_on_two_phases(self):
        draw = random.Random(5)
        steps = [[("phase1", 0), ("phase2", 0)]]
        for _ in range(220):
            steps.append([("in[%d]" % draw.randint(0, 3), draw.choice("01"), 0.1), ("phase1", 1, 0.4)])
            steps.append([("in[%d]" % draw.randint(0, 3), draw.choice("01"))])
            steps += [[("phase1", 0)], [("phase2", 1)], [("phase2", 0)]]
        self.assertGreater(self.check(HERE / "phases.v", steps), 8200)

    def test_a_bus_of_three_sources(self):
        draw = random.Random(6)
        steps = [[("select[%d]" % k, 0) for k in range(3)] + [("clk", 0)] + [("in[%d]" % k, k % 2) for k in range(8)]]
        for _ in range(400):
            chosen = draw.randint(0, 3)
            steps.append(cycle([("select[%d]" % k, int(k == chosen)) for k in range(3)] +
                               [("in[%d]" % draw.randint(0, 7), draw.randint(0, 1))]))
        self.assertGreater(self.check(HERE / "shared.v", steps), 4000)

    def test_a_processor_runs_its_program(self):
        steps = [cycle([("clk", 0), ("reset", 1)]), cycle([("reset", 1)]), cycle([("reset", 0)])] + [cycle()] * 2600
        self.assertGreater(self.check(SOURCE / "examples/processor/processor.v", steps, 1000), 25 * 2600)


if __name__ == "__main__":
    unittest.main()
