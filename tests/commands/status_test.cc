// PROBE and the reports of probes, nets and buses.
#include "commands/keyword.h"
#include "design_session.h"

namespace {

using status = design_session;
using lines = std::vector<std::string>;

lines operator+(lines first, const lines& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

lines net_lines(const char* name) {
    const yx_net_record_t& net = tst_net(name);
    return {"# Net index      : \"NI_" + std::to_string(net.self) + "\" ",
            "# Net sim_path   : \"/" + std::string(name) + "\" ",
            "# Net id         : \"N_" + std::to_string(net.object_id) + "\" "};
}

TEST_F(status, without_a_sheet_no_net_is_probed_or_selected) {
    expect_each({{"probe p 1", refused("PROBe p 1 ", count_error)},
                 {"probe 9p",
                  {"# PROBe 9p ", "# !! Error : 2nd parameter invalid ( should begin with letter ) ",
                   "# parameter : \"9p\" "}},
                 {"probe p 1 z", refused("PROBe p 1 z ", "# !! Error :  Invalid window ? ")},
                 {"status net x", refused("STAtus NET x ", count_error)},
                 {"sta net", refused("STAtus NET ", "# !! No Sheet available in Context Window ?  ")}});
    tm_vext.numpage = 1;
    EXPECT_EQ(type("prob p"), refused("PROBe p ", "# !! Error :  No sheet in Context window ? "));
    EXPECT_EQ(kol_ext.start_probe_signal, nullptr);
}

TEST_F(status, probes_are_reported_in_order_or_by_name) {
    EXPECT_EQ(type("status probe p"), refused("STAtus PROBe p ", "# !! Error : NO PROBE Exists ? "));
    const auto entry = [](const std::string& name, const char* net) {
        return lines{"# PROBE          : \"" + name + "\" ", "# Probe sim_path : \"/\" "} + net_lines(net) +
               lines{"#******************************* "};
    };
    for (const char* name : {"y", "b"}) {
        auto* probe = new kol_probe_signal_rec_t{&tst_net(name), tm_string(name), kol_ext.cur_sim_path};
        kol_append_record(probe, kol_ext.start_probe_signal, kol_ext.last_probe_signal);
    }
    EXPECT_EQ(type("sta prob p"), refused("STAtus PROBe p ", "# !! Warning : PROBE does not Exists ? "));
    EXPECT_EQ(type("status probe"), entry("y", "y") + entry("b", "b") + lines{" STAtus PROBe "});
    EXPECT_EQ(type("status probe B"), entry("b", "b") + lines{" STAtus PROBe B "});
}

TEST_F(status, buses_are_reported_with_their_members_and_radixes) {
    EXPECT_EQ(type("status bus"), refused("STAtus BUS ", "# !! Error : NO Bus Exists ? "));
    type("def bus c w a d;def bus n v w y;list h v;list d y w;list h w");
    EXPECT_EQ(type("sta bus x"), refused("STAtus BUS x ", "# !! Error : Bus do not Exists ? "));
    const lines w = lines{"#   BUS : \"w\" ",
                          "#   sim_path : \"/\" ",
                          "#   combine   BUS ",
                          "#   in the LIST   ( DECIMAL ) ",
                          "#   in the LIST   ( HEXADECIMAL ) ",
                          "#**   signal name : \"a\"  ( BINARY ) "} +
                    net_lines("a") + lines{"#**   signal name : \"d_0\"  ( BINARY ) "} + net_lines("d[0]");
    const lines v = lines{"#   BUS : \"v\" ",
                          "#   sim_path : \"/\" ",
                          "#   NOcombine BUS ",
                          "#   in the LIST   ( HEXADECIMAL ) ",
                          "#**   signal name : \"w\"  ( BINARY ) ",
                          "#**   bus name    : \"w\" ",
                          "#**   signal name : \"y\"  ( BINARY ) "} +
                    net_lines("y");
    EXPECT_EQ(type("status bus"), w + v + lines{" STAtus BUS "});
    EXPECT_EQ(type("status bus V"), v + lines{" STAtus BUS V "});
}

}  // namespace
