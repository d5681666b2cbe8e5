// Functions in which every input stands once, so that it has a single way to an output.
module tree(input [39:0] a, output [3:0] y);
  assign y[0] = ^a[9:0];
  assign y[1] = (a[10] & a[11] | a[12] & a[13]) ^ ((a[14] | a[15]) & a[16]) ^ a[17] ^ ~(a[18] & a[19]);
  assign y[2] = (a[20] ? a[21] : a[22]) ^ (a[23] ? a[24] : a[25]) ^ (a[26] & a[27] & a[28]) ^ (a[29] | a[30]);
  assign y[3] = ~((a[31] | a[32]) & (a[33] | a[34]) ^ a[35]) ^ (a[36] & ~a[37] | ~a[38] & a[39]);
endmodule
