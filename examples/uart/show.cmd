# The top sheet with probes on four of its nets, then two words through the loop; POP goes
# from the waveforms to the sheet and back.
VIEW SHEET
PROBE next 2.4 1.2
PROBE empty 2.4 1.0
PROBE take 5.3 -0.2
PROBE heard 6.4 -1.0
DO loopback.cmd
POP
