"""The same work for several simulators from one flat netlist: files of stimuli, outputs and delays for the
simulator, a Verilog netlist with its test bench, and the plain text that the ceiling reads."""
import json
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parents[2] / "tests" / "end-to-end"))
from netlist_model import Netlist, vectors  # noqa: E402

NAMES = {"$_AND_": "and", "$_NAND_": "nand", "$_OR_": "or", "$_NOR_": "nor", "$_XOR_": "xor", "$_XNOR_": "xnor",
         "$_NOT_": "not", "$_BUF_": "buf", "$_DFF_P_": "dff"}
REGISTER = """primitive udp_dff (q, c, d);
  output q; reg q; input c, d;
  table
    r 0 : ? : 0 ;  r 1 : ? : 1 ;
    (0x) 0 : 0 : 0 ;  (0x) 1 : 1 : 1 ;  (x1) 0 : 0 : 0 ;  (x1) 1 : 1 : 1 ;
    f ? : ? : - ;  (1x) ? : ? : - ;  (x0) ? : ? : - ;  ? * : ? : - ;
  endtable
endprimitive
"""
BENCH = """module tb;
  reg [{last}:0] pi;
  reg ck, rstn;
  wire [{outputs}:0] po;
  reg [31:0] s, sig;
  reg [{bits}:0] w;
  integer k, j, count;
  dut u({ports});
  initial begin
    if (!$value$plusargs("vectors=%d", count)) count = 0;
    s = 32'h12345678; sig = 0; #{period};
    for (k = 0; k < count; k = k + 1) begin
      for (j = 0; j < {words}; j = j + 1) begin
        s = s ^ (s << 13); s = s ^ (s >> 17); s = s ^ (s << 5); w[32*j +: 32] = s;
      end
      pi = w[{last}:0]; rstn = (k >= 2); ck = 0; #{high};
      ck = 1; #{low};
      for (j = 0; j <= {outputs}; j = j + 1) sig = {{sig[30:0], sig[31]}} ^ (po[j] === 1'b1 ? 32'd1 : 32'd0);
    end
    $display("signature %h", sig);
    $finish;
  end
endmodule
"""


def copies(source, count, target):
    """A module of `count` separate copies that share clock and reset."""
    with open(source) as file:
        name, module = next(iter(json.load(file)["modules"].items()))
    shared = {p: module["ports"][p]["bits"][0] for p in ("CK", "RSTN") if p in module["ports"]}
    top = 1 + max(b for c in module["cells"].values() for bits in c["connections"].values() for b in bits)
    out = {"attributes": {"top": "1"}, "ports": {}, "cells": {}, "netnames": {}}
    for copy in range(count):
        def moved(bit, offset=copy * top):
            return bit if bit in shared.values() else bit + offset
        for port, record in module["ports"].items():
            if port not in shared:
                out["ports"]["c%d_%s" % (copy, port)] = dict(record, bits=[moved(b) for b in record["bits"]])
        for cell, record in module["cells"].items():
            pins = {p: [moved(b) for b in bits] for p, bits in record["connections"].items()}
            out["cells"]["c%d_%s" % (copy, cell)] = dict(record, connections=pins)
        for net, record in module["netnames"].items():
            if record["bits"][0] not in shared.values():
                out["netnames"]["c%d_%s" % (copy, net)] = dict(record, bits=[moved(b) for b in record["bits"]])
    for port in shared:
        out["ports"][port], out["netnames"][port] = module["ports"][port], module["netnames"][port]
    with open(target, "w") as file:
        json.dump({"creator": "work.py", "modules": {"%s_x%d" % (name, count): out}}, file, separators=(",", ":"))


class Work:
    def __init__(self, path, rule, count, period):
        self.netlist, self.rule, self.count, self.period = Netlist(path), rule, count, period
        self.number = {}
        for port in self.netlist.inputs + (["CK", "RSTN"] if self.netlist.registers else []):
            self.number.setdefault(self.netlist.net[port], len(self.number))
        for cell in self.netlist.cells.values():
            for bits in cell["connections"].values():
                self.number.setdefault(bits[0], len(self.number))
        self.delays = list(self.netlist.delays(rule))

    def gates(self):
        """(kind, rise, fall, output, inputs) of every cell, nets by number."""
        for cell, (_, rise, fall) in zip(self.netlist.cells.values(), self.delays):
            pins = cell["connections"]
            output, inputs = ("Y", "AB") if "Y" in pins else ("Q", "CD")
            yield (NAMES[cell["type"]], rise, fall, self.number[pins[output][0]],
                   [self.number[pins[p][0]] for p in inputs if p in pins])

    def outputs(self):
        return [self.number[net] for net, _ in self.netlist.output_nets()]

    def write_simulator_files(self, folder):
        netlist, state = self.netlist, {}
        (folder / "delays").write_text("".join("%s\t%d\t%d\n" % d for d in self.delays))
        (folder / "outputs").write_text("".join(name + "\n" for _, name in netlist.output_nets()))
        with open(folder / "stimuli", "w") as file:
            def force(time, port, value):
                if state.get(port) != value:
                    file.write("%d\t%s\t%d\n" % (time, port, value))
                state[port] = value
            for k, vector in enumerate(vectors(self.count, len(netlist.inputs))):
                time = (k + 1) * self.period
                for port, bit in zip(netlist.inputs, vector):
                    force(time, port, bit)
                if netlist.registers:
                    force(time, "RSTN", int(k >= 2))
                    force(time, "CK", 0)
                    force(time + self.period // 2, "CK", 1)

    def write_flat(self, path):
        """Counts, inputs, outputs, then a gate a line; what has no net is -1."""
        clock = [self.number[self.netlist.net[p]] if self.netlist.registers else -1 for p in ("CK", "RSTN")]
        inputs = [self.number[self.netlist.net[p]] for p in self.netlist.inputs]
        gates = list(self.gates())
        with open(path, "w") as file:
            print(len(self.number), len(gates), len(inputs), len(self.outputs()), *clock, self.period, file=file)
            print(*inputs, file=file)
            print(*self.outputs(), file=file)
            for kind, rise, fall, output, pins in gates:
                print(kind, rise, fall, output, *(pins + [-1])[:2], file=file)

    def write_verilog(self, path):
        netlist, registers = self.netlist, bool(self.netlist.registers)
        inputs = [self.number[netlist.net[p]] for p in netlist.inputs]
        clock = [self.number[netlist.net[p]] for p in ("CK", "RSTN")] if registers else []
        outputs, high = self.outputs(), self.period // 2 if registers else self.period
        ports = ([".n%d(pi[%d])" % (n, i) for i, n in enumerate(inputs)] +
                 [".n%d(%s)" % pair for pair in zip(clock, ("ck", "rstn"))] +
                 [".n%d(po[%d])" % (n, i) for i, n in enumerate(outputs)])
        with open(path, "w") as file:
            file.write("`timescale 1ns/1ns\n" + (REGISTER if registers else ""))
            file.write("module dut(%s);\n" % ", ".join("n%d" % n for n in inputs + clock + outputs))
            file.writelines("  input n%d;\n" % n for n in inputs + clock)
            file.writelines("  output n%d;\n" % n for n in outputs)
            for g, (kind, rise, fall, output, pins) in enumerate(self.gates()):
                file.write("  %s #(%d,%d) g%d (n%d, %s);\n" % ("udp_dff" if kind == "dff" else kind, rise, fall, g,
                                                             output, ", ".join("n%d" % n for n in pins)))
            words = (len(inputs) + 31) // 32
            file.write("endmodule\n" + BENCH.format(
                last=len(inputs) - 1, outputs=len(outputs) - 1, bits=32 * words - 1, words=words,
                ports=", ".join(ports), period=self.period, high=high, low=self.period - high))
