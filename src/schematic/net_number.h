// tm: the numbers of nets, by which names like "N_17" know them.  The number is the object id; on the pages
// of one sheet a net has one number on all of them, its net_index, which its reserved flag announces.  Files
// must be open; what is no net has its id.
#pragma once

#include "schematic/object.h"

std::int32_t tm_net_number(tm_file_index_t file_index, std::int16_t net);
// The net of that number; 0: none on this page.
std::int16_t tm_numbered_net(tm_file_index_t file_index, std::int32_t number);
// No net of the sheet, whatever its page, has a higher one.
std::int32_t tm_highest_net_number(tm_file_index_t file_index);
