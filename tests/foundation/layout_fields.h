// The fields of a file that is laid out in rows: where each lies, and how a test sets one.
#pragma once

#include <vector>

#include "foundation/layout.h"

struct tst_field {
    std::string_view section;
    std::int32_t record = 0;  // 1-based
    std::string_view name;
    std::size_t offset = 0, width = 0;  // in the file, of one value
    lay_order order = lay_order::low_first;
    lay_range range;
};

// Appends the fields (no reference slots) of the record at a place of the file, which then is the place
// behind it, in the form that the record has; false: the record is cut.
template <typename Record>
bool tst_add_fields(const lay_layout<Record>& layout, std::int32_t number, std::string_view bytes,
                    std::size_t& at, Record& record, std::vector<tst_field>& fields) {
    std::size_t begin = at;
    if (!lay_get(layout, bytes, at, record)) return false;
    lay_each_row(layout, record, [&](const lay_row<Record>& row) {
        if (row.get == nullptr) return true;
        std::size_t end = begin + row.offset;
        fields.push_back({layout.section, number, row.name, end, row.width, row.order, row.range});
        row.get(bytes, end, record);
        begin = end - row.end();
        return true;
    });
    return true;
}

inline void tst_set(std::string& bytes, const tst_field& field, std::int64_t value) {
    for (std::size_t i = 0; i < field.width; ++i)
        bytes[field.offset + i] =
            static_cast<char>(static_cast<std::uint64_t>(value) >> lay_shift(field.order, i, field.width));
}
