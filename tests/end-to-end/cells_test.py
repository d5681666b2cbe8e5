#!/usr/bin/env python3
"""One cell of every type that the expander knows, under random steps with unknown values, against Icarus Verilog on
Yosys' own Verilog of the same netlist."""
import json
import pathlib
import random
import re
import unittest

from differential import SHARE, compare
from kolv_session import work_directory

# What the program does differently, and why.
DIFFERENCES = {
    "$_FF_": "has no clock, is refused",
    "set and reset": "a set that is active when reset ends acts in the program, as in the cell that it stands for; "
                     "Verilog waits for its next edge: the steps never have both active",
    "load": "asynchronously loaded data are followed while the load is active, Verilog takes them at the edge: the "
            "steps change them only without load",
    "unknown control": "an unknown enable, reset or clock makes unknown what it could change, Verilog's `if` takes the "
                       "other branch: the steps have unknown data only",
    "unknown place in a table": "$lut shows what all completions of its inputs agree on, Verilog's shift makes it unknown",
    "several choices": "$pmux with several choices is their OR, Verilog's is the first: the steps make at most one",
}
STEPS = 1500


class Cells:
    """A netlist of cells that share inputs by what these mean."""

    def __init__(self):
        self.ports, self.cells, self.nets = {}, {}, 2

    def net(self, name, direction="input", width=1):
        if name not in self.ports:
            self.ports[name] = {"direction": direction, "bits": list(range(self.nets, self.nets + width))}
            self.nets += width
        return self.ports[name]["bits"]

    def add(self, kind, name, connections, parameters=None):
        directions = {port: "output" if port in "YQ" else "input" for port in connections}
        self.cells[name] = {"type": kind, "parameters": parameters or {}, "attributes": {},
                            "port_directions": directions, "connections": connections}

    def write(self, path):
        module = {"attributes": {"top": "1"}, "ports": self.ports, "cells": self.cells, "netnames": {}}
        path.write_text(json.dumps({"modules": {"cells": module}}))
        return path


def polarities(kind):
    """Of the controls of a gate-level register: their letters, in the order of its name."""
    family, letters = re.fullmatch(r"\$_([A-Z]+)_(?:([PN01]+)_)?", kind).groups()
    order = {"DFF": "CR", "DFFE": "CE", "DFFSR": "CSR", "DFFSRE": "CSRE", "SDFF": "CR", "SDFFE": "CRvE",
             "SDFFCE": "CRvE", "ALDFF": "CL", "ALDFFE": "CLE", "DLATCH": "E", "DLATCHSR": "ESR", "SR": "SR"}
    controls = order.get(family, "")
    if family == "DFFE" and len(letters) == 4:
        controls = "CRvE"
    if family == "DLATCH" and len(letters) == 3:
        controls = "ER"
    return dict(zip(controls, letters or ""))


def gate_level():
    cells = Cells()
    text = (SHARE / "simcells.v").read_text()
    modules = re.findall(r"^module \\(\$_\w+_) \(([\w, ]+)\);", text, re.M)
    for kind, ports in modules:
        if kind in DIFFERENCES:
            continue
        levels, connections = polarities(kind) if "Q" in ports else {}, {}
        for port in ports.split(", "):
            if port in "YQ":
                connections[port] = cells.net("o" + kind.strip("$_").lower(), "output")
            elif port in levels:
                connections[port] = cells.net("%s_%s" % (port.lower(), levels[port].lower()))
            elif kind == "$_TBUF_" and port == "E":
                connections[port] = cells.net("enable")
            elif "Q" in ports:
                connections[port] = cells.net({"A": "load_data", "D": "data", "S": "s_p", "R": "r_p"}.get(port, port.lower()))
                if port == "D" and "AD" in ports:
                    connections[port] = cells.net("data")
                if port == "AD":
                    connections[port] = cells.net("load_data")
            else:
                connections[port] = cells.net("in_" + port.lower())
        cells.add(kind, "u" + kind.strip("$"), connections)
    return cells, len(modules)


def binary(number, width=32):
    return format(number, "0%db" % width)


def coarse():
    """Words of several widths and signs, and registers of every polarity."""
    cells, draw = Cells(), random.Random(3)
    data = {width: cells.net("w%d" % width, "input", width) for width in (1, 3, 4, 6)}
    more = {width: cells.net("v%d" % width, "input", width) for width in (3, 4, 6)}

    def out(name, width):
        return cells.net("o_" + name, "output", width)

    def word(kind, name, ports, y, signed=False):
        parameters = {"Y_WIDTH": binary(y)}
        for port, bits in ports.items():
            if port != "S":
                parameters |= {port + "_WIDTH": binary(len(bits)), port + "_SIGNED": binary(int(signed))}
        cells.add(kind, name, ports | {"Y": out(name, y)}, parameters)

    for kind in ("$not", "$pos"):
        for a, y, signed in ((3, 5, False), (3, 5, True), (4, 2, False)):
            word(kind, "%s%d%d%d" % (kind[1:], a, y, signed), {"A": data[a]}, y, signed)
    for kind in ("$and", "$or", "$xor", "$xnor", "$logic_and", "$logic_or"):
        for a, b, y, signed in ((3, 4, 5, False), (4, 3, 6, True), (6, 6, 4, False)):
            word(kind, "%s%d%d%d" % (kind[1:], a, b, signed), {"A": data[a], "B": more[b]}, y, signed)
    for kind in ("$reduce_and", "$reduce_or", "$reduce_bool", "$reduce_xor", "$reduce_xnor", "$logic_not"):
        for a, y in ((1, 1), (3, 2), (6, 1)):
            word(kind, "%s%d" % (kind[1:], a), {"A": data[a]}, y)
    choice = cells.net("choice", "input", 3)
    cells.add("$mux", "mux", {"A": data[4], "B": more[4], "S": data[1], "Y": out("mux", 4)}, {"WIDTH": binary(4)})
    cells.add("$pmux", "pmux", {"A": data[3], "B": data[6] + more[3], "S": choice, "Y": out("pmux", 3)},
              {"WIDTH": binary(3), "S_WIDTH": binary(3)})
    for width in (1, 3, 4, 6):
        cells.add("$lut", "lut%d" % width, {"A": data[width], "Y": out("lut%d" % width, 1)},
                  {"WIDTH": binary(width), "LUT": binary(draw.getrandbits(1 << width), 1 << width)})
    cells.add("$lut", "lut8", {"A": data[4] + more[4], "Y": out("lut8", 1)},
              {"WIDTH": binary(8), "LUT": binary(draw.getrandbits(256), 256)})
    cells.add("$tribuf", "tribuf", {"A": data[4], "EN": cells.net("enable"), "Y": out("tribuf", 4)}, {"WIDTH": binary(4)})

    names = {"C": "CLK", "E": "EN", "L": "ALOAD", "S": "SET"}
    for kind, controls in {"$dff": "C", "$dffe": "CE", "$adff": "CA", "$adffe": "CAE", "$sdff": "CY", "$sdffe": "CYE",
                           "$sdffce": "CYE", "$dffsr": "CSR", "$dffsre": "CSRE", "$aldff": "CL", "$aldffe": "CLE",
                           "$dlatch": "E", "$adlatch": "EA", "$dlatchsr": "ESR", "$sr": "SR"}.items():
        for level in (0, 1):
            name = kind[1:] + "np"[level]
            connections, parameters = {"Q": out(name, 3)}, {"WIDTH": binary(3)}
            if kind != "$sr":
                connections["D"] = cells.net("data", "input", 3)
            for control in controls:
                port = {"A": "ARST", "Y": "SRST", "R": "CLR"}.get(control, names.get(control))
                net = cells.net("%s_%s" % ({"A": "r", "Y": "r"}.get(control, control.lower()), "np"[level]))
                connections[port] = net * 3 if control in "SR" else net
                parameters[port + "_POLARITY"] = binary(level)
                if control in "AY":
                    parameters[port + "_VALUE"] = "101"
            if "L" in controls:
                connections["AD"] = cells.net("load_data", "input", 3)
            cells.add(kind, name, connections, parameters)
    return cells


def memory():
    """Ports of every kind: read at any time; on either edge with enable and resets; seeing writes or not."""
    cells = Cells()
    c, n = cells.net("c_p")[0], cells.net("c_n")[0]
    control = {name: cells.net(name)[0] for name in ("e_p", "r_p", "s_p")}
    read, write = cells.net("read", "input", 3), cells.net("write", "input", 3)
    data, enable = cells.net("data", "input", 4), cells.net("write_enable", "input", 2)
    for name, offset, size, init in (("whole", 0, 8, "%s" % binary(0x83a5f1c6, 32)), ("part", 2, 5, "1" * 20)):
        reads, writes = 4, 2
        connections = {
            "RD_CLK": ["x", c, n, c], "RD_EN": ["1", control["e_p"], "1", control["e_p"]],
            "RD_ARST": ["0", control["r_p"], "0", "0"], "RD_SRST": ["0", "0", control["s_p"], control["s_p"]],
            "RD_ADDR": read + read + write + write, "RD_DATA": cells.net("o_" + name, "output", 4 * reads),
            "WR_CLK": [c, c], "WR_EN": [enable[0]] * 2 + [enable[1]] * 2 + [control["e_p"]] * 4,
            "WR_ADDR": write + read, "WR_DATA": data + data[::-1]}
        numbers = {"SIZE": size, "OFFSET": offset, "ABITS": 3, "WIDTH": 4, "RD_PORTS": reads, "WR_PORTS": writes}
        bits = {"INIT": init, "RD_CLK_ENABLE": "1110", "RD_CLK_POLARITY": "1010", "RD_TRANSPARENCY_MASK": "11000000",
                "RD_COLLISION_X_MASK": "00000000", "RD_WIDE_CONTINUATION": "0000", "RD_CE_OVER_SRST": "1000",
                "RD_INIT_VALUE": "xxxx1010x01xxxxx", "RD_ARST_VALUE": "xxxxxxxx0110xxxx",
                "RD_SRST_VALUE": "10010011xxxxxxxx", "WR_CLK_ENABLE": "11", "WR_CLK_POLARITY": "11",
                "WR_PRIORITY_MASK": "0100", "WR_WIDE_CONTINUATION": "00"}
        cells.add("$mem_v2", name, connections,
                  {"MEMID": "\\" + name + "_words"} | {key: binary(value) for key, value in numbers.items()} | bits)
        cells.cells[name]["port_directions"] = {p: "output" if p == "RD_DATA" else "input" for p in connections}
    return cells


def random_steps(cells, seed):
    """One meaning changes a step; a control and its inverse change together."""
    draw = random.Random(seed)
    bits = [name if len(port["bits"]) == 1 else "%s[%d]" % (name, k) for name, port in cells.ports.items()
            if port["direction"] == "input" for k in range(len(port["bits"]))]
    controls = {c: [b for b in bits if b in (c + "_p", c + "_n")] for c in "cerls"}
    plain = [b for b in bits if re.sub(r"\[\d+\]", "", b) not in ("load_data", "choice", "enable", "read", "write", "write_enable") and b[1:] not in ("_p", "_n")]
    loads = [b for b in bits if b.startswith(("load_data", "read", "write"))]
    state = dict.fromkeys("cerls", 0)

    def turned(control, to):
        state[control] = to
        return [(b, to if b.endswith("_p") else 1 - to) for b in controls[control]]

    yield [change for control in "cerls" for change in turned(control, 0)] + \
        [(b, 0) for b in bits if b in loads or not (b in plain or b[1:] in ("_p", "_n"))]
    yield [(b, draw.randint(0, 1)) for b in plain]
    while True:
        what = draw.choice("ccccceerrllssxxxxxxxxaaapt")
        if what == "x":
            yield [(draw.choice(plain), draw.choice("010101x"))]
        elif what == "a" and state["l"] == 0 and loads:
            yield [(draw.choice(loads), draw.randint(0, 1))]
        elif what == "p" and "choice[0]" in bits:
            chosen = draw.randint(0, 3)
            yield [("choice[%d]" % k, int(k == chosen)) for k in range(3)]
        elif what == "t" and "enable" in bits:
            yield [("enable", draw.randint(0, 1))]
        elif what in "cel" or (what in "rs" and not (state["rs"[what == "r"]] and not state[what])):
            yield turned(what, 1 - state[what])


class CellsTest(unittest.TestCase):
    def check(self, cells, seed, least_known):
        with work_directory() as name:
            path = cells.write(pathlib.Path(name) / "cells.json")
            steps = random_steps(cells, seed)
            known = compare(self, path, [next(steps) for _ in range(STEPS)],
                            lambda bit, seen, expected: bit.startswith("o_lut") and expected == "x")
        self.assertGreater(known, least_known * STEPS * sum(
            len(p["bits"]) for p in cells.ports.values() if p["direction"] == "output"))

    def test_every_gate_level_type(self):
        cells, count = gate_level()
        self.assertEqual(len(cells.cells), count - 1)
        self.assertGreaterEqual(count, 148)
        self.check(cells, 1, 0.8)

    def test_memories(self):
        self.check(memory(), 8, 0.4)

    def test_every_coarse_type(self):
        self.check(coarse(), 2, 0.8)


if __name__ == "__main__":
    unittest.main()
