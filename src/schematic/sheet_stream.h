// tm: records to and from the bytes of a sheet file.  Reading is sticky: the first fault sets the input's
// fault to a status code and nothing is read any more.  A record type that does not exist is the caller's
// fault and fatal (object_structure_invalid).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "schematic/sheet_layout.h"

struct tm_sheet_input {
    std::string_view bytes;
    std::size_t at = 0;
    std::int32_t fault = 0;  // file_open_invalid, object_type_invalid
};

// One record by its type number; those of the objects' types are the part behind the generic one and take the
// record as its tm_object_gene_rec_t.  A text is refused when its length is below 0 or above its record's
// capacity or a character is not printable.
void readrectype(tm_sheet_input& in, void* record, std::int16_t rectype);
void writerectype(std::string& out, const void* record, std::int16_t rectype);

// A whole object, into a new record of the file; null with a fault.
tm_object_gene_rec_t* readOneObject(tm_sheet_input& in, tm_file_gene_recf_t& file);
void writeOneObject(std::string& out, const tm_object_gene_rec_t& object);
