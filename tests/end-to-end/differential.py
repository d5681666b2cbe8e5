"""A netlist through kolv-expand and the real program, and through Yosys' write_verilog and Icarus Verilog: the same
steps, every output after every step."""
import json
import pathlib
import subprocess

from kolv_session import BIN, run

SHARE = pathlib.Path("/usr/share/yosys")


def yosys(directory, script):
    done = subprocess.run(["yosys", "-q", "-p", script], cwd=directory, capture_output=True, text=True)
    assert done.returncode == 0, done.stdout + done.stderr


class Netlist:
    """The top module of a netlist file: its ports as (name, width), the bits of a port as the program names them."""

    def __init__(self, path):
        self.path = pathlib.Path(path)
        modules = json.loads(self.path.read_text())["modules"]
        top = [m for m in modules.values() if int(m["attributes"].get("top", "0"), 2)] or list(modules.values())
        ports = {name: (p["direction"], len(p["bits"])) for name, p in top[0]["ports"].items()}
        self.name = next(name for name, m in modules.items() if m is top[0])
        self.inputs = {name: width for name, (direction, width) in ports.items() if direction == "input"}
        self.outputs = {name: width for name, (direction, width) in ports.items() if direction != "input"}

    @staticmethod
    def bits(name, width):
        """Most significant first."""
        return [name] if width == 1 else ["%s[%d]" % (name, k) for k in reversed(range(width))]

    def output_bits(self):
        return [bit for name, width in self.outputs.items() for bit in self.bits(name, width)]


def of_verilog(netlist, steps, directory, library=None):
    """The outputs after every step, as Icarus sees them, a character a bit; library: the Verilog of the cells."""
    yosys(directory, "read_json %s; write_verilog -noattr design.v" % netlist.path.name)
    lines = ["`timescale 1ns/1ns", "module bench;"]
    lines += ["reg [%d:0] %s;" % (width - 1, name) for name, width in netlist.inputs.items()]
    lines += ["wire [%d:0] %s;" % (width - 1, name) for name, width in netlist.outputs.items()]
    ports = [*netlist.inputs, *netlist.outputs]
    lines.append("%s u(%s);" % (netlist.name, ", ".join(".%s(%s)" % (name, name) for name in ports)))
    lines.append("initial begin")
    for step in steps:
        at = 0
        for name, to, *offset in step:
            lines.append("#%d %s = 1'b%s;" % (10 * (offset or [0])[0] - at, name, to))
            at = 10 * (offset or [0])[0]
        lines.append("#%d" % (10 - at) + " $display(\"%%b\", {%s});" % ", ".join(netlist.outputs))
    lines += ["$finish; end", "endmodule"]
    (directory / "bench.v").write_text("\n".join(lines))
    sources = ["bench.v", "design.v", *([library] if library else [SHARE / "simcells.v", SHARE / "simlib.v"])]
    subprocess.run(["iverilog", "-g2012", "-DSIMLIB_NOCONNECT", "-s", "bench", "-o", "bench.vvp", *map(str, sources)],
                   cwd=directory, check=True)
    text = subprocess.run(["vvp", "-n", "bench.vvp"], cwd=directory, check=True, capture_output=True, text=True).stdout
    return text.split()


def value(state):
    """A state of the program as Verilog writes it."""
    return "z" if state[1] == "Z" else state[0] if state[0] in "01" else "x"


def of_program(netlist, steps, directory, period, options=()):
    """The same as the program sees them."""
    done = subprocess.run([str(BIN / "kolv-expand"), *options, netlist.path.name, "-o", "design_yx"], cwd=directory,
                          capture_output=True, text=True)
    assert done.returncode == 0, done.stderr
    bits = netlist.output_bits()
    lines = ["SPIKE CHECK OFF", *("LIST B " + " ".join(bits[i:i + 10]) for i in range(0, len(bits), 10))]
    for k, step in enumerate(steps):
        lines += ["FORCE A %s %s %d" % (name, to, (k + 1 + sum(offset)) * period) for name, to, *offset in step]
    lines.append("RUN %d A" % ((len(steps) + 1) * period))
    lines += ["WRITE LIST v%d %d %d" % (k, (k + 2) * period - 1, (k + 2) * period - 1) for k in range(len(steps))]
    run(directory, "\n".join([*lines, ""]), ["--warnings-as-errors"])
    rows = []
    for k in range(len(steps)):
        states = (directory / ("v%d" % k)).read_text().splitlines()[-1][14:].split()
        assert len(states) == len(bits), (k, states)
        rows.append("".join(map(value, states)))
    return rows


def compare(test, path, steps, may_differ=lambda bit, seen, expected: False, library=None, options=(),
            period=200):
    """Every output bit after every step; how many of them were known.  A step is (input bit, value) or (input bit,
    value, when in the step, 0 to 1); the time steps of the period are more than any way through the design needs."""
    netlist, directory = Netlist(path), pathlib.Path(path).parent
    expected = of_verilog(netlist, steps, directory, library)
    seen = of_program(netlist, steps, directory, period, options)
    test.assertEqual(len(seen), len(expected))
    different, known = {}, 0
    for k, (ours, theirs) in enumerate(zip(seen, expected)):
        for bit, a, b in zip(netlist.output_bits(), ours, theirs):
            known += a in "01"
            if a != b and not may_differ(bit, a, b):
                different.setdefault(bit, []).append("step %d: %s, Verilog has %s" % (k, a, b))
    if different:
        test.fail({bit: rows[:3] for bit, rows in list(different.items())[:20]})
    return known
