# The sum of a and b is captured by the rising edge of clk, which comes every 100; the setup time is 2.
# Each try gives the operands later. Which is too late, which far too late?
DEFINE BUS C a a[2] a[1] a[0]
DEFINE BUS C b b[2] b[1] b[0]
DEFINE BUS C sum sum[3] sum[2] sum[1] sum[0]
LIST B clk a b sum
CLOCK PERIOD 100
FORCE A clk 0 0 R
FORCE A clk 1 50 R
FORCE A a[2] 0 0 ; FORCE A a[1] 0 0 ; FORCE A a[0] 0 0
FORCE A b[2] 0 0 ; FORCE A b[1] 0 0 ; FORCE A b[0] 0 0
# Short pulses while the sum settles are not what is looked for.
SPIKE CHECK OFF
RUN 100
# A try is one period; the edge is in its middle.
DO add.cmd 15 70
DO add.cmd 22 70
DO add.cmd 23 70
DO add.cmd 24 70
DO add.cmd 28 70
DO add.cmd 30 70
DO add.cmd 38 70
DO add.cmd 40 70
WRITE LIST sums
