// A transcript against one that was stored before.
#pragma once

#include <optional>
#include <string>
#include <vector>

using bt_lines_t = std::vector<std::string>;

// Nothing: the file cannot be read.
std::optional<bt_lines_t> bt_read_lines(const std::string& path);
// The first differing lines as text, each as it was expected and as it is; empty: none differs.
std::string bt_differences(const bt_lines_t& expected, const bt_lines_t& seen);
