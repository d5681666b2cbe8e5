// LIST, TRACE, DEFINE BUS, MOVE SIGNAL and the STATUS reports: what they show, and what is observed
// afterwards.
#include "design_session.h"
#include "foundation/list.h"

namespace {

using observation = design_session;

// The entries of a view, or the members of a bus: "name=net" or "name=BUS bus", separated by blanks.
std::string entries(const yx_signal_rec_t* entry) {
    while (entry != nullptr && entry->previous != nullptr) entry = entry->previous;
    std::string text;
    for (; entry != nullptr; entry = entry->next) {
        text += (text.empty() ? "" : " ") + std::string(tm_view(entry->name)) + "=";
        text += entry->sig_bus ? "BUS " + std::string(tm_view(entry->bus->name))
                               : std::string(kol_path(entry->net->sim_path));
    }
    return text;
}

std::string members(const char* name) {
    for (const yx_bus_rec_t* bus = kol_ext.start_sim_bus; bus != nullptr; bus = bus->next)
        if (tm_const_iden_string(name, bus->name)) return entries(bus->signal);
    return "no bus";
}

std::string times(int n, const std::string& name) {
    std::string text;
    while (n-- > 0) text += " " + name;
    return text;
}

TEST_F(observation, views_take_names_one_by_one_until_one_is_wrong) {
    const std::string unknown = "# !! Error : Signal NOT FOUND ? ";
    const std::string wrong = "# !! Error : parameter invalid ( should begin with letter or \"/\") ";
    EXPECT_EQ(
        type("list h /a b;list Dec y 9x z;list b y no b;def bus n w y a;trace b w;trac y *;trace no b"),
        (lines{" LIST h /a b ", "# LIST Dec y 9x z ", wrong, "# parameter : \"9x\" ", "# LIST b y no b ",
               unknown, "# Signal : \"no\" ", " DEFine BUS n w y a ", " TRACe b w ", "# TRACe y * ", wrong,
               "# parameter : \"*\" ", "# TRACe no b ", unknown, "# Signal : \"no\" "}));
    EXPECT_EQ(entries(kol_ext.list_signal), "/a=/a b=/b y=/y y=/y");
    EXPECT_EQ(entries(kol_ext.trace_signal), "b=/b w=BUS w y=/y");
    EXPECT_EQ((numbers{kol_ext.list_signal->base_number, kol_ext.list_signal->previous->base_number}),
              (numbers{1, 2}));
    tm_vext.numpage = tm_page::context;
    const std::string no_sheet = "# !! Error :  No sheet in Context window ? ";
    EXPECT_EQ(type("list h;TRACE;prob p"),
              (lines{"# LIST h ", no_sheet, "# TRACe ", no_sheet, "# PROBe p ", no_sheet}));
    EXPECT_EQ(kol_ext.start_probe_signal, nullptr);
}

TEST_F(observation, views_say_which_net_is_taken_where_names_differ_in_case_only) {
    build("in n1 N1 other; and g1 y = n1 N1");
    EXPECT_EQ(type("list b n1 other;trac /N1"),
              (lines{"# \"/n1\" is taken, other names differ from it in case only ", " LIST b n1 other ",
                     "# \"/n1\" is taken, other names differ from it in case only ", " TRACe /N1 "}));
}

void add_probe(const char* name, const char* net) {
    auto& probe = tm_list_append(std::make_unique<kol_probe_signal_rec_t>(), kol_ext.start_probe_signal,
                                 kol_ext.last_probe_signal);
    probe = {&tst_net(net), tm_string(name), kol_ext.cur_sim_path, probe.previous};
}

TEST_F(observation, a_name_means_a_bus_then_a_probe_then_a_net) {
    type("define bus c sum a b");
    add_probe("sum", "b");
    add_probe("y", "b");
    type("list h SUM Y /y ni_1 d");
    const std::string first(kol_path(yx_ptrto_net_rec(1)->sim_path));
    EXPECT_EQ(entries(kol_ext.list_signal), "SUM=BUS sum Y=/b /y=/y ni_1=" + first + " d_0=/d[0]");
}

TEST_F(observation, define_bus_makes_or_extends_a_bus_or_changes_nothing) {
    EXPECT_EQ(type("define bus Comb w a b;def bus Nocomb v w y;def bus Append w d /y"),
              (lines{" DEFine BUS Comb w a b ", " DEFine BUS Nocomb v w y ", " DEFine BUS Append w d /y "}));
    for (const char* typed : {"c z a no", "n W y", "a w no", "a w b no", "a w a w", "a w v", "a a b"})
        EXPECT_EQ(type(std::string("def bus ") + typed).size(), 2U) << typed;
    EXPECT_EQ(members("w") + ", " + members("v") + ", " + members("z"),
              "a=/a b=/b d_0=/d[0] /y=/y, w=BUS w y=/y, no bus");
    EXPECT_EQ((numbers{kol_ext.start_sim_bus->combine, kol_ext.last_sim_bus->combine}), (numbers{1, 0}));
}

TEST_F(observation, neither_views_nor_buses_outgrow_the_window) {
    type("def bus c w" + times(25, "a") + ";def bus c x" + times(10, "w"));  // 50 and 500 columns
    const std::string before = members("w"), large = "# !! Error : too many signals in BUS ( max : 1024 ) ";
    const std::string rows = "# !! Error : too many rows in TRACe ( max : 1023 ) ";
    expect_each(
        {{"list h x x", {" LIST h x x "}},
         {"list h a w",
          {"# LIST h a w ", "# !! Error : too many columns in LIST ( max : 1024 ) ", "# Signal : \"w\" "}},
         {"def bus a w y y", refused("DEFine BUS a w y y ", large)},
         {"def bus n z x x x x", refused("DEFine BUS n z x x x x ", large)}});
    EXPECT_EQ(members("w") + members("z"), before + "no bus");
    EXPECT_EQ(tst_net("y").UU.U1.history, nullptr);
    type("def bus n v" + times(24, "y") + ";def bus c u y y y v y");  // 24 rows, and 1 for the y of u with 24
    type("trace" + times(21, "v") + ";trace" + times(20, "v") + ";trace" + times(15, "b"));  // 999 rows
    expect_each({{"trace u", {"# TRACe u ", rows, "# Signal : \"u\" "}},
                 {"forget t b;trace u", {" FORGet t b ", " TRACe u "}},
                 {"trace b", {"# TRACe b ", rows, "# Signal : \"b\" "}},
                 {"def bus a v y", refused("DEFine BUS a v y ", large)},
                 {"def bus a u y", {" DEFine BUS a u y "}}});
    const std::string full = " x x x" + times(9, "w") + times(7, "y");  // 1024 with those inside
    EXPECT_EQ(type("def bus n q" + full), lines{" DEFine BUS n q" + full + " "});
    EXPECT_EQ(type("def bus a q y").back(), large);
    EXPECT_EQ(type("def bus c r y"), lines{" DEFine BUS c r y "}) << "a full bus hinders no other";
}

TEST_F(observation, move_signal_exchanges_two_entries) {
    type("def bus n w a b;list h a b w y;trace y b");
    EXPECT_EQ(type("mov sig l 4 5").back(), "# !! Error : Invalid   to_position  ? ");
    EXPECT_EQ(type("move signal list 1 3;move signal t 2 1;move signal l 4 4"),
              (lines{"# MOVe SIGnal List 1 3 ", "# MOVe SIGnal Trace 2 1 ", "# MOVe SIGnal List 4 4 "}));
    EXPECT_EQ(entries(kol_ext.list_signal), "w=BUS w b=/b a=/a y=/y");
    EXPECT_EQ(entries(kol_ext.trace_signal), "b=/b y=/y");
    const yx_signal_rec_t& third = *kol_ext.list_signal->previous;
    EXPECT_TRUE(third.bus == nullptr && third.history == tst_net("a").UU.U1.history);
}

TEST_F(observation, move_signal_without_positions_goes_to_the_pointer) {
    type("list h a b y;trace a b y");
    tm_vext.bitmap_size = {100, 200, 1000, 800};
    kol_ext.signal_position = 1;
    tm_vext.pixel_pos = {100 + kol_ext.list_sig1n_x0 + kol_ext.list_steph * 17 - 1, 0};
    EXPECT_EQ(type("move signal l"), lines{"# MOVe SIGnal List 1 2 "});
    tm_vext.pixel_pos = {0, 200 + 50 + 40 * 2 - 21};
    EXPECT_EQ(type("move signal t"), lines{"# MOVe SIGnal Trace 1 2 "});
    tm_vext.pixel_pos.y += 1;
    kol_ext.signal_position = 2;
    EXPECT_EQ(type("move signal t"), lines{"# MOVe SIGnal Trace 2 3 "});
    EXPECT_EQ(entries(kol_ext.list_signal), "b=/b a=/a y=/y");
    EXPECT_EQ(entries(kol_ext.trace_signal), "b=/b y=/y a=/a");
}

TEST_F(observation, probes_are_reported_in_order_or_by_name) {
    const auto report = [](const std::string& name, const std::string& net) {
        const yx_net_record_t& record = tst_net(net);
        return lines{"# PROBE          : \"" + name + "\" ",
                     "# Probe sim_path : \"/\" ",
                     "# Net index      : \"NI_" + std::to_string(record.self) + "\" ",
                     "# Net sim_path   : \"/" + net + "\" ",
                     "# Net id         : \"N_" + std::to_string(record.object_id) + "\" ",
                     "#******************************* "};
    };
    add_probe("p", "y");
    add_probe("b", "b");
    lines both = report("p", "y"), second = report("b", "b");
    both.insert(both.end(), second.begin(), second.end());
    both.push_back(" STAtus PROBe ");
    second.push_back(" STAtus PROBe B ");
    expect_each({{"status probe", both},
                 {"status probe B", second},
                 {"sta prob y", refused("STAtus PROBe y ", "# !! Warning : PROBE does not Exists ? ")}});
}

}  // namespace
