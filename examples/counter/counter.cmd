# A four-bit counter: reset, count, hold, count over the end.
DEFINE BUS C count count[3] count[2] count[1] count[0]
LIST B clk rst en carry
LIST D count
CLOCK PERIOD 40
FORCE A clk 0 0 R
FORCE A clk 1 20 R
FORCE A rst 1 0
FORCE A rst 0 50
FORCE A en 1 0
# The counter holds from 333 to 413.
FORCE A en 0 333
FORCE A en 1 413
RUN 900
# One line for every period of the clock, just before its edge.
SWITCHE LIST PERIOD
PERIOD LIST 40
WRITE LIST count_by_period 19 900
# Every change.
SWITCHE LIST CHANGE
WRITE LIST count_by_change 0 200
