# Clock, reset and enable of the counter.
CLOCK PERIOD 40
FORCE A clk 0 0 R
FORCE A clk 1 20 R
FORCE A rst 1 0 ; FORCE A rst 0 50
FORCE A en 1 0 ; FORCE A en 0 333 ; FORCE A en 1 413 ; FORCE A rst 1 870 ; FORCE A rst 0 890
