// A session without a window: fresh records, and a shell that keeps what the user would see.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "commands/language/interpreter.h"
#include "commands/start_values.h"
#include "foundation/context.h"
#include "foundation/files.h"
#include "foundation/shell.h"
#include "kernel/clear.h"

using lines = std::vector<std::string>;
using numbers = std::vector<std::int64_t>;

struct seen_session {
    lines shown;
    std::string entry;
    int redraws = 0, flushes = 0, ends = 0;
    int keys_before_control_a = -1;  // looks for Control-A that find nothing before the one that does
};
inline seen_session seen;

struct typed_case {
    std::string typed;
    lines shown;
};

class command_session : public ::testing::Test {
protected:
    void SetUp() override {
        yx_store_clear();
        kol_context_clear();
        tm_vext = {};
        kol_initparam_before();
        seen = {};
        tm_shell = tm_default_shell;
        tm_shell.append_session = [](std::string_view line) { seen.shown.emplace_back(line); };
        tm_shell.set_command_entry = [](std::string_view text) { seen.entry = text; };
        tm_shell.redraw_results = tm_shell.redraw_context = [] { ++seen.redraws; };
        tm_shell.redraw_states = [] { ++seen.redraws; };
        tm_shell.flush = [] { ++seen.flushes; };
        tm_shell.take_control_key = [](char key) { return key == 'a' && seen.keys_before_control_a-- == 0; };
        tm_shell.end_process = [] { ++seen.ends; };
        setenv("QUILLARN", folder.c_str(), 1);
    }
    void TearDown() override {
        tm_shell = tm_default_shell;
        tm_shell_commands_allowed = true;
        std::filesystem::remove_all(folder);
    }

    // The lines that one command line shows.
    static lines type(std::string_view line) {
        seen.shown.clear();
        kol_process_command(tm_string(line), kol_ext.ext_arg, kol_ext.top_var);
        EXPECT_FALSE(tm_vext.cmd_executing) << line;
        return seen.shown;
    }
    static void expect_each(const std::vector<typed_case>& cases) {
        for (const typed_case& c : cases) EXPECT_EQ(type(c.typed), c.shown) << c.typed;
    }
    // The path of a file of the case's own folder with this text.
    std::string file(const std::string& name, std::string_view text) const {
        const std::filesystem::path path = folder / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << text;
        return path.string();
    }

    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("kolv_commands_" + std::to_string(getpid()));
};
