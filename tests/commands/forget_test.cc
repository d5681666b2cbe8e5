// FORGET: what goes, and what a view keeps.
#include "design_session.h"
#include "foundation/list.h"
#include "kernel/history.h"
#include "results/list/layout.h"

namespace {

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
        for (const char* net : {"a", "b"}) {
            auto& probe = tm_list_append(std::make_unique<kol_probe_signal_rec_t>(),
                                         kol_ext.start_probe_signal, kol_ext.last_probe_signal);
            probe = {&tst_net(net), tm_string("p"), kol_ext.cur_sim_path, probe.previous};
        }
    }
};

TEST_F(forget, names_go_one_by_one_until_one_is_unknown) {
    fill();
    type("forget l a 9z;forget t a *9");  // refused before anything goes
    EXPECT_EQ(counts(), "22223");
    type("break a x;list h a");
    for (const auto& [typed, kind] : std::vector<std::pair<std::string, std::string>>{
             {"Bu v no w", "Bus"}, {"break A /a", "BREAK"}, {"l a *", "LIST"}, {"p no", "PROBE"}})
        EXPECT_EQ(type("forget " + typed),
                  refused("FORGet " + typed + " ", "# !! Error : " + kind + " signal NOT FOUND ? "));
    EXPECT_EQ(type("forget probes p;forget t W a"), (lines{" FORGet probes p ", " FORGet t W a "}));
    EXPECT_EQ(counts(), "12211");
    EXPECT_EQ(kol_ext.last_probe_signal->net, &tst_net("a"));
    EXPECT_EQ(kol_ext.list_signal->bus, kol_ext.start_sim_bus);
    EXPECT_EQ(kol_ext.break_signal->net, &tst_net("b"));
    EXPECT_EQ(tst_net("a").UU.U1.break_signal, kol_ext.break_signal->previous);
}

TEST_F(forget, a_star_empties_one_kind_and_a_everything) {
    fill();
    type("period list 5;period trace 5");
    kol_ext.list_cur_time = kol_ext.trace_cur_time = kol_ext.list_cur_column = 7;
    kol_ext.list_change_on = false;
    kol_ext.time_breaked = true;
    const std::pair<const char*, const char*> left[] = {
        {"forget p *", "22203"}, {"forget bu *", "02203"}, {"forget br *", "00203"}, {"forget l *", "00003"}};
    for (const auto& [typed, rest] : left) {
        EXPECT_EQ(type(typed), lines{" FORGet "});
        EXPECT_EQ(counts(), rest);
    }
    EXPECT_EQ(tst_net("a").UU.U1.break_signal, nullptr);
    EXPECT_EQ((numbers{kol_ext.time_breaked, kol_ext.list_cur_time, kol_ext.list_period,
                       kol_ext.list_cur_column, kol_ext.list_change_on, kol_ext.trace_period}),
              (numbers{0, 0, 0, 1, 1, 5}));
    fill();
    EXPECT_EQ(type("forget a no *"), lines{" FORGet a no * "});
    EXPECT_EQ(counts(), "00000");
    EXPECT_EQ(kol_ext.trace_cur_time + kol_ext.trace_period, 0);
    for (const char* net : {"a", "b", "y"}) EXPECT_EQ(tst_net(net).UU.U1.nb_of_observer, 0) << net;
}

TEST_F(forget, a_forgotten_bus_stays_with_what_shows_it_and_no_longer) {
    const yx_net_u1_t& y = tst_net("y").UU.U1;
    type("def bus c w y;def bus n v w;list h v;trace v;forget bu w v;force a b 0 5;run 20");
    EXPECT_EQ(type("list h w").back(), "# Signal : \"w\" ");
    ASSERT_NE(y.history, nullptr);
    EXPECT_EQ(y.history->newest().time, 6);
    const yx_bus_rec_t* shown = kol_ext.list_signal->bus;
    EXPECT_EQ(shown->signal->bus->signal->net, &tst_net("y"));
    type("reset sim time;run 20");
    EXPECT_EQ(y.history->newest().time, 6);
    type("def bus n v a b;list h v");  // the name is free again
    EXPECT_NE(kol_ext.list_signal->bus, shown);
    type("forget l *");
    EXPECT_EQ(y.nb_of_observer, 1);
    type("forget t v");
    EXPECT_TRUE(y.history == nullptr && kol_ext.start_forgotten_bus == nullptr);
}

}  // namespace
