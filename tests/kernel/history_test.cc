// Histories of observed nets.
#include "kernel/history.h"

#include <gtest/gtest.h>

#include "support/design_build.h"
#include "support/rows.h"
#include "support/stimuli.h"

namespace {

TEST(history, begins_with_the_last_change_before_its_first_observer) {
    for (const auto& [before, history] : tst_rows<tst_cstr, std::string>{
             {"", "0:iU"}, {"a=1@0", "0:1S"}, {"a=1@0 a=0@7", "0:iU 7:0S"}, {"a=1@7 a=1@9", "0:iU 7:1S"}}) {
        tst_build("net a");
        tst_schedule(before);
        tst_run_until(10);
        EXPECT_EQ(kol_observe_net(&tst_net("a")), tst_net("a").UU.U1.history);
        EXPECT_EQ(tst_history_of("a"), history);
        tst_schedule("a=x@20 a=x@25 a=0@30");
        tst_run_until(40);
        EXPECT_EQ(tst_history_of("a"), history + " 20:xS 30:0S");
    }
}

TEST(history, lasts_until_the_last_observer_leaves) {
    tst_build("net a b");
    yx_net_record_t& a = tst_net("a");
    const kol_history_t* first = kol_observe_net(&a);
    EXPECT_EQ(kol_observe_net(&a), first);
    tst_schedule("a=1@10");
    tst_run_until(15);
    kol_forget_net(&a);
    EXPECT_EQ(tst_history_of("a"), "0:iU 10:1S");
    kol_forget_net(&a);
    EXPECT_EQ(a.UU.U1.history, nullptr);
    kol_observe_net(&tst_net("b"));  // may take the records over
    tst_schedule("a=0@20 a=x@25 b=1@22");
    tst_run_until(30);
    EXPECT_EQ(tst_history_of("b"), "0:iU 22:1S");
    kol_observe_net(&a);
    EXPECT_EQ(tst_history_of("a"), "0:iU 25:xS");
}

yx_signal_rec_t* observe(const char* net) {
    auto* signal = new yx_signal_rec_t;
    signal->net = &tst_net(net);
    signal->history = kol_observe_net(signal->net);
    return signal;
}

TEST(history, returns_to_its_first_record_for_every_kind_of_observer) {
    tst_build("net a b c d");
    // a and the bus are listed, a and b traced; the bus has c and a; only another bus, nowhere shown, has d.
    auto* first = kol_ext.start_sim_bus = new yx_bus_rec_t;
    auto* last = kol_ext.last_sim_bus = first->next = new yx_bus_rec_t;
    auto* listed = kol_ext.list_signal = new yx_signal_rec_t;
    listed->sig_bus = true;
    listed->bus = first;
    yx_signal_rec_t* const signals[] = {listed->previous = observe("a"),
                                        kol_ext.trace_signal = observe("b"),
                                        kol_ext.trace_signal->previous = observe("a"),
                                        first->signal = observe("c"),
                                        first->signal->next = observe("a"),
                                        last->signal = observe("d")};
    tst_schedule("a=1@1 b=1@2 c=1@3 d=1@4 a=0@5 b=0@6 c=0@7 d=0@8");
    tst_run_until(10);
    for (yx_signal_rec_t* signal : signals) signal->cursor = 1;
    EXPECT_EQ(tst_history_of("d"), "0:iU 4:1S 8:0S");
    kol_init_list_state();
    for (const char* net : {"a", "b", "c", "d"}) EXPECT_EQ(tst_history_of(net), "0:iU") << net;
    for (const yx_signal_rec_t* signal : signals) {
        EXPECT_EQ(signal->history, signal->net->UU.U1.history);
        EXPECT_EQ(signal->cursor, 0U);
    }
    tst_schedule("a=x@20");
    tst_run_until(30);
    EXPECT_EQ(tst_history_of("a"), "0:iU 20:xS");
}

}  // namespace
