// The list as comma-separated values.
#include "results/files/csv_file.h"

#include "kernel/say.h"
#include "results/entries/entry.h"
#include "results/entries/observed.h"
#include "results/files/changes.h"
#include "results/list/layout.h"

namespace {

std::string field_of(const std::string& text) {
    if (text.find_first_of(",\"") == text.npos) return text;
    std::string quoted = "\"";
    for (const char c : text) quoted.append(c == '"' ? 2 : 1, c);
    return quoted += '"';
}

std::string value_of(const rs_observed_t& column, const std::int8_t* states) {
    if (!column.is_bus) {
        char two[2];
        kol_state_to_statechar(*states, two);
        return {two, kol_list_value_width()};
    }
    std::string bits;
    for (std::size_t k = 0; k < column.bits.size(); ++k) bits += kol_bit_of_state(states[k]);
    return rs_value_text(bits, column.radix);
}

std::string row_of(const std::vector<rs_observed_t>& columns, const std::vector<std::int8_t>& states) {
    std::string row;
    const std::int8_t* next = states.data();
    for (const rs_observed_t& column : columns) {
        row.append(",").append(value_of(column, next));
        next += column.bits.size();
    }
    return row;
}

void write_row(std::FILE* file, std::int32_t time, const std::string& row) {
    std::fprintf(file, "%s%s\n", kol_time_text(time).c_str(), row.c_str());
}

}  // namespace

void rs_write_csv(std::FILE* file, std::int32_t begin_time, std::int32_t end_time) {
    std::vector<rs_observed_t> columns;
    rs_add_observed(kol_list_first_entry(), columns);
    std::vector<yx_net_record_t*> nets;
    std::string header = "time";
    for (const rs_observed_t& column : columns) {
        header.append(",").append(field_of(column.path));
        nets.insert(nets.end(), column.bits.begin(), column.bits.end());
    }
    std::fprintf(file, "%s\n", header.c_str());
    auto [states, changes] = rs_changes_of(nets, begin_time, end_time);
    std::string row = row_of(columns, states);
    write_row(file, begin_time, row);
    for (std::size_t k = 0; k < changes.size(); ++k) {
        states[changes[k].net] = changes[k].state;
        if (k + 1 < changes.size() && changes[k + 1].time == changes[k].time) continue;
        std::string next = row_of(columns, states);
        if (next != row) write_row(file, changes[k].time, next);
        row = std::move(next);
    }
}
