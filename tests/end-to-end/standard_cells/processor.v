// A processor of 16 bits with 8 registers; instructions and data come from outside.
module processor(input clk, input rst, input [15:0] instruction, input [15:0] in, output reg [15:0] pc,
                 output reg [15:0] out);
  reg [15:0] r [0:7];
  wire [15:0] a = r[instruction[5:3]], b = instruction[15] ? {{13{instruction[8]}}, instruction[8:6]} : r[instruction[8:6]];
  reg [15:0] y;
  integer i;
  always @* case (instruction[11:9])
    0: y = a + b;
    1: y = a - b;
    2: y = a & b;
    3: y = a ^ b;
    4: y = a << b[3:0];
    5: y = $signed(a) >>> b[3:0];
    6: y = {15'b0, a < b};
    7: y = in;
  endcase
  always @(posedge clk or posedge rst)
    if (rst) begin
      pc <= 0;
      out <= 0;
      for (i = 0; i < 8; i = i + 1) r[i] <= 0;
    end else begin
      pc <= instruction[14] && a == 0 ? pc + b : pc + 1;
      if (instruction[13]) out <= y;
      if (instruction[12]) r[instruction[2:0]] <= y;
    end
endmodule
