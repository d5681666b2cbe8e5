// Words of memories as text, and the file that holds those of a design.
#include "models/mem_contents.h"

#include "kernel/state.h"

namespace {

constexpr std::string_view digits = "0123456789abcdef";
constexpr std::string_view header = "// memory ";

int digit_of(char c) {
    const std::size_t at = digits.find(c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c);
    return at == digits.npos ? -1 : static_cast<int>(at);
}
bool is_unknown(char c) { return c == 'x' || c == 'X' || c == 'z' || c == 'Z'; }

bool put_word(std::string_view token, std::span<std::int8_t> word, std::string& why) {
    std::size_t bit = 0;
    for (std::size_t at = token.size(); at-- > 0;) {
        const int digit = digit_of(token[at]);
        if (token[at] == '_') continue;
        if (digit < 0 && !is_unknown(token[at]))
            return why = "no hexadecimal word: " + std::string(token), false;
        for (int k = 0; k < 4; ++k, ++bit) {
            const bool is_one = digit >= 0 && (digit >> k & 1) != 0;
            if (bit < word.size())
                word[bit] = static_cast<std::int8_t>(digit < 0 ? kol_vx : is_one ? kol_v1 : kol_v0);
            else if (is_one)
                return why = "wider than the memory: " + std::string(token), false;
        }
    }
    for (; bit < word.size(); ++bit) word[bit] = kol_v0;
    return true;
}

bool read_address(std::string_view token, std::int64_t& address) {
    address = 0;
    for (const char c : token) {
        if (digit_of(c) < 0 || address > kol_most_memory_bits) return false;
        address = address * 16 + digit_of(c);
    }
    return !token.empty();
}

// The words of one line from an address on, which moves with them.
bool read_line(std::string_view line, std::int64_t& address, kol_contents_t& contents, std::string& why) {
    line = line.substr(0, line.find("//"));
    while (true) {
        const std::size_t begin = line.find_first_not_of(" \t\r");
        if (begin == line.npos) return true;
        const std::size_t end = std::min(line.find_first_of(" \t\r", begin), line.size());
        const std::string_view token = line.substr(begin, end - begin);
        line.remove_prefix(end);
        if (token[0] == '@') {
            if (!read_address(token.substr(1), address))
                return why = "no address: " + std::string(token), false;
            continue;
        }
        if (!contents.has(address)) return why = "no such address: " + std::to_string(address), false;
        if (!put_word(token, contents.word(address++), why)) return false;
    }
}

template <typename Take>
void each_line(std::string_view text, Take take) {
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        take(text.substr(at, end - at));
        at = end + 1;
    }
}

}  // namespace

void kol_contents_t::clear_to_unknown() { bits.assign(static_cast<std::size_t>(count) * width, kol_vx); }

std::string kol_word_text(std::span<const std::int8_t> word) {
    std::string text;
    for (std::size_t at = 0; at < word.size(); at += 4) {
        unsigned digit = 0;
        bool unknown = false;
        for (std::size_t k = at; k < std::min(at + 4, word.size()); ++k) {
            unknown = unknown || (word[k] != kol_v0 && word[k] != kol_v1);
            if (word[k] == kol_v1) digit |= 1U << (k - at);
        }
        text.insert(text.begin(), unknown ? 'x' : digits[digit]);
    }
    return text;
}

bool kol_read_words(std::string_view text, kol_contents_t& contents, std::string& why) {
    kol_contents_t read = contents;
    std::int64_t address = contents.first;
    std::size_t number = 0;
    bool ok = true;
    each_line(text, [&](std::string_view line) {
        ++number;
        if (ok && !read_line(line, address, read, why)) {
            why = "line " + std::to_string(number) + ": " + why;
            ok = false;
        }
    });
    if (ok) contents = std::move(read);
    return ok;
}

std::map<std::string, std::string, std::less<>> kol_split_memories(std::string_view text) {
    std::map<std::string, std::string, std::less<>> parts;
    std::string* part = nullptr;
    each_line(text, [&](std::string_view line) {
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (line.starts_with(header))
            part = &parts[std::string(line.substr(header.size()))];
        else if (part != nullptr)
            (*part += line) += '\n';
    });
    return parts;
}
