// tm: the boxes of objects.  The place that an object takes on its sheet, with what it contains.
#pragma once

#include "schematic/object_reader.h"
#include "schematic/spot.h"

// The box of a symbol's shape and pins in its own frame.
tm_box_t tm_symbol_box(const tm_reader_t& reader, std::int16_t symbol, bool with_texts = false);
// The box that an object takes on its sheet, with what it contains: instances without any texts, nets without
// theirs; empty when it takes none.
tm_box_t tm_object_box(const tm_reader_t& reader, std::int16_t object_id);
