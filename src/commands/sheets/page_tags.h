// kol: tags that lead to other pages.  A net that goes on elsewhere has beside its tag FROM_PAGE or TO_PAGE
// the numbers of pages (property PAGE: "<-3", "->2,7"), the first of which the tag leads to.
#pragma once

#include <string>

#include "schematic/object.h"

// The page that a tag leads to; 0: none.
std::int16_t kol_page_of_tag(tm_file_index_t file, std::int16_t tag);
// The name of the net of the tag at a point, or else of the net there; empty: neither is near.
std::string kol_net_name_at(tm_file_index_t file, const tm_point_t& at);
// Turns to the page that the tag at the point leads to and shows the net there.  False: no such tag is there.
bool kol_follow_tag(const tm_point_t& at);
