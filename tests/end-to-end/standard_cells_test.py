#!/usr/bin/env python3
"""Designs on the cells of a library, with the delays of a timing engine: their values against Icarus Verilog on the
library's own models, their arrival times and their shortest clock period against OpenSTA."""
import json
import math
import pathlib
import random
import re
import subprocess
import unittest

from differential import Netlist, compare, yosys
from kolv_session import BIN, SOURCE, run, work_directory

CELLS = pathlib.Path("/usr/share/qflow/tech/osu018")
LIBERTY, VERILOG = CELLS / "osu018_stdcells.lib", CELLS / "osu018_stdcells.v"
OWN = SOURCE / "tests/end-to-end/standard_cells"
SETTLED = 50  # ns, more than any way through a design needs


def mapped(directory, source, top):
    """The design on the library's cells, as mapped.v and mapped.json, and its SDF."""
    yosys(directory, "read_verilog %s; synth -flatten -top %s; dfflibmap -liberty %s; abc -liberty %s; opt_clean; "
          "write_verilog -noattr mapped.v" % (source, top, LIBERTY, LIBERTY))
    # Names as OpenSTA reads them.
    yosys(directory, "read_liberty -lib -ignore_miss_func %s; read_verilog mapped.v; hierarchy -top %s; "
          "write_json mapped.json" % (LIBERTY, top))
    sta(directory, top, "create_clock -name clk -period 10 %s" % ("clk" if top != "tree" else ""), "write_sdf delays.sdf")
    return Netlist(directory / "mapped.json")


def sta(directory, top, *commands):
    """What OpenSTA prints for commands on the mapped design."""
    (directory / "run.tcl").write_text("\n".join(["read_liberty %s" % LIBERTY, "read_verilog mapped.v",
                                                  "link_design %s" % top, *commands, "exit", ""]))
    done = subprocess.run(["sta", "-exit", "run.tcl"], cwd=directory, capture_output=True, text=True)
    assert done.returncode == 0 and "Error" not in done.stdout, done.stdout[-2000:] + done.stderr
    return done.stdout


def expand(directory):
    done = subprocess.run([str(BIN / "kolv-expand"), "mapped.json", "--liberty", LIBERTY, "--sdf", "delays.sdf", "-o",
                           "design_yx"], cwd=directory, capture_output=True, text=True)
    assert done.returncode == 0 and "warning" not in done.stderr, done.stderr
    return done.stderr


def port(bit):
    return "[get_ports {%s}]" % bit


class Path:
    """A path of report_checks: its arrival in ps and the pins of cells that it goes through."""

    def __init__(self, text):
        arrival = re.search(r"(\S+)   data arrival time", text)
        self.found = arrival is not None
        self.arrival = float(arrival.group(1)) * 1000 if arrival else 0.0
        self.pins = re.findall(r"[v^] (\S+/\w+) \(", text)


class Fanout:
    """What the nets of a mapped netlist lead to."""

    def __init__(self, path):
        module = next(m for m in json.loads(path.read_text())["modules"].values() if m["cells"])
        self.cells, self.ports, self.readers = {}, module["ports"], {}
        for name, cell in module["cells"].items():
            of = {"input": {}, "output": {}}
            for pin, bits in cell["connections"].items():
                of[cell["port_directions"][pin]][pin] = bits[0]
            self.cells[name] = of
            for net in of["input"].values():
                self.readers.setdefault(net, []).append(name)

    def reached(self, bit):
        name, index = re.fullmatch(r"(\w+)(?:\[(\d+)\])?", bit).groups()
        open_nets, nets = [self.ports[name]["bits"][int(index or 0)]], set()
        while open_nets:
            net = open_nets.pop()
            if net not in nets:
                nets.add(net)
                open_nets += [out for cell in self.readers.get(net, []) for out in self.cells[cell]["output"].values()]
        return nets

    def is_single(self, pins, bit):
        """Whether no other pin of the cells of a path can follow the input bit."""
        nets = self.reached(bit)
        for cell, pin in (pin.split("/") for pin in pins):
            inputs = self.cells[cell]["input"]
            if pin in inputs and any(net in nets for other, net in inputs.items() if other != pin):
                return False
        return True


class StandardCells(unittest.TestCase):
    def setUp(self):
        folder = work_directory()
        self.directory = pathlib.Path(folder.name)
        self.addCleanup(folder.cleanup)

    def check_values(self, source, top, resets, cycles):
        """resets: the port and the value by which it acts."""
        netlist, draw = mapped(self.directory, source, top), random.Random(7)
        data = [bit for name, width in netlist.inputs.items() if name not in ("clk", resets[0])
                for bit in netlist.bits(name, width)]
        steps = [[("clk", 0), resets, *((bit, 0) for bit in data)], [(resets[0], 1 - resets[1])]]
        for _ in range(cycles):
            steps += [[("clk", 1)], [("clk", 0), *((bit, draw.randint(0, 1)) for bit in data)]]
        known = compare(self, self.directory / "mapped.json", steps, library=VERILOG,
                        options=["--liberty", LIBERTY, "--sdf", "delays.sdf"])
        self.assertGreater(known, 0.95 * len(steps) * len(netlist.output_bits()) - len(netlist.output_bits()))

    def test_values_of_a_counter(self):
        (self.directory / "count.v").write_text(
            "module count(input clk, input rst, input en, output reg [7:0] q);\n"
            "always @(posedge clk or posedge rst) if (rst) q <= 0; else if (en) q <= q + 1;\nendmodule\n")
        self.check_values("count.v", "count", ("rst", 1), 600)

    def test_values_of_a_serial_line(self):
        self.check_values(SOURCE / "examples/uart/uart.v", "uart", ("rstn", 0), 400)

    def test_values_of_a_processor(self):
        self.check_values(OWN / "processor.v", "processor", ("rst", 1), 200)

    def test_arrival_times(self):
        """One input of many changes; an output to which it has a single way changes when OpenSTA says."""
        netlist, draw = mapped(self.directory, OWN / "tree.v", "tree"), random.Random(5)
        fanout = Fanout(self.directory / "mapped.json")
        inputs = [bit for name, width in netlist.inputs.items() for bit in netlist.bits(name, width)]
        commands = ["create_clock -name v -period 10", "set_input_delay 0 -clock v [all_inputs]",
                    "set_output_delay 0 -clock v [all_outputs]", "read_sdf delays.sdf"]
        changes = []
        for _ in range(100):
            values, chosen = {bit: draw.randint(0, 1) for bit in inputs}, draw.choice(inputs)
            changes.append((values, chosen))
            commands += ["set_case_analysis %d %s" % (values[bit], port(bit)) for bit in inputs if bit != chosen]
            for output in netlist.output_bits():
                commands += ["puts {@@@}", "report_checks -%s_from %s -to %s -fields input_pin -digits 4" % (
                    "fall" if values[chosen] else "rise", port(chosen), port(output))]
            commands.append("unset_case_analysis [all_inputs]")
        reports = iter(sta(self.directory, "tree", *commands).split("@@@")[1:])
        compared = 0
        for (values, chosen), outputs in zip(changes, self.arrivals(netlist, changes)):
            for output in netlist.output_bits():
                path = Path(next(reports))
                if output not in outputs:
                    continue
                self.assertTrue(path.found, (values, chosen, output))
                if fanout.is_single(path.pins, chosen):
                    self.assertLessEqual(abs(outputs[output] - path.arrival), len(path.pins) // 2,
                                         (values, chosen, output))
                    compared += 1
        self.assertGreater(compared, 30)

    def arrivals(self, netlist, changes):
        """Of every change the time from the input's to the last of each output, in ps."""
        expand(self.directory)
        bits, lines = netlist.output_bits(), ["SPIKE CHECK OFF"]
        lines += ["LIST B " + " ".join(bits[i:i + 10]) for i in range(0, len(bits), 10)]
        for k, (values, chosen) in enumerate(changes):
            lines += ["FORCE A %s %d %d" % (bit, value, (2 * k + 1) * SETTLED) for bit, value in values.items()]
            lines.append("FORCE A %s %d %d" % (chosen, 1 - values[chosen], (2 * k + 2) * SETTLED))
        lines.append("RUN %d A" % ((2 * len(changes) + 2) * SETTLED))
        lines += ["WRITE LIST v%d %d %d" % (k, (2 * k + 2) * SETTLED - 1, (2 * k + 3) * SETTLED - 1)
                  for k in range(len(changes))]
        run(self.directory, "\n".join([*lines, ""]), ["--warnings-as-errors"])
        found = []
        for k in range(len(changes)):
            rows = [(float(row[:14]), row[14:].split()) for row in (self.directory / ("v%d" % k)).read_text().splitlines()
                    if re.fullmatch(r"[\d.]+", row[:14].strip()) and len(row[14:].split()) == len(bits)]
            last = {}
            for (_, before), (time, after) in zip(rows, rows[1:]):
                last |= {bit: round((time - (2 * k + 2) * SETTLED) * 1000)
                         for bit, a, b in zip(bits, before, after) if a != b}
            found.append(last)
        return found

    def violations(self, netlist, period):
        """The pins of setup violations in a long random run; the period in ps."""
        draw, bits = random.Random(11), [bit for name, width in netlist.inputs.items() if name not in ("clk", "rst")
                                         for bit in netlist.bits(name, width)]
        lines = ["SPIKE CHECK OFF", "FORCE A clk 0 0.100", "FORCE A rst 1 0.100", "FORCE A rst 0 5.000"]
        lines += ["FORCE A %s 0 0.100" % bit for bit in bits]
        for k in range(300):
            start = 10_000 + k * period
            lines += ["FORCE A clk 1 %.3f" % (start / 1000), "FORCE A clk 0 %.3f" % ((start + period // 2) / 1000)]
            lines += ["FORCE A %s %d %.3f" % (bit, draw.random() < 0.97, (start + 50) / 1000) for bit in bits]
        lines.append("RUN %d A" % ((10_000 + 300 * period) // 1000 + 1))
        result = run(self.directory, "\n".join([*lines, ""]), status=None)
        text = "\n".join(line for line in result.transcript)
        pins = re.findall(r'Setup Time Violation on pin:"/\S+" *\n.*?From pin:"/(\S+)"', text)
        return {re.sub("^x_", "_", pin) for pin in pins}  # names begin with a letter here

    def test_shortest_period(self):
        (self.directory / "count.v").write_text(
            "module count(input clk, input rst, input en, output reg [7:0] q);\n"
            "always @(posedge clk or posedge rst) if (rst) q <= 0; else if (en) q <= q + 1;\nendmodule\n")
        netlist = mapped(self.directory, "count.v", "count")
        expand(self.directory)
        clock = "create_clock -name clk -period %f clk"
        slack = float(re.search(r"(\S+)   slack", sta(self.directory, "count", clock % 10, "read_sdf delays.sdf",
                                                      "report_checks -digits 4")).group(1))
        low, high = 600, math.ceil(10_000 - slack * 1000)
        self.assertEqual(self.violations(netlist, high), set())
        while high - low > 1:
            middle = (low + high) // 2
            low, high = (middle, high) if self.violations(netlist, middle) else (low, middle)
        endpoints = self.violations(netlist, low)
        self.assertGreater(len(endpoints), 0)
        for endpoint in endpoints:
            report = sta(self.directory, "count", clock % (low / 1000), "read_sdf delays.sdf",
                         "report_checks -to [get_pins %s] -digits 4" % endpoint)
            self.assertLess(float(re.search(r"(\S+)   slack", report).group(1)), 0, (endpoint, low))


if __name__ == "__main__":
    unittest.main()
