# The program of design_yx.mem: 1, 2, 3, 5, 8, 13, 21, 34 and 55 at the port.
DO design_yx.buses
LIST B strobe port
SWITCHE LIST VALUE
SPIKE CHECK OFF
CLOCK PERIOD 1000
FORCE A clk 0 0 R
FORCE A clk 1 300 R
FORCE A reset 1 0
FORCE A reset 0 2000
RUN 400000
VIEW WINDOW LIST
WRITE LIST port_values
