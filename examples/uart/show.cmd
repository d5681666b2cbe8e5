# The top sheet with probes on four of its nets, then two words through the loop; POP shows the waveforms.
VIEW SHEET
PROBE next 4.6 0.7
PROBE empty 4.6 0.5
PROBE take 2.8 -0.4
PROBE heard 4.0 -0.8
DO loopback.cmd
