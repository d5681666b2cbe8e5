# One word through the loop with a clock that may be too fast: the period, then half of it.
DO design_yx.buses
SPIKE CHECK OFF
CLOCK PERIOD $ARG1
FORCE A clk 0 0 R
FORCE A clk 1 $ARG2 R
FORCE A rstn 0 0 ; FORCE A rstn 1 200
FORCE A loop 1 0 ; FORCE A rx 1 0 ; FORCE A write 0 0
RUN 400
DO word.cmd 0 1 0 0 1 0 1 1 0
FORCE C write 1 0
RUN $ARG1
FORCE C write 0 0
RUN 4000
