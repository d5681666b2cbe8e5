"""Random designs and commands until the time is over: soak.py SECONDS [SEED].

A round makes a netlist of some hundred random cells, expands it, and runs random commands on it in kolv-batch under a
bound of memory; a run that goes on from a saved state must end as the whole run does.  Then the same design is shown in
a window that gets random keys and buttons.  Nothing may end by a signal or take more memory than the bound."""
import json
import pathlib
import random
import resource
import subprocess
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "end-to-end"))
from kolv_session import BIN, Display, batch, work_directory  # noqa: E402

BOUND = 2 << 30  # bytes of address space
COMMANDS = ("RUN {t}", "RUN {n} A", "FORCE A {i} {v} {n}", "FORCE C {i} {v} {t} R", "CLOCK PERIOD {t}", "LIST B {i} {w}",
            "TRACE {w}", "FORGET L *", "BREAK {w} {v}", "SAVE STATE s{d}", "RESTORE STATE s{d}", "WRITE LIST l{d}",
            "PLOT TRACE t{d}.svg", "PLOT SHEET p{d}.plt", "RESET SIM TIME", "SPIKE MODEL {m}", "TIMING COEF D 1.{d}",
            "VIEW SHEET", "VIEW NET {w}", "SELECT PROPERTY *", "UNSELECT ALL", "CHECK SHEET", "PROBE p {d} {d}",
            "HISTORY {t}", "DEFINE BUS C b{d} {i} {w}", "FORGET BU b{d}", "SCALE USER UNIT {d}", "HELP RUN")
KEYS = ("Return", "Escape", "F1", "F2", "F5", "Page_Up", "Page_Down", "ctrl+s", "ctrl+d", "alt+f", "Tab", "BackSpace",
        "Down", "Left", "space", "x", "1")


def netlist(inputs, cells):
    pins = {"$_AND_": "AB", "$_NAND_": "AB", "$_OR_": "AB", "$_XOR_": "AB", "$_NOT_": "A", "$_DFF_P_": "DC"}
    made = {}
    for k in range(cells):
        kind = random.choice(list(pins))
        connections = {pin: [random.randrange(2, 2 + inputs + k)] for pin in pins[kind]}
        made[f"g{k}"] = {"type": kind, "connections":
                         connections | {"Q" if "D" in pins[kind] else "Y": [2 + inputs + k]}}
    return {"modules": {"top": {
        "attributes": {"top": 1}, "cells": made,
        "ports": {f"i{k}": {"direction": "input", "bits": [2 + k]} for k in range(inputs)},
        "netnames": {f"w{k}": {"bits": [2 + inputs + k]} for k in range(0, cells, 7)}}}}


def command(inputs, cells):
    return random.choice(COMMANDS).format(
        t=random.randrange(1, 400), n=random.randrange(4000), d=random.randrange(1, 5), v=random.choice("01xz"),
        i=f"i{random.randrange(inputs)}", w=f"w{7 * random.randrange((cells + 6) // 7)}", m=random.choice("NSIP"))




def run(directory, commands):
    (directory / "session.cmd").write_text("\n".join(commands) + "\n")
    program = batch(["--no-shell", ".", "TYP", "session.cmd"], directory)
    resource.prlimit(program.pid, resource.RLIMIT_AS, (BOUND, BOUND))
    said = program.communicate(timeout=300)[0]
    assert program.returncode in (0, 1), (program.returncode, said[-1000:], commands)


def batch_round(directory, inputs, cells):
    run(directory, [command(inputs, cells) for _ in range(80)])
    stimuli = [f"FORCE A i{k} {random.choice('01')} {random.randrange(500)}" for k in range(inputs)]
    watch = "LIST B " + " ".join(f"w{k}" for k in range(0, min(cells, 50), 7))
    run(directory, [*stimuli, watch, "RUN 9000 A", "SAVE STATE s", "RUN 9500 A", "WRITE LIST whole 9001 9500",
                    "RUN 9600 A", "RESTORE STATE s", "RUN 9500 A", "WRITE LIST again 9001 9500"])
    assert (directory / "whole").read_bytes() == (directory / "again").read_bytes(), directory


def window_round(directory, seconds):
    with Display() as display, open(directory / "said", "wb") as said:
        program = display.start(["."], directory, stdout=said)
        resource.prlimit(program.pid, resource.RLIMIT_AS, (BOUND, BOUND))
        env, actions, end = display.environment(directory), 0, time.monotonic() + seconds
        while time.monotonic() < end and program.poll() is None:
            deeds = []
            for _ in range(20):
                place = [str(random.randrange(1280)), str(random.randrange(1024))]
                deeds += random.choice((["key", random.choice(KEYS)], ["mousemove", *place, "click", random.choice("123")],
                                        ["mousemove", *place]))
            subprocess.run(["xdotool", *deeds], env=env, stderr=subprocess.DEVNULL, check=False)
            actions += 20
        status = program.poll()
        # Its own end is SIGKILL.
        assert status in (None, -9), (status, (directory / "said").read_text(errors="replace")[-1500:])
        if status is None:
            program.kill()
        program.wait()
    return actions


def main():
    end, rounds, actions = time.monotonic() + float(sys.argv[1]), 0, 0
    while time.monotonic() < end:
        seed = int(sys.argv[2]) if len(sys.argv) > 2 else random.randrange(1 << 30)
        random.seed(seed)
        print("seed", seed, flush=True)
        inputs, cells = random.randrange(2, 20), random.randrange(5, 400)
        with work_directory() as folder:
            directory = pathlib.Path(folder)
            (directory / "n.json").write_text(json.dumps(netlist(inputs, cells)))
            subprocess.run([BIN / "kolv-expand", "n.json", "-o", "design_yx", "--sheets"], cwd=directory, check=True,
                           stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            batch_round(directory, inputs, cells)
            actions += window_round(directory, 20)
        rounds += 1
        random.seed()
    print(f"{rounds} designs, {2 * rounds} sessions, {actions} actions in windows")


main()
