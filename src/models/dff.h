// kol: the D flip-flop.  Captures its data on the active clock edge; set and reset override the clock; setup,
// hold and pulse widths are checked and reported.  The procedures work on kol_ext.cur_inst and cur_pin.
#pragma once

#include "foundation/archive.h"
#include "kernel/model.h"

void kol_dff_init();
void kol_dff_clear();    // forgets every instance
void kol_dff_restart();  // every flip-flop's run-time fields to what the nets say
void kol_dff_refresh();  // the current instance's delays and limits from its properties, silently
void kol_dff_archive(tm_archive_t& archive);
kol_short_way_t kol_dff_short_way(const yx_inst_record_t& inst);  // of one without limits but a setup time
void kol_dff_d_hdler();
void kol_dff_clk_hdler();
void kol_dff_s_hdler();
void kol_dff_r_hdler();
