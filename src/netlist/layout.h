// yxl: the binary layout of the design file.  One table of rows per record kind, each row a field with its
// offset, its width in bytes, the number of values it holds and the values it may have; reader, writer and
// tests walk the same rows.  Records are little-endian images of a 32-bit machine, aligned on 4 bytes.
// Reference slots are skipped on reading and written as zero.  Some kinds have a part whose form depends on
// the record: a layout is a list of forms, the first of which always applies and is read first.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <type_traits>

#include "netlist/store.h"

inline constexpr std::size_t yxl_header_bytes = 68;
inline constexpr std::size_t yxl_name_entry_bytes = 416;
inline constexpr std::size_t yxl_string_bytes = 12;
inline constexpr std::size_t yxl_prop_bytes = 16;
inline constexpr std::size_t yxl_inst_bytes = 44;
inline constexpr std::size_t yxl_pin_bytes = 120;
inline constexpr std::size_t yxl_net_bytes = 160;
inline constexpr std::size_t yxl_net_child_bytes = 28;
inline constexpr std::size_t yxl_macro_bytes = 40;
inline constexpr std::size_t yxl_pinm_bytes = 40;

// What bounds a field's value: nothing, its record's own place, two fixed numbers, or the number of records
// of another kind (given by its counter in the store).
enum class yxl_bound : std::uint8_t { none, place, fixed, counter };

struct yxl_range {
    yxl_bound bound = yxl_bound::none;
    std::int32_t lowest = 0;
    std::int32_t highest = 0;                              // fixed
    std::int32_t yx_defref_exp_rec_t::*counter = nullptr;  // counter
};

template <typename Record>
struct yxl_row {
    std::string_view name;
    std::size_t offset;  // from the start of the record
    std::size_t width;   // bytes of one value: 1, 2 or 4
    std::size_t count;   // values, one behind the other
    void (*get)(const std::uint8_t* image, Record& record);
    void (*put)(const Record& record, std::uint8_t* image);
    std::int32_t (*value)(const Record& record);  // the first value as a number; null for a reference slot
    yxl_range range;
};

template <typename Record>
struct yxl_form {
    bool (*applies)(const Record& record);
    std::span<const yxl_row<Record>> rows;
};

template <typename Record>
struct yxl_layout {
    std::string_view section;  // as messages name it
    std::size_t bytes;         // of one record in the file
    std::span<const yxl_form<Record>> forms;
};

extern const yxl_layout<yx_general_info_record_t> yxl_header;
extern const yxl_layout<yx_prop_type_record_t> yxl_prop_instance_names, yxl_prop_pin_names,
    yxl_prop_net_names;
extern const yxl_layout<yx_string_record_t> yxl_strings;
extern const yxl_layout<yx_prop_record_t> yxl_props;
extern const yxl_layout<yx_inst_record_t> yxl_insts;
extern const yxl_layout<yx_pin_record_t> yxl_pins;
extern const yxl_layout<yx_net_record_t> yxl_nets;
extern const yxl_layout<yx_net_child_record_t> yxl_net_children;
extern const yxl_layout<yx_macro_record_t> yxl_macros;
extern const yxl_layout<yx_pinm_record_t> yxl_pinms;

// Calls visit(row) for the rows of every form that applies to the record, until visit answers false; tells
// whether it never did.
template <typename Record, typename Visit>
bool yxl_each_row(const yxl_layout<Record>& layout, const Record& record, Visit visit) {
    for (const yxl_form<Record>& form : layout.forms) {
        if (!form.applies(record)) continue;
        for (const yxl_row<Record>& row : form.rows)
            if (!visit(row)) return false;
    }
    return true;
}

// One record from its image of layout.bytes bytes, and back.  The image must be zero before yxl_put.
template <typename Record>
void yxl_get(const yxl_layout<Record>& layout, const std::uint8_t* image, Record& record) {
    yxl_each_row(layout, record, [&](const yxl_row<Record>& row) {
        row.get(image, record);
        return true;
    });
}

template <typename Record>
void yxl_put(const yxl_layout<Record>& layout, const Record& record, std::uint8_t* image) {
    yxl_each_row(layout, record, [&](const yxl_row<Record>& row) {
        row.put(record, image);
        return true;
    });
}

// One little-endian value of the width of T.
template <typename T>
T yxl_get_value(const std::uint8_t* at) {
    if constexpr (std::is_same_v<T, float>) {
        return std::bit_cast<float>(yxl_get_value<std::uint32_t>(at));
    } else {
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < sizeof(T); ++i) bits |= static_cast<std::uint32_t>(at[i]) << (8 * i);
        return static_cast<T>(bits);
    }
}

template <typename T>
void yxl_put_value(T value, std::uint8_t* at) {
    if constexpr (std::is_same_v<T, float>) {
        yxl_put_value(std::bit_cast<std::uint32_t>(value), at);
    } else if constexpr (std::is_signed_v<T>) {
        yxl_put_value(static_cast<std::make_unsigned_t<T>>(value), at);
    } else {
        const auto bits = static_cast<std::uint32_t>(value);
        for (std::size_t i = 0; i < sizeof(T); ++i) at[i] = static_cast<std::uint8_t>(bits >> (8 * i));
    }
}
