#!/usr/bin/env python3
"""Public benchmark circuits through the real program: every output before every next vector agrees with an
independent evaluation of the same netlist without delays, and their signature with the published one.

    designs_test.py iscas85 small      the rows of one folder and one delay rule
"""
import csv
import pathlib
import sys
import unittest

from kolv_session import SOURCE, expand, run, work_directory
from netlist_model import Netlist, signature, vectors

DESIGNS = SOURCE / "designs"
PORTS_OF_A_COMMAND = 12


def rows_of(folder, rule):
    with open(DESIGNS / "expected.tsv") as table:
        for row in csv.DictReader(table, delimiter="\t"):
            netlist = DESIGNS / folder / (row["design"] + ".json")
            if row["rule"] == rule and netlist.exists():
                yield row, Netlist(netlist), netlist


def commands(netlist, stimuli, period):
    """A session that applies the vectors and writes one list file before each next vector."""
    yield "SPIKE CHECK OFF"
    if netlist.registers:
        yield "CLOCK PERIOD %d" % period
        yield "FORCE A CK 0 0 R"
        yield "FORCE A CK 1 %d R" % (period // 2)
        yield "FORCE A RSTN 0 %d" % period
        yield "FORCE A RSTN 1 %d" % (3 * period)
    ports = [port for _, port in netlist.output_nets()]
    for i in range(0, len(ports), PORTS_OF_A_COMMAND):
        yield "LIST B " + " ".join(ports[i:i + PORTS_OF_A_COMMAND])
    state = {}
    for k, vector in enumerate(stimuli):
        for name, bit in zip(netlist.inputs, vector):
            if state.get(name) != bit:
                yield "FORCE A %s %d %d" % (name, bit, (k + 1) * period)
                state[name] = bit
    yield "RUN %d A" % ((len(stimuli) + 1) * period)
    for k in range(len(stimuli)):
        yield "WRITE LIST v%d %d %d" % (k, (k + 2) * period - 1, (k + 2) * period - 1)


def read_list(path, count):
    """The listed values of the single row of a list file: 0 or 1, or the characters of any other state."""
    states = path.read_text().splitlines()[-1][14:].split()
    assert len(states) == count, path.read_text()
    return [{"0S": 0, "1S": 1}.get(state, state) for state in states]


class Designs(unittest.TestCase):
    folder, rule = "iscas85", "small"

    def test_settled_outputs_agree_with_zero_delay_evaluation(self):
        count = 0
        for row, netlist, path in rows_of(self.folder, self.rule):
            with self.subTest(design=row["design"], rule=self.rule), work_directory() as name:
                self.check(row, netlist, path, pathlib.Path(name))
                count += 1
        self.assertGreater(count, 0)

    def check(self, row, netlist, path, directory):
        (directory / "delays").write_text("".join("%s\t%d\t%d\n" % d for d in netlist.delays(self.rule)))
        expand(path, directory / "design_yx", "--delays", directory / "delays")
        stimuli = list(vectors(int(row["vectors"]), len(netlist.inputs)))
        run(directory, "\n".join(commands(netlist, stimuli, int(row["period"]))) + "\n", ["--warnings-as-errors"])
        seen = []
        for k, expected in enumerate(netlist.rows(stimuli)):
            seen.append(read_list(directory / ("v%d" % k), len(expected)))
            self.assertEqual(seen[-1], expected, "vector %d" % k)
        self.assertEqual("%08x" % signature(seen), row["signature"])


if __name__ == "__main__":
    Designs.folder, Designs.rule = sys.argv[1:3]
    unittest.main(argv=sys.argv[:1])
