// $ARGn and $VARn by their values.

#include "commands/language/substitution.h"

#include "foundation/shell.h"

namespace {

constexpr std::size_t shortest = 5;  // "$ARG1"

constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }

bool reference_at(std::string_view text, std::size_t at, std::string_view prefix) {
    if (text[at] != '$' || at + shortest > text.size() || !is_digit(text[at + prefix.size()])) return false;
    for (std::size_t i = 1; i < prefix.size(); ++i)
        if (tm_upper_case(text[at + i]) != prefix[i]) return false;
    return true;
}

void replace(tm_string_record_t& command, std::size_t at, std::size_t length, std::string_view value) {
    const std::string_view text = tm_view(command);
    tm_string_record_t result = tm_string(text.substr(0, at));
    tm_append(value, result);
    tm_append(text.substr(at + length), result);
    command = result;
}

void report_invalid_index(const tm_string_record_t& command, std::string_view prefix) {
    kol_show({"# Error on : \"", tm_view(command), "\" "});
    kol_show({"# Found invalid ", prefix, "(n) in command line "});
}

}  // namespace

void kol_substitute(tm_string_record_t& command, std::string_view prefix, const kol_array_param_t& values) {
    const std::size_t places = static_cast<std::size_t>(command.len);
    for (std::size_t at = 0; at + shortest <= places; ++at) {
        const std::string_view text = tm_view(command);
        if (at >= text.size()) return;
        if (!reference_at(text, at, prefix)) continue;
        std::size_t index = static_cast<std::size_t>(text[at + shortest - 1] - '0');
        std::size_t length = shortest;
        if (at + shortest < text.size() && is_digit(text[at + shortest])) {
            index = index * 10 + static_cast<std::size_t>(text[at + shortest] - '0');
            ++length;
        }
        if (index < 1 || index > values.size()) return report_invalid_index(command, prefix);
        replace(command, at, length, tm_view(values[index - 1]));
    }
}
