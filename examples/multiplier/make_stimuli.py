#!/usr/bin/env python3
"""Writes stimuli.cmd: operand pairs for the 16 x 16 multiplier c6288, one pair every 1000 time steps."""
import pathlib
import random

PERIOD = 1000
A = ["N%d" % (1 + 17 * i) for i in range(16)]  # least significant first
B = ["N%d" % (273 + 17 * i) for i in range(16)]

random.seed(6288)
PAIRS = [(0, 0), (1, 1), (65535, 65535), (43690, 21845), (21845, 43690), (65535, 1), (1, 65535), (32768, 32768),
         (255, 257), (4096, 15), (12345, 54321), (65534, 65535)]
PAIRS += [(random.getrandbits(16), random.getrandbits(16)) for _ in range(12)]


def main():
    lines = ["# Operands of the multiplier: the inputs that change, every %d time steps." % PERIOD]
    state = {}
    for k, (a, b) in enumerate(PAIRS):
        lines.append("# %d x %d = %d" % (a, b, a * b))
        for names, value in ((A, a), (B, b)):
            for i, name in enumerate(names):
                bit = value >> i & 1
                if state.get(name) != bit:
                    lines.append("FORCE A %s %d %d" % (name, bit, k * PERIOD))
                    state[name] = bit
    lines.append("RUN %d A" % (len(PAIRS) * PERIOD))
    pathlib.Path(__file__).with_name("stimuli.cmd").write_text("\n".join(lines) + "\n")


if __name__ == "__main__":
    main()
