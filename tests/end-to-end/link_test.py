#!/usr/bin/env python3
"""The program loads Motif before the X toolkit: the other way round Motif's shell class loses, and the program
dies when its window opens."""
import re
import subprocess

from kolv_session import BIN

dynamic = subprocess.run(["readelf", "-d", BIN / "kolv"], check=True, capture_output=True, text=True).stdout
needed = re.findall(r"NEEDED.*\[lib(\w+)", dynamic)
assert needed.index("Xm") < needed.index("Xt"), needed
