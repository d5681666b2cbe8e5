// A counter behind a clock gate with a latch.
module gated(input clk, input enable, input reset, output [3:0] count, output gate);
    reg open;
    always @* if (!clk) open = enable;
    assign gate = clk & open;
    reg [3:0] value;
    always @(posedge gate or posedge reset) if (reset) value <= 0; else value <= value + 1;
    assign count = value;
endmodule
