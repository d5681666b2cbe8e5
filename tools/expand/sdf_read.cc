// The grammar of SDF, by its parentheses.
#include "expand/sdf_read.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "expand/netlist_json.h"
#include "expand/sdf_words.h"

namespace {

bool is(const xp_sdf_reader& r, std::string_view word) { return r.word == word; }

// ---- pins

char edge_of(std::string_view keyword) {
    if (keyword == "POSEDGE") return 'R';
    if (keyword == "NEGEDGE") return 'F';
    return keyword.ends_with('1')   ? 'R'
           : keyword.ends_with('0') ? 'F'
                                    : '\0';  // "01", "z1": to what it changes
}

xp_sdf_pin read_name(xp_sdf_reader& r, char edge) {
    const xp_sdf_pin pin{xp_sdf_name_of(r, r.word), edge};
    xp_sdf_next(r);
    return pin;
}

// "(posedge A)".
xp_sdf_pin read_edge(xp_sdf_reader& r) {
    xp_sdf_expect(r, "(");
    const char edge = edge_of(xp_sdf_upper(r.word));
    xp_sdf_next(r);
    const xp_sdf_pin pin = read_name(r, edge);
    xp_sdf_expect(r, ")");
    return pin;
}

// Behind COND, up to its ")": the pin is the last item, the condition in front of it has parentheses of its
// own.
xp_sdf_pin read_conditional_pin(xp_sdf_reader& r) {
    xp_sdf_pin pin;
    while (!xp_sdf_is_at_end(r)) {
        const std::string keyword = is(r, "(") ? xp_sdf_keyword_ahead(r) : "";
        if (keyword == "POSEDGE" || keyword == "NEGEDGE") {
            pin = read_edge(r);
        } else if (is(r, "(")) {
            xp_sdf_next(r);
            xp_sdf_skip_list(r);
        } else {
            pin = read_name(r, 0);
        }
    }
    return pin;
}

// "A", "(posedge A)", "(COND text A)", "(COND text (posedge A))".
xp_sdf_pin read_pin(xp_sdf_reader& r, bool& is_conditional) {
    if (!is(r, "(")) return read_name(r, 0);
    if (xp_sdf_keyword_ahead(r) != "COND") return read_edge(r);
    is_conditional = true;
    xp_sdf_next(r);
    xp_sdf_next(r);
    const xp_sdf_pin pin = read_conditional_pin(r);
    xp_sdf_expect(r, ")");
    return pin;
}

// ---- delays and checks

struct entry_row {
    std::string_view keyword;
    xp_sdf_kind kind;
    int pins;
    bool is_check;
};
constexpr entry_row entry_rows[] = {
    {"IOPATH", xp_sdf_kind::iopath, 2, false},
    {"INTERCONNECT", xp_sdf_kind::interconnect, 2, false},
    {"PORT", xp_sdf_kind::port, 1, false},
    {"NETDELAY", xp_sdf_kind::net_delay, 1, false},
    {"DEVICE", xp_sdf_kind::device, 1, false},
    {"SETUP", xp_sdf_kind::setup, 2, true},
    {"HOLD", xp_sdf_kind::hold, 2, true},
    {"SETUPHOLD", xp_sdf_kind::setup_hold, 2, true},
    {"RECOVERY", xp_sdf_kind::recovery, 2, true},
    {"REMOVAL", xp_sdf_kind::removal, 2, true},
    {"RECREM", xp_sdf_kind::recovery_removal, 2, true},
    {"WIDTH", xp_sdf_kind::width, 1, true},
    {"PERIOD", xp_sdf_kind::period, 1, true},
};

bool has_list(xp_sdf_reader& r) { return is(r, "("); }

// Rise and fall; further ones, to and from high impedance, do not count.
void read_values(xp_sdf_reader& r, xp_sdf_entry& entry) {
    std::size_t count = 0;
    while (has_list(r) && xp_ok(r.status)) {
        const std::string keyword = xp_sdf_keyword_ahead(r);
        if (keyword == "RETAIN" || keyword == "SCOND" || keyword == "CCOND") {
            ++r.sdf.left_out[keyword];
            xp_sdf_next(r);
            xp_sdf_skip_list(r);
            continue;
        }
        const xp_sdf_value value = xp_sdf_read_value(r);
        if (count < entry.values.size()) entry.values[count] = value;
        ++count;
    }
    if (count == 1) entry.values[1] = entry.values[0];
}

// An entry from its keyword to its ")".
void read_entry(xp_sdf_reader& r, const entry_row& row, bool is_conditional, bool is_increment) {
    xp_sdf_entry entry;
    entry.kind = row.kind;
    entry.line = r.word_line;
    entry.is_conditional = is_conditional;
    entry.is_increment = is_increment;
    xp_sdf_next(r);
    if (row.kind == xp_sdf_kind::device && has_list(r)) {
        entry.from.name = "";
    } else {
        entry.from = read_pin(r, entry.is_conditional);
        if (row.pins == 2) entry.to = read_pin(r, entry.is_conditional);
    }
    read_values(r, entry);
    if (entry.from.name.empty() && row.kind != xp_sdf_kind::device) xp_sdf_refuse(r, "a pin is missing");
    r.sdf.entries.push_back(entry);
    xp_sdf_expect(r, ")");
}

// Behind COND: the condition is everything in front of the list of the path.
void skip_condition(xp_sdf_reader& r) {
    while (!xp_sdf_is_at_end(r) && !(is(r, "(") && xp_sdf_keyword_ahead(r) == "IOPATH")) {
        const bool is_list = is(r, "(");
        xp_sdf_next(r);
        if (is_list) xp_sdf_skip_list(r);
    }
}

// The lists of an ABSOLUTE, an INCREMENT or a TIMINGCHECK, up to their ")".
void read_entries(xp_sdf_reader& r, bool is_check, bool is_increment, bool is_conditional) {
    while (has_list(r) && xp_ok(r.status)) {
        xp_sdf_next(r);
        const std::string keyword = xp_sdf_upper(r.word);
        const auto row = std::find_if(std::begin(entry_rows), std::end(entry_rows), [&](const entry_row& x) {
            return x.keyword == keyword && x.is_check == is_check;
        });
        if (row != std::end(entry_rows)) {
            read_entry(r, *row, is_conditional, is_increment);
        } else if (!is_check && !is_conditional && keyword.starts_with("COND")) {
            xp_sdf_next(r);
            skip_condition(r);
            read_entries(r, false, is_increment, true);
            xp_sdf_expect(r, ")");
        } else {
            ++r.sdf.left_out[keyword];
            xp_sdf_next(r);
            xp_sdf_skip_list(r);
        }
    }
}

// ---- cells

void read_delays(xp_sdf_reader& r) {
    while (has_list(r) && xp_ok(r.status)) {
        xp_sdf_next(r);
        const std::string keyword = xp_sdf_upper(r.word);
        xp_sdf_next(r);
        if (keyword == "ABSOLUTE" || keyword == "INCREMENT") {
            read_entries(r, false, keyword == "INCREMENT", false);
            xp_sdf_expect(r, ")");
        } else {
            ++r.sdf.left_out[keyword];
            xp_sdf_skip_list(r);
        }
    }
}

void read_cell(xp_sdf_reader& r) {
    xp_sdf_cell cell;
    cell.line = r.word_line;
    cell.first_entry = r.sdf.entries.size();
    while (has_list(r) && xp_ok(r.status)) {
        xp_sdf_next(r);
        const std::string keyword = xp_sdf_upper(r.word);
        xp_sdf_next(r);
        if (keyword == "CELLTYPE") {
            cell.type = r.word;
            xp_sdf_next(r);
        } else if (keyword == "INSTANCE") {
            if (!is(r, ")")) {
                cell.instance = xp_sdf_name_of(r, r.word);
                xp_sdf_next(r);
            }
        } else if (keyword == "DELAY") {
            read_delays(r);
        } else if (keyword == "TIMINGCHECK") {
            read_entries(r, true, false, false);
        } else {
            ++r.sdf.left_out[keyword];
            xp_sdf_skip_list(r);
            continue;
        }
        xp_sdf_expect(r, ")");
    }
    cell.entry_count = r.sdf.entries.size() - cell.first_entry;
    r.sdf.cells.push_back(cell);
}

constexpr std::string_view header_words[] = {"SDFVERSION", "DESIGN",  "DATE",    "VENDOR",     "PROGRAM",
                                             "VERSION",    "VOLTAGE", "PROCESS", "TEMPERATURE"};

void read_time_scale(xp_sdf_reader& r) {
    std::string text;
    for (; !xp_sdf_is_at_end(r); xp_sdf_next(r)) text += r.word;
    const double seconds = xp_seconds_of(text);
    if (seconds <= 0) xp_sdf_refuse(r, "bad time scale \"" + text + "\"");
    r.scale = seconds / r.seconds_per_step;
}

void read_file(xp_sdf_reader& r) {
    xp_sdf_next(r);
    xp_sdf_expect(r, "(");
    if (xp_sdf_upper(r.word) != "DELAYFILE")
        return xp_sdf_refuse(r, "expected \"DELAYFILE\", found \"" + std::string(r.word) + "\"");
    xp_sdf_next(r);
    while (has_list(r) && xp_ok(r.status)) {
        xp_sdf_next(r);
        const std::string keyword = xp_sdf_upper(r.word);
        xp_sdf_next(r);
        if (keyword == "CELL") {
            read_cell(r);
        } else if (keyword == "DIVIDER") {
            if (r.word.size() == 1) r.divider = r.word[0];
            xp_sdf_next(r);
        } else if (keyword == "TIMESCALE") {
            read_time_scale(r);
        } else {
            if (std::ranges::count(header_words, keyword) == 0) ++r.sdf.left_out[keyword];
            xp_sdf_skip_list(r);
            continue;
        }
        xp_sdf_expect(r, ")");
    }
    xp_sdf_expect(r, ")");
}

}  // namespace

double xp_seconds_of(std::string_view text) {
    struct unit_row {
        std::string_view name;
        double seconds;
    };
    constexpr unit_row units[] = {{"fs", 1e-15}, {"ps", 1e-12}, {"ns", 1e-9},
                                  {"us", 1e-6},  {"ms", 1e-3},  {"s", 1}};
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    std::string_view rest(end, static_cast<std::size_t>(text.data() + text.size() - end));
    while (rest.starts_with(' ')) rest.remove_prefix(1);
    const auto unit = std::ranges::find(units, rest, &unit_row::name);
    return error == std::errc{} && std::isfinite(number) && number > 0 && unit != std::end(units)
               ? number * unit->seconds
               : 0;
}

void xp_parse_sdf(double seconds_per_step, xp_sdf& sdf, xp_status& status) {
    if (!xp_ok(status)) return;
    xp_sdf_reader r{sdf, status, seconds_per_step};
    r.scale = 1e-9 / seconds_per_step;
    read_file(r);
}

void xp_read_sdf(const std::string& path, double seconds_per_step, xp_sdf& sdf, xp_status& status) {
    if (!xp_ok(status)) return;
    sdf.path = path;
    xp_read_file(path, sdf.text, status);
    xp_parse_sdf(seconds_per_step, sdf, status);
}
