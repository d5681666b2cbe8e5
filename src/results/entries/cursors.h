// kol: the cursors of the entries.  Each signal of the list and of the trace has a cursor into the state
// history of its net; here they are moved, and the times of changes are found.  Times are time steps.
#pragma once

#include <cstdint>

#include "kernel/context.h"

// To the value at a time: the last record not later, or the first record; none without a history.
void kol_list_get_sigresult(yx_signal_rec_t* signal, std::int32_t cur_time);
void kol_list_get_busresult(yx_bus_rec_t* bus, std::int32_t cur_time);
// nextime becomes the time of the next change behind curtime when that is earlier; the last sets it, bounded
// by cur_time of the simulation.
void kol_list_get_signextime(yx_signal_rec_t* signal, std::int32_t curtime, std::int32_t& nextime);
void kol_list_get_busnextime(yx_bus_rec_t* bus, std::int32_t curtime, std::int32_t& nextime);
// The time of the last change before a time; 0 when there is none.
std::int32_t rs_change_before(yx_signal_rec_t& signal, std::int32_t time);
std::int32_t rs_change_before(yx_bus_rec_t& bus, std::int32_t time);
void kol_list_get_nextime(std::int32_t curtime, std::int32_t& nextime);
// From the time of a row of the list to that of the next: the next change, or one list period on.  False when
// no row follows.
bool kol_list_next_row_time(std::int32_t& time);
