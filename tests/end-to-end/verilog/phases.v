// A pipeline of latches on two clock phases that do not overlap.
module phases(input phase1, input phase2, input [3:0] in, output [3:0] out, output [3:0] middle);
    reg [3:0] a, b, c, d;
    always @* if (phase1) a = in;
    always @* if (phase2) b = a + 3;
    always @* if (phase1) c = b ^ 4'b0101;
    always @* if (phase2) d = c;
    assign middle = b;
    assign out = d;
endmodule
