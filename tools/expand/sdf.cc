// The grammar of SDF, by its parentheses.
#include "expand/sdf.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>

#include "expand/netlist_json.h"

namespace {

// ---- words

struct reader {
    xp_sdf& sdf;
    xp_status& status;
    double seconds_per_step;
    double scale = 1;  // steps of the file's time unit
    char divider = '.';
    std::size_t at = 0;
    std::int32_t line = 1;
    std::string_view word{};  // "(", ")", a text without its quotes, or a word; empty at the end
    std::int32_t word_line = 1;
};

void refuse(reader& r, std::string_view what) {
    xp_fail(r.status, xp_fault::bad_sdf, r.sdf.path + ": line " + std::to_string(r.word_line), what);
    r.word = {};
    r.at = r.sdf.text.size();
}

bool ends_word(char c) {
    return std::isspace(static_cast<unsigned char>(c)) != 0 || c == '(' || c == ')' || c == '"';
}

// Behind blanks and comments.
void skip_blanks(reader& r) {
    const std::string_view text = r.sdf.text;
    while (r.at < text.size()) {
        const char c = text[r.at];
        const std::string_view two = text.substr(r.at, 2);
        if (two == "//") {
            r.at = std::min(text.find('\n', r.at), text.size());
        } else if (two == "/*") {
            const std::size_t end = std::min(text.find("*/", r.at + 2), text.size() - 2);
            r.line +=
                static_cast<std::int32_t>(std::count(text.begin() + static_cast<std::ptrdiff_t>(r.at),
                                                     text.begin() + static_cast<std::ptrdiff_t>(end), '\n'));
            r.at = end + 2;
        } else if (std::isspace(static_cast<unsigned char>(c)) != 0) {
            if (c == '\n') ++r.line;
            ++r.at;
        } else {
            return;
        }
    }
}

void next(reader& r) {
    if (!xp_ok(r.status)) return;
    skip_blanks(r);
    const std::string_view text = r.sdf.text;
    r.word_line = r.line;
    std::size_t end = r.at;
    if (r.at >= text.size()) {
        r.word = {};
        return;
    }
    if (text[r.at] == '"') {
        end = text.find('"', r.at + 1);
        if (end == std::string_view::npos) return refuse(r, "a text has no end");
        r.word = text.substr(r.at + 1, end - r.at - 1);
        r.at = end + 1;
        return;
    }
    if (text[r.at] == '(' || text[r.at] == ')') {
        ++end;
    } else {
        while (end < text.size() && !ends_word(text[end])) end += text[end] == '\\' ? 2 : 1;
    }
    end = std::min(end, text.size());
    r.word = text.substr(r.at, end - r.at);
    r.at = end;
}

bool is(const reader& r, std::string_view word) { return r.word == word; }

void expect(reader& r, std::string_view word) {
    if (!is(r, word))
        return refuse(r, "expected \"" + std::string(word) + "\", found \"" + std::string(r.word) + "\"");
    next(r);
}

// What is left of a list whose "(" has been read, and its ")".
void skip_list(reader& r) {
    for (int depth = 1; depth > 0 && xp_ok(r.status); next(r)) {
        if (r.word.empty() && r.at >= r.sdf.text.size()) return refuse(r, "a \")\" is missing");
        depth += is(r, "(") ? 1 : is(r, ")") ? -1 : 0;
    }
}

bool is_at_end(const reader& r) {
    return !xp_ok(r.status) || is(r, ")") || (r.word.empty() && r.at >= r.sdf.text.size());
}

std::string upper(std::string_view text) {
    std::string result(text);
    for (char& c : result) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return result;
}

// The name without "\" in front of signs, and "/" for the divider.
std::string_view name_of(reader& r, std::string_view text) {
    if (text.find('\\') == std::string_view::npos &&
        (r.divider == '/' || text.find(r.divider) == std::string_view::npos))
        return text;
    std::string& name = r.sdf.names.emplace_back();
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] == '\\' && i + 1 < text.size())
            name += text[++i];
        else
            name += text[i] == r.divider ? '/' : text[i];
    return name;
}

// ---- values

bool read_number(std::string_view text, double& number) {
    if (text.starts_with('+')) text.remove_prefix(1);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc{} && end == text.data() + text.size() && std::isfinite(number);
}

// A missing typical value is the maximum, so that a run sees the slow corner unless it asks for another; a
// missing end is the other one.
void fill_in(std::array<double, 3>& steps, const std::array<bool, 3>& is_given) {
    const std::size_t high = is_given[2] ? 2 : is_given[1] ? 1 : 0;
    const std::size_t low = is_given[0] ? 0 : is_given[1] ? 1 : 2;
    const std::array<double, 3> from = steps;
    if (!is_given[0]) steps[0] = from[low];
    if (!is_given[1]) steps[1] = from[high];
    if (!is_given[2]) steps[2] = from[high];
}

xp_sdf_value triple_of(reader& r, std::string_view text) {
    xp_sdf_value value;
    std::array<bool, 3> is_given{};
    std::size_t count = 0;
    for (std::size_t at = 0; at <= text.size(); ++count) {
        const std::size_t end = std::min(text.find(':', at), text.size());
        double number = 0;
        if (count == 3 || (end > at && !read_number(text.substr(at, end - at), number))) {
            refuse(r, "bad value \"" + std::string(text) + "\"");
            return {};
        }
        if (end > at) {
            value.steps[count] = number * r.scale;
            is_given[count] = value.is_given = true;
        }
        at = end + 1;
    }
    if (count == 1) value.steps = {value.steps[0], value.steps[0], value.steps[0]};
    if (count == 3 && value.is_given) fill_in(value.steps, is_given);
    if (count == 2) refuse(r, "bad value \"" + std::string(text) + "\"");
    return value;
}

// "(1)", "(1:2:3)", "()".
xp_sdf_value read_value(reader& r) {
    expect(r, "(");
    std::string text;
    for (; !is_at_end(r); next(r)) text += r.word;
    const xp_sdf_value value = text.empty() ? xp_sdf_value{} : triple_of(r, text);
    expect(r, ")");
    return value;
}

// ---- pins

// The keyword of the list that begins here.
std::string keyword_ahead(const reader& r) {
    reader ahead = r;
    next(ahead);
    return upper(ahead.word);
}

char edge_of(std::string_view keyword) {
    if (keyword == "POSEDGE") return 'R';
    if (keyword == "NEGEDGE") return 'F';
    return keyword.ends_with('1')   ? 'R'
           : keyword.ends_with('0') ? 'F'
                                    : '\0';  // "01", "z1": to what it changes
}

xp_sdf_pin read_name(reader& r, char edge) {
    const xp_sdf_pin pin{name_of(r, r.word), edge};
    next(r);
    return pin;
}

// "(posedge A)".
xp_sdf_pin read_edge(reader& r) {
    expect(r, "(");
    const char edge = edge_of(upper(r.word));
    next(r);
    const xp_sdf_pin pin = read_name(r, edge);
    expect(r, ")");
    return pin;
}

// Behind COND, up to its ")": the pin is the last item, the condition in front of it has parentheses of its
// own.
xp_sdf_pin read_conditional_pin(reader& r) {
    xp_sdf_pin pin;
    while (!is_at_end(r)) {
        const std::string keyword = is(r, "(") ? keyword_ahead(r) : "";
        if (keyword == "POSEDGE" || keyword == "NEGEDGE") {
            pin = read_edge(r);
        } else if (is(r, "(")) {
            next(r);
            skip_list(r);
        } else {
            pin = read_name(r, 0);
        }
    }
    return pin;
}

// "A", "(posedge A)", "(COND text A)", "(COND text (posedge A))".
xp_sdf_pin read_pin(reader& r, bool& is_conditional) {
    if (!is(r, "(")) return read_name(r, 0);
    if (keyword_ahead(r) != "COND") return read_edge(r);
    is_conditional = true;
    next(r);
    next(r);
    const xp_sdf_pin pin = read_conditional_pin(r);
    expect(r, ")");
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

bool has_list(reader& r) { return is(r, "("); }

// Rise and fall; further ones, to and from high impedance, do not count.
void read_values(reader& r, xp_sdf_entry& entry) {
    std::size_t count = 0;
    while (has_list(r) && xp_ok(r.status)) {
        const std::string keyword = keyword_ahead(r);
        if (keyword == "RETAIN" || keyword == "SCOND" || keyword == "CCOND") {
            ++r.sdf.left_out[keyword];
            next(r);
            skip_list(r);
            continue;
        }
        const xp_sdf_value value = read_value(r);
        if (count < entry.values.size()) entry.values[count] = value;
        ++count;
    }
    if (count == 1) entry.values[1] = entry.values[0];
}

// An entry from its keyword to its ")".
void read_entry(reader& r, const entry_row& row, bool is_conditional, bool is_increment) {
    xp_sdf_entry entry;
    entry.kind = row.kind;
    entry.line = r.word_line;
    entry.is_conditional = is_conditional;
    entry.is_increment = is_increment;
    next(r);
    if (row.kind == xp_sdf_kind::device && has_list(r)) {
        entry.from.name = "";
    } else {
        entry.from = read_pin(r, entry.is_conditional);
        if (row.pins == 2) entry.to = read_pin(r, entry.is_conditional);
    }
    read_values(r, entry);
    if (entry.from.name.empty() && row.kind != xp_sdf_kind::device) refuse(r, "a pin is missing");
    r.sdf.entries.push_back(entry);
    expect(r, ")");
}

// Behind COND: the condition is everything in front of the list of the path.
void skip_condition(reader& r) {
    while (!is_at_end(r) && !(is(r, "(") && keyword_ahead(r) == "IOPATH")) {
        const bool is_list = is(r, "(");
        next(r);
        if (is_list) skip_list(r);
    }
}

// The lists of an ABSOLUTE, an INCREMENT or a TIMINGCHECK, up to their ")".
void read_entries(reader& r, bool is_check, bool is_increment, bool is_conditional) {
    while (has_list(r) && xp_ok(r.status)) {
        next(r);
        const std::string keyword = upper(r.word);
        const auto row = std::find_if(std::begin(entry_rows), std::end(entry_rows), [&](const entry_row& x) {
            return x.keyword == keyword && x.is_check == is_check;
        });
        if (row != std::end(entry_rows)) {
            read_entry(r, *row, is_conditional, is_increment);
        } else if (!is_check && !is_conditional && keyword.starts_with("COND")) {
            next(r);
            skip_condition(r);
            read_entries(r, false, is_increment, true);
            expect(r, ")");
        } else {
            ++r.sdf.left_out[keyword];
            next(r);
            skip_list(r);
        }
    }
}

// ---- cells

void read_delays(reader& r) {
    while (has_list(r) && xp_ok(r.status)) {
        next(r);
        const std::string keyword = upper(r.word);
        next(r);
        if (keyword == "ABSOLUTE" || keyword == "INCREMENT") {
            read_entries(r, false, keyword == "INCREMENT", false);
            expect(r, ")");
        } else {
            ++r.sdf.left_out[keyword];
            skip_list(r);
        }
    }
}

void read_cell(reader& r) {
    xp_sdf_cell cell;
    cell.line = r.word_line;
    cell.first_entry = r.sdf.entries.size();
    while (has_list(r) && xp_ok(r.status)) {
        next(r);
        const std::string keyword = upper(r.word);
        next(r);
        if (keyword == "CELLTYPE") {
            cell.type = r.word;
            next(r);
        } else if (keyword == "INSTANCE") {
            if (!is(r, ")")) {
                cell.instance = name_of(r, r.word);
                next(r);
            }
        } else if (keyword == "DELAY") {
            read_delays(r);
        } else if (keyword == "TIMINGCHECK") {
            read_entries(r, true, false, false);
        } else {
            ++r.sdf.left_out[keyword];
            skip_list(r);
            continue;
        }
        expect(r, ")");
    }
    cell.entry_count = r.sdf.entries.size() - cell.first_entry;
    r.sdf.cells.push_back(cell);
}

constexpr std::string_view header_words[] = {"SDFVERSION", "DESIGN",  "DATE",    "VENDOR",     "PROGRAM",
                                             "VERSION",    "VOLTAGE", "PROCESS", "TEMPERATURE"};

void read_time_scale(reader& r) {
    std::string text;
    for (; !is_at_end(r); next(r)) text += r.word;
    const double seconds = xp_seconds_of(text);
    if (seconds <= 0) refuse(r, "bad time scale \"" + text + "\"");
    r.scale = seconds / r.seconds_per_step;
}

void read_file(reader& r) {
    next(r);
    expect(r, "(");
    if (upper(r.word) != "DELAYFILE")
        return refuse(r, "expected \"DELAYFILE\", found \"" + std::string(r.word) + "\"");
    next(r);
    while (has_list(r) && xp_ok(r.status)) {
        next(r);
        const std::string keyword = upper(r.word);
        next(r);
        if (keyword == "CELL") {
            read_cell(r);
        } else if (keyword == "DIVIDER") {
            if (r.word.size() == 1) r.divider = r.word[0];
            next(r);
        } else if (keyword == "TIMESCALE") {
            read_time_scale(r);
        } else {
            if (std::ranges::count(header_words, keyword) == 0) ++r.sdf.left_out[keyword];
            skip_list(r);
            continue;
        }
        expect(r, ")");
    }
    expect(r, ")");
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
    reader r{sdf, status, seconds_per_step};
    r.scale = 1e-9 / seconds_per_step;
    read_file(r);
}

void xp_read_sdf(const std::string& path, double seconds_per_step, xp_sdf& sdf, xp_status& status) {
    if (!xp_ok(status)) return;
    sdf.path = path;
    xp_read_file(path, sdf.text, status);
    xp_parse_sdf(seconds_per_step, sdf, status);
}
