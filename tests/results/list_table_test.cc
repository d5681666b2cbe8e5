// Where the entries stand and what their cursors show.
#include "list_table.h"

namespace {

struct layout_row {
    bool state_on;
    const char* entries;
    const char* places;
};

constexpr layout_row layouts[] = {
    {true, "a b c d e", "a@1/1 b@4/2 c@7/3 d@10/4 e@13/1"},
    {false, "W[p q r s] z", "W@1/1 p@1/1 q@2/2 r@3/3 s@4/4 z@6/1"},
    {true, "W(p q) z", "W@1/1 p@1/1 q@4/2 z@7/3"},
    // The closing blank: not before another packed value, but before a separate bus.
    {true, "a W[p q] V[r] z", "a@1/1 W@4/2 p@4/2 q@6/3 V@8/4 r@8/4 z@11/1"},
    {false, "W[p] V(q) z", "W@1/1 p@1/1 V@3/2 q@3/2 z@5/3"},
    {true, "W(I[p q] r J[s] K[t])", "W@1/1 I@1/1 p@1/1 q@3/2 r@6/3 J@9/4 s@9/4 K@11/1 t@11/1"},
    {false, "W[p I[q r] s] z", "W@1/1 p@1/1 I@2/2 q@2/2 r@3/3 s@5/4 z@7/1"},
    // A bus that stands in the table twice has columns of its own each time.
    {false, "W[p q] W a", "W@1/1 p@1/1 q@2/2 W@3/3 p@3/3 q@4/4 a@6/1"},
    {false, "V(W[p] W a) V", "V@1/1 W@1/1 p@1/1 W@2/2 p@2/2 a@4/3 V@6/4 W@6/4 p@6/4 W@7/1 p@7/1 a@9/2"},
};

TEST_F(list_table, entries_and_members_take_columns_and_header_lines_in_turn) {
    for (const layout_row& row : layouts) {
        kol_ext.list_state_on = row.state_on;
        signal_of.clear();
        bus_of.clear();
        list(row.entries);
        EXPECT_EQ(layout(), row.places) << row.entries << " state " << row.state_on;
    }
}

TEST_F(list_table, a_list_fits_as_long_as_its_last_value_begins_within_1024_columns) {
    std::string entries;
    for (int n = 0; n < 341; ++n) entries += "s ";
    list(entries + "t");
    EXPECT_TRUE(kol_list_fits());
    EXPECT_EQ(signal_of["t"]->column, 1024);
    list(entries + "s t");
    EXPECT_FALSE(kol_list_fits());
    recorder_canvas canvas;
    EXPECT_DEATH(kol_list_write_signame(canvas), "");
    list("a");
    EXPECT_TRUE(kol_list_fits());
    kol_ext.list_cur_column = 0;
    EXPECT_DEATH(kol_list_write_signame(canvas), "");
}

TEST_F(list_table, the_cursor_rests_on_the_last_change_not_later_than_the_time) {
    list("a late");
    history("a", "iU@0 0S@10 1S@10 xW@20");
    history("late", "1S@5 0S@7");
    const std::tuple<const char*, std::int32_t, std::int8_t> steps[] = {
        {"a", 15, 19}, {"a", 9, 0},     {"a", 10, 19},   {"a", 400, 14},
        {"a", 0, 0},   {"late", 3, 19}, {"late", 9, 17}, {"late", 0, 19}};
    for (const auto& [signal, time, state] : steps) {
        kol_list_get_sigresult(signal_of[signal], time);
        EXPECT_EQ((*signal_of[signal]->history)[signal_of[signal]->cursor].state, state)
            << signal << " at " << time;
    }
}

TEST_F(list_table, the_next_change_is_the_earliest_of_all_members_bounded_by_the_present) {
    list("a V(W[p] q)");
    history("a", "iU@0 1S@30 0S@60");
    history("p", "iU@0 1S@12 0S@13");
    history("q", "iU@0 1S@30");
    kol_ext.cur_time = 50;
    for (const auto& [time, expected] : std::vector<std::pair<std::int32_t, std::int32_t>>{
             {0, 12}, {12, 13}, {13, 30}, {30, 50}, {5, 12}, {49, 50}, {50, 50}}) {
        std::int32_t next = 0;
        kol_list_get_nextime(time, next);
        EXPECT_EQ(next, expected) << "after " << time;
    }
}

}  // namespace
