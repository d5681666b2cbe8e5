// Texts, quotes and times put into lines.
#include "kernel/say.h"

#include "foundation/shell.h"
#include "kernel/time.h"

std::string_view kol_path(std::int32_t string_index) {
    if (string_index == 0) return {};
    const yx_string_record_t* text = yx_ptrto_string_rec(string_index);
    return {text->charp, static_cast<std::size_t>(text->len)};
}

std::string kol_quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

std::string kol_time_text(std::int32_t time) {
    tm_string_record_t text;
    kol_time_to_string(time, text);
    return std::string(tm_view(text));
}

void kol_say_line(std::string_view line) { tm_display(line); }
