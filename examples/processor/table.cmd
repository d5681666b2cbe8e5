# The program of design_yx.mem, its port compared with port.tab: a difference is an error.
SPIKE CHECK OFF
CLOCK PERIOD 1000
FORCE A clk 0 0 R
FORCE A clk 1 300 R
FORCE A reset 1 0
FORCE A reset 0 2000
CHECK TABLE port.tab PERIOD 1000 700
RUN 400000
