#!/usr/bin/env python3
"""The window used as a user does: real keys and buttons under a window manager (and without one), watched
through the transcript, the window's title and pictures of the screen."""
import pathlib
import subprocess
import time
import unittest

from kolv_session import Display, expand, work_directory

TITLE = "^kolv  "


def white_dots(display):
    """Dots of the pure white in which the drawing pages write; nothing else of the window has that colour."""
    picture = subprocess.run(["import", "-window", "root", "-depth", "8", "rgb:-"], check=True, capture_output=True,
                             env=display.environment("/")).stdout
    return sum(picture[i:i + 3] == b"\xff\xff\xff" for i in range(0, len(picture), 3))


class Window(unittest.TestCase):
    manager = ["openbox"]

    def setUp(self):
        self.display = Display("1024x768x24").__enter__()
        self.addCleanup(self.display.__exit__)
        folder = work_directory()
        self.addCleanup(folder.cleanup)
        self.directory = pathlib.Path(folder.name)
        expand("designs/iscas85/c17.json", self.directory / "design_yx")
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
        self.program = self.display.start([self.directory, "TYP", self.directory / "s.cmd"], self.directory)
        self.addCleanup(self.program.stdout.close)
        self.addCleanup(self.program.wait)
        self.addCleanup(self.program.kill)
        self.see("# End of DO ")
        self.xdotool("search", "--sync", "--onlyvisible", "--name", TITLE)

    def xdotool(self, *arguments):
        return subprocess.run(["timeout", "20", "xdotool", *map(str, arguments)], check=True, capture_output=True,
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
        window = self.xdotool("search", "--onlyvisible", "--name", TITLE)[0]
        self.xdotool("mousemove", "--window", window, int(1000 * x), int(720 * y))

    def expect_end(self):
        stdout, _ = self.program.communicate(timeout=20)
        self.assertTrue(stdout.endswith(b"\n -- KOLV  Execution complete...0 error, 0 warning --\n"), stdout)
        self.assertEqual(self.program.returncode, -9)


class UnderAWindowManager(Window):
    def test_typed_commands_run_and_their_results_are_drawn(self):
        self.open("SPIKE CHECK OFF\n")
        drawn = white_dots(self.display) + 300  # what the frame has, and the least that a table needs
        self.send("FORCE A N1 1 0")  # the first key clears the first text of the entry
        self.see(" FORCE A N1 1 0 ")
        self.send("LIST B N1 N22")
        self.see(" LIST B N1 N22 ")
        self.at(0.5, 0.4)  # typing reaches the entry from everywhere
        self.send("RUN 100")
        self.see(" RUN 100 ")
        self.assertGreater(white_dots(self.display), drawn)
        window = self.xdotool("search", "--onlyvisible", "--name", TITLE)[0]
        for disturbance in (["windowunmap", window, "sleep", "0.3", "windowmap", window], ["windowsize", window, 900, 600]):
            self.xdotool(*disturbance)
            time.sleep(1)
            self.assertGreater(white_dots(self.display), drawn, disturbance)
        self.send("Gri?")
        self.see(" GRId ON ")
        self.assertNotIn("#  !!! Unknown Command  ?? ", self.transcript())

    def test_bound_keys_and_buttons_run_their_texts(self):
        self.open("DEF KEY F12C 'SPIKE MIN 1'\nDEF KEY F5U 'SPIKE MIN 2'\nDEF KEY AU 'SPIKE MIN 3'\nDEF KEY B2 'SPIKE MIN 4'\n"
                  "DEF KEY CNTL_N 'SPIKE MIN 5'\n")
        self.xdotool("key", "ctrl+F12")  # from the entry as well
        self.see(" SPIke MIN 1.000")
        self.at(0.5, 0.4)
        self.xdotool("key", "F5", "Up", "ctrl+n", "click", "2")
        self.see(" SPIke MIN 5.000")
        self.see(" SPIke MIN 4.000")
        self.see(" SPIke MIN 3.000", times=2)  # arrow keys act on the press and on the release
        self.see(" SPIke MIN 2.000")
        self.xdotool("key", "Prior")  # the programs of the installation
        self.see(" HELp MENUS ")
        self.xdotool("key", "Next")
        self.see(" STAtus KEY ")
        self.xdotool("key", "ctrl+c")
        self.see(" BYE ")
        self.expect_end()

    def test_menus_and_prompts_send_commands(self):
        self.open("FORCE A N1 1 0\n")
        self.xdotool("keydown", "alt", "sleep", "0.1", "key", "l", "sleep", "0.1", "keyup", "alt", "sleep", "0.2",
                     "key", "r")
        self.xdotool("search", "--sync", "--onlyvisible", "--name", "^Run Extra Simulation Time")
        time.sleep(0.3)
        self.send("250")
        self.see(" RUN 250 ")
        self.xdotool("key", "alt+F4")  # the window manager asks the window to close
        self.expect_end()

    def test_control_a_stops_a_command_file(self):
        (self.directory / "long.cmd").write_text("SYSTEM 'sleep 0.05'\n" * 400)
        self.open("SPIKE CHECK OFF\n")
        self.send("DO long.cmd")
        self.see(" SYSTem 'sleep 0.05' ", times=3)
        self.xdotool("key", "ctrl+a")
        self.see("# End of DO ", times=3)  # that of the key file, of the start and of long.cmd
        self.assertLess(self.transcript().count(" SYSTem 'sleep 0.05' "), 400)


class WithoutAWindowManager(Window):
    manager = None

    def test_typed_commands_run(self):
        self.open("SPIKE CHECK OFF\n")
        self.at(0.5, 0.4)
        self.send("SPIKE MIN 7")
        self.see(" SPIke MIN 7.000")
        self.send("QUIT")
        self.expect_end()


if __name__ == "__main__":
    unittest.main()
