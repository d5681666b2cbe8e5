// Words of a VCD file; variables and their nets; changes.
#include "commands/values/vcd_reader.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <unordered_map>

#include "kernel/bus_bits.h"
#include "kernel/lookup.h"
#include "results/files/vcd.h"

namespace {

class words_t {
public:
    explicit words_t(std::string_view text) : text_(text) {}

    std::string_view next() {
        while (at_ < text_.size() && is_blank(text_[at_])) ++at_;
        const std::size_t first = at_;
        while (at_ < text_.size() && !is_blank(text_[at_])) ++at_;
        return text_.substr(first, at_ - first);
    }
    // The words up to "$end".
    std::vector<std::string_view> rest() {
        std::vector<std::string_view> words;
        for (std::string_view word = next(); !word.empty() && word != "$end"; word = next())
            words.push_back(word);
        return words;
    }

private:
    static bool is_blank(char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; }

    std::string_view text_;
    std::size_t at_ = 0;
};

struct variable_t {
    std::string path;  // "tb/dut/sum"
    std::string_view code, range;
    std::uint32_t width = 0;
};

struct header_t {
    double unit = 1;  // nanoseconds
    std::vector<variable_t> variables;
};

// "10ps", also in two words.
bool read_unit(const std::vector<std::string_view>& words, double& unit) {
    std::string text;
    for (const std::string_view word : words) text += word;
    int count = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    const std::string_view name(end, static_cast<std::size_t>(text.data() + text.size() - end));
    constexpr std::string_view names[] = {"fs", "ps", "ns", "us", "ms", "s"};
    const auto* const found = std::ranges::find(names, name);
    if (error != std::errc() || found == std::end(names)) return false;
    constexpr int nanoseconds = 2;
    unit = count * std::pow(1000.0, static_cast<double>(found - std::begin(names)) - nanoseconds);
    return true;
}

bool read_header(words_t& words, header_t& header, std::string& error) {
    std::vector<std::string_view> scopes;
    for (std::string_view word = words.next(); !word.empty(); word = words.next()) {
        const std::vector<std::string_view> rest = words.rest();
        if (word == "$enddefinitions") return true;
        if (word == "$timescale" && !read_unit(rest, header.unit)) return error = "timescale invalid", false;
        if (word == "$upscope" && !scopes.empty()) scopes.pop_back();
        if (word == "$scope" && rest.size() > 1) scopes.push_back(rest[1]);
        if (word != "$var" || rest.size() < 4) continue;
        variable_t variable{{}, rest[2], {}, 0};
        std::from_chars(rest[1].data(), rest[1].data() + rest[1].size(), variable.width);
        for (const std::string_view scope : scopes) variable.path.append(scope).append("/");
        variable.path.append(rest[3]);
        if (rest.size() > 4) variable.range = rest[4];
        header.variables.push_back(std::move(variable));
    }
    return error = "no end of definitions", false;
}

// The only outermost scope, if there is one.
std::string outermost_scope(const header_t& header) {
    std::string found;
    for (const variable_t& variable : header.variables) {
        const std::string scope = variable.path.substr(0, variable.path.find('/') + 1);
        if (!found.empty() && scope != found) return {};
        found = scope;
    }
    return found;
}

std::string scope_path(std::string_view scope, const header_t& header) {
    if (scope.empty()) return outermost_scope(header);
    std::string path(scope);
    const auto is_below = [&path](const variable_t& variable) {
        return variable.path.starts_with(path + '/');
    };
    if (std::ranges::none_of(header.variables, is_below)) std::ranges::replace(path, '.', '/');
    if (path.starts_with('/')) path.erase(0, 1);
    return path.ends_with('/') ? path : path + '/';
}

// The nets of a variable, none where one of its bits has no net.
std::vector<std::uint32_t> nets_of(std::string path, const variable_t& variable) {
    std::vector<std::uint32_t> nets;
    const auto find = [&nets](const std::string& name) {
        yx_net_record_t* net = nullptr;
        if (name.size() >= tm_string_max || kol_find_net_path(tm_string(name), net) == 0 ||
            net->net_type == YX_TSTD_BUS)
            return false;
        nets.push_back(static_cast<std::uint32_t>(net->self));
        return true;
    };
    const std::string_view range = variable.range;
    if (variable.width == 1) {
        if (find(path + std::string(range)) || find(path)) return nets;
        return {};
    }
    int high = static_cast<int>(variable.width) - 1, low = 0;
    const std::size_t bracket = path.rfind('[');
    const std::string_view bounds =
        !range.empty() ? range : std::string_view(path).substr(std::min(bracket, path.size()));
    if (bounds.size() > 2) {
        const char* const end = bounds.data() + bounds.size();
        const auto [colon, error] = std::from_chars(bounds.data() + 1, end, high);
        if (error == std::errc() && colon < end && *colon == ':') std::from_chars(colon + 1, end, low);
    }
    if (range.empty() && bracket != path.npos) path.erase(bracket);
    const int step = high >= low ? -1 : 1;
    for (int bit = high;; bit += step) {
        if (!find(path + "[" + std::to_string(bit) + "]")) return {};
        if (bit == low) return nets;
    }
}

// What each code changes.
class changes_t {
public:
    changes_t(const header_t& header, std::string_view scope, kol_vcd_read_t& read) : read_(read) {
        for (const variable_t& variable : header.variables) {
            if (!variable.path.starts_with(scope)) continue;
            std::vector<std::uint32_t> nets = nets_of("/" + variable.path.substr(scope.size()), variable);
            if (nets.empty()) {
                read.unknown.push_back(variable.path);
                continue;
            }
            ++read.variables;
            std::vector<std::uint32_t>& known = nets_by_code_[std::string(variable.code)];
            known.insert(known.end(), nets.begin(), nets.end());
            widths_[std::string(variable.code)] = static_cast<std::uint32_t>(nets.size());
        }
        states_.assign(static_cast<std::size_t>(yx_sext.max_net_cur) + 1, -1);
    }

    void set_time(std::int32_t time) { time_ = time; }

    void take(std::string_view code, std::string_view bits) {
        key_ = code;
        const auto found = nets_by_code_.find(key_);
        if (found == nets_by_code_.end() || bits.empty()) return;
        const std::uint32_t width = widths_[key_];
        const char first = bits[0] == '1' ? '0' : bits[0];  // above the written ones
        const std::size_t missing = width > bits.size() ? width - bits.size() : 0;
        if (bits.size() > width) bits.remove_prefix(bits.size() - width);
        for (std::size_t k = 0; k < found->second.size(); ++k) {
            const std::size_t bit = k % width;
            put(found->second[k], bit < missing ? first : bits[bit - missing]);
        }
    }

private:
    void put(std::uint32_t net, char bit) {
        const std::int8_t state = kol_state_of_bit(bit == 'X' ? 'x' : bit == 'Z' ? 'z' : bit);
        if (states_[net] == state) return;
        states_[net] = state;
        read_.forces.push_back({time_, net, state});
    }

    kol_vcd_read_t& read_;
    std::unordered_map<std::string, std::vector<std::uint32_t>> nets_by_code_;
    std::unordered_map<std::string, std::uint32_t> widths_;
    std::vector<std::int8_t> states_;  // by net, the last one given
    std::string key_;
    std::int32_t time_ = 0;
};

bool read_time(std::string_view word, double steps_of_unit, std::int32_t& time) {
    std::int64_t count = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), count);
    const double steps = std::round(static_cast<double>(count) * steps_of_unit);
    if (error != std::errc() || end != word.data() + word.size() || count < 0 ||
        steps > std::numeric_limits<std::int32_t>::max() || steps < time)
        return false;
    time = static_cast<std::int32_t>(steps);
    return true;
}

bool read_changes(words_t& words, double steps_of_unit, changes_t& changes, std::string& error) {
    std::int32_t time = 0;
    for (std::string_view word = words.next(); !word.empty(); word = words.next()) {
        switch (word[0]) {
            case '#':
                if (!read_time(word.substr(1), steps_of_unit, time))
                    return error = "time invalid : " + std::string(word), false;
                changes.set_time(time);
                break;
            case 'b':
            case 'B':
                changes.take(words.next(), word.substr(1));
                break;
            case 'r':
            case 'R':
            case 's':
                words.next();  // a real or a text is no state
                break;
            case '$':
                if (word == "$comment") words.rest();
                break;
            default:
                changes.take(word.substr(1), word.substr(0, 1));
        }
    }
    return true;
}

}  // namespace

bool kol_read_vcd(std::string_view text, std::string_view scope, kol_vcd_read_t& read, std::string& error) {
    words_t words(text);
    header_t header;
    if (!read_header(words, header, error)) return false;
    if (header.variables.empty()) return error = "no variables", false;
    changes_t changes(header, scope_path(scope, header), read);
    return read_changes(words, header.unit / rs_nanoseconds_of(yx_sext.time_step), changes, error);
}
