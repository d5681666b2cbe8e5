// kol: the list file.  Writes the table of the list view as text on a stream: four header lines of
// names, then one row per time, 10,000 rows at most.  Columns are those of the list's layout.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include "kernel/context.h"

void kol_list_wfile_signame(std::FILE* file);
void kol_list_bus_wfile_signame(std::string& header, std::int16_t row_cur, yx_bus_rec_t* bus,
                                std::int16_t& column);
void kol_list_wfile_sigresult(std::FILE* file, std::int32_t begin_time, std::int32_t end_time);
void kol_list_wfilebusresult(std::FILE* file, yx_bus_rec_t* bus, std::int32_t cur_time, std::int16_t& column);
