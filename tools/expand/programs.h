// xp_programs: other programs that the expander runs, and the folder through which they pass files. Arguments
// reach a program as they are; no shell reads them.  A program that is not there, ends by a signal or with
// another status than 0 is a failed run.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "expand/message.h"

class xp_exchange_folder {  // gone with its object
public:
    explicit xp_exchange_folder(xp_status& status);
    xp_exchange_folder(const xp_exchange_folder&) = delete;
    xp_exchange_folder& operator=(const xp_exchange_folder&) = delete;
    ~xp_exchange_folder();

    std::string file(const char* name) const { return path_ / name; }
    // Writes a file; the result is its path.
    std::string write(const char* name, std::string_view text, xp_status& status) const;

private:
    std::filesystem::path path_;
};

struct xp_program {
    std::vector<std::string> arguments;  // the program's name first
    std::string purpose;                 // "Verilog is read by", for a program that is not there
    std::string output, errors;          // files for what it prints; empty: our standard error
};

void xp_run_program(const xp_program& program, xp_status& status);
// A path that no program takes for an option, nor yosys for one of the signs that it replaces.
std::string xp_plain_path(const std::string& path);
