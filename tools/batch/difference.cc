// Line by line, and how much of it is told.
#include "batch/difference.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace {

constexpr std::size_t told = 5;

std::string line_of(const bt_lines_t& lines, std::size_t i) {
    return i < lines.size() ? "\"" + lines[i] + "\"" : "no line";
}

}  // namespace

std::optional<bt_lines_t> bt_read_lines(const std::string& path) {
    std::ifstream file(path);
    if (!file || !std::filesystem::is_regular_file(path)) return std::nullopt;
    bt_lines_t lines;
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    return file.bad() ? std::nullopt : std::optional(lines);
}

std::string bt_differences(const bt_lines_t& expected, const bt_lines_t& seen) {
    std::string text;
    std::size_t different = 0;
    for (std::size_t i = 0; i < std::max(expected.size(), seen.size()); ++i) {
        const std::string was = line_of(expected, i), is = line_of(seen, i);
        if (was == is || ++different > told) continue;
        text += "line " + std::to_string(i + 1) + ": expected " + was + "\n";
        text += "line " + std::to_string(i + 1) + ": seen     " + is + "\n";
    }
    return different == 0 ? "" : text + std::to_string(different) + " lines differ from what was expected\n";
}
