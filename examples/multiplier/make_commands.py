#!/usr/bin/env python3
"""Writes multiplier.cmd: operand pairs for the 16 x 16 multiplier c6288, one pair every 1000 time steps."""
import pathlib
import random

PERIOD = 1000
A = ["N%d" % (1 + 17 * i) for i in range(16)]  # least significant first
B = ["N%d" % (273 + 17 * i) for i in range(16)]
P = ("N545 N1581 N1901 N2223 N2548 N2877 N3211 N3552 N3895 N4241 N4591 N4946 N5308 N5672 N5971 N6123 N6150 N6160 "
     "N6170 N6180 N6190 N6200 N6210 N6220 N6230 N6240 N6250 N6260 N6270 N6280 N6288 N6287").split()  # the last two outputs stand the other way round

random.seed(6288)
PAIRS = [(0, 0), (1, 1), (65535, 65535), (43690, 21845), (21845, 43690), (65535, 1), (1, 65535), (32768, 32768),
         (255, 257), (4096, 15), (12345, 54321), (65534, 65535)]
PAIRS += [(random.getrandbits(16), random.getrandbits(16)) for _ in range(12)]


def define_bus(name, members):
    """Most significant bit first; a command takes 30 keywords."""
    members = members[::-1]
    for i in range(0, len(members), 16):
        yield "DEFINE BUS %s %s %s" % ("A" if i else "C", name, " ".join(members[i:i + 16]))


def commands():
    yield "# A 16 x 16 multiplier (ISCAS'85 c6288) multiplies %d pairs of operands." % len(PAIRS)
    yield "# The array of adders glitches while it settles; with the check on, 51 spikes would stop the run."
    yield "SPIKE CHECK OFF"
    for name, members in (("a", A), ("b", B), ("p", P)):
        yield from define_bus(name, members)
    yield "LIST B a b p"
    state = {}
    for k, (a, b) in enumerate(PAIRS):
        yield "# %d x %d = %d" % (a, b, a * b)
        for names, value in ((A, a), (B, b)):
            for i, name in enumerate(names):
                if state.get(name) != value >> i & 1:
                    state[name] = value >> i & 1
                    yield "FORCE A %s %d %d" % (name, state[name], k * PERIOD)
    yield "RUN %d A" % (len(PAIRS) * PERIOD)
    yield "WRITE LIST products"


if __name__ == "__main__":
    pathlib.Path(__file__).with_name("multiplier.cmd").write_text("\n".join(commands()) + "\n")
