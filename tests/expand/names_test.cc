// The names of a design as the command language meets them: typeable names, the hierarchy, vectors as buses,
// and what is left of names when they would overflow.
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "commands/all_commands.h"
#include "commands/interpreter.h"
#include "expand/design_out.h"
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

// ---- economies

void expect_distinct_paths() {
    std::set<std::string> paths;
    for (std::int32_t i = 1; i <= yx_sext.max_net_cur; ++i)
        EXPECT_TRUE(paths.emplace(kol_path(yx_ptrto_net_rec(i)->sim_path)).second) << *paths.rbegin();
    for (std::int32_t i = 1; i <= yx_sext.max_inst_cur; ++i)
        EXPECT_TRUE(paths.emplace(kol_path(yx_ptrto_inst_rec(i)->sim_path)).second) << i;
}

TEST_F(names, of_ports_and_the_function_stay_whatever_the_economy) {
    const std::string text =
        netlist_json(std::string(two_levels) +
                     "hide $hidden 20; cell $_MUX_ $m A=2 B=4 S=10 Y=20\n"
                     "out m 21; cell $_XNOR_ w1 A=20 B=3 Y=21; out w1_ 22; cell $_BUF_ g1 A=2 Y=22");
    for (const xp_economy& economy : xp_economies()) {
        SCOPED_TRACE(economy.name);
        xp_netlist netlist;
        xp_hierarchy hierarchy;
        xp_flat flat;
        xp_timing timing;
        std::vector<xp_delays> delays;
        yx_design_image_t image;
        xp_paths paths;
        status = {};
        xp_parse_netlist("", text, netlist, status);
        xp_choose_top(netlist, "", hierarchy, status);
        xp_map_modules(netlist, hierarchy, status);
        xp_flatten(netlist, hierarchy, flat, status);
        xp_find_delays(flat, timing, delays, status);
        xp_build_design(flat, delays, 1, std::span(&economy, 1), image, paths, status);
        ASSERT_TRUE(xp_ok(status)) << xp_message_text(status);
        tst_load(image);
        tst_set_up();
        EXPECT_EQ(tst_take_lines(), lines{});
        kol_ext.spike_on = false;
        expect_distinct_paths();
        for (const char* const port : {"a", "z", "m", "w1_", "w[0]", "w[2]"})
            EXPECT_EQ(found(port), std::string("/") + port);
        for (const char a : {'0', '1'}) {
            force({{"a", a}, {"w[0]", '1'}});
            EXPECT_TRUE(value("z") == a && value("m") == '1' && value("w1_") == a);
        }
    }
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

TEST_F(names, are_shortened_as_far_as_the_design_needs_and_mapped_back) {
    const std::tuple<int, std::string, const char*> rows[] = {{2000, "quite_a_long_name", "full"},
                                                              {8000, "$quite_a_long_name", "hidden"},
                                                              {20000, "a_long_name", "derived"},
                                                              {30000, "quite_a_long_name", "short"}};
    for (const auto& [count, name, economy] : rows) {
        start(chain(count, name) + "net count 900000,900001\ncell $dff " + name +
                  "_cell_f D=2,2 CLK=2 Q=900000,900001",
              "--names", "map");
        EXPECT_EQ(text_of("design.buses").find("count") == std::string::npos,
                  economy == std::string("short"));
        EXPECT_EQ(summary.economy, economy) << count;
        expect_distinct_paths();
        force({{"a", '1'}});
        EXPECT_EQ(value("z"), '1');
        std::map<std::string, std::string> full_of;
        std::istringstream map(text_of("map"));
        for (std::string path, full, kind; std::getline(map, path, '\t');) {
            std::getline(map, full, '\t');
            std::getline(map, kind);
            full_of[path] = full;
        }
        for (std::int32_t i = 1; i <= yx_sext.max_inst_cur && !HasFailure(); ++i) {
            const std::string path(kol_path(yx_ptrto_inst_rec(i)->sim_path));
            const std::string& full = full_of.contains(path) ? full_of[path] : path;
            EXPECT_TRUE(full.starts_with("/" + name + "_cell_")) << path;
        }
    }
}

}  // namespace
