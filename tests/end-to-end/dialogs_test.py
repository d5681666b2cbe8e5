#!/usr/bin/env python3
"""Menu entries and dialogs: what they send, show and refuse."""
import os
import unittest

from window_session import Window

ENTRIES = [  # menu, entry, the last line that the entry shows
    ("o", "c", "# !! Error :  No sheet in Context window ? "),
    ("d", "d", " STAtus KEY "),
    ("v", "v", " VIEw ALl "),
    ("v", "z", " DEFine KEY b1u 'view area' "),
    ("s", "n", " DEFine KEY b2u 'SEL AREA Net ' "),
    ("u", "a", " DEFine KEY b2u 'UNSEL AREA All ' "),
    ("r", "t", " VIEw WINdow TRACE "),
    ("r", "l", " VIEw WINdow LIST "),
]
NOBODY = 65534
PROMPTS = [  # menu, entry, title, what is typed, the line that answers
    ("l", "r", "^Run Extra Simulation Time", "250", " RUN 250 "),
    ("t", "l", "^View Time List Time", "30", " VIEw TIMe List 30 "),
    ("t", "t", "^View Time Trace Time", "40", " VIEw TIMe Trace 40 "),
]


class Dialogs(Window):
    def closed(self, title):
        return not self.xdotool("search", "--onlyvisible", "--name", title, check=False)

    def test_prompts_send_what_was_typed(self):
        self.open("FORCE A N1 1 0\n")
        for menu, entry, title, typed, line in PROMPTS:
            self.menu(menu, entry)
            self.dialog(title)
            self.send(typed)
            self.see(line)
        self.menu("l", "r")
        self.dialog("^Run Extra")
        self.xdotool("key", "BackSpace", "Return")  # an empty value
        self.dialog("^Quick_Message")
        self.xdotool("key", "Return")
        self.menu("l", "r")
        self.dialog("^Run Extra")
        self.xdotool("key", "ctrl+s", "Return")  # a character that is none, in place of the value
        self.see("# RUN ")
        self.menu("l", "r")
        self.dialog("^Run Extra")
        self.xdotool("key", "Escape")
        self.wait_for(lambda: self.closed("^Run Extra"), "a cancelled prompt")
        self.assertEqual(sum(line.startswith(" RUN ") for line in self.transcript()), 1)

    def test_menu_entries_send_their_commands(self):
        self.open("FORCE A N1 1 0\nRUN 50\n")
        for menu, entry, line in ENTRIES:
            before = self.transcript().count(line)
            self.menu(menu, entry)
            self.see(line, times=before + 1)
        for menu, entry in (("h", "a"), ("h", "d"), ("h", "v"), ("l", "p")):
            self.menu(menu, entry)
            self.dialog("^Quick_Message")
            self.xdotool("key", "Return")
            self.wait_for(lambda: self.closed("^Quick_Message"), "a message taken away")
        self.assertEqual(self.transcript().count(" POP "), 1)
        self.menu("f", "q")
        self.expect_end()

    def test_a_sheet_is_chosen_on_the_context_page_only(self):
        for name in ("alu", "cpu 2"):
            (self.directory / name).mkdir()
            (self.directory / name / "sheet.tm").write_text("no sheet")
        if os.geteuid() == 0:
            self.user = NOBODY
        self.open("")
        self.menu("f", "o")
        self.dialog("^Quick_Message")
        self.xdotool("key", "Return")
        self.send("POP")
        self.see(" POP ")
        self.menu("g", "g")
        self.dialog("^Open a sheet")
        locked = self.directory / "locked"
        locked.mkdir(mode=0o000)
        for path, text in ((self.directory / "x", "is Not a Sheet"), (locked / "sheet.tm", "No Enough Unix Rights")):
            self.xdotool("key", "ctrl+slash")  # the whole path that stands there
            self.send(str(path))
            self.dialog("^Quick_Message")
            self.xdotool("key", "Return")
            self.wait_for(lambda: self.closed("^Quick_Message"), text)
            self.assertEqual(self.working_directory(), str(self.directory))
            self.dialog("^Open a sheet")
        self.xdotool("key", "shift+Tab", "sleep", "0.2", "key", "Down", "sleep", "0.1", "key", "Return")
        self.wait_for(lambda: self.closed("^Open a sheet"), "a chosen sheet")
        self.wait_for(lambda: any(line.lstrip("# ").startswith('VIEw SHEet "%s"' % (self.directory / "cpu 2"))
                                  for line in self.transcript()), "the sheet's command")
        self.assertEqual(self.working_directory(), str(self.directory / "cpu 2"))
        self.send("WRITE LIST products")  # into the schematic directory as before
        self.see(" WRIte LISt products ")
        self.assertTrue((self.directory / "products").exists())

    def working_directory(self):
        return os.readlink("/proc/%d/cwd" % self.program.pid)


if __name__ == "__main__":
    unittest.main()
