// A round-robin bus arbiter: two masters ask with req, the one that was served last waits when both ask.
module arbiter(input clk, input rst, input [1:0] req, output reg [1:0] grant);
    reg last;
    always @(posedge clk or posedge rst)
        if (rst) begin
            grant <= 0;
            last <= 1;
        end else begin
            grant[0] <= req[0] & (~req[1] | last);
            grant[1] <= req[1] & (~req[0] | ~last);
            if (|req) last <= req[1] & (~req[0] | ~last);
        end
endmodule
