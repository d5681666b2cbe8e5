// The kinds of lines: of every message that the sources can show.
#include "batch/verdict.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>

#include "support/places/places.h"

namespace {

TEST(verdict, of_lines) {
    const std::pair<const char*, bt_kind> rows[] = {
        {"# !! Error : NET not found ", bt_kind::error},
        {"#  !!! Unknown Command  ?? ", bt_kind::error},
        {" !! impossible to open : ", bt_kind::error},
        {"# !! More than 7 errors or warnings : so simulation is BREAKED  . ", bt_kind::broken},
        {"# !! Hold Time Violation on pin:\"/g\"", bt_kind::violation},
        {"# !! WARNING : HAZARD Condition on net : time = 5.0", bt_kind::hazard},
        {"# !! SPIKE on pin : \"/g\" ", bt_kind::spike},
        {"# !! Warning : No new FORCE stimuli have been applied to circuit ? ", bt_kind::warning},
        {"# !! BREAK on net : \"/n\" ", bt_kind::none},
        {"# \"# !! Error : in a help text\" ", bt_kind::none},
        {" RUN 5 ", bt_kind::none},
    };
    for (const auto& [line, kind] : rows) EXPECT_EQ(bt_kind_of(line), kind) << line;
}

TEST(verdict, knows_every_line_that_the_sources_can_show) {
    // What continues another line, or tells nothing bad.
    const std::set<std::string> harmless = {"\\",
                                            "",
                                            ": \\",
                                            "line ",
                                            "net_name : \\",
                                            "BREAK on net : ",
                                            "BREAK on bus : ",
                                            "Simulation STATUS : time = ",
                                            "to avoid too many spike warnings use ",
                                            "another program runs here : this transcript is "};
    const std::set<std::string> rooms = {"kernel", "models", "results", "commands"};
    const std::regex shown("\"(#? *!!+ *)([^\"%]*)\"");  // what is printed has a '%' or an end of line
    std::size_t found = 0;
    for (const auto& file : std::filesystem::recursive_directory_iterator(tst_source_dir() + "/src")) {
        const std::string room = file.path().lexically_relative(tst_source_dir() + "/src").begin()->string();
        if (!rooms.contains(room) || !file.is_regular_file()) continue;
        std::ifstream stream(file.path());
        const std::string text(std::istreambuf_iterator<char>(stream), {});
        for (std::sregex_iterator at(text.begin(), text.end(), shown), end; at != end; ++at, ++found)
            EXPECT_TRUE(bt_kind_of((*at)[1].str() + (*at)[2].str()) != bt_kind::none ||
                        harmless.contains((*at)[2].str()) || (*at)[2].str().ends_with("\\n"))
                << file.path() << " : " << at->str();
    }
    EXPECT_GT(found, 150U);
}

}  // namespace
