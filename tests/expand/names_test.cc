// The names of a design as the command language meets them: typeable names, the hierarchy, vectors as buses,
// and names that are many or long.
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "commands/all_commands.h"
#include "commands/language/interpreter.h"
#include "expansion.h"
#include "foundation/context.h"
#include "kernel/lookup.h"
#include "kernel/say.h"
#include "support/design_build.h"
#include "support/session.h"

namespace {

using lines = std::vector<std::string>;

class names : public expansion {
protected:
    // What a command shows.
    static lines type(const std::string& line) {
        kol_use_commands(kol_all_commands());
        tst_take_lines();
        kol_process_command(tm_string(line), kol_ext.ext_arg, kol_ext.top_var);
        return tst_take_lines();
    }
    static lines members_of(const std::string& bus_name) {
        yx_bus_rec_t* bus = nullptr;
        lines members;
        if (kol_find_sim_bus(tm_string(bus_name), bus) == 0) return members;
        for (const yx_signal_rec_t* signal = bus->signal; signal != nullptr; signal = signal->next)
            members.emplace_back(kol_path(signal->net->sim_path));
        return members;
    }
};

TEST_F(names, that_cannot_be_typed_are_replaced_and_clashes_numbered) {
    const std::pair<const char*, const char*> rows[] = {
        {"a$args", "a$args"},    {"a b", "a_b"},         {"a,b", "a_b_2"},      {"a;b", "a_b_3"},
        {"A_B", "A_B_4"},        {"a/b", "a.b"},         {"q'd", "q_d"},        {"q\"e", "q_e"},
        {"#c", "x_c"},           {"!s", "x_s"},          {"9", "N9"},           {"_u", "x_u"},
        {"$auto$1", "x$auto$1"}, {"N_7", "xN_7"},        {"nI_7", "xnI_7"},     {"n7", "n7"},
        {"a$arg1", "a_arg1"},    {"a$VAR2x", "a_VAR2x"}, {"\\e[3]", "x\\e[3]"}, {"w\xC3\xA4", "w__"},
    };
    nlohmann::ordered_json json;
    std::string map;
    for (int bit = 2; const auto& [raw, name] : rows)
        json["modules"]["top"]["netnames"][raw]["bits"] = {bit++};
    ASSERT_EQ(expand_json(json.dump(), "--names", "map"), "");
    load();
    for (const auto& [raw, name] : rows) {
        EXPECT_EQ(found(name), std::string("/") + name);
        if (std::string(raw) != name) map += std::string("/") + name + "\t/" + raw + "\tnet\n";
    }
    EXPECT_EQ(text_of("map"), map);
}

TEST_F(names, with_any_printable_character_in_them_can_be_typed_as_a_command) {
    for (char c = '!'; c <= '~'; ++c) {
        nlohmann::json json;
        json["modules"]["top"]["netnames"][std::string("p") + c + "1q"]["bits"] = {2};
        ASSERT_EQ(expand_json(json.dump()), "");
        load();
        const std::string path(kol_path(yx_ptrto_net_rec(1)->sim_path));
        type("FORCE A " + path.substr(1) + " 1 0");
        type("RUN 5");
        EXPECT_EQ(value(path), '1') << path;
    }
}

// Two levels below the top: /u1 and /u2 invert twice each.
constexpr std::string_view two_levels =
    "module inverter; in x 2; out y 3; cell $_NOT_ g A=2 Y=3; net inner 3\n"
    "module pair; in i 2; out o 4; cell inverter a x=2 y=3; cell inverter b x=3 y=4; net between 3; in v "
    "5..7\n"
    "module top top; in a 2; in w 10..12; out z 4; cell pair u1 i=2 o=3 v=10..12; cell pair u2 i=3 o=4 "
    "v=x,11,12"
    "; net mid 3\n";

TEST_F(names, of_every_level_lead_to_the_net) {
    start(two_levels);
    using row = std::array<const char*, 3>;
    // clang-format off
    for (const auto& [name, level, path] : {
              row{"a", "/", "/a"}, row{"/a", "/u1/", "/a"}, row{"A", "/", "/a"}, row{"/u1/i", "/", "/a"},
              row{"i", "/u1/", "/a"}, row{"/u1/a/x", "/", "/a"}, row{"/u1/o", "/", "/mid"},
              row{"/u2/i", "/", "/mid"}, row{"between", "/u2/", "/u2/between"},
              row{"/u2/a/y", "/", "/u2/between"}, row{"/u1/a/g/A", "/", "/a"},
              row{"/u1/a/g/Y", "/", "/u1/between"}, row{"b/g/A", "/u2/", "/u2/between"},
              row{"/u2/v[1]", "/", "/w[1]"}, row{"/u1/v[0]", "/", "/w[0]"}, row{"w[2]", "/", "/w[2]"},
              row{"/u1/a", "/", ""}, row{"/u3/i", "/", ""}, row{"between", "/", ""}})
        EXPECT_EQ(found(name, level), path) << level << " " << name;
    // clang-format on
    EXPECT_EQ(yx_sext.max_macro_cur, 6);
    force({{"a", '1'}});
    EXPECT_EQ(value("z"), '1');
    EXPECT_EQ(value("/u1/between"), '0');
}

TEST_F(names, of_vectors_are_buses_of_consecutive_nets) {
    start(
        "in plain 2..4; in high 5..7; in up 8..10; out twice 2,2; net part 3,4; cell $_NOT_ n A=8 Y=20; hide "
        "$h 20..21");
    const std::int32_t low = net("plain[0]")->self;
    for (const int k : {1, 2}) EXPECT_EQ(net("plain[" + std::to_string(k) + "]")->self, low + k);
    std::set<std::string> buses;
    for (std::int32_t i = 1; i <= yx_sext.max_net_cur; ++i)
        if (const yx_net_record_t& bus = *yx_ptrto_net_rec(i); bus.net_type == YX_TSTD_BUS) {
            buses.emplace(kol_path(bus.sim_path));
            EXPECT_EQ(bus.UU.U2.net_bus_end - bus.UU.U2.net_bus_start, 2);
        }
    EXPECT_EQ(buses, (std::set<std::string>{"/plain[2:0]", "/high[2:0]", "/up[2:0]"}));
    EXPECT_EQ(found("part[1]"), "/plain[2]");
    EXPECT_EQ(found("twice[1]"), "/plain[0]");
}

TEST_F(names, of_buses_are_defined_by_the_command_file_most_significant_bit_first) {
    std::string json = netlist_json(
        "in down 2..4; in up 5..7; in long 10..79; in one 90; out zcopy 2,3"
        "; cell $dff f D=2,3 CLK=4 Q=100,101; cell $_NOT_ g A=100 Y=102"
        "; net count 100,101; net mixed 100,102; hide hidden 101,100");
    const std::string up = "\"bits\":[5,6,7]", down = "\"bits\":[2,3,4]";
    json.insert(json.find(up), "\"upto\": 1, \"offset\": 4, ");
    json.insert(json.find(down), "\"offset\": 8, ");
    ASSERT_EQ(expand_json(json), "");
    load();
    type("DO design.buses");
    EXPECT_EQ(tm_vext.num_errors, 0);
    EXPECT_EQ(members_of("down"), (lines{"/down[10]", "/down[9]", "/down[8]"}));
    EXPECT_EQ(members_of("up"), (lines{"/up[4]", "/up[5]", "/up[6]"}));
    EXPECT_EQ(members_of("zcopy"), (lines{"/down[9]", "/down[8]"}));
    EXPECT_EQ(members_of("count"), (lines{"/count[1]", "/count[0]"}));
    for (const char* const none : {"one", "mixed", "hidden"}) EXPECT_EQ(members_of(none), lines{}) << none;
    lines members;
    for (int k = 70; k-- > 0;) members.push_back("/long[" + std::to_string(k) + "]");
    EXPECT_EQ(members_of("long"), members);
    std::istringstream text(text_of("design.buses"));
    for (std::string line; std::getline(text, line);) EXPECT_LE(line.size(), 198U);
}

// ---- many names, and long ones

void expect_distinct_paths() {
    std::set<std::string> paths;
    for (std::int32_t i = 1; i <= yx_sext.max_net_cur; ++i)
        EXPECT_TRUE(paths.emplace(kol_path(yx_ptrto_net_rec(i)->sim_path)).second) << *paths.rbegin();
    for (std::int32_t i = 1; i <= yx_sext.max_inst_cur; ++i)
        EXPECT_TRUE(paths.emplace(kol_path(yx_ptrto_inst_rec(i)->sim_path)).second) << i;
}

// A chain of inverters with long names.
std::string chain(int count, const std::string& name) {
    std::string text = "in a 2\nout z " + std::to_string(count + 2) + "\n";
    for (int i = 0; i < count; ++i) {
        const std::string n = std::to_string(i), out = std::to_string(i + 3);
        text += "cell $_NOT_ " + name + "_cell_" + n + " A=" + std::to_string(i + 2) + " Y=" + out + "\n";
        if (i + 1 < count)
            text += (name[0] == '$' ? "hide " : "net ") + name + "_net_" + n + " " + out + "\n";
    }
    return text;
}

// Paths of the map to those of the netlist.
std::map<std::string, std::string> read_map(const std::string& text) {
    std::map<std::string, std::string> full_of;
    std::istringstream map(text);
    for (std::string path, full, kind; std::getline(map, path, '\t');) {
        std::getline(map, full, '\t');
        std::getline(map, kind);
        full_of[path] = full;
    }
    return full_of;
}

TEST_F(names, are_kept_whole_however_many_there_are) {
    for (const auto& [count, revision] : {std::pair(2000, 1.0F), std::pair(40000, 3.0F)}) {
        start(chain(count, "quite_a_long_name"), "--names", "map");
        EXPECT_EQ(text_of("map"), "");
        EXPECT_EQ(yx_sext.general_info.software_revision, revision);
        expect_distinct_paths();
        const std::string last = std::to_string(count - 1), before = std::to_string(count - 2);
        EXPECT_EQ(found("/quite_a_long_name_cell_" + last + "/A"), "/quite_a_long_name_net_" + before);
        force({{"a", '1'}});
        EXPECT_EQ(value("z"), '1');
    }
}

TEST_F(names, that_the_netlist_made_up_are_numbered_and_mapped_back) {
    start(chain(20, "$abc$1") + "net n3 4; hide $dff 900; cell $_DFF_P_ $r D=900 C=2 Q=900", "--names",
          "map");
    EXPECT_EQ(found("/n3"), "/n3");
    EXPECT_EQ(found("/g20/A"), "/n18");
    std::map<std::string, std::string> full_of = read_map(text_of("map"));
    EXPECT_EQ(full_of["/n3_2"], "/$abc$1_net_10");  // in the order of the file
    EXPECT_EQ(full_of["/g1"], "/$abc$1_cell_0");
    expect_distinct_paths();
}

TEST_F(names, of_paths_beyond_the_length_of_a_string_are_short_and_mapped_back) {
    const std::string long_name(80, 'l');
    start("module m; in i 2; out o 3; net inner_" + long_name + " 3; cell $_NOT_ " + long_name +
              " A=2 Y=4; net m" + long_name +
              " 4; cell $_NOT_ h A=4 Y=3; module top top; in a 2; out z 3; cell m " + long_name + " i=2 o=3",
          "--names", "map");
    std::map<std::string, std::string> full_of = read_map(text_of("map"));
    EXPECT_EQ(full_of["/" + long_name + "/n1"], "/" + long_name + "/m" + long_name);
    EXPECT_EQ(full_of["/" + long_name + "/g2"], "/" + long_name + "/" + long_name);
    expect_distinct_paths();
    force({{"a", '1'}});
    EXPECT_EQ(value("z"), '1');
    EXPECT_EQ(value("/" + long_name + "/n1"), '0');
}

}  // namespace
