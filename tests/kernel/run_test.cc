#include "kernel/run.h"

#include <gtest/gtest.h>

#include "foundation/context.h"
#include "kernel/queue.h"
#include "support/design_build.h"
#include "support/session.h"

namespace {

void force(const char* net, std::int32_t time, std::int8_t state) {
    auto* f = new kol_force_rec_t;
    f->net = &tst_net(net);
    f->time = time;
    f->state = state;
    f->previous = kol_ext.last_force;
    (f->previous ? f->previous->next : kol_ext.start_force) = f;
    kol_ext.last_force = f;
}

TEST(run, smoke) {
    tst_build("in a b; nand g1 y = a b rise 2 fall 1; nand g2 z = y rise 3 fall 3");
    EXPECT_EQ(tm_vext.num_errors, 0);
    force("a", 10, 19);
    force("b", 10, 19);
    force("b", 20, 17);
    kol_ext.end_time = 100;
    bool none = false;
    kol_exec_all_event(none);
    EXPECT_EQ(tst_net("y").UU.U1.cur_state.state, 19);
    EXPECT_EQ(tst_net("z").UU.U1.cur_state.state, 17);
    EXPECT_EQ(tst_net("z").UU.U1.cur_state.time, 25);
    for (auto& l : tst_take_lines()) puts(l.c_str());
}

}  // namespace
