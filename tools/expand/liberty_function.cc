// Functions by their tables: joining, reducing, and reading the way Liberty writes them.
#include "expand/liberty_function.h"

#include <algorithm>
#include <cctype>

namespace {

bool depends_on(const xp_function& f, std::size_t input) {
    for (std::size_t place = 0; place < f.table.size(); ++place)
        if (f.table[place] != f.table[place ^ (std::size_t{1} << input)]) return true;
    return false;
}

void remove_input(xp_function& f, std::size_t input) {
    std::vector<bool> half;
    for (std::size_t place = 0; place < f.table.size(); ++place)
        if ((place >> input & 1) == 0) half.push_back(f.table[place]);
    f.table = std::move(half);
    f.inputs.erase(f.inputs.begin() + static_cast<std::ptrdiff_t>(input));
}

void reduce(xp_function& f) {
    for (std::size_t input = f.inputs.size(); input-- > 0;)
        if (!depends_on(f, input)) remove_input(f, input);
}

// The value of a function of some of the inputs under values of all of them.
bool value_under(const xp_function& f, const std::vector<std::int32_t>& inputs, std::size_t values) {
    std::size_t place = 0;
    for (std::size_t i = 0; i < f.inputs.size(); ++i) {
        const auto at = std::find(inputs.begin(), inputs.end(), f.inputs[i]) - inputs.begin();
        place |= (values >> at & 1) << i;
    }
    return f.table[place];
}

bool joined(bool a, bool b, xp_function_join how) {
    if (how == xp_function_join::all) return a && b;
    return how == xp_function_join::any ? a || b : a != b;
}

struct reader {
    std::string_view text;
    const xp_function_lookup& lookup;
    std::string& why;
    std::size_t at = 0;
    int depth = 0;  // of parentheses

    char next() {
        while (at < text.size() && std::isspace(static_cast<unsigned char>(text[at])) != 0) ++at;
        return at < text.size() ? text[at] : '\0';
    }
    xp_function fail(std::string what) {
        if (why.empty()) why = std::move(what);
        return {};
    }
};

constexpr int depth_max = 200;
constexpr std::string_view signs = "()!'^*&+|";

xp_function read_sum(reader& r);

xp_function read_name(reader& r) {
    std::string name;
    while (r.at < r.text.size() && signs.find(r.text[r.at]) == std::string_view::npos &&
           std::isspace(static_cast<unsigned char>(r.text[r.at])) == 0)
        if (const char c = r.text[r.at++]; c != '"' && c != '\\') name += c;
    if (name == "0" || name == "1") return {{}, {name == "1"}};
    xp_function meaning;
    if (name.empty()) return r.fail("a name is missing");
    return r.lookup(name, meaning) ? meaning : r.fail("unknown name \"" + name + "\"");
}

xp_function read_primary(reader& r) {
    if (r.next() != '(') return read_name(r);
    ++r.at;
    if (++r.depth > depth_max) return r.fail("more than " + std::to_string(depth_max) + " parentheses deep");
    const xp_function inner = read_sum(r);
    --r.depth;
    if (r.next() != ')') return r.fail("a ) is missing");
    ++r.at;
    return inner;
}

xp_function read_inverted(reader& r) {
    bool is_inverted = false;
    for (; r.next() == '!'; ++r.at) is_inverted = !is_inverted;
    const xp_function inner = read_primary(r);
    for (; r.next() == '\''; ++r.at) is_inverted = !is_inverted;
    return is_inverted ? xp_function_not(inner) : inner;
}

xp_function join(reader& r, const xp_function& a, const xp_function& b, xp_function_join how) {
    const auto is_new = [&](std::int32_t input) { return std::ranges::count(a.inputs, input) == 0; };
    const auto count = a.inputs.size() + static_cast<std::size_t>(std::ranges::count_if(b.inputs, is_new));
    if (count > xp_function_inputs_max)
        return r.fail("more than " + std::to_string(xp_function_inputs_max) + " inputs");
    return xp_function_joined(a, b, how);
}

xp_function read_odd(reader& r) {
    xp_function result = read_inverted(r);
    while (r.next() == '^' && r.why.empty()) {
        ++r.at;
        result = join(r, result, read_inverted(r), xp_function_join::odd);
    }
    return result;
}

bool ends_product(char c) { return c == '\0' || c == '+' || c == '|' || c == ')'; }

xp_function read_product(reader& r) {
    xp_function result = read_odd(r);
    while (!ends_product(r.next()) && r.why.empty()) {
        if (r.next() == '*' || r.next() == '&') ++r.at;
        result = join(r, result, read_odd(r), xp_function_join::all);
    }
    return result;
}

xp_function read_sum(reader& r) {
    xp_function result = read_product(r);
    while ((r.next() == '+' || r.next() == '|') && r.why.empty()) {
        ++r.at;
        result = join(r, result, read_product(r), xp_function_join::any);
    }
    return result;
}

}  // namespace

xp_function xp_function_of_input(std::int32_t input) { return {{input}, {false, true}}; }

xp_function xp_function_not(const xp_function& a) {
    xp_function result = a;
    result.table.flip();
    return result;
}

xp_function xp_function_joined(const xp_function& a, const xp_function& b, xp_function_join how) {
    xp_function result;
    result.inputs = a.inputs;
    for (const std::int32_t input : b.inputs)
        if (std::find(a.inputs.begin(), a.inputs.end(), input) == a.inputs.end())
            result.inputs.push_back(input);
    std::sort(result.inputs.begin(), result.inputs.end());
    result.table.assign(std::size_t{1} << result.inputs.size(), false);
    for (std::size_t place = 0; place < result.table.size(); ++place)
        result.table[place] =
            joined(value_under(a, result.inputs, place), value_under(b, result.inputs, place), how);
    reduce(result);
    return result;
}

int xp_sense_of(const xp_function& f, std::size_t input) {
    bool follows = false, opposes = false;
    for (std::size_t place = 0; place < f.table.size(); ++place) {
        if ((place >> input & 1) != 0) continue;
        const bool low = f.table[place], high = f.table[place | std::size_t{1} << input];
        follows = follows || (high && !low);
        opposes = opposes || (low && !high);
    }
    return follows == opposes ? 0 : follows ? 1 : -1;
}

std::string xp_table_text(const std::vector<bool>& table) {
    std::string text;
    for (std::size_t at = 0; at < table.size(); at += 4) {
        unsigned digit = 0;
        for (std::size_t k = 0; k < 4 && at + k < table.size(); ++k)
            digit |= static_cast<unsigned>(table[at + k]) << k;
        text.insert(text.begin(), "0123456789ABCDEF"[digit]);
    }
    return text;
}

bool xp_parse_function(std::string_view text, const xp_function_lookup& lookup, xp_function& function,
                       std::string& why) {
    reader r{text, lookup, why};
    function = read_sum(r);
    if (why.empty() && r.next() != '\0') r.fail("unexpected \"" + std::string(1, r.next()) + "\"");
    return why.empty();
}
