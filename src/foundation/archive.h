// tm: archives.  One walk over values writes them into bytes or takes them from bytes, so that writer and
// reader cannot differ.  Numbers lie there with the lowest byte first, texts and rows behind their length.
// Reading beyond the end leaves values empty and the archive unsound; nothing else fails.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "foundation/strings.h"

class tm_archive_t {
public:
    tm_archive_t() = default;  // writes
    explicit tm_archive_t(std::string_view bytes) : source_(bytes), is_reading_(true) {}

    bool is_reading() const { return is_reading_; }
    bool is_sound() const { return is_sound_; }
    bool is_at_end() const { return at_ == source_.size(); }
    const std::string& bytes() const { return written_; }

    template <typename... T>
    void operator()(T&... values) {
        (take(values), ...);
    }

    // A count, at most as many as there can be of a thing that takes a byte.
    std::size_t count(std::size_t present) {
        auto number = static_cast<std::uint64_t>(present);
        take(number);
        if (is_reading_ && number > source_.size() - at_) {
            is_sound_ = false;
            return 0;
        }
        return static_cast<std::size_t>(number);
    }

private:
    template <typename T>
    requires std::is_integral_v<T> || std::is_enum_v<T>
    void take(T& value) {
        // NOLINTNEXTLINE(bugprone-signed-char-misuse): only the bytes of the value are taken
        auto bits = static_cast<std::uint64_t>(value);
        take_bytes(bits, std::is_same_v<T, bool> ? 1 : sizeof(T));
        if (is_reading_) value = static_cast<T>(bits);
    }
    void take(float& value) {
        auto bits = std::bit_cast<std::uint32_t>(value);
        take(bits);
        value = std::bit_cast<float>(bits);
    }
    void take(std::string& text) {
        text.resize(count(text.size()));
        for (char& c : text) take(c);
    }
    void take(tm_string_record_t& text) {
        std::string chars(tm_view(text));
        take(chars);
        if (is_reading_) text = tm_string(std::string_view(chars).substr(0, tm_string_max));
    }
    template <typename T>
    void take(std::vector<T>& row) {
        row.resize(count(row.size()));
        for (T& value : row) take(value);
    }
    template <typename T, std::size_t size>
    void take(std::array<T, size>& row) {
        for (T& value : row) take(value);
    }
    template <typename T, std::size_t size>
    void take(T (&row)[size]) {
        for (T& value : row) take(value);
    }

    void take_bytes(std::uint64_t& bits, std::size_t size) {
        constexpr unsigned byte = 8;
        if (!is_reading_) {
            for (std::size_t k = 0; k < size; ++k) written_ += static_cast<char>(bits >> byte * k);
            return;
        }
        bits = 0;
        if (source_.size() - at_ < size) {
            is_sound_ = false;
            at_ = source_.size();
            return;
        }
        for (std::size_t k = 0; k < size; ++k)
            bits |= std::uint64_t{static_cast<unsigned char>(source_[at_++])} << byte * k;
    }

    std::string written_;
    std::string_view source_;
    std::size_t at_ = 0;
    bool is_reading_ = false, is_sound_ = true;
};

// A hash of bytes by which damage is found (FNV-1a).
constexpr std::uint64_t tm_hash(std::string_view bytes, std::uint64_t hash = 14695981039346656037U) {
    for (const char c : bytes) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
    return hash;
}
