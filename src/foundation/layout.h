// lay: binary layouts.  The image of a record in a file is a table of rows, each a field with its offset, the
// width and number of its values and the values it may have; reading, writing, checks and tests walk the same
// rows.  Numbers have 1, 2 or 4 bytes and are put together byte by byte, so that neither padding nor byte
// order of the host matter.  A counted text is a 4-byte length and its characters: offsets of what stands
// behind it in the record are those with an empty text.  Some records have parts whose form depends on the
// record: a layout is a list of forms, the first of which always applies and is read first.  Bytes that no
// row holds are skipped on reading and written as zero.  Nothing here stops the program: reading answers
// false where bytes are missing or a text is unsound.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "foundation/strings.h"

enum class lay_order : std::uint8_t { low_first, high_first };  // which byte of a number comes first

// What bounds a field's value: nothing, its record's own place, two fixed numbers, or a number that the
// program counts elsewhere, as the records of another kind.
enum class lay_bound : std::uint8_t { none, place, fixed, counter };

struct lay_range {
    lay_bound bound = lay_bound::none;
    std::int32_t lowest = 0;
    std::int32_t highest = 0;               // fixed
    const std::int32_t* counter = nullptr;  // counter
};

struct lay_limits {
    std::int32_t lowest, highest;
};
// The values that a range admits for the record at a 1-based place.
inline lay_limits lay_limits_of(const lay_range& range, std::int32_t place) {
    if (range.bound == lay_bound::place) return {place, place};
    if (range.bound == lay_bound::counter) return {range.lowest, *range.counter};
    return {range.lowest, range.highest};
}

// Objects of several types may share one Record, their base: its rows are those of one of the types.
template <typename Record>
struct lay_row {
    using record_type = Record;
    std::string_view name;
    std::size_t offset = 0;  // from the start of the record
    std::size_t width = 0;   // bytes of one value; of a text its length's
    std::size_t count = 0;   // values, one behind the other
    lay_order order = lay_order::low_first;
    // The field at a place of the file, which then is the place behind it; both null for bytes that mean
    // nothing.  Writing finds zeros there, room for an empty text.
    bool (*get)(std::string_view bytes, std::size_t& at, Record& record) = nullptr;
    void (*put)(const Record& record, std::string& bytes, std::size_t& at) = nullptr;
    std::int32_t (*value)(const Record& record) = nullptr;  // the first value, a text's length
    lay_range range;

    constexpr std::size_t size() const { return width * count; }
    constexpr std::size_t end() const { return offset + size(); }
};

template <typename Record>
struct lay_form {
    bool (*applies)(const Record& record);
    std::span<const lay_row<Record>> rows;
};

template <typename Record>
struct lay_layout {
    using record_type = Record;
    std::string_view section;  // as messages name it
    std::size_t bytes = 0;     // of one record in the file, its texts being empty
    std::span<const lay_form<Record>> forms;
};

// Calls visit(row) for the rows of every form that applies to the record, until visit answers false; tells
// whether it never did.
template <typename Record, typename Visit>
bool lay_each_row(const lay_layout<Record>& layout, const Record& record, Visit visit) {
    for (const lay_form<Record>& form : layout.forms) {
        if (!form.applies(record)) continue;
        for (const lay_row<Record>& row : form.rows)
            if (!visit(row)) return false;
    }
    return true;
}

// Reads the record at a place of the file, which then is the place behind it; false: the place of the field
// that cannot be read.
template <typename Record>
bool lay_get(const lay_layout<Record>& layout, std::string_view bytes, std::size_t& at, Record& record) {
    std::size_t begin = at;  // moved on by texts
    const bool is_read = lay_each_row(layout, record, [&](const lay_row<Record>& row) {
        if (row.get == nullptr) return true;
        at = begin + row.offset;
        if (!row.get(bytes, at, record)) return false;
        begin = at - row.end();
        return true;
    });
    if (!is_read || begin + layout.bytes > bytes.size()) return false;
    at = begin + layout.bytes;
    return true;
}

// Appends the record.
template <typename Record>
void lay_put(const lay_layout<Record>& layout, const Record& record, std::string& bytes) {
    std::size_t begin = bytes.size();
    bytes.resize(begin + layout.bytes, '\0');
    lay_each_row(layout, record, [&](const lay_row<Record>& row) {
        if (row.put == nullptr) return true;
        std::size_t at = begin + row.offset;
        row.put(record, bytes, at);
        begin = at - row.end();
        return true;
    });
}

// ---- what fields are made of

// A field holds one number or several of one kind; records of equal numbers say which by a row of their own.
template <typename Field>
struct lay_number {
    using type = Field;
};
template <typename Field, std::size_t Count>
struct lay_number<Field[Count]> : lay_number<Field> {};
template <typename Field, std::size_t Count>
struct lay_number<std::array<Field, Count>> : lay_number<Field> {};

// The most characters of a counted text; below 0: the field is none.
template <typename Field>
inline constexpr std::int32_t lay_text_max = -1;
template <>
inline constexpr std::int32_t lay_text_max<tm_string_record_t> = tm_string_max;
template <>
inline constexpr std::int32_t lay_text_max<tm_name_record_t> = tm_name_max;
template <>
inline constexpr std::int32_t lay_text_max<tm_value_record_t> = tm_value_max;

// Whether the bytes can be characters of a counted text.
bool lay_is_text(std::string_view bytes);

// Shift that puts the i-th of `size` bytes at its place in the number.
constexpr unsigned lay_shift(lay_order order, std::size_t i, std::size_t size) {
    return static_cast<unsigned>(8 * (order == lay_order::low_first ? i : size - 1 - i));
}

template <lay_order Order, typename Number>
Number lay_get_number(const char* at) {
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < sizeof(Number); ++i)
        bits |= static_cast<std::uint32_t>(static_cast<unsigned char>(at[i]))
                << lay_shift(Order, i, sizeof(Number));
    if constexpr (std::is_same_v<Number, bool>)
        return bits != 0;
    else if constexpr (std::is_same_v<Number, float>)
        return std::bit_cast<float>(bits);
    else
        return static_cast<Number>(bits);
}

template <lay_order Order, typename Number>
void lay_put_number(Number number, char* at) {
    std::uint32_t bits = 0;
    if constexpr (std::is_same_v<Number, float>)
        bits = std::bit_cast<std::uint32_t>(number);
    else
        bits =
            static_cast<std::uint32_t>(number);  // NOLINT(bugprone-signed-char-misuse): the low bytes count
    for (std::size_t i = 0; i < sizeof(Number); ++i)
        at[i] = static_cast<char>(bits >> lay_shift(Order, i, sizeof(Number)));
}

template <typename Field>
inline constexpr std::size_t lay_count_of = sizeof(Field) / sizeof(typename lay_number<Field>::type);

// One field at a place that is moved behind it.  False: the bytes end there, or the text is unsound.
template <lay_order Order, typename Field>
bool lay_get_value(std::string_view bytes, std::size_t& at, Field& field) {
    if constexpr (lay_text_max<Field> >= 0) {
        std::int32_t len = 0;
        if (!lay_get_value<Order>(bytes, at, len) || len < 0 || len > lay_text_max<Field>) return false;
        const std::string_view text = bytes.substr(at, static_cast<std::size_t>(len));
        if (text.size() != static_cast<std::size_t>(len) || !lay_is_text(text)) return false;
        text.copy(field.char_, text.size());
        if (text.size() < sizeof field.char_) field.char_[text.size()] = '\0';
        field.len = len;
        at += text.size();
    } else {
        using number = typename lay_number<Field>::type;
        static_assert(std::is_trivially_copyable_v<Field> && std::is_arithmetic_v<number>);
        if (bytes.size() < at || bytes.size() - at < sizeof(Field)) return false;
        number numbers[lay_count_of<Field>];
        for (number& each : numbers) {
            each = lay_get_number<Order, number>(bytes.data() + at);
            at += sizeof each;
        }
        std::memcpy(&field, numbers, sizeof field);
    }
    return true;
}

// Into room of zeros, for a text into that of an empty one.
template <lay_order Order, typename Field>
void lay_put_value(const Field& field, std::string& bytes, std::size_t& at) {
    if constexpr (lay_text_max<Field> >= 0) {
        lay_put_value<Order>(field.len, bytes, at);
        bytes.insert(at, tm_view(field));
        at += static_cast<std::size_t>(field.len);
    } else {
        using number = typename lay_number<Field>::type;
        number numbers[lay_count_of<Field>];
        std::memcpy(numbers, &field, sizeof field);
        for (const number each : numbers) {
            lay_put_number<Order>(each, bytes.data() + at);
            at += sizeof each;
        }
    }
}

// ---- rows

template <typename Holder, typename Value>
Holder lay_holder_of(Value Holder::*);

// The field at the end of a path of members, the first of which the record or a type made from it has.
template <auto First, auto... Rest, typename Record>
auto& lay_field(Record& record) {
    using holder = decltype(lay_holder_of(First));
    using same = std::conditional_t<std::is_const_v<Record>, const holder, holder>;
    return ((static_cast<same&>(record).*First).*....*Rest);
}

template <auto... Path, typename Record>
std::int32_t lay_first_value(const Record& record) {
    const auto& field = lay_field<Path...>(record);
    using field_t = std::remove_cvref_t<decltype(field)>;
    if constexpr (lay_text_max<field_t> >= 0) {
        return field.len;
    } else {
        typename lay_number<field_t>::type first;
        std::memcpy(&first, &field, sizeof first);
        return static_cast<std::int32_t>(first);
    }
}

// Makes the rows of one record kind.
template <typename Record, lay_order Order>
struct lay_rows_of {
    template <auto... Path>
    static constexpr lay_row<Record> field(std::size_t offset, std::string_view name, lay_range range = {}) {
        using field_t = std::remove_cvref_t<decltype(lay_field<Path...>(std::declval<Record&>()))>;
        constexpr bool is_text = lay_text_max<field_t> >= 0;
        using number = typename lay_number<std::conditional_t<is_text, std::int32_t, field_t>>::type;
        return {name,
                offset,
                sizeof(number),
                is_text ? 1 : lay_count_of<field_t>,
                Order,
                [](std::string_view bytes, std::size_t& at, Record& record) {
                    return lay_get_value<Order>(bytes, at, lay_field<Path...>(record));
                },
                [](const Record& record, std::string& bytes, std::size_t& at) {
                    lay_put_value<Order>(lay_field<Path...>(record), bytes, at);
                },
                lay_first_value<Path...>,
                range};
    }

    // 4 bytes that mean nothing in a file.
    static constexpr lay_row<Record> slot(std::size_t offset, std::string_view name) {
        return {name, offset, 4, 1, Order, nullptr, nullptr, nullptr, {}};
    }
};

template <typename Record>
bool lay_always(const Record&) {
    return true;
}

// The forms of a record that has one only.
template <const auto& Rows>
inline constexpr lay_form<typename std::remove_cvref_t<decltype(Rows)>::value_type::record_type> lay_only[] =
    {{lay_always, Rows}};

// ---- proofs

// The rows stand in the order of the file, without overlap, with at most `padding` bytes between them, and
// end within the record; padded rows are aligned on their width.
template <typename Record, std::size_t Count>
constexpr bool lay_fits(const std::array<lay_row<Record>, Count>& rows, std::size_t bytes,
                        std::size_t padding) {
    std::size_t at = 0;
    for (const auto& row : rows) {
        if (row.offset < at || row.offset - at > padding) return false;
        if (padding > 0 && row.offset % row.width != 0) return false;
        at = row.end();
    }
    return at <= bytes;
}

// The same up to the end of the record.
template <typename Record, std::size_t Count>
constexpr bool lay_fills(const std::array<lay_row<Record>, Count>& rows, std::size_t bytes,
                         std::size_t padding) {
    return lay_fits(rows, bytes, padding) && rows.back().end() + padding >= bytes;
}

// Two groups of rows, the second lying in a gap of the first.
template <typename Record, std::size_t Outer, std::size_t Inner>
constexpr std::array<lay_row<Record>, Outer + Inner> lay_in_file_order(
    const std::array<lay_row<Record>, Outer>& outer, const std::array<lay_row<Record>, Inner>& inner) {
    std::array<lay_row<Record>, Outer + Inner> merged{};
    std::size_t count = 0;
    for (const auto& row : outer)
        if (row.offset < inner.front().offset) merged[count++] = row;
    for (const auto& row : inner) merged[count++] = row;
    for (const auto& row : outer)
        if (row.offset >= inner.front().offset) merged[count++] = row;
    return merged;
}
