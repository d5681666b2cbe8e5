// tm: the layout of sheet files.  One table of fields per record type, which reader, writer and tests walk.
// Integers stand most significant byte first but for two fields that stand the other way; texts are a 4-byte
// length and their characters.  Record types are numbers: 1..32 the part of an object's type, 50 the header,
// 51 the generic part every object begins with, 52..58 what fields are made of.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "schematic/object_records.h"

inline constexpr std::size_t tm_header_bytes = 38;
inline constexpr std::size_t tm_generic_bytes = 40;
inline constexpr float tm_software_revision = 2.0F;

enum tm_rectype : std::int16_t {
    tm_rec_header = 50,
    tm_rec_generic,
    tm_rec_point,
    tm_rec_bounds,
    tm_rec_string,
    tm_rec_name,
    tm_rec_value,
    tm_rec_points5,
    tm_rec_points16,
};

// How a field stands in the file.
enum class tm_field_form : std::int16_t {
    reversed = 1,  // most significant byte first
    stored = 2,    // single bytes, and the fields with the least significant byte first
    boolean = 3,   // a single byte, true when not 0
    record = 4,    // a record of the field's rectype
};

struct tm_sheet_field {
    std::string_view name;
    std::size_t offset;  // from the beginning of the part, texts before it being empty
    std::size_t width;   // bytes; an empty text's of a text
    tm_field_form form;
    std::int16_t rectype;       // with form record
    void* (*at)(void* record);  // the field in memory; object parts take a tm_object_gene_rec_t*
};

// The fields of a record type 1..32, 50..53; empty for any other number.
std::span<const tm_sheet_field> tm_layout_of(std::int16_t rectype);

// The other ids that objects hold: those of father, siblings and first child are in the generic part.
struct tm_sheet_reference {
    std::int16_t object_type;
    std::string_view name;
    std::int16_t& (*at)(tm_object_gene_rec_t& object);
    std::int16_t target_type;
    std::int16_t other_type;  // as good; nil: none
    bool may_be_none;
};
std::span<const tm_sheet_reference> tm_references_of(std::int16_t object_type);
