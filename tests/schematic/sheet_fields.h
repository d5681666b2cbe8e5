// The fields of a sheet file: those of the header as record 0, those of an object under its number.
#pragma once

#include "foundation/layout_fields.h"
#include "schematic/object_pool.h"
#include "schematic/sheet_layout.h"

inline std::vector<tst_field> tst_sheet_fields(std::string_view bytes) {
    std::vector<tst_field> fields;
    tm_file_gene_recf_t file;
    std::size_t at = 0;
    tst_add_fields(tm_header_layout, 0, bytes, at, file, fields);
    for (std::int16_t id = 1; id <= file.object_id_max; ++id) {
        tm_object_gene_rec_t generic;
        tst_add_fields(tm_generic_layout, id, bytes, at, generic, fields);
        tm_object_gene_rec_t& object = tm_pool_make(file, generic.object_type);
        tst_add_fields(tm_part_layout(generic.object_type), id, bytes, at, object, fields);
    }
    return fields;
}
