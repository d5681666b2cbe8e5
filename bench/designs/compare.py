#!/usr/bin/env python3
"""KOLV, Icarus Verilog and the ceiling on the same work: public netlists, delays and stimuli.

    compare.py BIN FOLDER [--rounds N] [--short] [--check]

BIN holds the built programs, FOLDER takes the files of the work.  Each design is run in turn by all three; the
signatures of the settled outputs must agree.  Prints, as a table, medians of CPU seconds of the runs alone.
--short: two small designs, fewer vectors.  --check: fail where a ratio to Icarus falls below 80 % of the one in
ratios.tsv."""
import argparse
import csv
import pathlib
import re
import resource
import statistics
import subprocess
import sys

from work import Work, copies

HERE = pathlib.Path(__file__).parent
DESIGNS = HERE.parents[1] / "designs"
ROWS = [  # name, netlist, copies, vectors, period
    ("c6288", "iscas85/c6288", 1, 300, 780), ("c7552", "iscas85/c7552", 1, 600, 260),
    ("s38417", "iscas89/s38417", 1, 300, 560), ("s38584", "iscas89/s38584", 1, 300, 640),
    ("multiplier_x6", "epfl/multiplier", 6, 6, 1440), ("s38417_x4", "iscas89/s38417", 4, 60, 560)]
SHORT = [("c7552_short", "iscas85/c7552", 1, 150, 260), ("s38584_short", "iscas89/s38584", 1, 60, 640)]


def cpu(command, folder):
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    text = subprocess.run([str(c) for c in command], cwd=folder, check=True, capture_output=True, text=True).stdout
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return text, after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def signature(text):
    return re.search(r"signature ([0-9a-f]{8})", text).group(1)


class Design:
    def __init__(self, programs, folder, row):
        self.name, netlist, count, self.vectors, self.period = row
        self.programs, self.folder = programs, folder / self.name
        self.folder.mkdir(parents=True, exist_ok=True)
        self.path = DESIGNS / (netlist + ".json")
        if count > 1:
            source, self.path = self.path, self.folder / "netlist.json"
            copies(source, count, self.path)
        self.work = Work(self.path, "small", self.vectors, self.period)
        self.prepare()

    def prepare(self):
        self.work.write_simulator_files(self.folder)
        self.work.write_flat(self.folder / "flat")
        self.work.write_verilog(self.folder / "design.v")
        cpu(["iverilog", "-o", "design.vvp", "design.v"], self.folder)
        cpu([self.programs / "kolv-expand", self.path, "-o", self.folder / "design_yx", "--delays", self.folder / "delays"],
            self.folder)
        self.icarus_load = cpu(["vvp", "design.vvp", "+vectors=0"], self.folder)[1]

    def kolv(self, *options):
        text, _ = cpu([self.programs / "run_design", "design_yx", "stimuli", "outputs", self.period, self.vectors, *options],
                      self.folder)
        return signature(text), {k: float(v) for k, v in re.findall(r"(\w+) (\d+\.\d+)", text)}

    def icarus(self):
        text, seconds = cpu(["vvp", "design.vvp", "+vectors=%d" % self.vectors], self.folder)
        return signature(text), seconds - self.icarus_load

    def ceiling(self):
        text, _ = cpu([self.programs / "ceiling", "flat", self.vectors], self.folder)
        return signature(text), float(re.search(r"run ([\d.]+)", text).group(1)), re.search(r"changes (\d+)", text).group(1)

    def row(self, rounds):
        kolv, icarus, ceiling, signatures = [], [], [], set()
        signatures.add(self.kolv()[0])
        for _ in range(rounds):
            kolv.append(self.kolv("once")[1])
            sign, seconds = self.icarus()
            signatures.add(sign)
            icarus.append(seconds)
            sign, seconds, changes = self.ceiling()
            signatures.add(sign)
            ceiling.append(seconds)
        if len(signatures) != 1:
            sys.exit("%s: the signatures differ: %s" % (self.name, ", ".join(sorted(signatures))))
        own = statistics.median(k["run"] for k in kolv)
        spikes = statistics.median(self.kolv("once", "spikes")[1]["run"] for _ in range(rounds))
        listed = statistics.median(self.kolv("once", "list", 20)[1]["run"] for _ in range(rounds))
        peer, best = statistics.median(icarus), statistics.median(ceiling)
        return [self.name, len(self.work.delays), changes, own, peer, best, peer / own, 100 * best / own,
                spikes / own, listed / own, kolv[0]["load"], kolv[0]["memory"]]


TITLES = ["design", "gates", "changes", "KOLV s", "Icarus s", "ceiling s", "x Icarus", "% of ceiling", "spikes on",
          "20 listed", "load s", "MiB"]


def shown(value):
    return "%.3f" % value if isinstance(value, float) and value < 10 else "%.0f" % value if isinstance(value, float) else str(value)


def falls(table):
    with open(HERE / "ratios.tsv") as file:
        stored = {row["design"]: float(row["ratio"]) for row in csv.DictReader(file, delimiter="\t")}
    return [row[0] for row in table if row[6] < 0.8 * stored.get(row[0], 0)]


def main():
    arguments = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    arguments.add_argument("bin", type=pathlib.Path)
    arguments.add_argument("folder", type=pathlib.Path)
    arguments.add_argument("--rounds", type=int, default=3)
    arguments.add_argument("--short", action="store_true")
    arguments.add_argument("--check", action="store_true")
    options = arguments.parse_args()
    print("| " + " | ".join(TITLES) + " |\n|" + "---|" * len(TITLES))
    table = []
    for row in SHORT if options.short else ROWS:
        table.append(Design(options.bin.resolve(), options.folder.resolve(), row).row(options.rounds))
        print("| " + " | ".join(shown(v) for v in table[-1]) + " |", flush=True)
    if options.check and falls(table):
        sys.exit("slower than stored: " + ", ".join(falls(table)))


if __name__ == "__main__":
    main()
