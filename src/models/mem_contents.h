// kol: the contents of memories.  Owns the words of one memory, a value a bit, and the reading and writing of
// their text: hexadecimal words apart by blanks or line ends, "@" and a hexadecimal address in front of the
// word that has it, "x" for digits of unknown bits, comments behind "//".  A file beside the design file,
// DESIGNFILE.mem, holds the initial contents of all memories, those of one behind a line "// memory PATH".
// Faults are told with their line.
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

inline constexpr std::int64_t kol_most_memory_bits = std::int64_t{1} << 30;

struct kol_contents_t {
    std::int64_t first = 0, count = 0;  // addresses
    std::size_t width = 0;
    std::vector<std::int8_t> bits;  // values, the lowest bit of the first word first

    void clear_to_unknown();
    bool has(std::int64_t address) const { return address >= first && address < first + count; }
    std::span<std::int8_t> word(std::int64_t address) {
        return {bits.data() + static_cast<std::size_t>(address - first) * width, width};
    }
    std::span<const std::int8_t> word(std::int64_t address) const {
        return {bits.data() + static_cast<std::size_t>(address - first) * width, width};
    }
};

// The hexadecimal digits of a word; "x" where one of a digit's bits is unknown.
std::string kol_word_text(std::span<const std::int8_t> word);
// Replaces the words that the text names; false with what is wrong, and nothing is replaced.
bool kol_read_words(std::string_view text, kol_contents_t& contents, std::string& why);
// The parts of DESIGNFILE.mem by the path of their memory.
std::map<std::string, std::string, std::less<>> kol_split_memories(std::string_view text);
