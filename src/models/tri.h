// kol: the tri-state buffer.  Enabled, its outputs drive the value of A with the strengths of DRIVE;
// disabled, they are at high impedance ("xZ"); under an unknown enable they drive "i".  It never drives back.
// EDGE of "E" names the edge that enables: "EP" is enabled while it is "1".  The procedures work on
// kol_ext.cur_inst and cur_pin.
#pragma once

void kol_tri_init();
void kol_tri_clear();    // forgets every instance
void kol_tri_refresh();  // the current instance's delays from its properties, silently
void kol_tri_hdler();    // of every input
