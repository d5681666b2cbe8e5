// Short ways to make records and to watch a fatal end.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <tuple>
#include <vector>

#include "foundation/strings.h"

// Unlike tm_string it takes any bytes and any length, so it can make unsound records.
inline tm_string_record_t raw(std::string_view text, std::int32_t len = -9) {
    tm_string_record_t s;
    s.len = len == -9 ? static_cast<std::int32_t>(text.size()) : len;
    std::memcpy(s.char_, text.data(), text.size());
    return s;
}

inline std::string text_of(const tm_string_record_t& s) {
    EXPECT_EQ(s.char_[s.len], '\0');
    return std::string(tm_view(s));
}

inline std::string many(char c, std::size_t count) { return std::string(count, c); }

inline std::string content_of(const std::string& path) {
    std::ifstream in(path);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

// The statement ends the program that way after printing a match to the standard output.
#define EXPECT_END(statement, how, printed) \
    EXPECT_EXIT((dup2(STDERR_FILENO, STDOUT_FILENO), statement), how, printed)
#define EXPECT_FATAL(statement, printed) EXPECT_END(statement, testing::KilledBySignal(SIGABRT), printed)
