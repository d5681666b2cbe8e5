# The loop of loopback.cmd from tables: stimuli, and what has to be received; a difference is an error.
SPIKE CHECK OFF
CLOCK PERIOD 200
FORCE A clk 0 0 R
FORCE A clk 1 100 R
APPLY TABLE words.tab
CHECK TABLE received.tab PERIOD 200 150
RUN 18000
