// kol: the list file.  Writes the table of the list view as text on the stream kol_wli: four header lines of
// names, then one row per time, 10,000 rows at most.  Columns are those of the list's layout.
#pragma once

#include <cstdint>
#include <cstdio>

#include "kernel/context.h"

extern std::FILE* kol_wli;
void kol_list_wfile_signame();
void kol_list_bus_wfile_signame(std::int16_t row_cur, yx_bus_rec_t* bus, std::int16_t& column);
void kol_list_wfile_sigresult(std::int32_t begin_time, std::int32_t end_time);
void kol_list_wfilebusresult(yx_bus_rec_t* bus, std::int32_t cur_time, std::int16_t& column);
