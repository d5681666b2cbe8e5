"""An independent zero-delay model of a flat gate netlist in Yosys' JSON format, with the stimuli and the output
signature of the public benchmark set (designs/README.md).  Knows nothing of the simulator."""
import json

MASK = 0xFFFFFFFF
GATES = {
    "$_AND_": lambda a, b: a & b, "$_NAND_": lambda a, b: 1 - (a & b),
    "$_OR_": lambda a, b: a | b, "$_NOR_": lambda a, b: 1 - (a | b),
    "$_XOR_": lambda a, b: a ^ b, "$_XNOR_": lambda a, b: 1 - (a ^ b),
    "$_NOT_": lambda a: 1 - a, "$_BUF_": lambda a: a,
}


class Netlist:
    def __init__(self, path):
        with open(path) as file:
            self.module = next(iter(json.load(file)["modules"].values()))
        self.ports = self.module["ports"]
        self.cells = self.module["cells"]
        self.registers = [c["connections"] for c in self.cells.values() if c["type"] == "$_DFF_P_"]
        driven = ("CK", "RSTN") if self.registers else ()  # not by the vectors
        self.inputs = [n for n, p in self.ports.items() if p["direction"] == "input" and n not in driven]
        self.outputs = [n for n, p in self.ports.items() if p["direction"] == "output"]
        self.net = {n: p["bits"][0] for n, p in self.ports.items()}
        self.order = self._levelise()

    def _levelise(self):
        """The combinational cells, every driver before its readers."""
        driver = {c["connections"]["Y"][0]: c for c in self.cells.values() if "Y" in c["connections"]}
        order, state = [], {}
        for root in driver:
            stack = [root]
            while stack:
                net = stack[-1]
                if net not in driver or state.get(net) == 2:
                    stack.pop()
                elif state.get(net) == 1:
                    state[net] = 2
                    order.append(driver[stack.pop()])
                else:
                    state[net] = 1
                    pins = driver[net]["connections"]
                    stack += [pins[p][0] for p in "AB" if p in pins and state.get(pins[p][0]) != 2]
        return order

    def settle(self, values):
        """Fills in the value (0 or 1) of every gate output; values maps nets to values."""
        for cell in self.order:
            pins = cell["connections"]
            values[pins["Y"][0]] = GATES[cell["type"]](*[values[pins[p][0]] for p in "AB" if p in pins])
        return values

    def rows(self, stimuli):
        """The output values, in output net order, before each next vector; with registers, after the clock edge that
        follows the vector, reset being active for the first two."""
        outputs = [net for net, _ in self.output_nets()]
        values = {r["Q"][0]: 0 for r in self.registers}
        for k, vector in enumerate(stimuli):
            values.update((self.net[port], bit) for port, bit in zip(self.inputs, vector))
            if self.registers:
                values.update({self.net["CK"]: 1, self.net["RSTN"]: int(k >= 2)})
                self.settle(values)
                values.update({r["Q"][0]: values[r["D"][0]] for r in self.registers})
            self.settle(values)
            yield [values[net] for net in outputs]

    def output_nets(self):
        """Output nets in the order in which the signature takes them, each with a port name."""
        number = {}
        for name, port in self.ports.items():
            if port["direction"] == "input":
                number.setdefault(self.net[name], len(number))
        for cell in self.cells.values():
            for pin in ("A", "B", "Y") if "Y" in cell["connections"] else ("Q", "C", "D"):
                if pin in cell["connections"]:
                    number.setdefault(cell["connections"][pin][0], len(number))
        named = {}
        for name in self.outputs:
            number.setdefault(self.net[name], len(number))
            named.setdefault(self.net[name], name)
        return [(net, named[net]) for net in sorted(named, key=number.get)]

    def delays(self, rule):
        """(cell name, rise, fall) for every cell."""
        loads = {}
        for cell in self.cells.values():
            for pin, bits in cell["connections"].items():
                if cell["port_directions"][pin] == "input":
                    loads[bits[0]] = loads.get(bits[0], 0) + 1
        for name in self.outputs:
            loads[self.net[name]] = loads.get(self.net[name], 0) + 1
        for i, (name, cell) in enumerate(self.cells.items(), 1):
            if rule == "wide":
                yield (name, 20 + ((i * 2654435761 & MASK) >> 8) % 181, 20 + ((i * 2246822519 & MASK) >> 9) % 181)
                continue
            pins = cell["connections"]
            fanin = sum(d == "input" for d in cell["port_directions"].values()) if "Y" in pins else 1
            load = min(loads.get(pins.get("Y", pins.get("Q"))[0], 0), 4)
            yield name, 2 + fanin + load, 1 + fanin + load


def vectors(count, width):
    """The pseudo-random input vectors: xorshift32, one step a word of 32 inputs."""
    x = 0x12345678
    for _ in range(count):
        bits = []
        while len(bits) < width:
            x ^= x << 13 & MASK
            x ^= x >> 17
            x ^= x << 5 & MASK
            bits += [x >> i & 1 for i in range(32)]
        yield bits[:width]


def signature(rows):
    """rows: the output values, 0 or 1, before each next vector, in output net order."""
    s = 0
    for row in rows:
        for value in row:
            s = (s << 1 & MASK | s >> 31) ^ value
    return s
