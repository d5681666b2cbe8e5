// An accumulator machine of three cycles an instruction, with its program and its data in memories.  The
// program writes a Fibonacci sequence of bytes into the data memory, reads it back as a checksum, and begins
// again with that as its seed; what it computes appears at `port`, `strobe` marks each new value.
module processor(input clk, input reset, output reg [7:0] port, output reg strobe, output [7:0] at, output [7:0] acc_out);
    localparam LDI = 1, LDM = 2, STM = 3, ADD = 4, ADDI = 5, XORI = 6, JNZ = 7, JMP = 8, LDX = 9, STX = 10, OUT = 11;
    reg [15:0] program [0:63];
    reg [7:0] data [0:127];
    reg [15:0] instruction;
    reg [7:0] operand, acc, pc;
    reg [2:0] phase;  // fetch, operand, execute; indirect ones read once more

    wire [3:0] op = instruction[15:12];
    wire [7:0] arg = instruction[7:0];
    wire is_indirect = op == LDX || op == STX;
    assign at = pc;
    assign acc_out = acc;

    always @(posedge clk) begin
        strobe <= 0;
        if (reset) begin
            pc <= 0;
            acc <= 0;
            port <= 0;
            phase <= 0;
        end else case (phase)
            0: begin
                instruction <= program[pc[5:0]];
                phase <= 1;
            end
            1: phase <= is_indirect ? 2 : 3;
            2: phase <= 3;
            default: begin
                phase <= 0;
                pc <= pc + 1;
                case (op)
                    LDI: acc <= arg;
                    LDM, LDX: acc <= operand;
                    ADD: acc <= acc + operand;
                    ADDI: acc <= acc + arg;
                    XORI: acc <= acc ^ arg;
                    JNZ: if (acc != 0) pc <= arg;
                    JMP: pc <= arg;
                    OUT: begin
                        port <= acc;
                        strobe <= 1;
                    end
                endcase
            end
        endcase
    end

    // The data memory: read in phases 1 and 2, written in phase 3.
    wire [6:0] address = phase == 2 || (phase == 3 && is_indirect) ? operand[6:0] : arg[6:0];
    always @(posedge clk) begin
        if (phase == 1 || (phase == 2 && op == LDX)) operand <= data[address];
        if (phase == 3 && (op == STM || op == STX) && !reset) data[address] <= acc;
    end

    integer i;
    initial begin
        for (i = 0; i < 64; i = i + 1) program[i] = 0;
        program[0] = {4'd1, 12'd0};     // LDI 0
        program[1] = {4'd3, 12'd0};     // STM 0
        program[2] = {4'd1, 12'd1};     // LDI 1
        program[3] = {4'd3, 12'd1};     // STM 1
        program[4] = {4'd1, 12'd16};    // LDI 16
        program[5] = {4'd3, 12'd3};     // STM 3: where to write
        program[6] = {4'd2, 12'd0};     // LDM 0
        program[7] = {4'd4, 12'd1};     // ADD 1
        program[8] = {4'd3, 12'd2};     // STM 2: the next of the sequence
        program[9] = {4'd2, 12'd1};     // LDM 1
        program[10] = {4'd3, 12'd0};    // STM 0
        program[11] = {4'd2, 12'd2};    // LDM 2
        program[12] = {4'd3, 12'd1};    // STM 1
        program[13] = {4'd10, 12'd3};   // STX 3
        program[14] = {4'd11, 12'd0};   // OUT
        program[15] = {4'd2, 12'd3};    // LDM 3
        program[16] = {4'd5, 12'd1};    // ADDI 1
        program[17] = {4'd3, 12'd3};    // STM 3
        program[18] = {4'd6, 12'd48};   // XORI 48: all written?
        program[19] = {4'd7, 12'd6};    // JNZ 6
        program[20] = {4'd1, 12'd16};   // LDI 16
        program[21] = {4'd3, 12'd3};    // STM 3: where to read
        program[22] = {4'd1, 12'd0};    // LDI 0
        program[23] = {4'd3, 12'd4};    // STM 4: the sum
        program[24] = {4'd9, 12'd3};    // LDX 3
        program[25] = {4'd4, 12'd4};    // ADD 4
        program[26] = {4'd3, 12'd4};    // STM 4
        program[27] = {4'd11, 12'd0};   // OUT
        program[28] = {4'd2, 12'd3};    // LDM 3
        program[29] = {4'd5, 12'd1};    // ADDI 1
        program[30] = {4'd3, 12'd3};    // STM 3
        program[31] = {4'd6, 12'd48};   // XORI 48
        program[32] = {4'd7, 12'd24};   // JNZ 24
        program[33] = {4'd2, 12'd4};    // LDM 4
        program[34] = {4'd3, 12'd0};    // STM 0: the new seed
        program[35] = {4'd8, 12'd4};    // JMP 4
    end
endmodule
