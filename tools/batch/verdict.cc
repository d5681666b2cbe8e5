// What a line of the session area tells, by its first words behind the marks.
#include "batch/verdict.h"

#include <algorithm>

#include "foundation/strings.h"

namespace {

struct row_t {
    std::string_view begins;  // in capitals
    bt_kind kind;
};
// The first that fits counts.
constexpr row_t rows[] = {
    {"ERROR", bt_kind::error},
    {"UNKNOWN COMMAND", bt_kind::error},
    {"IMPOSSIBLE TO ", bt_kind::error},
    {"NO SHEET AVAILABLE", bt_kind::error},
    {"CHECK : ", bt_kind::error},
    {"MORE THAN ", bt_kind::broken},
    {"SIMULATION BREAKED REQUEST", bt_kind::broken},
    {"WARNING : HAZARD", bt_kind::hazard},
    {"SPIKE ON ", bt_kind::spike},
    {"WARNING", bt_kind::warning},
    {"RESET ALREADY ", bt_kind::warning},
    {"SET ALREADY ", bt_kind::warning},
};

bool begins_with(std::string_view text, std::string_view capitals) {
    return text.size() >= capitals.size() &&
           std::ranges::equal(text.substr(0, capitals.size()), capitals, {}, tm_upper_case);
}

void skip(std::string_view& text, char c) {
    text.remove_prefix(std::min(text.find_first_not_of(c), text.size()));
}

}  // namespace

bt_kind bt_kind_of(std::string_view line) {
    skip(line, '#');
    skip(line, ' ');
    if (!line.starts_with("!!")) return bt_kind::none;
    skip(line, '!');
    skip(line, ' ');
    if (line.find(" Violation on pin") != line.npos) return bt_kind::violation;
    const auto* const found =
        std::ranges::find_if(rows, [line](const row_t& row) { return begins_with(line, row.begins); });
    return found == std::end(rows) ? bt_kind::none : found->kind;
}

void bt_note(bt_kind kind, bt_verdict_t& verdict) {
    if (kind != bt_kind::none) ++verdict[kind];
}

bool bt_fails(bt_kind kind, bool warnings_are_errors) {
    return kind <= bt_kind::fatal || (warnings_are_errors && kind <= bt_kind::spike);
}

std::int64_t bt_failures(const bt_verdict_t& verdict, bool warnings_are_errors) {
    std::int64_t failures = 0;
    for (std::size_t i = 0; i < bt_kinds; ++i)
        if (bt_fails(static_cast<bt_kind>(i), warnings_are_errors)) failures += verdict.count[i];
    return failures;
}
