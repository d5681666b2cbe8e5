"""Makes the pictures of the window; called by scripts/pictures, which has built the programs."""
import pathlib
import shutil
import subprocess
import sys
import time

SOURCE = pathlib.Path(__file__).resolve().parents[1]
sys.path.insert(0, str(SOURCE / "tests/end-to-end"))
from kolv_session import BIN, Display, expand, run, work_directory  # noqa: E402

PICTURES = SOURCE / "docs/pictures"
WINDOW = "^kolv  |^ Logic Simulator"
COUNTER = """SPIKE CHECK OFF
DEFINE BUS C count count[3] count[2] count[1] count[0]
LIST B clk rst en carry
LIST D count
TRACE clk rst en count carry
CLOCK PERIOD 40
FORCE A clk 0 0 R
FORCE A clk 1 20 R
FORCE A rst 1 0
FORCE A rst 0 50
FORCE A en 1 0
RUN 900
"""
ADDER = """VIEW SHEET
PROBE COUT 2.1 1.0
PROBE SUM 2.2 2.6
FORCE A CIN 1 0
FORCE A D[0] 1 0
FORCE A D[1] 0 0
RUN 100
VIEW INSTANCE U2
VIEW ALL
"""
DIALOGS = [  # picture, menu, entry, title of the dialog
    ("dialog-run", "l", "r", "^Run Extra"),
    ("dialog-time-list", "t", "l", "^View Time List"),
    ("dialog-time-trace", "t", "t", "^View Time Trace"),
    ("dialog-message", "h", "a", "^Quick_Message"),
    ("dialog-help", "h", "v", "^Quick_Message"),
    ("dialog-sheet", "f", "o", "^Open a sheet"),
]


class Session:
    """The program in a directory that holds a design, under a window manager."""

    def __init__(self, directory, commands, ends=2):
        self.directory = pathlib.Path(directory)
        self.ends = ends  # of command files, the key file's included
        (self.directory / "start.cmd").write_text(commands)

    def __enter__(self):
        self.display = Display("1024x768x24").__enter__()
        self.environment = self.display.environment(self.directory)
        self.manager = subprocess.Popen(["openbox"], env=self.environment, stdout=subprocess.DEVNULL,
                                        stderr=subprocess.DEVNULL)
        time.sleep(1)
        self.program = self.display.start([self.directory, "TYP", self.directory / "start.cmd"], self.directory,
                                          stdout=subprocess.DEVNULL)
        self.xdotool("search", "--sync", "--onlyvisible", "--name", WINDOW)
        self.wait_for("# End of DO ", self.ends)
        return self

    def __exit__(self, *_):
        for process in (self.program, self.manager):
            process.kill()
            process.wait()
        self.display.__exit__()

    def xdotool(self, *arguments):
        return subprocess.run(["timeout", "20", "xdotool", *map(str, arguments)], check=True, capture_output=True,
                              text=True, env=self.environment).stdout.split()

    def wait_for(self, line, times=1):
        """Until the transcript holds the line so often and the window shows it."""
        transcript = self.directory / "current_session"
        for _ in range(400):
            if transcript.exists() and transcript.read_text().splitlines().count(line) >= times:
                break
            time.sleep(0.05)
        else:
            raise SystemExit("no line %r in the session" % line)
        time.sleep(0.5)

    def send(self, command, answer, times=1):
        self.xdotool("type", "--delay", "15", command)
        self.xdotool("key", "Return")
        self.wait_for(answer, times)

    def menu(self, menu, entry):
        self.xdotool("keydown", "alt", "sleep", "0.1", "key", menu, "sleep", "0.1", "keyup", "alt", "sleep", "0.2",
                     "key", entry)

    def picture(self, name, title=WINDOW):
        """The window of that title with few colours, which keeps the file small."""
        window = self.xdotool("search", "--sync", "--onlyvisible", "--name", title)[0]
        time.sleep(0.5)
        subprocess.run(["import", "-window", window, "+dither", "-colors", "64", "PNG8:" + str(PICTURES / (name + ".png"))],
                       check=True, env=self.environment)
        print(name)


def results():
    with work_directory() as directory:
        expand("examples/counter/counter.json", pathlib.Path(directory) / "design_yx")
        with Session(directory, COUNTER) as session:
            session.xdotool("mousemove", 800, 90)
            session.picture("list")
            session.send("VIEW WINDOW TRACE", " VIEw WINdow TRACE ")
            session.send("VIEW ALL", " VIEw ALl ")
            session.picture("trace")
            session.xdotool("mousemove", 345, 250, "click", 2, "mousemove", 505, 250, "keydown", "shift", "click", 2,
                            "keyup", "shift")
            session.picture("cursors")
            session.send("CURSOR OFF", " CURsor OFF ")
            session.xdotool("mousemove", 280, 175, "mousedown", 1, "sleep", "0.3", "mousemove", 430, 390)
            session.picture("zoom")
            session.xdotool("mouseup", 1)
            session.wait_for(" VIEw ARea ")
            session.picture("zoomed")


def context():
    with work_directory() as directory:
        subprocess.run([BIN / "example_sheets", directory], check=True, stdout=subprocess.DEVNULL)
        with Session(directory, ADDER) as session:
            session.picture("context")


def dialogs():
    with work_directory() as directory:
        subprocess.run([BIN / "example_sheets", directory], check=True, stdout=subprocess.DEVNULL)
        with Session(directory, "POP\n") as session:
            for name, menu, entry, title in DIALOGS:
                session.menu(menu, entry)
                session.picture(name, title)
                session.xdotool("key", "Escape", "sleep", "0.3")


def tour():
    """The pictures of docs/tour.md."""
    with work_directory() as directory:
        for file in (SOURCE / "examples/uart").glob("*.cmd"):
            shutil.copy(file, directory)
        expand("examples/uart/uart.json", pathlib.Path(directory) / "design_yx", "--sheets")
        with Session(directory, "DO show.cmd\n", ends=7) as session:
            session.send("VIEW ALL", " VIEw ALl ")
            session.picture("tour-probes")
            session.send("POP", " POP ", 2)
            session.picture("tour-trace")
        with Session(directory, "DO too_fast.cmd 40 20\nVIEW SHEET\nVIEW DOWN fifo\nVIEW DOWN read_pointer\n",
                     ends=5) as session:
            session.send("VIEW PIN at_reg[0]/D", " VIEw PIN at_reg[0]/D ")
            session.picture("tour-violation")


def sheets():
    """Sheets as PLOT SHEET draws them, for docs/expand.md."""
    plots = [("examples/uart/uart.json", [("sheet-uart", ""), ("sheet-fifo", "VIEW DOWN fifo"),
                                          ("sheet-shifter", "VIEW UP;VIEW DOWN sender;VIEW DOWN shifter")]),
             ("designs/iscas89/s27.json", [("sheet-s27", "")]), ("designs/iscas85/c432.json", [("sheet-c432", "")])]
    for netlist, pictures in plots:
        with work_directory() as directory:
            expand(netlist, pathlib.Path(directory) / "design_yx", "--sheets")
            with Display("1024x768x24") as display:
                run(directory, "VIEW SHEET\n%sQUIT\n" % "".join(
                    "%s\nPLOT SHEET %s.png\n" % (commands or "#", name) for name, commands in pictures), display=display)
            for name, _ in pictures:
                subprocess.run(["convert", pathlib.Path(directory) / (name + ".png"), "-trim", "+repage", "-resize", "1400x",
                                "+dither", "-colors", "48", "PNG8:" + str(PICTURES / (name + ".png"))], check=True)
                print(name)


if __name__ == "__main__":
    for tool in ("import", "xdotool", "openbox", "Xvfb"):
        if shutil.which(tool) is None:
            raise SystemExit(tool + " is missing")
    results()
    context()
    dialogs()
    sheets()
    tour()
