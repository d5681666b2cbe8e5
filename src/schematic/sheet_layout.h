// tm: the layout of sheet files, in the rows of foundation/layout.h.  Integers stand most significant byte
// first but for two fields that stand the other way; nothing lies between fields.  Record types are numbers:
// 1..32 the part of an object's type, 50 the header, 51 the generic part every object begins with, 52..58
// what fields are made of.
#pragma once

#include "foundation/layout.h"
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

// What fields are made of, besides numbers and texts.
template <>
struct lay_number<tm_point_t> : lay_number<std::int32_t> {};
template <>
struct lay_number<tm_bounds_t> : lay_number<std::int32_t> {};

extern const lay_layout<tm_file_gene_recf_t> tm_header_layout;
extern const lay_layout<tm_object_gene_rec_t> tm_generic_layout;
// The part of an object type, 1..32, behind the generic one.
const lay_layout<tm_object_gene_rec_t>& tm_part_layout(std::int16_t object_type);

// The other ids that objects hold, 0 for none: those of father, siblings and first child are in the generic
// part.
struct tm_sheet_reference {
    std::int16_t object_type;
    std::string_view name;
    std::int16_t& (*at)(tm_object_gene_rec_t& object);
    std::int16_t target_type;
    std::int16_t other_type;  // as good; nil: none
};
std::span<const tm_sheet_reference> tm_references_of(std::int16_t object_type);
