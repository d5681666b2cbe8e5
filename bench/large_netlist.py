#!/usr/bin/env python3
"""Writes a netlist of at least GATES cells, copies of a design side by side in one flat module, and commands for it.

    bench/large_netlist.py designs/iscas89/s38417.json 1000000 large.json run.cmd

The copies share clock and reset (CK, RSTN); ports, cells and nets of copy k begin with c<k>_.  The commands give every
other input a value at 0 and at 850, clock with a period of 400, and run 2,000 time steps.
"""
import json
import random
import sys

COMMANDS = """SPIKE CHECK OFF
CLOCK PERIOD 400
FORCE A CK 0 0 R
FORCE A CK 1 200 R
FORCE A RSTN 0 0 ; FORCE A RSTN 1 300
"""
SHARED = ("CK", "RSTN")


def copy_of(module, k, step, shared, out):
    """Adds copy k of the module, whose bits are moved by k * step, to what the large one consists of."""
    def moved(bits):
        return [bit if isinstance(bit, str) or bit in shared else bit + k * step for bit in bits]

    for kind in ("ports", "netnames"):
        for name, row in module[kind].items():
            if name not in SHARED:
                out[kind][f"c{k}_{name}"] = dict(row, bits=moved(row["bits"]))
    for name, cell in module["cells"].items():
        connections = {port: moved(bits) for port, bits in cell["connections"].items()}
        out["cells"][f"c{k}_{name}"] = dict(cell, connections=connections)


def write_commands(ports, path):
    values = random.Random(1)
    with open(path, "w") as file:
        file.write(COMMANDS)
        for name, port in ports.items():
            if port["direction"] == "input" and name not in SHARED:
                for time in (0, 850):
                    file.write(f"FORCE A {name} {values.randint(0, 1)} {time}\n")
        file.write("RUN 2000\n")


def main():
    source, gates, target, commands = sys.argv[1], int(sys.argv[2]), sys.argv[3], sys.argv[4]
    with open(source) as file:
        module = next(iter(json.load(file)["modules"].values()))
    out = {"attributes": {"top": "1"}, "ports": {}, "cells": {}, "netnames": {}}
    shared = set()
    for name in SHARED:
        if name in module["ports"]:
            out["ports"][name] = module["ports"][name]
            shared.update(module["ports"][name]["bits"])
    step = 1 + max(bit for net in module["netnames"].values() for bit in net["bits"] if isinstance(bit, int))
    for k in range(-(-gates // len(module["cells"]))):
        copy_of(module, k, step, shared, out)
    with open(target, "w") as file:
        json.dump({"creator": "large_netlist.py", "modules": {"large": out}}, file)
    write_commands(out["ports"], commands)


main()
