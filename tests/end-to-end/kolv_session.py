"""Runs the real programs: sessions without a display, and the window under a private X server.

    result = run(directory, "RUN 10\n")

The window program gets a session of its own, because it ends its whole process group."""
import os
import pathlib
import subprocess
import tempfile

SOURCE = pathlib.Path(__file__).resolve().parents[2]
BIN = pathlib.Path(os.environ.get("KOLV_BIN_DIR", SOURCE / "build/release/bin"))


class Result:
    def __init__(self, status, stdout, directory):
        self.status = status
        self.stdout = stdout
        transcript = directory / "current_session"
        self.transcript = transcript.read_text().splitlines() if transcript.exists() else []


class Display:
    """A private Xvfb on a display number that the server chooses."""

    def __init__(self, screen="1280x1024x24"):
        self.screen = screen

    def __enter__(self):
        read, write = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", self.screen, "-nolisten", "tcp", "-noreset"],
            pass_fds=[write], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as number:
            self.name = ":" + number.readline().strip()
        return self

    def __exit__(self, *_):
        while self.server.poll() is None:  # a signal that comes just before the server sleeps is slept over
            self.server.terminate()
            try:
                self.server.wait(1)
            except subprocess.TimeoutExpired:
                pass

    def environment(self, home):
        env = {k: v for k, v in os.environ.items() if k not in ("XENVIRONMENT", "XAPPLRESDIR")}
        env.update(DISPLAY=self.name, HOME=str(home), LC_ALL="C.UTF-8")
        env.setdefault("QUILLARN", str(SOURCE / "share"))
        return env

    def start(self, arguments, cwd, stdout=subprocess.PIPE, user=None, **environment):
        """The program with these arguments, in a session of its own; more variables change its environment."""
        return subprocess.Popen([str(BIN / "kolv"), *map(str, arguments)], cwd=cwd,
                                env=self.environment(cwd) | environment,
                                stdin=subprocess.DEVNULL, stdout=stdout, stderr=subprocess.STDOUT,
                                start_new_session=True, user=user)


def run(directory, commands, options=(), display=None, status=0, timing="TYP", design="design_yx", parameters=(),
        timeout=120, **environment):
    """Runs a session in the directory, whose command file holds these commands, in kolv-batch, or in the window on a
    display; there the last must end the program.  The transcript names no path of the machine.  kolv-batch must end with
    the status, unless that is None."""
    directory = pathlib.Path(directory)
    (directory / "session.cmd").write_text(commands)
    arguments = [".", timing, "session.cmd", design, *parameters]
    if display:
        program = display.start(arguments, directory, **environment)
    else:
        program = batch([*options, *arguments], directory, **environment)
    try:
        stdout, _ = program.communicate(timeout=timeout)
    except subprocess.TimeoutExpired:
        program.kill()
        raise
    assert display or status in (None, program.returncode), stdout[-2000:]
    return Result(program.returncode, stdout.decode("latin-1"), directory)


def batch(arguments, cwd, **environment):
    """kolv-batch with these arguments."""
    return subprocess.Popen([str(BIN / "kolv-batch"), *map(str, arguments)], cwd=cwd, stdin=subprocess.DEVNULL,
                            env=dict(os.environ, QUILLARN=str(SOURCE / "share")) | environment,
                            stdout=subprocess.PIPE, stderr=subprocess.STDOUT)


def expand(netlist, design, *options):
    """Makes a design file; the netlist is a path below the source tree or an absolute one."""
    subprocess.run([str(BIN / "kolv-expand"), *map(str, options), str(SOURCE / netlist), "-o", str(design)],
                   check=True, stdout=subprocess.DEVNULL)


def work_directory():
    """A fresh short path: paths of the program hold at most 199 characters."""
    return tempfile.TemporaryDirectory(prefix="kolv")
