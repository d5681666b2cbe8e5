// kol: tables of values, as APPLY TABLE and CHECK TABLE read them.  A table is a text: a first row that names
// the columns behind the time, then a row for each time.  Words stand between blanks, tabs or commas; a word
// "-" says nothing, '#' begins a comment.  A column is a net, or a bus as FORCE BUS takes it, its name
// followed by ":H", ":B" or ":D" where it has another radix than its own.
#pragma once

#include <string>
#include <vector>

#include "kernel/context.h"

struct kol_table_column_t {
    std::string name;
    std::vector<yx_net_record_t*> bits;  // roots, the highest first
    bool is_bus = false;
    std::int16_t radix = 0;
};
struct kol_table_value_t {
    std::int32_t time = 0;
    std::uint32_t column = 0;
    std::uint32_t at = 0;  // of the first bit's state
};
struct kol_table_t {
    std::vector<kol_table_column_t> columns;
    std::vector<kol_table_value_t> values;  // by time; of one time as in the file
    std::vector<std::int8_t> states;
};

struct kol_table_times_t {
    std::int32_t period = 0, first = 0;  // the first column counts periods from a first time; 0: it is a time
};

// False: error says what is wrong, and in which line.
bool kol_read_table(std::string_view text, const kol_table_times_t& times, kol_table_t& table,
                    std::string& error);
