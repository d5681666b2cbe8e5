# The receiver listens to the transmitter: two words are written into the FIFO, sent bit by bit and received.
# The clock rises at 100, 300, 500, ...; a bit takes four periods.
DO design_yx.buses
LIST B dout valid frame_error empty full
TRACE write empty tx valid dout clk rstn din
SWITCHE LIST VALUE
SPIKE CHECK OFF
CLOCK PERIOD 200
FORCE A clk 0 0 R
FORCE A clk 1 100 R
FORCE A rstn 0 0 ; FORCE A rstn 1 250
FORCE A loop 1 0 ; FORCE A rx 1 0
# Each rising edge while write is 1 takes a word.
FORCE A write 0 0 ; FORCE A write 1 350 ; FORCE A write 0 750
DO word.cmd 0 1 0 0 1 0 1 1 350
DO word.cmd 0 1 0 1 1 0 1 0 550
RUN 18000
WRITE LIST received
SCALE TRACE TIME 900
VIEW WINDOW TRACE
