// Records to and from the bytes of a sheet file.
#include "schematic/sheet_stream.h"

#include <algorithm>
#include <cstdio>

#include "foundation/status.h"
#include "schematic/object_pool.h"

namespace {

// How the record of a type number is read and written.
struct rectype_row {
    std::int16_t rectype;
    bool (*read)(std::string_view bytes, std::size_t& at, void* record);
    void (*write)(const void* record, std::string& bytes);
};

template <const auto& Layout>
constexpr rectype_row of_layout(std::int16_t rectype) {
    using record_t = typename std::remove_cvref_t<decltype(Layout)>::record_type;
    return {rectype,
            [](std::string_view bytes, std::size_t& at, void* record) {
                return lay_get(Layout, bytes, at, *static_cast<record_t*>(record));
            },
            [](const void* record, std::string& bytes) {
                lay_put(Layout, *static_cast<const record_t*>(record), bytes);
            }};
}

template <typename Value>
constexpr rectype_row of_value(std::int16_t rectype) {
    return {rectype,
            [](std::string_view bytes, std::size_t& at, void* record) {
                return lay_get_value<lay_order::high_first>(bytes, at, *static_cast<Value*>(record));
            },
            [](const void* record, std::string& bytes) {
                std::size_t at = bytes.size();
                bytes.resize(at + (lay_text_max<Value> < 0 ? sizeof(Value) : sizeof(std::int32_t)), '\0');
                lay_put_value<lay_order::high_first>(*static_cast<const Value*>(record), bytes, at);
            }};
}

constexpr rectype_row rectypes[] = {
    of_layout<tm_header_layout>(tm_rec_header),
    of_layout<tm_generic_layout>(tm_rec_generic),
    of_value<tm_point_t>(tm_rec_point),
    of_value<tm_bounds_t>(tm_rec_bounds),
    of_value<tm_string_record_t>(tm_rec_string),
    of_value<tm_name_record_t>(tm_rec_name),
    of_value<tm_value_record_t>(tm_rec_value),
    of_value<std::array<tm_point_t, 5>>(tm_rec_points5),
    of_value<std::array<tm_point_t, 16>>(tm_rec_points16),
};

const rectype_row& row_of(std::int16_t rectype) {
    const auto* const found = std::ranges::find(rectypes, rectype, &rectype_row::rectype);
    if (found != std::end(rectypes)) return *found;
    tm_trace(" ## error in readrectype or writerectype ( record type %d )", rectype);
    tm_fatal(object_structure_invalid);
}

bool is_object_type(std::int16_t type) { return type >= tm_type_main && type < tm_type_count; }

}  // namespace

void readrectype(tm_sheet_input& in, void* record, std::int16_t rectype) {
    if (in.fault != 0) return;
    const bool is_read = is_object_type(rectype) ? lay_get(tm_part_layout(rectype), in.bytes, in.at,
                                                           *static_cast<tm_object_gene_rec_t*>(record))
                                                 : row_of(rectype).read(in.bytes, in.at, record);
    if (!is_read) in.fault = file_open_invalid;
}

void writerectype(std::string& out, const void* record, std::int16_t rectype) {
    if (is_object_type(rectype))
        lay_put(tm_part_layout(rectype), *static_cast<const tm_object_gene_rec_t*>(record), out);
    else
        row_of(rectype).write(record, out);
}

tm_object_gene_rec_t* readOneObject(tm_sheet_input& in, tm_file_gene_recf_t& file) {
    tm_object_gene_rec_t generic;
    readrectype(in, &generic, tm_rec_generic);
    if (in.fault != 0) return nullptr;
    if (!is_object_type(generic.object_type)) {
        std::printf(" ==> ReadOneObject :  ptrto_gene_obj_buf:%d   object_type:%d \n", generic.object_id,
                    generic.object_type);
        in.fault = object_type_invalid;
        return nullptr;
    }
    tm_object_gene_rec_t& object = tm_pool_make(file, generic.object_type);
    object = generic;
    readrectype(in, &object, generic.object_type);
    if (generic.object_type == tm_type_net) static_cast<tm_object_net_rec_t&>(object).fin = tm_fin_object;
    return in.fault == 0 ? &object : nullptr;
}

void writeOneObject(std::string& out, const tm_object_gene_rec_t& object) {
    writerectype(out, &object, tm_rec_generic);
    writerectype(out, &object, object.object_type);
}
