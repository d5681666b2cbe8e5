"""Names, links, devices, FIFOs and directories where the programs read and write, as root and as another user."""
import os
import pathlib
import struct
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
BIN = pathlib.Path(os.environ["KOLV_BIN_DIR"])
NOBODY = 65534
REFUSED, DONE = "refused", "done"
VICTIM = "not yours"


def fifo(path):
    os.mkfifo(path)


def device(path):  # a link where devices cannot be made
    os.symlink("/dev/zero", path)


def folder(path):
    os.mkdir(path)


def link(path):
    os.symlink("target", path)


def link_out(path):
    os.symlink(path.parent.parent / "victim", path)


def link_in_circles(path):
    os.symlink(path.name, path)


def read_only(path):
    path.write_text("kept")
    path.chmod(0o444)


BATCH = [BIN / "kolv-batch", ".", "TYP", "commands"]
EXPAND = [BIN / "kolv-expand", HERE.parents[1] / "examples/counter/counter.json", "-o"]
OUTPUTS = [  # what writes the file "out"
    ("LIST B clk\nRUN 9\nWRITE LIST out\n", BATCH), ("RUN 9\nSAVE STATE out\n", BATCH),
    ("TRACE clk\nRUN 9\nPLOT TRACE out\n", BATCH), ("", EXPAND + ["out"]), ("", EXPAND + ["x", "--names", "out"])]
INPUTS = [("RESTORE STATE out\n", BATCH), ("VIEW SHEET\n", BATCH, "sheet.tm"), ("\n", BATCH, "design_yx"),
          ("", [BIN / "kolv-expand", "out", "-o", "x"]), ("", [BIN / "kolv-expand", "out.v", "-o", "x"], "out.v"),
          ("", EXPAND + ["x", "--sdf", "out"]), ("", EXPAND + ["x", "--delays", "out"]),
          ("", EXPAND + ["x", "--liberty", "out"])]
ROWS = (  # (makes the file, commands, program, name, what comes of it)
    [(make, *row, "out", REFUSED) for make in (fifo, device, folder, link_in_circles) for row in OUTPUTS] +
    [(make, row[0], row[1], row[2] if len(row) > 2 else "out", REFUSED)
     for make in (fifo, device, folder) for row in INPUTS] +
    [(link, *row, "out", DONE) for row in OUTPUTS] +
    [(link_out, "RUN 9\n", BATCH, name, DONE) for name in ("current_session", "debug_kolv", "debug_yxdfi")] +
    [(make, "RUN 9\n", BATCH, "current_session", REFUSED) for make in (fifo, folder)] +
    [(read_only, *row, "out", REFUSED) for row in OUTPUTS])
NAMES = ("dir;touch x;", "$(touch x)", "`touch x`", "a b", "it's", 'say "x"', "-o", "*", "~")


class Place:
    def __init__(self, root, name, user):
        self.user, self.path = user, root / name
        self.path.mkdir(parents=True)
        (root / "victim").write_text(VICTIM)
        (root / "victim").chmod(0o666)
        self.victim = root / "victim"
        os.chown(self.path, user, -1)
        assert self.run(EXPAND + ["design_yx"]).returncode == 0

    def run(self, command):
        env = os.environ | {"QUILLARN": str(HERE.parents[1] / "share"), "HOME": str(self.path)}
        return subprocess.run(list(map(str, command)), cwd=self.path, env=env, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=60, user=self.user)


def check_row(root, user, number, row):
    make, commands, program, name, expected = row
    if make is read_only and user == 0:
        return []
    place = Place(root / str(number), "dir", user)
    (place.path / "commands").write_text(commands + "\n")
    (place.path / "target").write_text("old")
    if name == "design_yx":
        (place.path / name).unlink()
    make(place.path / name)
    for path in (place.path / name, place.path / "target"):
        os.chown(path, user, -1, follow_symlinks=False)
    before = os.lstat(place.path / name)
    result = place.run(program)
    wrong = []
    if (result.returncode == 0) != (expected == DONE):
        wrong.append(f"status {result.returncode}: {result.stdout.decode()[-200:]}")
    if result.returncode not in (0, 1, 2) or not result.stdout:
        wrong.append(f"status {result.returncode}, said {result.stdout}")
    if place.victim.read_text() != VICTIM:
        wrong.append("another file was written through a link")
    if make is link and ((place.path / "target").read_bytes() == b"old" or not (place.path / name).is_symlink()):
        wrong.append("the link's target is not what was written")
    if expected == REFUSED and os.lstat(place.path / name).st_ino != before.st_ino:
        wrong.append("it was replaced")
    return [f"user {user}: {make.__name__} at {name}: {commands!r} {program[0].name}: {what}" for what in wrong]


def check_name(root, user, name):
    place = Place(root / "names", name, user)
    (place.path / name).write_text("LIST B clk\nRUN 9\nWRITE LIST out\nSAVE STATE state\n")
    result = place.run([BIN / "kolv-batch", f"../{name}", "TYP", f"./{name}"])
    done = {path.name for path in place.path.iterdir()}
    if result.returncode == 0 and {"out", "state"} <= done and "x" not in done:
        return []
    return [f"user {user}: the name {name!r}: status {result.returncode}: {result.stdout.decode()[-300:]}"]


def check_memory(root, user):
    """A header that promises 100,000,000 pins, under a limit of a gigabyte."""
    place = Place(root / "large", "dir", user)
    design = bytearray((place.path / "design_yx").read_bytes())
    struct.pack_into("<f", design, 8, 3.0)
    struct.pack_into("<i", design, 40, 100_000_000)
    (place.path / "design_yx").write_bytes(design)
    result = place.run(["prlimit", f"--as={10**9}", BIN / "kolv-batch", ".", "TYP"])
    if result.returncode == 2 and b"MB of memory" in result.stdout:
        return []
    return [f"user {user}: a large design: status {result.returncode}: {result.stdout.decode()[-300:]}"]


def main():
    found, tried = [], 0
    for user in [0, NOBODY] if os.getuid() == 0 else [os.getuid()]:
        with tempfile.TemporaryDirectory() as temporary:
            root = pathlib.Path(temporary)
            root.chmod(0o777)
            for number, row in enumerate(ROWS):
                found += check_row(root, user, number, row)
            for name in NAMES:
                found += check_name(root, user, name)
            found += check_memory(root, user)
            tried += 1 + len(ROWS) + len(NAMES)
    print(*found, sep="\n")
    print(f"{tried} hostile files and names, {len(found)} wrong")
    sys.exit(1 if found else 0)


main()
