// Echo and rejection lines.
#include "commands/language/command.h"

#include <algorithm>

#include "foundation/shell.h"

namespace {

void append(std::initializer_list<std::string_view> parts, tm_string_record_t& line) {
    for (const std::string_view part : parts) tm_append(part, line);
}

tm_string_record_t line_of(std::initializer_list<std::string_view> parts) {
    tm_string_record_t line;
    append(parts, line);
    return line;
}

struct quotes_t {
    std::string_view before, behind;
};

quotes_t quotes_of(const kol_line_t& line, const kol_result_t& result) {
    if (!result) return {"", " "};
    if (line.row.manner == kol_manner::quoted) return {"\"", "\"   "};
    return result.form == kol_form::quoted ? quotes_t{"\"", "\" "} : quotes_t{"", " "};
}

tm_string_record_t echo_of(const kol_line_t& line, const kol_result_t& result) {
    const bool marked = result || line.row.manner == kol_manner::marked;
    tm_string_record_t echo = line_of({marked ? "#" : "", line.words()});
    if (result.form == kol_form::wide) tm_append(" ", echo);
    if (result.echo == kol_result_t::echo_t::values) {
        tm_append(result.values, echo);
        return echo;
    }
    const quotes_t quotes = quotes_of(line, result);
    for (std::int16_t k = line.first_parameter(); k <= line.nkeyword; ++k)
        append({quotes.before, tm_view(line[k]), quotes.behind}, echo);
    return echo;
}

// Nothing but what the handler has shown itself.
bool is_silent(const kol_line_t& line, const kol_result_t& result) {
    return !result && (result.echo == kol_result_t::echo_t::none || line.row.manner == kol_manner::silent);
}

}  // namespace

std::int16_t kol_command_words(const kol_command_row_t& row) {
    return static_cast<std::int16_t>(
        std::ranges::count_if(row.prefix, [](const char* prefix) { return prefix != nullptr; }));
}

std::string kol_help_topic(const kol_command_row_t& row) {
    std::string topic(row.canonical.substr(0, row.canonical.find(' ')));
    std::ranges::transform(topic, topic.begin(), tm_upper_case);
    return topic;
}

std::string kol_line_t::words() const { return " " + std::string(row.canonical) + " "; }

std::int16_t kol_line_t::first_parameter() const {
    return static_cast<std::int16_t>(kol_command_words(row) + 1);
}

kol_result_t&& kol_result_t::then(std::initializer_list<std::string_view> parts) && {
    behind.emplace_back(tm_view(line_of(parts)));
    return std::move(*this);
}

kol_result_t&& kol_result_t::showing(std::string_view text) && {
    echo = echo_t::values;
    values = text;
    return std::move(*this);
}

kol_result_t kol_rejected(std::initializer_list<std::string_view> parts) {
    kol_result_t result;
    result.error = tm_view(line_of(parts));
    return result;
}

kol_result_t kol_accepted(std::string_view values) { return kol_result_t().showing(values); }

kol_result_t kol_shown() {
    kol_result_t result;
    result.echo = kol_result_t::echo_t::none;
    return result;
}

tm_string_record_t kol_echo_line(const kol_line_t& line) { return echo_of(line, {}); }

void kol_echo(const kol_line_t& line) { tm_display_list(kol_echo_line(line)); }

void kol_show_result(const kol_line_t& line, const kol_result_t& result) {
    if (!result.instead.empty())
        tm_display(result.instead);
    else if (!is_silent(line, result))
        tm_display_list(echo_of(line, result));
    if (result) tm_display(result.error);
    for (const std::string& text : result.behind) tm_display(text);
}

void kol_show(std::initializer_list<std::string_view> parts) { tm_display_list(line_of(parts)); }
