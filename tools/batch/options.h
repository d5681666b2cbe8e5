// The command line of kolv-batch: its options, and the arguments of the session as the window program has
// them.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

struct bt_options_t {
    std::vector<std::string> arguments;  // DIRECTORY [RANGE] [COMMANDFILE] [DESIGNFILE] [PARAMETER ...]
    std::string transcript;              // empty: current_session in DIRECTORY
    std::string expected, report;        // files, empty: not wanted
    std::int64_t limit = 50;             // errors and warnings that a run goes on with
    bool quiet = false, no_shell = false, warnings_are_errors = false;
};

// What else the command line may come to: a text for standard output, or what is wrong with it.
struct bt_reply_t {
    std::string text, fault;
};

bt_reply_t bt_read_options(std::span<const char* const> words, bt_options_t& options);
