"""A test case with the real program in a real window: keys and buttons by xdotool, watched through the transcript,
the window's title and pictures of the screen."""
import pathlib
import subprocess
import time
import unittest

from kolv_session import Display, expand, work_directory

TITLE = "^kolv  |^ Logic Simulator"
# What the shipped resource file adds to the page as the program itself has it.
PLAIN = "".join("Kolv*%s: false\n" % name for name in (
    "scalePages", "busValues", "markUnrecorded", "hints", "scrollBars", "statusLine", "wheelScrolls", "sheetShowsStates",
    "pickedByPath"))
BLACK = "." * 200  # only a drawing page has such lines, frames of the focus are thinner

COLOURS = {b"\0\0\0": ".", b"\xff\xff\xff": "w", b"\xff\xff\0": "y", b"\xff\0\0": "r", b"\0\xff\xff": "c", b"\0\xff\0": "g",
           b"\x30\x34\x38": "e"}


class Picture:
    """The window as it is: letters of colours (COLOURS, "?" for any other) by line and column."""

    def __init__(self, display, window):
        ppm = subprocess.run(["import", "-window", window, "-depth", "8", "ppm:-"], check=True, capture_output=True,
                             env=display.environment("/")).stdout
        _, size, _, rgb = ppm.split(b"\n", 3)
        width, height = map(int, size.split())
        letters = "".join(COLOURS.get(rgb[i:i + 3], "?") for i in range(0, 3 * width * height, 3))
        self.lines = [letters[i:i + width] for i in range(0, width * height, width)]

    def white_dots(self):
        """Dots of the pure white in which the drawing pages write; nothing else of the window has that colour."""
        return sum(line.count("w") for line in self.lines)

    def page(self):
        """The drawing page: its left edge, its upper edge, and its lines."""
        top = next(y for y, line in enumerate(self.lines[:-9]) if BLACK in line and BLACK in self.lines[y + 9])
        left = self.lines[top].index(BLACK)
        right = self.lines[top].index("?", left)
        bottom = next(y for y in range(top, len(self.lines)) if "?" in self.lines[y][left:right])
        return left, top, [line[left:right] for line in self.lines[top:bottom]]


class Window(unittest.TestCase):
    design = "designs/iscas85/c17.json"
    screen, dpi = "1024x768x24", 96
    manager = ["openbox"]
    resources = ""
    user = None  # whose program it is; the superuser may everything

    def setUp(self):
        self.display = Display(self.screen).__enter__()
        self.addCleanup(self.display.__exit__)
        folder = work_directory()
        self.addCleanup(folder.cleanup)
        self.directory = pathlib.Path(folder.name)
        expand(self.design, self.directory / "design_yx")
        (self.directory / ".Xdefaults").write_text("Xft.dpi: %d\n%s" % (self.dpi, self.resources))
        if self.manager:
            manager = subprocess.Popen(self.manager, env=self.display.environment(self.directory),
                                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            self.addCleanup(manager.wait)
            self.addCleanup(manager.kill)
            self.wait_for(lambda: b"window id" in subprocess.run(
                ["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"], capture_output=True,
                env=self.display.environment(self.directory)).stdout, "a window manager")

    def wait_for(self, condition, what):
        limit = time.monotonic() + 20
        while not condition():
            self.assertLess(time.monotonic(), limit, "waited for %s; transcript: %r" % (what, self.transcript()))
            time.sleep(0.05)

    def open(self, commands):
        (self.directory / "s.cmd").write_text(commands)
        if self.user:
            subprocess.run(["chown", "-R", str(self.user), self.directory], check=True)
        self.program = self.display.start([self.directory, "TYP", self.directory / "s.cmd"], self.directory,
                                          user=self.user)
        self.addCleanup(self.program.stdout.close)
        self.addCleanup(self.program.wait)
        self.addCleanup(self.program.kill)
        self.see("# End of DO ", times=2)  # of the key file and of these commands
        self.window = self.xdotool("search", "--sync", "--onlyvisible", "--name", TITLE)[0]
        self.wait_for(lambda: any("?" in line and BLACK in line for line in self.picture().lines), "a drawn window")
        time.sleep(0.2)

    def xdotool(self, *arguments, check=True):
        return subprocess.run(["timeout", "20", "xdotool", *map(str, arguments)], check=check, capture_output=True,
                              text=True, env=self.display.environment(self.directory)).stdout.split()

    def transcript(self):
        path = self.directory / "current_session"
        return path.read_text().splitlines() if path.exists() else []

    def see(self, line, times=1):
        """Waits until the transcript holds the line so often."""
        self.wait_for(lambda: self.transcript().count(line) >= times, line)

    def send(self, text):
        self.xdotool("type", "--delay", "15", text)
        self.xdotool("key", "Return")

    def at(self, x, y):
        """Moves the pointer to a place of the window, in fractions of its size."""
        self.xdotool("mousemove", "--window", self.window, int(1000 * x), int(720 * y))

    def expect_end(self):
        stdout, _ = self.program.communicate(timeout=20)
        self.assertTrue(stdout.endswith(b"\n -- KOLV  Execution complete...0 error, 0 warning --\n"), stdout)
        self.assertEqual(self.program.returncode, -9)

    def picture(self):
        return Picture(self.display, self.window)

    def page(self):
        """The lines of the drawing page, letters of colours."""
        return self.picture().page()[2]

    def move_to(self, x, y):
        """Moves the pointer to a pixel of the drawing page."""
        left, top, _ = self.picture().page()
        self.xdotool("mousemove", "--window", self.window, left + x, top + y)

    def menu(self, menu, entry):
        """Chooses an entry by the mnemonics."""
        self.xdotool("keydown", "alt", "sleep", "0.1", "key", menu, "sleep", "0.1", "keyup", "alt", "sleep", "0.2",
                     "key", entry)

    def dialog(self, title):
        """Waits for a dialog, and until it has the keyboard."""
        self.xdotool("search", "--sync", "--onlyvisible", "--name", title)
        time.sleep(0.3)
