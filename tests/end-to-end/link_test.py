#!/usr/bin/env python3
"""The window program loads Motif before the X toolkit: the other way round Motif's shell class loses, and the program
dies when its window opens.  kolv-batch loads no X library, not even through others."""
import re
import subprocess

from kolv_session import BIN

dynamic = subprocess.run(["readelf", "-d", BIN / "kolv"], check=True, capture_output=True, text=True).stdout
needed = re.findall(r"NEEDED.*\[lib(\w+)", dynamic)
assert needed.index("Xm") < needed.index("Xt"), needed

libraries = subprocess.run(["ldd", BIN / "kolv-batch"], check=True, capture_output=True, text=True).stdout
found = re.findall(r"\blib(?:X\w*|xcb[\w-]*|Motif|Mrm)\.so", libraries)
assert "libstdc++" in libraries and not found, found
