// tm: what makes the objects of a file sound.  Object k is number k, finished and not deleted; every id it
// holds is 0 or an object of the right type; the tree's links agree with each other, close no circle and go
// at most 64 levels deep; properties alone hang where properties are looked for; points fit their polyline.
// Whatever walks a sound file ends and finds what it expects.
#pragma once

#include <string>

#include "schematic/object_records.h"

// False: why names the first object and what is wrong with it.
bool tm_sheet_check(const tm_file_gene_recf_t& file, std::string& why);
