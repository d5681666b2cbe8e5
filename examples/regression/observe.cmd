DEFINE BUS C count count[3] count[2] count[1] count[0]
LIST B clk rst en carry
LIST D count
