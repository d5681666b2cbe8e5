// LIST and DEFINE BUS: what they show, and what is observed afterwards.
#include "design_session.h"
#include "results/list_view.h"

namespace {

using observation = design_session;
using lines = std::vector<std::string>;

// The listed entries, or the members of a bus: "name=net" or "name=BUS bus", separated by blanks.
std::string entries(const yx_signal_rec_t* entry) {
    std::string text;
    for (; entry != nullptr; entry = entry->next) {
        text += (text.empty() ? "" : " ") + std::string(tm_view(entry->name)) + "=";
        text += entry->sig_bus ? "BUS " + std::string(tm_view(entry->bus->name))
                               : std::string(kol_path(entry->net->sim_path));
    }
    return text;
}

std::string listed() {
    const yx_signal_rec_t* entry = kol_ext.list_signal;
    while (entry != nullptr && entry->previous != nullptr) entry = entry->previous;
    return entries(entry);
}

std::string members(const char* name) {
    for (const yx_bus_rec_t* bus = kol_ext.start_sim_bus; bus != nullptr; bus = bus->next)
        if (tm_const_iden_string(name, bus->name)) return entries(bus->signal);
    return "no bus";
}

TEST_F(observation, list_takes_names_one_by_one_until_one_is_wrong) {
    const std::string radix = "# !! Error:2nd parameter invalid(should be:\"Hex\",\"Bin\",\"Dec\")";
    const std::string name = "# !! Error : parameter invalid ( should begin with letter or \"/\") ";
    expect_each(
        {{"list hex", refused("LIST hex ", "# !! Error :  Invalid window ? ")},
         {"list q a", refused("LIST q a ", radix)},
         {"list h /a b", {" LIST h /a b "}},
         {"list Dec y 9x z", {"# LIST Dec y 9x z ", name, "# parameter : \"9x\" "}},
         {"list b y no b", {"# LIST b y no b ", "# !! Error : Signal NOT FOUND ? ", "# Signal : \"no\" "}}},
        type);
    EXPECT_EQ(listed(), "/a=/a b=/b y=/y y=/y");
    EXPECT_EQ(kol_ext.list_signal->base_number, 1);
    EXPECT_EQ(kol_ext.list_signal->previous->base_number, 2);
    EXPECT_EQ(seen.redraws, 3);
    tm_vext.numpage = 1;
    EXPECT_EQ(type("list h"), refused("LIST h ", "# !! Error :  No sheet in Context window ? "));
}

TEST_F(observation, a_name_means_a_bus_then_a_probe_then_a_net) {
    type("define bus c sum a b");
    kol_probe_signal_rec_t probes[2];
    for (kol_probe_signal_rec_t& probe : probes) {
        probe.net = &tst_net("b");
        probe.cur_sim_path = kol_ext.cur_sim_path;
    }
    probes[0].probe_name = tm_string("sum");
    probes[1].probe_name = tm_string("y");
    probes[0].next = &probes[1];
    kol_ext.start_probe_signal = &probes[0];
    type("list h SUM Y /y ni_1 d");
    kol_ext.start_probe_signal = nullptr;
    const std::string first(kol_path(yx_ptrto_net_rec(1)->sim_path));
    EXPECT_EQ(listed(), "SUM=BUS sum Y=/b /y=/y ni_1=" + first + " d_0=/d[0]");
}

TEST_F(observation, define_bus_makes_or_extends_a_bus_or_changes_nothing) {
    const std::string kind = "# !! Error : 3rd parameter invalid ( should be : \"Comb\" or \"Nocomb\" ) ";
    const std::string name = "# !! Error : 4th parameter invalid ( should begin with letter ) ";
    const std::string no_net = "# !! Error : NET not found ";
    const std::string itself = "# !! Error : Bus can not contain itself ? ";
    expect_each(
        {
            {"def bus x 9 no", refused("DEFine BUS x 9 no ", kind)},
            {"def bus c /w a", refused("DEFine BUS c /w a ", name)},
            {"def bus c a no", refused("DEFine BUS c a no ", "# !! Error :  Name Already Exists ? ")},
            {"def bus a w a", refused("DEFine BUS a w a ", "# !! Error : Bus do not Exists ? ")},
            {"def bus c w a no", refused("DEFine BUS  c w a no ", no_net)},
            {"define bus Comb w a b", {" DEFine BUS Comb w a b "}},
            {"def bus n W y", refused("DEFine BUS n W y ", "# !! Error : Bus Name Already Exists ? ")},
            {"def bus a w no", refused("DEFine BUS  a w no ", no_net)},
            {"def bus Nocomb v w y", {" DEFine BUS Nocomb v w y "}},
            {"def bus Append w d /y", {" DEFine BUS Append w d /y "}},
            {"def bus a w a w", refused("DEFine BUS  a w a w ", itself)},
            {"def bus a w v", refused("DEFine BUS  a w v ", itself)},
        },
        type);
    EXPECT_EQ(members("w"), "a=/a b=/b d_0=/d[0] /y=/y");
    EXPECT_EQ(members("v"), "w=BUS w y=/y");
    EXPECT_TRUE(kol_ext.start_sim_bus->combine);
    EXPECT_FALSE(kol_ext.last_sim_bus->combine);
}

TEST_F(observation, neither_list_nor_buses_outgrow_the_columns) {
    const std::string twenty_five = " a a a a a a a a a a a a a a a a a a a a a a a a a";
    type("def bus c w" + twenty_five);        // 25 members, 50 columns
    type("def bus c x w w w w w w w w w w");  // 500 columns
    EXPECT_EQ(type("list h x x"), lines{" LIST h x x "});
    const std::string wide = "# !! Error : too many columns in LIST ( max : 1024 ) ";
    EXPECT_EQ(type("list h a w"), (lines{"# LIST h a w ", wide, "# Signal : \"w\" "}));
    const std::string large = "# !! Error : too many signals in BUS ( max : 1024 ) ";
    const std::string before = members("w");
    EXPECT_EQ(type("def bus a w y y"), refused("DEFine BUS a w y y ", large));
    EXPECT_EQ(members("w"), before);
    EXPECT_EQ(type("def bus n z x x x x"), refused("DEFine BUS n z x x x x ", large));
    EXPECT_EQ(members("z"), "no bus");
    EXPECT_EQ(tst_net("y").UU.U1.list_state, nullptr);
}

}  // namespace
