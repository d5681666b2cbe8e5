# Two masters ask for a bus. Breaks stop the run where a grant comes, so that the next request can depend on it.
DEFINE BUS C grant grant[1] grant[0]
LIST B clk rst req[1] req[0]
LIST B grant
CLOCK PERIOD 40
FORCE A clk 0 0 R
FORCE A clk 1 20 R
FORCE A rst 1 0
FORCE A rst 0 30
FORCE A req[0] 0 0
FORCE A req[1] 0 0
RUN 90
# Master 0 asks alone; it gives the bus back once it has it.
BREAK grant[0] 1
STATUS BREAK
FORCE C req[0] 1 0
RUN 400
FORCE C req[0] 0 10
RUN
# Both ask at once: it is the turn of master 1.
BREAK grant[1] 1
FORCE C req[0] 1 5
FORCE C req[1] 1 5
RUN 400
# While both keep asking they take turns.
RUN
RUN
FORGET BR grant[0]
RUN
FORGET BR *
# Without a break there is nothing to continue: a time is needed.
RUN 100
WRITE LIST grants
