// kol: the stability checker.  Drives nothing; reports setup, hold and clock pulse widths of a data input
// against a clock, setup and hold only while its enable, if it has one, allows it.  The procedures work on
// kol_ext.cur_inst and cur_pin.
#pragma once

#include "foundation/archive.h"

void kol_stable_init();
void kol_stable_clear();    // forgets every instance
void kol_stable_restart();  // every checker's run-time fields to what the nets say
void kol_stable_refresh();  // the current instance's delays and limits from its properties, silently
void kol_stable_archive(tm_archive_t& archive);
void kol_stable_d_hdler();
void kol_stable_clk_hdler();
void kol_stable_e_hdler();
