#!/usr/bin/env python3
"""How fast values go in and out: 1,000,000 changes read by APPLY VCD and APPLY TABLE, and a run with DUMP against the
same run without.

    bench/values.py BIN_DIR DESIGN_DIRECTORY COMMANDS [ROUNDS]

The directory holds design_yx, COMMANDS sets stimuli and runs; user times, the least of the rounds, and their ratio."""
import os
import pathlib
import resource
import subprocess
import sys

BIN, DIRECTORY, COMMANDS = (pathlib.Path(argument).resolve() for argument in sys.argv[1:4])
ROUNDS = int(sys.argv[4]) if len(sys.argv) > 4 else 5
SHARE = pathlib.Path(__file__).resolve().parents[1] / "share"


def seconds(commands):
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    subprocess.run([BIN / "kolv-batch", "--quiet", ".", "TYP", "-", "design_yx"], input=commands, text=True, check=True,
                   cwd=DIRECTORY, start_new_session=True, env=dict(os.environ, QUILLARN=str(SHARE)))
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def least(*variants):
    """Of each, in turn, so that a busy machine is busy for all."""
    times = [[seconds(commands) for commands in variants] for _ in range(ROUNDS)]
    return [min(row) for row in zip(*times)]


def main():
    net = os.environ.get("NET", "clk")
    count = 1_000_000
    (DIRECTORY / "many.vcd").write_text(
        "$timescale 1ns $end\n$scope module top $end\n$var wire 1 ! %s $end\n$upscope $end\n$enddefinitions $end\n" % net +
        "".join("#%d\n%d!\n" % (10 * k, k % 2) for k in range(count)))
    (DIRECTORY / "many.tab").write_text("time %s\n" % net + "".join("%d %d\n" % (10 * k, k % 2) for k in range(count)))
    empty, vcd, table = least("", "APPLY VCD many.vcd\n", "APPLY TABLE many.tab\n")
    print("1,000,000 changes: VCD %.2f s, table %.2f s" % (vcd - empty, table - empty))
    run = COMMANDS.read_text()
    without, dumped = least(run, "DUMP all.vcd\n" + run)
    print("run %.2f s, with DUMP %.2f s (%d MB): %.2f" % (
        without, dumped, (DIRECTORY / "all.vcd").stat().st_size // 1_000_000, dumped / without))
    for name in ("many.vcd", "many.tab", "all.vcd"):
        (DIRECTORY / name).unlink()


main()
