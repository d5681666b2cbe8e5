// kol: the MOS switch.  Closed, it resolves the states of its terminal nets into one and drives that state
// onto every terminal net that does not carry it; open, it ignores them.  Opening schedules nothing.  The
// procedures work on kol_ext.cur_inst and cur_pin.
#pragma once

#include "foundation/archive.h"

void kol_smos_init();
void kol_smos_clear();    // forgets every instance
void kol_smos_restart();  // every switch opens, unless its enable net says closed
void kol_smos_refresh();  // the current instance's delays from its properties, silently
void kol_smos_archive(tm_archive_t& archive);
void kol_smos_e_hdler();
void kol_smos_d_hdler();
