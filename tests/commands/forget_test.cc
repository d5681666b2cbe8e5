// FORGET: what it shows, what goes, and what a view keeps.
#include "commands/keyword.h"
#include "design_session.h"
#include "results/list_view.h"

namespace {

using lines = std::vector<std::string>;

void add_probe(const char* name, const char* net) {
    auto* probe = new kol_probe_signal_rec_t;
    probe->net = &tst_net(net);
    probe->probe_name = tm_string(name);
    probe->cur_sim_path = kol_ext.cur_sim_path;
    kol_append_record(probe, kol_ext.start_probe_signal, kol_ext.last_probe_signal);
}

// How many buses, breaks, list signals, probes and trace signals there are.
std::string counts() {
    const auto count = [](const auto* record, auto link) {
        int n = 0;
        for (; record != nullptr; record = record->*link) ++n;
        return std::to_string(n);
    };
    return count(kol_ext.start_sim_bus, &yx_bus_rec_t::next) +
           count(kol_ext.break_signal, &yx_break_signal_rec_t::previous) +
           count(kol_ext.list_signal, &yx_signal_rec_t::previous) +
           count(kol_ext.last_probe_signal, &kol_probe_signal_rec_t::previous) +
           count(kol_ext.trace_signal, &yx_signal_rec_t::previous);
}

class forget : public design_session {
protected:
    static void fill() {
        type("def bus n w a b;def bus c v y;break a 1;break b 0;list h a w;trace a w b");
        add_probe("p", "a");
        add_probe("p", "b");
    }
};

TEST_F(forget, checks_come_before_anything_goes) {
    const std::string kind =
        "# !! Error : 2rd parameter invalid (should be:\"A\",BU\",\"BR\",\"L\",\"P\",\"T\") ";
    const std::string name = "# !! Error : parameter invalid ( should begin with letter or \"/\") ";
    const auto none = [](const std::string& word) {
        return "# !! Warning : NO " + word + " signal available ? ";
    };
    expect_each({{"forget", refused("FORGet ", count_error)},
                 {"forget l", refused("FORGet l ", count_error)},
                 {"forget b 9", refused("FORGet b 9 ", kind)},
                 {"forget bus a *", refused("FORGet bus a * ", none("BUS"))},
                 {"forget t a", refused("FORGet t a ", none("TRACE"))},
                 {"forget L *", {" FORGet "}}});
    fill();
    EXPECT_EQ(type("forget l a 9z"), (lines{"# FORGet l a 9z ", name, "# parameter : \"9z\" "}));
    EXPECT_EQ(type("forget all *9"), (lines{"# FORGet all *9 ", name, "# parameter : \"*9\" "}));
    EXPECT_EQ(counts(), "22223");
}

TEST_F(forget, names_go_one_by_one_until_one_is_unknown) {
    fill();
    type("break a x;list h a");
    const auto unknown = [](const std::string& kind) {
        return "# !! Error : " + kind + " signal NOT FOUND ? ";
    };
    expect_each({{"forget Bu v no w", refused("FORGet Bu v no w ", unknown("Bus"))},
                 {"forget break A /a", refused("FORGet break A /a ", unknown("BREAK"))},
                 {"forget l a *", refused("FORGet l a * ", unknown("LIST"))},
                 {"forget probes p", {" FORGet probes p "}},
                 {"forget p no", refused("FORGet p no ", unknown("PROBE"))},
                 {"forget t W a", {" FORGet t W a "}},
                 {"forget t w", refused("FORGet t w ", unknown("TRACE"))}});
    EXPECT_EQ(counts(), "12211");
    EXPECT_EQ(kol_ext.last_probe_signal->net, &tst_net("a"));
    EXPECT_EQ(kol_ext.list_signal->bus, kol_ext.start_sim_bus);
    EXPECT_EQ(kol_ext.break_signal->net, &tst_net("b"));
    EXPECT_EQ(tst_net("a").UU.U1.break_signal, kol_ext.break_signal->previous);
}

TEST_F(forget, a_star_empties_one_kind_and_a_everything) {
    fill();
    kol_ext.list_cur_time = kol_ext.trace_cur_time = kol_ext.list_cur_column = 7;
    kol_ext.list_change_on = false;
    type("period list 5;period trace 5");
    kol_ext.time_breaked = true;
    const std::vector<std::pair<const char*, std::string>> left = {
        {"forget p *", "22203"}, {"forget bu *", "02203"}, {"forget br *", "00203"}, {"forget l *", "00003"}};
    for (const auto& [typed, rest] : left) {
        EXPECT_EQ(type(typed), lines{" FORGet "});
        EXPECT_EQ(counts(), rest);
    }
    EXPECT_FALSE(kol_ext.time_breaked);
    EXPECT_EQ(tst_net("a").UU.U1.break_signal, nullptr);
    EXPECT_EQ(kol_ext.list_cur_time + kol_ext.list_period, 0);
    EXPECT_EQ(kol_ext.list_cur_column, 1);
    EXPECT_TRUE(kol_ext.list_change_on);
    EXPECT_EQ(kol_ext.trace_period, 5);
    fill();
    EXPECT_EQ(type("forget a no *"), lines{" FORGet a no * "});
    EXPECT_EQ(counts(), "00000");
    EXPECT_EQ(kol_ext.trace_cur_time + kol_ext.trace_period, 0);
    for (const char* net : {"a", "b", "y"}) EXPECT_EQ(tst_net(net).UU.U1.nb_of_observer, 0) << net;
}

TEST_F(forget, a_forgotten_bus_stays_with_what_shows_it_and_no_longer) {
    const yx_net_u1_t& y = tst_net("y").UU.U1;
    type("def bus c w y;def bus n v w;list h v;trace v;forget bu w v;force a b 0 5;run 20");
    EXPECT_EQ(type("list h w"),
              (lines{"# LIST h w ", "# !! Error : Signal NOT FOUND ? ", "# Signal : \"w\" "}));
    ASSERT_NE(y.list_state, nullptr);
    EXPECT_EQ(y.list_state->time, 6);
    const yx_bus_rec_t* shown = kol_ext.list_signal->bus;
    EXPECT_EQ(shown->signal->bus->signal->net, &tst_net("y"));
    type("reset sim time;run 20");
    EXPECT_EQ(y.list_state->time, 6);
    type("def bus n v a b;list h v");  // the name is free again
    EXPECT_NE(kol_ext.list_signal->bus, shown);
    type("forget l *");
    EXPECT_EQ(y.nb_of_observer, 1);
    type("forget t v");
    EXPECT_EQ(y.list_state, nullptr);
    EXPECT_EQ(kol_ext.start_forgotten_bus, nullptr);
}

}  // namespace
