// CHECK TABLE: what nets should be at times, compared while runs go on.
#include <algorithm>
#include <memory>

#include "commands/shared/bus_value.h"
#include "commands/values/checks.h"
#include "commands/values/handlers.h"
#include "commands/values/table_file.h"
#include "foundation/shell.h"
#include "foundation/status.h"
#include "kernel/cells.h"
#include "kernel/checkpoint.h"
#include "kernel/say.h"
#include "kernel/watchers.h"
#include "results/entries/observed.h"

namespace {

constexpr kol_rejection_t no_table{"# !! Error : NO TABLE is checked ? "};

struct check_t {
    std::string name;  // of the file
    kol_table_t table;
    std::size_t next = 0;  // of its values
    std::int64_t compared = 0, differing = 0;
};
std::vector<check_t> checks;
std::int32_t reached = 0;  // the time of the last run's end

std::string text_of(const kol_table_column_t& column, const std::string& bits) {
    return column.is_bus ? rs_value_text(bits, column.radix) : bits;
}

void report(const kol_table_column_t& column, std::int32_t time, const std::string& expected,
            const std::string& got) {
    tm_count_error();
    kol_say("# !! Error : CHECK : time = ", kol_time_text(time), " : ", kol_quoted(column.name), " expected ",
            text_of(column, expected), " got ", text_of(column, got), " ");
}

void compare(check_t& check, const kol_table_value_t& value) {
    const kol_table_column_t& column = check.table.columns[value.column];
    std::string expected, got;
    for (std::size_t k = 0; k < column.bits.size(); ++k) {
        expected += kol_bit_of_state(check.table.states[value.at + k]);
        got += kol_bit_of_state(kol_state_now(*column.bits[k]));
    }
    ++check.compared;
    if (expected == got) return;
    ++check.differing;
    report(column, value.time, expected, got);
}

void say_counts(const check_t& check) {
    const std::size_t left = check.table.values.size() - check.next;
    kol_say("# CHECK TABLE ", kol_quoted(check.name), " : ", std::to_string(check.compared), " compared, ",
            std::to_string(check.differing), " differ, ", std::to_string(left), " to come ");
}

void set_next_appointment() {
    kol_watchers.appointments.next = kol_appointments_t::none;
    for (const check_t& check : checks)
        if (check.next < check.table.values.size())
            kol_watchers.appointments.next =
                std::min<std::int64_t>(kol_watchers.appointments.next, check.table.values[check.next].time);
}

void keep_one(check_t& check, std::int32_t before) {
    const std::vector<kol_table_value_t>& values = check.table.values;
    if (check.next == values.size() || values[check.next].time >= before) return;
    while (check.next < values.size() && values[check.next].time < before)
        compare(check, values[check.next++]);
    if (check.next == values.size()) say_counts(check);
}

void keep(std::int32_t before) {
    for (check_t& check : checks) keep_one(check, before);
    set_next_appointment();
}

void start_at(check_t& check, std::int32_t time) {
    const auto first = std::ranges::lower_bound(check.table.values, time, {}, &kol_table_value_t::time);
    check.next = static_cast<std::size_t>(first - check.table.values.begin());
    check.compared = check.differing = 0;
}

// A run that starts anew is checked anew.
void begin(std::int32_t time) {
    if (time < reached)
        for (check_t& check : checks) start_at(check, time);
    set_next_appointment();
}

void end(std::int32_t time) { reached = time; }

void watch() {
    kol_watchers.appointments = {};
    if (!checks.empty()) kol_watchers.appointments = {kol_appointments_t::none, begin, keep, end};
    set_next_appointment();
    kol_set_watchers();
}

kol_result_t report_or_drop(const kol_line_t& line) {
    if (checks.empty()) return no_table;
    for (const check_t& check : checks) say_counts(check);
    if (line.nkeyword == 2) return {};
    checks.clear();
    watch();
    return {};
}

void archive_table(tm_archive_t& archive, kol_table_t& table) {
    table.columns.resize(archive.count(table.columns.size()));
    for (kol_table_column_t& column : table.columns) {
        archive(column.name, column.is_bus, column.radix);
        column.bits.resize(archive.count(column.bits.size()));
        for (yx_net_record_t*& net : column.bits) kol_archive_net(archive, net);
    }
    table.values.resize(archive.count(table.values.size()));
    for (kol_table_value_t& value : table.values) archive(value.time, value.column, value.at);
    archive(table.states);
}

}  // namespace

void kol_archive_checks(tm_archive_t& archive) {
    checks.resize(archive.count(checks.size()));
    for (check_t& check : checks) {
        archive(check.name, check.next, check.compared, check.differing);
        archive_table(archive, check.table);
    }
    archive(reached);
    if (archive.is_reading()) watch();
}

kol_result_t kol_check_table_cmd(const kol_line_t& line) {
    const bool is_off =
        line.nkeyword == 3 && tm_view(line[3]).size() == 3 && tm_const_equal_string("OFF", line[3]);
    if (line.nkeyword == 2 || is_off) return report_or_drop(line);
    check_t check;
    if (kol_result_t wrong = kol_read_table_file(line, check.table)) return wrong;
    check.name = tm_view(line[3]);
    start_at(check, kol_ext.cur_time);
    reached = kol_ext.cur_time;
    checks.push_back(std::move(check));
    watch();
    return {};
}
