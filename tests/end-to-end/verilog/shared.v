// A bus that three registers drive in turn, and one that reads it.
module shared(input clk, input [2:0] select, input [7:0] in, output [7:0] bus, output reg [7:0] last);
    reg [7:0] a, b, c;
    always @(posedge clk) begin
        if (select[0]) b <= in;
        if (select[1]) c <= in + 1;
        if (select[2]) a <= in ^ 8'h5a;
        last <= bus;
    end
    assign bus = select[0] ? a : 8'bz;
    assign bus = select[1] ? b : 8'bz;
    assign bus = select[2] ? c : 8'bz;
endmodule
