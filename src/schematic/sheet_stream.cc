#include "schematic/sheet_stream.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "foundation/status.h"
#include "schematic/object_pool.h"

namespace {

bool take(tm_sheet_input& in, std::size_t n, std::string_view& taken) {
    if (in.fault == 0 && in.bytes.size() - in.at < n) in.fault = file_open_invalid;
    if (in.fault != 0) return false;
    taken = in.bytes.substr(in.at, n);
    in.at += n;
    return true;
}

template <typename Unsigned>
void set(void* var, std::uint32_t bits) {
    const auto value = static_cast<Unsigned>(bits);
    std::memcpy(var, &value, sizeof value);
}

template <typename Unsigned>
std::uint32_t get(const void* var) {
    Unsigned value;
    std::memcpy(&value, var, sizeof value);
    return value;
}

// Shifts that put the i-th byte of n in the file at its place in the value.
unsigned shift_of(std::size_t i, std::size_t n, tm_field_form form) {
    return static_cast<unsigned>(8 * (form == tm_field_form::reversed ? n - 1 - i : i));
}

bool is_printable(char c) { return c >= 32 && c <= 126; }

template <typename Text, std::int32_t Capacity>
void read_text(tm_sheet_input& in, Text& text) {
    std::int32_t len = 0;
    readvar(in, &len, sizeof len, tm_field_form::reversed);
    if (in.fault == 0 && (len < 0 || len > Capacity)) in.fault = file_open_invalid;
    std::string_view chars;
    if (in.fault != 0 || !take(in, static_cast<std::size_t>(len), chars)) return;
    if (!std::ranges::all_of(chars, is_printable)) in.fault = file_open_invalid;
    if (in.fault != 0) return;
    std::ranges::copy(chars, text.char_);
    if (chars.size() < sizeof text.char_) text.char_[chars.size()] = '\0';
    text.len = len;
}

template <typename Text>
void write_text(std::string& out, const Text& text) {
    printvar(out, &text.len, sizeof text.len, tm_field_form::reversed);
    out.append(tm_view(text));
}

// What fields are made of and has no fields of its own.  False: not of that kind.
bool read_composite(tm_sheet_input& in, void* record, std::int16_t rectype) {
    switch (rectype) {
        case tm_rec_string:
            read_text<tm_string_record_t, tm_string_max>(in, *static_cast<tm_string_record_t*>(record));
            return true;
        case tm_rec_name:
            read_text<tm_name_record_t, tm_name_max>(in, *static_cast<tm_name_record_t*>(record));
            return true;
        case tm_rec_value:
            read_text<tm_value_record_t, tm_value_max>(in, *static_cast<tm_value_record_t*>(record));
            return true;
        case tm_rec_points5:
            for (tm_point_t& p : *static_cast<std::array<tm_point_t, 5>*>(record))
                readrectype(in, &p, tm_rec_point);
            return true;
        case tm_rec_points16:
            for (tm_point_t& p : *static_cast<std::array<tm_point_t, 16>*>(record))
                readrectype(in, &p, tm_rec_point);
            return true;
        default:
            return false;
    }
}

bool write_composite(std::string& out, const void* record, std::int16_t rectype) {
    switch (rectype) {
        case tm_rec_string:
            write_text(out, *static_cast<const tm_string_record_t*>(record));
            return true;
        case tm_rec_name:
            write_text(out, *static_cast<const tm_name_record_t*>(record));
            return true;
        case tm_rec_value:
            write_text(out, *static_cast<const tm_value_record_t*>(record));
            return true;
        case tm_rec_points5:
            for (const tm_point_t& p : *static_cast<const std::array<tm_point_t, 5>*>(record))
                writerectype(out, &p, tm_rec_point);
            return true;
        case tm_rec_points16:
            for (const tm_point_t& p : *static_cast<const std::array<tm_point_t, 16>*>(record))
                writerectype(out, &p, tm_rec_point);
            return true;
        default:
            return false;
    }
}

std::span<const tm_sheet_field> fields_of(std::int16_t rectype) {
    const std::span<const tm_sheet_field> fields = tm_layout_of(rectype);
    if (!fields.empty()) return fields;
    tm_trace(" ## error in readrectype or writerectype ( record type %d )", rectype);
    tm_fatal(object_structure_invalid);
}

}  // namespace

void readvar(tm_sheet_input& in, void* var, std::size_t n, tm_field_form form) {
    std::string_view bytes;
    if (!take(in, n, bytes)) return;
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < n; ++i)
        bits |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i])) << shift_of(i, n, form);
    if (form == tm_field_form::boolean)
        *static_cast<bool*>(var) = bits != 0;
    else if (n == 1)
        set<std::uint8_t>(var, bits);
    else
        n == 2 ? set<std::uint16_t>(var, bits) : set<std::uint32_t>(var, bits);
}

void printvar(std::string& out, const void* var, std::size_t n, tm_field_form form) {
    const std::uint32_t bits = n == 1   ? get<std::uint8_t>(var)
                               : n == 2 ? get<std::uint16_t>(var)
                                        : get<std::uint32_t>(var);
    for (std::size_t i = 0; i < n; ++i) out += static_cast<char>(bits >> shift_of(i, n, form));
}

void readrectype(tm_sheet_input& in, void* record, std::int16_t rectype) {
    if (read_composite(in, record, rectype)) return;
    for (const tm_sheet_field& field : fields_of(rectype)) {
        if (field.form == tm_field_form::record)
            readrectype(in, field.at(record), field.rectype);
        else
            readvar(in, field.at(record), field.width, field.form);
    }
}

void writerectype(std::string& out, const void* record, std::int16_t rectype) {
    if (write_composite(out, record, rectype)) return;
    void* const fields_owner = const_cast<void*>(record);  // the layout's places serve reading, too
    for (const tm_sheet_field& field : fields_of(rectype)) {
        if (field.form == tm_field_form::record)
            writerectype(out, field.at(fields_owner), field.rectype);
        else
            printvar(out, field.at(fields_owner), field.width, field.form);
    }
}

tm_object_gene_rec_t* readOneObject(tm_sheet_input& in, tm_file_gene_recf_t& file) {
    tm_object_gene_rec_t generic;
    readrectype(in, &generic, tm_rec_generic);
    if (in.fault != 0) return nullptr;
    if (generic.object_type < tm_type_main || generic.object_type >= tm_type_count) {
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
