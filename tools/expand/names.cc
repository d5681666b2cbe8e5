// How names are made typeable and distinct.
#include "expand/names.h"

#include <algorithm>
#include <vector>

namespace {

constexpr bool is_letter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }
constexpr char to_lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// Signs that end or quote a keyword, start a comment or a program, or that a path is made of.
constexpr std::string_view untypeable = " ,;'\"#!";

std::string folded(std::string_view name) {
    std::string text(name);
    std::transform(text.begin(), text.end(), text.begin(), to_lower);
    return text;
}

char typeable(char c) {
    if (c == '/') return '.';
    return c < 33 || c > 126 || untypeable.find(c) != std::string_view::npos ? '_' : c;
}

// Whether the '$' at this place of a folded name begins a reference to a parameter or variable.
bool is_reference(std::string_view name, std::size_t at) {
    const std::string_view word = name.substr(at + 1, 3);
    return name.size() > at + 4 && (word == "arg" || word == "var") && is_digit(name[at + 4]);
}

// Offers the name, then the name with rising numbers, until take(candidate, folded candidate) accepts one.  A
// name that was numbered before goes on from there.
template <typename Take>
std::string first_free(xp_taken_names& taken, std::string_view name, Take take) {
    std::string candidate(name);
    if (take(folded(candidate))) return candidate;
    std::size_t& number = taken.numbered.try_emplace(folded(name), 1).first->second;
    do candidate = std::string(name) + "_" + std::to_string(++number);
    while (!take(folded(candidate)));
    return candidate;
}

}  // namespace

std::string xp_clean_name(std::string_view raw) {
    std::string name(raw.substr(0, xp_name_max));
    std::transform(name.begin(), name.end(), name.begin(), typeable);
    const std::string lower = folded(name);
    for (std::size_t i = 0; i < name.size(); ++i)
        if (name[i] == '$' && is_reference(lower, i)) name[i] = '_';
    if (name.empty() || !is_letter(name[0]))
        name.insert(0, 1, !name.empty() && is_digit(name[0]) ? 'N' : 'x');
    if (lower.starts_with("n_") || lower.starts_with("ni_")) name.insert(0, 1, 'x');
    return name;
}

std::int32_t xp_bit_label(const xp_net_name& name, std::uint32_t k) {
    return name.offset + static_cast<std::int32_t>(name.upto ? name.bits.count - 1 - k : k);
}

std::string xp_bit_suffix(const xp_net_name& name, std::uint32_t k) {
    return xp_is_vector(name) ? "[" + std::to_string(xp_bit_label(name, k)) + "]" : std::string();
}

std::string xp_range_suffix(const xp_net_name& name) {
    return "[" + std::to_string(xp_bit_label(name, name.bits.count - 1)) + ":" +
           std::to_string(xp_bit_label(name, 0)) + "]";
}

bool xp_are_equal_names(std::string_view a, std::string_view b) {
    return a.size() == b.size() && folded(a) == folded(b);
}

bool xp_is_taken(const xp_taken_names& taken, std::string_view name) {
    return taken.folded.contains(folded(name));
}

std::string xp_take_name(xp_taken_names& taken, std::string_view name) {
    return first_free(taken, name,
                      [&](const std::string& candidate) { return taken.folded.insert(candidate).second; });
}

std::string xp_take_vector(xp_taken_names& taken, std::string_view name, const xp_net_name& vector) {
    std::vector<std::string> suffixes = {"", xp_range_suffix(vector)};
    for (std::uint32_t k = 0; k < vector.bits.count; ++k) suffixes.push_back(xp_bit_suffix(vector, k));
    return first_free(taken, name, [&](const std::string& candidate) {
        for (const std::string& suffix : suffixes)
            if (taken.folded.contains(candidate + suffix)) return false;
        for (const std::string& suffix : suffixes) taken.folded.insert(candidate + suffix);
        return true;
    });
}
