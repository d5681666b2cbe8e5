// The installation: help on every command, the key file, the programs behind the '!' escape.
#include <algorithm>

#include "command_session.h"
#include "commands/language/bindings.h"
#include "commands/language/command_line.h"
#include "commands/language/command_table.h"
#include "support/places/places.h"

namespace {

const std::filesystem::path installed = std::filesystem::path(tst_source_dir()) / "share/kolv";

std::string upper(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), tm_upper_case);
    return result;
}

lines lines_of(const std::filesystem::path& path) {
    std::ifstream stream(path);
    lines result;
    for (std::string line; std::getline(stream, line);) result.push_back(line);
    return result;
}

// Whether one of the commands in a line of input has this help topic.
bool has_command_of(std::string_view line, const std::string& topic) {
    tm_string_record_t command;
    std::int32_t pos = 1;
    while (kol_next_command(tm_string(line), pos, command)) {
        const kol_command_row_t* row = kol_find_command(kol_split_keywords(command));
        if (row != nullptr && kol_help_topic(*row) == topic) return true;
    }
    return false;
}

class installation : public command_session {
protected:
    void SetUp() override {
        command_session::SetUp();
        setenv("QUILLARN", installed.parent_path().c_str(), 1);
    }
};

TEST_F(installation, helps_with_every_command) {
    for (const kol_command_row_t& row : kol_command_table()) {
        const std::string topic = kol_help_topic(row);
        const lines help = lines_of(installed / "help" / ("kol_1_" + topic));
        const auto says = [&help](auto test) { return std::ranges::any_of(help, test); };
        ASSERT_FALSE(help.empty()) << row.canonical;
        EXPECT_TRUE(upper(help[0]).starts_with(topic)) << help[0];
        const auto is_form = [&](const std::string& line) {
            return upper(line + " ").starts_with(upper(row.canonical) + (row.group == "$" ? "" : " "));
        };
        EXPECT_TRUE(says(is_form)) << "no form : " << row.canonical;
        EXPECT_TRUE(says([&](const std::string& line) {
            return line.starts_with("    ") && has_command_of(line, topic);
        })) << "no example : "
            << row.canonical;
        EXPECT_TRUE(says([](const std::string& line) { return line.starts_with("Errors"); })) << topic;
    }
    for (const auto& file : std::filesystem::directory_iterator(installed / "help"))
        for (const std::string& line : lines_of(file.path()))  // a session line shows 93 of its characters
            EXPECT_TRUE(line.size() <= 93 && std::ranges::all_of(line, [](char c) { return c >= ' '; }))
                << file << line;
}

TEST_F(installation, lists_every_command) {
    const lines list = lines_of(installed / "help/list_commands");
    for (const kol_command_row_t& row : kol_command_table()) {
        if (row.group == "$") continue;
        EXPECT_TRUE(std::ranges::any_of(list, [&](const std::string& line) {
            return upper(line + "  ").find("  " + upper(row.canonical) + "  ") != line.npos;
        })) << row.canonical;
    }
}

TEST_F(installation, its_key_file_keeps_the_default_bindings) {
    const lines before = type("STATUS KEY");
    setenv("QUILLARN", folder.c_str(), 1);
    kol_init_menu_action();
    const lines bare = type("STATUS KEY");
    setenv("QUILLARN", installed.parent_path().c_str(), 1);
    seen.shown.clear();
    kol_init_menu_action();
    EXPECT_EQ(seen.shown,
              (lines{"# DO " + (installed / "init_key ").string().substr(0, 92), "# End of DO "}));
    EXPECT_EQ(type("STATUS KEY"), bare);
    EXPECT_NE(bare, before);
}

TEST_F(installation, its_programs_print_commands_that_show_something) {
    const auto run = [](const std::string& name) {
        const lines shown = type("! " + (installed / "bin" / name).string());
        for (const std::string& line : shown) EXPECT_EQ(line.find("!!"), line.npos) << line;
        return shown;
    };
    const auto shows = [](const lines& shown, const std::string& line) {
        return std::ranges::find(shown, line) != shown.end();
    };
    EXPECT_TRUE(shows(run("kolvMenuDB"), " HELp MENUS "));
    const lines keys = run("kolvKeysDB");
    EXPECT_TRUE(shows(keys, " HELp KEYS ") && shows(keys, " STAtus KEY "));
    const lines all = run("ta");
    EXPECT_TRUE(shows(all, " HELp "));
    for (const kol_command_row_t& row : kol_command_table())
        EXPECT_TRUE(shows(all, " HELp " + kol_help_topic(row) + " ")) << row.canonical;
}

}  // namespace
