#include "commands/command.h"

#include "foundation/shell.h"

tm_string_record_t kol_echo_line(std::string_view command, std::int16_t first, std::int16_t nkeyword,
                                 kol_array_keyword_t& keyword) {
    tm_string_record_t line = tm_string(command);
    for (std::int16_t k = first; k <= nkeyword; ++k) {
        tm_append(tm_view(kol_kw(keyword, k)), line);
        tm_append(" ", line);
    }
    return line;
}

void kol_echo(std::string_view command, std::int16_t first, std::int16_t nkeyword,
              kol_array_keyword_t& keyword) {
    tm_display_list(kol_echo_line(command, first, nkeyword, keyword));
}

void kol_echo_quoted(std::string_view command, std::int16_t first, std::int16_t nkeyword,
                     kol_array_keyword_t& keyword) {
    tm_string_record_t line = tm_string(command);
    for (std::int16_t k = first; k <= nkeyword; ++k) {
        tm_append("\"", line);
        tm_append(tm_view(kol_kw(keyword, k)), line);
        tm_append("\" ", line);
    }
    tm_display_list(line);
}

void kol_show(std::initializer_list<std::string_view> parts) {
    tm_string_record_t line;
    for (const std::string_view part : parts) tm_append(part, line);
    tm_display_list(line);
}
