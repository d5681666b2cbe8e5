#include "list_table.h"

namespace {

TEST_F(list_table, the_cursor_rests_on_the_last_change_not_later_than_the_time) {
    list("a late");
    history("a", "iU@0 0S@10 1S@10 xW@20");
    history("late", "1S@5 0S@7");
    struct {
        const char* signal;
        std::int32_t time;
        std::int8_t state;
    } const steps[] = {{"a", 15, 19}, {"a", 9, 0},     {"a", 10, 19},   {"a", 400, 14},
                       {"a", 0, 0},   {"late", 3, 19}, {"late", 9, 17}, {"late", 0, 19}};
    for (const auto& step : steps) {
        kol_list_get_sigresult(signal_of[step.signal], step.time);
        EXPECT_EQ(signal_of[step.signal]->list_state_cur->state, step.state)
            << step.signal << " at " << step.time;
    }
}

TEST_F(list_table, the_next_change_is_the_earliest_of_all_members_bounded_by_the_present) {
    list("a V(W[p] q)");
    history("a", "iU@0 1S@30 0S@60");
    history("p", "iU@0 1S@12 0S@13");
    history("q", "iU@0 1S@30");
    kol_ext.cur_time = 50;
    struct {
        std::int32_t time, next;
    } const steps[] = {{0, 12}, {12, 13}, {13, 30}, {30, 50}, {5, 12}, {49, 50}, {50, 50}};
    for (const auto& step : steps) {
        std::int32_t next = 0;
        kol_list_get_nextime(step.time, next);
        EXPECT_EQ(next, step.next) << "after " << step.time;
    }
}

}  // namespace
