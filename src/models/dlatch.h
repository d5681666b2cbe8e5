// kol: the transparent latch.  Open, its outputs follow the data, also what waits there when it opens;
// closed, they hold.  Reset wins over set, set over the data, by level: what is still active when another
// ends takes effect.  An unknown enable, set or reset gives "i" unless every way of reading it gives the same
// value. Setup and hold count against the closing edge, which EDGE of "E" names ("EP" closes when it falls),
// pulses of the enable from edge to edge.  The procedures work on kol_ext.cur_inst and cur_pin.
#pragma once

#include "foundation/archive.h"

void kol_dlatch_init();
void kol_dlatch_clear();    // forgets every instance
void kol_dlatch_restart();  // every latch's run-time fields to what the nets say
void kol_dlatch_refresh();  // the current instance's delays and limits from its properties, silently
void kol_dlatch_archive(tm_archive_t& archive);
void kol_dlatch_d_hdler();
void kol_dlatch_e_hdler();
void kol_dlatch_s_hdler();
void kol_dlatch_r_hdler();
