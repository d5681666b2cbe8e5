// tm: bounds of sheet objects.  Offsets saturate at the 32-bit range.
#pragma once

#include <span>

#include "schematic/object_records.h"

tm_point_t tm_offset(tm_point_t point, tm_point_t origin);
tm_bounds_t tm_box_of(std::span<const tm_point_t> points);  // at least one point
tm_bounds_t tm_moved(const tm_bounds_t& bounds, tm_point_t by);
// Grows the bounds of every ancestor of the object to enclose the object's.
void tm_enclose_in_ancestors(tm_file_gene_recf_t& file, const tm_object_gene_rec_t& object);
