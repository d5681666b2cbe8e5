"""Small sessions of kolv-batch and runs of kolv-expand whose system calls or allocations fail, or that are killed.

    faults_test.py calls       every call of the system fails once, is interrupted once, does a part of its work
    faults_test.py memory N    every Nth allocation fails; where only something optional is missed the results are as ever
    faults_test.py kills N     N sessions and expansions are killed at random moments

Whatever happens: the program says so, its status is not 0, and every file that there was is the old one or the
new one, whole.  The numbers of what was tried are printed."""
import itertools
import os
import pathlib
import random
import shutil
import subprocess
import sys
import tempfile
import time
from concurrent.futures import ThreadPoolExecutor

HERE = pathlib.Path(__file__).resolve().parent
BIN = pathlib.Path(os.environ["KOLV_BIN_DIR"])
NETLIST = HERE.parents[1] / "examples/counter/counter.json"
LOGS = ("current_session", "debug_")  # these grow while a program runs


def session(end):
    return [BIN / "kolv-batch", ".", "TYP", "session.cmd", "design_yx", str(end)]


def expansion(step):
    return [BIN / "kolv-expand", "netlist.json", "-o", "design_yx", "--names", "names", "--sheets",
            "--time-step", str(step)]


def start(command, place, fault=None, log=None):
    env = os.environ | {"QUILLARN": str(HERE.parents[1] / "share"), "HOME": str(place), "LC_ALL": "C.UTF-8"}
    if fault:
        env |= {"LD_PRELOAD": os.environ["KOLV_FAIL_CALLS"], "KOLV_FAULT": fault, "KOLV_FAULT_LOG": str(log)}
    return subprocess.Popen(list(map(str, command)), cwd=place, env=env, stdin=subprocess.DEVNULL,
                            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, start_new_session=True)


def run(command, place, fault=None, log=None):
    process = start(command, place, fault, log)
    said = process.communicate(timeout=120)[0]
    return process.returncode, said


def files_of(place):
    """What they hold; of sheets, which have the minute in them, how much."""
    return {str(p.relative_to(place)): p.stat().st_size if ".tm_" in p.name else p.read_bytes()
            for p in sorted(place.rglob("*"))
            if p.is_file() and not p.name.startswith(LOGS) and ".new-" not in p.name}


class Ways:
    """A folder with older files, and what a program makes of them."""

    def __init__(self, root, program, old, new):
        self.program, self.new = program, new
        self.place = root / program.__name__
        self.place.mkdir()
        shutil.copy(NETLIST, self.place / "netlist.json")
        shutil.copy(HERE / "session.cmd", self.place)
        for command in (expansion(1), session(400), program(old)):
            assert run(command, self.place)[0] == 0, command
        self.before = files_of(self.place)
        good = root / (program.__name__ + "_good")
        shutil.copytree(self.place, good)
        self.status, self.said = run(program(new), good)
        self.after = files_of(good)
        self.log = root / (program.__name__ + "_log")
        assert self.status == 0 and self.before.keys() == self.after.keys(), self.said
        self.changed = [name for name in self.before if self.before[name] != self.after[name]]
        assert len(self.changed) >= (4 if program is session else 1), self.changed

    def wrong_files(self, place):
        now = files_of(place)
        return [name for name in self.before if now.get(name) not in (self.before[name], self.after[name])]

    def check(self, number, fault, must_fail=True):
        place = self.place.with_name(f"{self.place.name}_{number}")
        shutil.copytree(self.place, place)
        log = place.with_suffix(".log")
        status, said = run(self.program(self.new), place, fault, log)
        if log.exists() and log.read_text().split()[3] == "read":
            must_fail = False  # of what need not be there, or was read already
        wrong = [f"{name} is neither old nor new" for name in self.wrong_files(place)]
        is_done = status == 0 and not wrong and all(
            files_of(place)[name] == self.after[name] for name in self.changed)
        if status == 0 and (must_fail or not is_done):
            wrong.append("status 0")
        if status not in (0, 1, 2):
            wrong.append(f"status {status}")
        if status != 0 and said == self.said:
            wrong.append("nothing is said")
        shutil.rmtree(place)
        return [f"{self.program.__name__}: {fault}: {what}" for what in wrong]

    def counts(self, kind="none 0"):
        place = self.place.with_name(self.place.name + "_count")
        shutil.copytree(self.place, place)
        self.log.unlink(missing_ok=True)
        assert run(self.program(self.new), place, kind, self.log)[0] == 0
        shutil.rmtree(place)
        return map(int, self.log.read_text().split()[:3])


def faults(ways, mode, step):
    calls, written, _ = ways.counts()
    allocations = list(ways.counts("memory 0"))[2]
    if mode == "memory":
        return [(f"memory {n}", False) for n in range(1 + step // 2, allocations, step)]
    return ([(f"call {n}", True) for n in range(1, calls + 1)] + [("part 0", False)] +
            [(f"signal {n}", False) for n in range(1, calls + 1, 3)] +
            [(f"space {n}", True) for n in range(0, written, max(written // 20, 1))])


def inject(root, mode, step):
    found, tried = [], 0
    for ways in (Ways(root, session, 400, 600), Ways(root, expansion, 1, 2)):
        rows = faults(ways, mode, step)
        with ThreadPoolExecutor(2) as pool:
            results = pool.map(lambda row: ways.check(row[0], *row[1]), enumerate(rows))
            found += itertools.chain.from_iterable(results)
        tried += len(rows)
    return found, f"{tried} faults injected"


def kill(root, count):
    found = []
    all_ways = (Ways(root, session, 400, 600), Ways(root, expansion, 1, 2))
    for ways in all_ways:
        begin = time.monotonic()
        run(ways.program(ways.new), ways.place)
        ways.longest = time.monotonic() - begin
    for number in range(count):
        ways = all_ways[number % 2]
        process = start(ways.program(ways.new), ways.place)
        time.sleep(random.uniform(0, 1.1 * ways.longest))
        process.kill()
        process.communicate()
        found += [f"kill {number}: {name} is neither old nor new" for name in ways.wrong_files(ways.place)]
        for name in ways.changed:
            (ways.place / name).write_bytes(ways.before[name])
    for ways in all_ways:
        assert run(ways.program(ways.new), ways.place)[0] == 0
        found += [f"{path} is left" for path in ways.place.rglob("*.new-*")]
    return found, f"{count} kills"


def main():
    mode, number = sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 1
    with tempfile.TemporaryDirectory(dir="/dev/shm" if os.path.isdir("/dev/shm") else None) as folder:
        root = pathlib.Path(folder)
        found, tried = kill(root, number) if mode == "kills" else inject(root, mode, number)
    print(*found[:40], sep="\n")
    print(f"{tried}, {len(found)} wrong")
    sys.exit(1 if found else 0)


main()
