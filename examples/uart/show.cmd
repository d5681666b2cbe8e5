# The top sheet with probes on four of its nets, then two words through the loop; POP shows the waveforms.
VIEW SHEET
PROBE next 5.4 -1.2
PROBE empty 5.4 -1.4
PROBE take 3.5 -1.9
PROBE heard 4.6 -2.4
DO loopback.cmd
