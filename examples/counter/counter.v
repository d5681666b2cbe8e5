// A four-bit counter with asynchronous reset and a carry.
module counter(input clk, input rst, input en, output reg [3:0] count, output carry);
    assign carry = en & (&count);
    always @(posedge clk or posedge rst)
        if (rst) count <= 0;
        else if (en) count <= count + 1;
endmodule
