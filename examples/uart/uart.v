// A serial line: words written into a FIFO are sent, words received are given out.  A bit takes four clocks;
// a word is a start bit (0), eight data bits, the least significant first, and a stop bit (1).

module uart (
    input        clk,
    input        rstn,      // asynchronous, active low
    input  [7:0] din,       // taken with write while full is 0
    input        write,
    output       full,
    output       empty,     // nothing waits to be sent
    output [7:0] dout,      // the word received last
    output       valid,     // for one clock when dout is new
    output       frame_error, // the stop bit was 0; until the next word
    input        loop,      // 1: the receiver listens to the transmitter, 0: to rx
    input        rx,
    output       tx
);
    wire       tick, take;
    wire [7:0] next_word;

    baud baud (.clk(clk), .rstn(rstn), .tick(tick));
    fifo fifo (.clk(clk), .rstn(rstn), .write(write), .din(din), .read(take),
               .dout(next_word), .full(full), .empty(empty));
    transmitter sender (.clk(clk), .rstn(rstn), .tick(tick), .word(next_word), .waiting(~empty),
                        .take(take), .line(tx));
    receiver listener (.clk(clk), .rstn(rstn), .line(loop ? tx : rx), .word(dout), .valid(valid),
                       .frame_error(frame_error));
endmodule

// One tick in four clocks.
module baud (input clk, input rstn, output tick);
    reg [1:0] count;
    always @(posedge clk or negedge rstn)
        if (!rstn) count <= 0;
        else count <= count + 1;
    assign tick = count == 3;
endmodule

// Four words; the read pointer follows the write pointer round.
module fifo (
    input        clk,
    input        rstn,
    input        write,
    input  [7:0] din,
    input        read,
    output [7:0] dout,
    output       full,
    output       empty
);
    wire [2:0] to, from;    // the upper bit tells full from empty
    wire [3:0] chosen;
    wire [7:0] word0, word1, word2, word3;
    wire       store = write & ~full;

    assign empty = to == from;
    assign full = to[1:0] == from[1:0] & to[2] != from[2];

    pointer write_pointer (.clk(clk), .rstn(rstn), .step(store), .at(to));
    pointer read_pointer (.clk(clk), .rstn(rstn), .step(read & ~empty), .at(from));
    choose choose (.at(to[1:0]), .enable(store), .line(chosen));
    word w0 (.clk(clk), .load(chosen[0]), .d(din), .q(word0));
    word w1 (.clk(clk), .load(chosen[1]), .d(din), .q(word1));
    word w2 (.clk(clk), .load(chosen[2]), .d(din), .q(word2));
    word w3 (.clk(clk), .load(chosen[3]), .d(din), .q(word3));
    pick pick (.at(from[1:0]), .a(word0), .b(word1), .c(word2), .d(word3), .y(dout));
endmodule

// A counter of three bits.
module pointer (input clk, input rstn, input step, output reg [2:0] at);
    always @(posedge clk or negedge rstn)
        if (!rstn) at <= 0;
        else if (step) at <= at + 1;
endmodule

// One of four lines.
module choose (input [1:0] at, input enable, output [3:0] line);
    assign line = {at[1] & at[0], at[1] & ~at[0], ~at[1] & at[0], ~at[1] & ~at[0]} & {4{enable}};
endmodule

// A register of eight bits.
module word (input clk, input load, input [7:0] d, output reg [7:0] q);
    always @(posedge clk)
        if (load) q <= d;
endmodule

// One of four words.
module pick (input [1:0] at, input [7:0] a, input [7:0] b, input [7:0] c, input [7:0] d, output [7:0] y);
    assign y = at[1] ? (at[0] ? d : c) : (at[0] ? b : a);
endmodule

// Sends a word when one waits; a bit leaves at each tick.
module transmitter (
    input        clk,
    input        rstn,
    input        tick,
    input  [7:0] word,
    input        waiting,
    output       take,      // the word has been taken
    output       line
);
    wire done;
    reg  busy;

    assign take = tick & waiting & ~busy;
    shifter shifter (.clk(clk), .rstn(rstn), .load(take), .step(tick & busy), .word(word), .line(line));
    bit_counter bits (.clk(clk), .rstn(rstn), .clear(take), .step(tick), .done(done));

    always @(posedge clk or negedge rstn)
        if (!rstn) busy <= 0;
        else if (take) busy <= 1;
        else if (tick & done) busy <= 0;
endmodule

// The word on its way out, the start bit first; the line rests at 1.
module shifter (input clk, input rstn, input load, input step, input [7:0] word, output line);
    reg [8:0] bits;
    always @(posedge clk or negedge rstn)
        if (!rstn) bits <= 9'h1ff;
        else if (load) bits <= {word, 1'b0};
        else if (step) bits <= {1'b1, bits[8:1]};
    assign line = bits[0];
endmodule

// Counts the bits of a word; done at the tenth.
module bit_counter (input clk, input rstn, input clear, input step, output done);
    reg [3:0] count;
    always @(posedge clk or negedge rstn)
        if (!rstn) count <= 0;
        else if (clear) count <= 0;
        else if (step) count <= count + 1;
    assign done = count == 9;
endmodule

// Waits for a start bit, then takes the line in the middle of each bit.
module receiver (
    input        clk,
    input        rstn,
    input        line,
    output [7:0] word,
    output reg   valid,
    output reg   frame_error
);
    wire level, middle, done;
    reg  busy;
    wire start = ~busy & ~level;

    synchronizer inlet (.clk(clk), .rstn(rstn), .d(line), .q(level));
    phase phase (.clk(clk), .rstn(rstn), .restart(start), .middle(middle));
    bit_counter bits (.clk(clk), .rstn(rstn), .clear(start), .step(middle & busy), .done(done));
    collector data (.clk(clk), .step(middle & busy & ~done), .level(level), .word(word));

    always @(posedge clk or negedge rstn)
        if (!rstn) begin
            busy <= 0;
            valid <= 0;
            frame_error <= 0;
        end else begin
            busy <= start | busy & ~(middle & done);
            valid <= busy & middle & done & level;
            frame_error <= start ? 1'b0 : busy & middle & done ? ~level : frame_error;
        end
endmodule

// Two registers against metastability.
module synchronizer (input clk, input rstn, input d, output reg q);
    reg first;
    always @(posedge clk or negedge rstn)
        if (!rstn) {q, first} <= 2'b11;
        else {q, first} <= {first, d};
endmodule

// Which quarter of a bit it is.
module phase (input clk, input rstn, input restart, output middle);
    reg [1:0] count;
    always @(posedge clk or negedge rstn)
        if (!rstn) count <= 0;
        else if (restart) count <= 0;
        else count <= count + 1;
    assign middle = count == 1;
endmodule

// The word as it comes in.
module collector (input clk, input step, input level, output reg [7:0] word);
    always @(posedge clk)
        if (step) word <= {level, word[7:1]};
endmodule
