// Rows of times and values.
#include "commands/values/value_table.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "commands/shared/bus_value.h"
#include "kernel/lookup.h"
#include "kernel/network.h"
#include "kernel/time.h"

namespace {

// The next word of a row, empty at its end or before a comment.
std::string_view next_word(std::string_view& row) {
    constexpr std::string_view between = " \t,\r";
    row.remove_prefix(std::min(row.find_first_not_of(between), row.size()));
    if (row.starts_with('#')) row = {};
    const std::string_view word = row.substr(0, row.find_first_of(between));
    row.remove_prefix(word.size());
    return word;
}

class reader_t {
public:
    reader_t(const kol_table_times_t& times, kol_table_t& table, std::string& error)
        : times_(times), table_(table), error_(error) {}

    bool read(std::string_view text) {
        for (line_ = 1; !text.empty() && error_.empty(); ++line_) {
            const std::size_t end = std::min(text.find('\n'), text.size());
            read_row(text.substr(0, end));
            text.remove_prefix(std::min(end + 1, text.size()));
        }
        if (error_.empty() && !has_columns_) error_ = "no row of names";
        std::ranges::stable_sort(table_.values, {}, &kol_table_value_t::time);
        return error_.empty();
    }

private:
    void read_row(std::string_view row) {
        const std::string_view first = next_word(row);
        if (first.empty()) return;
        if (!has_columns_) return read_columns(row);
        std::int32_t time = 0;
        if (!read_time(first, time)) return refuse("time invalid", first);
        std::uint32_t column = 0;
        for (std::string_view word; !(word = next_word(row)).empty() && error_.empty(); ++column) {
            if (column == table_.columns.size()) return refuse("more values than names", word);
            if (word != "-") read_value(time, column, word);
        }
    }

    void read_columns(std::string_view row) {
        has_columns_ = true;
        for (std::string_view word; !(word = next_word(row)).empty() && error_.empty();) {
            kol_table_column_t column;
            const bool has_radix =
                word.size() > 2 && word[word.size() - 2] == ':' && kol_radix_of_letter(word.back()) >= 0;
            column.name = word.substr(0, word.size() - (has_radix ? 2 : 0));
            if (!find(column)) return refuse("no net or bus", word);
            if (has_radix) column.radix = kol_radix_of_letter(word.back());
            table_.columns.push_back(std::move(column));
        }
    }

    static bool find(kol_table_column_t& column) {
        if (column.name.size() >= tm_string_max) return false;
        const tm_string_record_t name = tm_string(column.name);
        yx_bus_rec_t* bus = nullptr;
        yx_net_record_t* net = nullptr;
        column.is_bus =
            kol_find_sim_bus(name, bus) != 0 || kol_find_net(name, net) == 0 || net->net_type == YX_TSTD_BUS;
        if (!column.is_bus) column.bits.push_back(net);
        const bool is_found = !column.is_bus || kol_find_bits(name, column.bits, bus);
        column.radix = kol_listed_radix(bus);
        return is_found;
    }

    bool read_time(std::string_view word, std::int32_t& time) const {
        if (times_.period == 0) {
            bool error_found = word.size() >= tm_string_max;
            if (!error_found) kol_string_to_time(tm_string(word), time, error_found);
            return !error_found && time >= 0;
        }
        std::int64_t cycle = 0;
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), cycle);
        if (error != std::errc() || end != word.data() + word.size() || cycle < 0) return false;
        constexpr std::int64_t last = std::numeric_limits<std::int32_t>::max();
        if (cycle > (last - times_.first) / times_.period) return false;
        time = static_cast<std::int32_t>(times_.first + cycle * times_.period);
        return true;
    }

    void read_value(std::int32_t time, std::uint32_t column_index, std::string_view word) {
        const kol_table_column_t& column = table_.columns[column_index];
        table_.values.push_back({time, column_index, static_cast<std::uint32_t>(table_.states.size())});
        if (!column.is_bus) {
            std::int8_t state = kol_state_of_bit('z');
            const bool is_floating = word == "z" || word == "Z";
            if (!is_floating && !kol_keyword_to_state(word, state)) return refuse("value invalid", word);
            table_.states.push_back(state);
            return;
        }
        if (!kol_read_bits(word, column.radix, column.bits.size(), bits_))
            return refuse("value invalid or too large", word);
        for (const char bit : bits_) table_.states.push_back(kol_state_of_bit(bit));
    }

    void refuse(std::string_view why, std::string_view word) {
        error_ =
            "line " + std::to_string(line_) + " : " + std::string(why) + " : \"" + std::string(word) + "\"";
    }

    kol_table_times_t times_;
    kol_table_t& table_;
    std::string& error_;
    std::int64_t line_ = 0;
    bool has_columns_ = false;
    std::string bits_;
};

}  // namespace

bool kol_read_table(std::string_view text, const kol_table_times_t& times, kol_table_t& table,
                    std::string& error) {
    error.clear();
    return reader_t(times, table, error).read(text);
}
