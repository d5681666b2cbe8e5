// kol: the latch.  Open, it passes every data change; on the latching edge of its enable it takes the data
// and holds it until the other edge.  Set and reset override; the checks are those of the flip-flop against
// the enable. An enable named "EP" is open while it is "1" and latches when it falls, "EN" the other way
// round.  The procedures work on kol_ext.cur_inst and cur_pin.
#pragma once

#include "foundation/archive.h"

void kol_latch_init();
void kol_latch_clear();    // forgets every instance
void kol_latch_restart();  // every latch's run-time fields to what the nets say
void kol_latch_refresh();  // the current instance's delays and limits from its properties, silently
void kol_latch_archive(tm_archive_t& archive);
void kol_latch_d_hdler();
void kol_latch_e_hdler();
void kol_latch_s_hdler();
void kol_latch_r_hdler();
