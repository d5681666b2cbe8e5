// Netlists written as text, expanded in a folder of their own, the working directory, loaded and simulated.
//
// Statements end with "; " or a line end:
//
//   module NAME [top] [blackbox]     the statements behind it belong to it; without one: module "top"
//   in|out|inout NAME BITS           a port
//   net|hide NAME BITS               a net name, a hidden one
//   init NAME DIGITS                 the initial value of a net
//   cell TYPE NAME WORD...           WORD: PORT=BITS, PARAMETER:NUMBER or @drive:LETTERS
//
// BITS are least significant first: 0, 1, x, z, a number of the module's nets, or 5..8 for the nets 5 to 8,
// set apart by commas; or a name, d or d:2, of a net that needs no other statement.  Named nets on a port Q
// are outputs.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "expand/expand.h"
#include "kernel/context.h"

std::string netlist_json(std::string_view text);

class expansion : public ::testing::Test {
protected:
    expansion();
    ~expansion() override;

    static std::string file(const std::string& name, std::string_view text);  // written; its name
    static std::string text_of(const std::string& name);
    static std::vector<std::string> names_of_files();

    // Runs the program, what it prints going to the file "said"; the result is its exit status.
    static int run(const std::string& arguments);
    // Expands netlist text into the file "design".  The result is the message of a refusal.
    std::string expand(std::string_view netlist, const std::string& option = "",
                       const std::string& value = "");
    std::string expand_json(std::string_view json, const std::string& option = "",
                            const std::string& value = "");
    // Loads what the latest expansion wrote and sets it up; messages of the set-up fail the test.
    static void load();
    void start(std::string_view netlist, const std::string& option = "", const std::string& value = "");

    // The path of the net that a name means at a level of the hierarchy, empty for none.
    static std::string found(const std::string& name, const std::string& level = "/");
    static yx_net_record_t* net(const std::string& name);
    // Sets nets to '0', 'x' or '1', lets everything settle, and reads one.
    static void force(const std::map<std::string, char>& states);
    static char value(const std::string& name);

    xp_status status;
    xp_summary summary;

private:
    std::filesystem::path folder_, before_ = std::filesystem::current_path();
};
