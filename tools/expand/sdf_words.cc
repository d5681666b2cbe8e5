// The words of an SDF file.
#include "expand/sdf_words.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>

namespace {

bool is(const xp_sdf_reader& r, std::string_view word) { return r.word == word; }

bool ends_word(char c) {
    return std::isspace(static_cast<unsigned char>(c)) != 0 || c == '(' || c == ')' || c == '"';
}

// Behind blanks and comments.
void skip_blanks(xp_sdf_reader& r) {
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

xp_sdf_value triple_of(xp_sdf_reader& r, std::string_view text) {
    xp_sdf_value value;
    std::array<bool, 3> is_given{};
    std::size_t count = 0;
    for (std::size_t at = 0; at <= text.size(); ++count) {
        const std::size_t end = std::min(text.find(':', at), text.size());
        double number = 0;
        if (count == 3 || (end > at && !read_number(text.substr(at, end - at), number))) {
            xp_sdf_refuse(r, "bad value \"" + std::string(text) + "\"");
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
    if (count == 2) xp_sdf_refuse(r, "bad value \"" + std::string(text) + "\"");
    return value;
}

}  // namespace

void xp_sdf_refuse(xp_sdf_reader& r, std::string_view what) {
    xp_fail(r.status, xp_fault::bad_sdf, r.sdf.path + ": line " + std::to_string(r.word_line), what);
    r.word = {};
    r.at = r.sdf.text.size();
}

void xp_sdf_next(xp_sdf_reader& r) {
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
        if (end == std::string_view::npos) return xp_sdf_refuse(r, "a text has no end");
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

void xp_sdf_expect(xp_sdf_reader& r, std::string_view word) {
    if (!is(r, word))
        return xp_sdf_refuse(r,
                             "expected \"" + std::string(word) + "\", found \"" + std::string(r.word) + "\"");
    xp_sdf_next(r);
}

void xp_sdf_skip_list(xp_sdf_reader& r) {
    for (int depth = 1; depth > 0 && xp_ok(r.status); xp_sdf_next(r)) {
        if (r.word.empty() && r.at >= r.sdf.text.size()) return xp_sdf_refuse(r, "a \")\" is missing");
        depth += is(r, "(") ? 1 : is(r, ")") ? -1 : 0;
    }
}

bool xp_sdf_is_at_end(const xp_sdf_reader& r) {
    return !xp_ok(r.status) || is(r, ")") || (r.word.empty() && r.at >= r.sdf.text.size());
}

std::string xp_sdf_upper(std::string_view text) {
    std::string result(text);
    for (char& c : result) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return result;
}

std::string xp_sdf_keyword_ahead(const xp_sdf_reader& r) {
    xp_sdf_reader ahead = r;
    xp_sdf_next(ahead);
    return xp_sdf_upper(ahead.word);
}

std::string_view xp_sdf_name_of(xp_sdf_reader& r, std::string_view text) {
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

xp_sdf_value xp_sdf_read_value(xp_sdf_reader& r) {
    xp_sdf_expect(r, "(");
    std::string text;
    for (; !xp_sdf_is_at_end(r); xp_sdf_next(r)) text += r.word;
    const xp_sdf_value value = text.empty() ? xp_sdf_value{} : triple_of(r, text);
    xp_sdf_expect(r, ")");
    return value;
}
