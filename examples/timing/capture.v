// A sum is captured by a register; how late may its operands come?
module capture(input clk, input [2:0] a, input [2:0] b, output reg [3:0] sum);
    always @(posedge clk) sum <= a + b;
endmodule
