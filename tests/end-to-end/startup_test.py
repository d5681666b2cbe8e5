#!/usr/bin/env python3
"""Start-up and shutdown: every refusal with its lines and exit status, the way through an accepted start, and
the closing summary.  Design files are empty designs: a header alone."""
import fcntl
import os
import pathlib
import shutil
import struct
import subprocess
import time
import unittest

from kolv_session import BIN, SOURCE, Display, work_directory

ABORTED, KILLED = -6, -9
FATAL = " ?? error in tm_package  code : %d\n ?? error  : %30s\n"
BANNER = "\n            ######   KOLV   version 2.02  22 mar 2004   ###### \n"
REPEATED = "# last trace line : "  # on standard error
NO_RANGE = " !!! error invalid parameter : should be : \"MIn\" or \"TYp\" or \"MAx\" \n"
BAD_RANGE = "\n" + NO_RANGE + "\n" + FATAL % (69, "invalid_string") + REPEATED + NO_RANGE
SUMMARY = "\n -- KOLV  Execution complete...%s, %s --\n"
NO_TRACE_FILE = "!!! ( kolv_root ) impossible to open debugfile  : \"%s\" \n"


def empty_design(path, errors=0, warnings=0):
    path.write_bytes(struct.pack("<hhhxxf12if2h", 1, 1, 2020, 1.0, *[0] * 12, 1.0, errors, warnings))


def echo(arguments):
    return "".join(" argument : %2d\n   '%s' \n" % row for row in enumerate([str(BIN / "kolv"), *map(str, arguments)]))


def title():
    now = time.gmtime()
    return "%28s date : %d-%d-%d\n\n%23sLOGIC SIMULATOR  from QUILLARN \n" % (
        "", now.tm_mday, now.tm_mon, now.tm_year, "")


class StartUp(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.display = Display().__enter__()

    @classmethod
    def tearDownClass(cls):
        cls.display.__exit__()

    def setUp(self):
        folder = work_directory()
        self.addCleanup(folder.cleanup)
        self.directory = pathlib.Path(folder.name) / "sheet"
        self.cwd = pathlib.Path(folder.name) / "here"
        self.directory.mkdir()
        self.cwd.mkdir()
        empty_design(self.directory / "design_yx")

    def run_kolv(self, arguments, **environment):
        program = self.display.start(arguments, self.cwd, **environment)
        stdout, _ = program.communicate(timeout=60)
        return stdout.decode("latin-1"), program.returncode

    def expect(self, arguments, lines, status):
        """Echo of the arguments, then the lines; the session ends with the status."""
        self.assertEqual(self.run_kolv(arguments), (echo(arguments) + lines, status))

    def test_arguments_that_name_no_session_are_refused(self):
        missing, plain = self.cwd / "missing", self.cwd / "plain"
        plain.touch()
        no_directory = " !! Unrecoverable Error : the file :'%s' is not a  directory ? \n"
        long_path = str(self.directory) + "/." * 100
        self.assertEqual(self.run_kolv([]), (" !! Unrecoverable Error : Invalid argument number: 0  < 1 \n", 1))
        self.expect([missing], no_directory % missing, 1)
        self.expect([plain], no_directory % plain, 1)
        self.expect([self.directory, *["x"] * 39], " !!! invalid usage  : arg number : 41\n", 0)
        self.assertEqual(self.run_kolv([long_path]), (
            echo([long_path[:128]]) + "\n        !!! error no SHEET dir_name  \n\n", 1))

    def test_files_that_cannot_be_opened_end_the_start(self):
        in_use = self.cwd / "in_use"  # a running program can be read, not written, even by the superuser
        shutil.copy("/bin/sleep", in_use)
        sleeper = subprocess.Popen([in_use, "60"])
        self.addCleanup(sleeper.wait)
        self.addCleanup(sleeper.kill)
        trace, simulator_trace = self.directory / "debug_kolv", self.cwd / "debug_kolv2"
        fatal = FATAL % (19, "file_data_invalid")
        not_writable = "??  kolv_root : impossible to open debugfile_name :'%s' (for W)\n"
        transcript = self.directory / "current_session"
        no_transcript = "!! ( INITIALIZE ) impossible to open current_session_file  : \"%s\" \n" % transcript
        rows = [
            (trace, None, NO_TRACE_FILE % trace, 1),
            (trace, in_use, not_writable % trace, 0),
            (simulator_trace, None, NO_TRACE_FILE % "debug_kolv2" + fatal, ABORTED),
            (simulator_trace, in_use, not_writable % "debug_kolv2", 0),
            (transcript, None, BANNER + no_transcript + fatal + REPEATED + no_transcript, ABORTED),
        ]
        for path, target, lines, status in rows:
            with self.subTest(path=path, target=target):
                path.unlink(missing_ok=True)
                os.link(target, path) if target else path.mkdir()
                self.expect([self.directory], title() + lines, status)
                path.unlink() if target else path.rmdir()

    def test_files_that_grow_follow_no_link(self):
        victim = self.cwd / "victim"
        victim.write_text("precious")
        grown = [self.directory / "debug_kolv", self.cwd / "debug_kolv2", self.cwd / "debug_yxdfi",
                 self.directory / "current_session"]
        for path in grown:
            path.symlink_to(victim)
        commands = self.cwd / "s.cmd"
        commands.write_text("BYE\n")
        self.run_kolv([self.directory, "TYP", commands])
        self.assertEqual(victim.read_text(), "precious")
        self.assertFalse(any(path.is_symlink() for path in grown))

    def test_a_second_program_has_a_transcript_of_its_own(self):
        commands = self.cwd / "s.cmd"
        commands.write_text("BYE\n")
        with open(self.directory / "current_session", "w") as first:
            fcntl.flock(first, fcntl.LOCK_EX)
            first.write("kept")
            first.flush()
            self.run_kolv([self.directory, "TYP", commands])
        self.assertEqual((self.directory / "current_session").read_text(), "kept")
        second = (self.directory / "current_session_2").read_text().splitlines()
        self.assertIn("# !! another program runs here : this transcript is current_session_2 ", second)
        self.assertEqual(second[-1], " BYE ")

    def test_without_a_display_or_a_font_one_line_says_so(self):
        fonts = self.cwd / "fonts"
        fonts.mkdir()
        (self.cwd / "fonts.conf").write_text(
            "<fontconfig><dir>%s</dir><cachedir>%s/cache</cachedir></fontconfig>" % (fonts, self.cwd))
        only_these = {"FONTCONFIG_FILE": str(self.cwd / "fonts.conf")}
        no_font = "kolv: the font cannot be opened : DejaVu Sans\n"

        def spoil():  # behind the back of the cache: the directory stays as it is
            shutil.copy("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", fonts)
            subprocess.run(["fc-list"], env=os.environ | only_these, check=True, stdout=subprocess.DEVNULL)
            (fonts / "DejaVuSans.ttf").write_bytes(b"")
        for spoil_it, environment, line in (
                (None, {"DISPLAY": ":9999"}, "kolv: the display cannot be opened : :9999\n"),
                (None, only_these, no_font), (spoil, only_these, no_font)):
            if spoil_it:
                spoil_it()
            result = subprocess.run([BIN / "kolv", self.directory], cwd=self.cwd, timeout=60, capture_output=True,
                                    env=self.display.environment(self.cwd) | environment, start_new_session=True)
            self.assertEqual((result.returncode, result.stderr.decode()), (2, line))
            self.assertIn("!!!  INIT TM package impossible \n", (self.directory / "debug_kolv").read_text())

    def test_an_installation_root_that_is_no_text_is_not_used(self):
        (self.cwd / "s.cmd").write_text("HELP\nQUIT\n")
        root = self.cwd / "r\u00f6ot"
        (root / "kolv").mkdir(parents=True)
        (root / "kolv/init_key").touch()
        _, status = self.run_kolv([self.directory, "TYP", "s.cmd"], QUILLARN=str(root))
        self.assertEqual(status, KILLED)

    def test_two_letters_choose_the_timing_range(self):
        empty_design(self.directory / "design_yx", errors=1)  # such a design ends at once, without a session
        accepted = (title() + BANNER + SUMMARY % ("1 error", "0 warning"), 0)
        refused = (title() + BANNER + BAD_RANGE, ABORTED)
        for word, (lines, status) in {"": accepted, "Mi": accepted, "TYPICAL": accepted, "max": accepted, "MX": refused,
                                      "tx": refused, "m": refused}.items():
            with self.subTest(word=word):
                self.expect([self.directory, word], lines, status)

    def test_a_design_with_errors_is_only_summed_up(self):
        for errors, warnings, counts in [(3, 0, ("3 errors", "0 warning")), (1, 2, ("1 error", "2 warnings"))]:
            empty_design(self.directory / "other", errors, warnings)
            arguments = [self.directory, "TYP", "missing.cmd", "other"]
            self.expect(arguments, title() + BANNER + SUMMARY % counts, 0)

    def test_a_design_that_cannot_be_read_is_refused(self):
        (self.directory / "design_yx").write_bytes(b"short")
        stdout, status = self.run_kolv([self.directory])
        self.assertEqual(status, 1)
        self.assertTrue(stdout.endswith("\n !!! ERROR...Design file open trouble.\n"), stdout)

    def test_a_design_name_too_long_is_refused(self):
        name = "d" * 199
        self.assertEqual(self.run_kolv([self.directory, "TYP", "", name]), (
            echo([self.directory, "TYP", "", name[:128]]) + title() + BANNER +
            " !!! ERROR... invalid file type : \"%s\"\n" % name, 1))

    def test_a_session_ends_by_its_command_file(self):
        commands = self.cwd / "s.cmd"
        commands.write_text("COMMAND '$ARG1.$ARG2.$ARG3'\nBYE\nRUN 10\n")
        full = [self.directory, "TYP", commands, "design_yx", *map(str, range(35))]  # 40 with the program name
        self.expect(full, title() + BANNER + SUMMARY % ("0 error", "0 warning"), KILLED)
        transcript = (self.directory / "current_session").read_text().splitlines()
        self.assertEqual(transcript[:2], [("# DO %s/share/kolv/init_key " % SOURCE)[:98], "# End of DO "])
        called = "# DO %s %s " % (commands, " ".join(map(str, range(28))))  # a command has 30 keywords
        self.assertEqual(transcript[3:], [called[:98], "# COMmand '0.1.2' ", "0.1.2 ", " BYE "])
        self.assertTrue((self.directory / "debug_kolv").stat().st_size > 0)
        self.assertTrue((self.cwd / "debug_kolv2").exists())

    def test_the_key_file_of_the_installation_is_run_first(self):
        keys = self.cwd / "kolv" / "init_key"
        keys.parent.mkdir()
        keys.write_text("DEFINE KEY F7 'RUN 5'\nDEFINE KEY F13 'RUN'\nQUIT\n")
        self.run_kolv([self.directory, "MX"], QUILLARN=str(self.cwd))  # before the timing range is looked at
        self.assertEqual((self.directory / "current_session").read_text().splitlines(), [
            "# DO %s " % keys, " DEFine KEY F7 'RUN 5' ", "# DEFine KEY F13 'RUN' ",
            "# !! Error :  Invalid DEFine KEY "])

    def test_parameters_stop_at_the_first_empty_one_and_bytes_beyond_ascii_cut(self):
        commands = self.cwd / "s.cmd"
        commands.write_text("COMMAND '<$ARG1><$ARG2>'\nQUIT\n")
        arguments = [self.directory, "TYP", commands, "", "one\xe9two", "", "three"]
        stdout, _ = self.run_kolv(arguments)
        self.assertIn(" argument :  5\n   'one' \n", stdout)
        self.assertIn("# COMmand '<one><>' ", (self.directory / "current_session").read_text())


if __name__ == "__main__":
    unittest.main()
