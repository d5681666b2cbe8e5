// kol: the five combinational gates AND, NAND, OR, NOR, XOR, with any number of inputs and outputs.  Set-up
// reads RISE, FALL and DRIVE of the pins of cur_inst; the input handlers recompute the output and schedule
// it.  User errors of set-up are shown, counted, and end that instance's set-up.
#pragma once

#include "kernel/model.h"

void kol_and_init();
void kol_nand_init();
void kol_or_init();
void kol_nor_init();
void kol_xor_init();
void kol_and_i1_hdler();
void kol_nand_i1_hdler();
void kol_or_i1_hdler();
void kol_nor_i1_hdler();
void kol_xor_i1_hdler();
kol_short_way_t kol_and_short_way(const yx_inst_record_t& inst);
kol_short_way_t kol_nand_short_way(const yx_inst_record_t& inst);
kol_short_way_t kol_or_short_way(const yx_inst_record_t& inst);
kol_short_way_t kol_nor_short_way(const yx_inst_record_t& inst);
kol_short_way_t kol_xor_short_way(const yx_inst_record_t& inst);
// Forgets every gate.
void kol_clear_gates();
// Takes the delays of the current instance over from its properties again, silently.
void kol_gate_refresh();
