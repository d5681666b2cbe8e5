// Cursors in time: what stands beside names and in waveforms, where the changes are, and what the page
// scrolls to.
#include "results/entries/time_cursor.h"
#include <algorithm>

#include "list_table.h"
#include "results/entries/options.h"
#include "results/pointed.h"

namespace {

class marked_times : public list_table {
protected:
    marked_times() {
        canvas.w = tm_vext.bitmap_size.xmax = 900, canvas.h = tm_vext.bitmap_size.ymax = 42 * 9;
        tm_vext.display_on = true, tm_vext.numpage = tm_page::results;
        kol_set_list_geometry(canvas.h);
        kol_ext.trace_scale = 100, kol_ext.cur_time = kol_ext.end_time = 2000;  // 600 pixels for 2000 steps
        trace("a W[p q r s t] b c d");
        for (const char* const name : {"p", "q", "r", "s"}) history(name, "0S@0 1S@500 0S@1010 xS@1030");
        history("t", "1S@0 1S@500 0S@900 1S@1030");
        history("a", "iU@0 1S@300 0S@1700");
        for (const char* const name : {"b", "c", "d"}) history(name, "1S@0");
    }
    ~marked_times() override { rs_cursors = {}, rs_options = {}; }
    recorder_canvas canvas;
};

TEST_F(marked_times, buses_show_their_values_where_they_fit_and_a_sign_where_not) {
    rs_options.bus_values = true;
    kol_update_darea_edit(canvas);
    std::vector<std::string> values;
    for (const std::string& text : canvas.texts)
        if (text.find(",80 ") != std::string::npos) values.push_back(text);  // 10 above the middle of row 2
    EXPECT_EQ(values, (std::vector<std::string>{"26,80 01", "176,80 1F", "296,80 1E", "335,80 xx"}));
    kol_ext.trace_scale = 1000, canvas.clear();  // 18 pixels for the first value, 12 for the next
    kol_update_darea_edit(canvas);
    EXPECT_TRUE(std::ranges::none_of(canvas.texts, [](const auto& text) { return text.ends_with(" 01"); }));
}

TEST_F(marked_times, values_stand_below_names_and_the_difference_in_the_corner) {
    rs_cursors.first = {true, 910};
    rs_cursors.second = {true, 660};
    kol_update_darea_edit(canvas);
    const auto drawn = [&](const std::string& text) { return std::ranges::count(canvas.texts, text) == 1; };
    EXPECT_TRUE(drawn("648,70 1S") && drawn("648,110 1E") && drawn("648,150 1S"));
    EXPECT_TRUE(drawn("24,0 CURSOR 910.0  SECOND 660.0  DIFF 250.0  1/DIFF 0.004") ||
                drawn("24,0 CURSOR 910.000  SECOND 660.000  DIFF 250.000  1/DIFF 0.004"));
    EXPECT_EQ(std::ranges::count(canvas.segments, "297 30 297 222 green 0"), 1);
}

TEST_F(marked_times, changes_are_found_both_ways_and_rows_at_the_pointer) {
    const rs_entry_t a{signal_of["a"], nullptr}, bus{nullptr, bus_of["W"]};
    struct {
        const rs_entry_t& entry;
        std::int32_t from, next, previous;  // 0: none
    } const cases[] = {{a, 0, 300, 0},   {a, 300, 1700, 0},     {a, 301, 1700, 300}, {a, 1700, 0, 300},
                       {bus, 0, 500, 0}, {bus, 950, 1010, 900}, {bus, 1030, 0, 1010}};
    for (const auto& [entry, from, next, previous] : cases) {
        std::int32_t found = 0;
        EXPECT_EQ(rs_next_change(entry, from, found) ? found : 0, next) << from;
        EXPECT_EQ(rs_previous_change(entry, from, found) ? found : 0, previous) << from;
    }
    EXPECT_EQ(rs_pointed({24, 70}, 900, canvas.h).name, "W");
    EXPECT_EQ(rs_pointed({324, 49}, 900, canvas.h).time, 1000);
    EXPECT_FALSE(rs_pointed({24, 300}, 900, canvas.h).entry);
    for (int i = 0; i < 3; ++i) kol_cursor_down_1st();  // 5 rows, 4 of them on the page
    EXPECT_EQ(kol_ext.trace_cur_row, 2);
    EXPECT_EQ(rs_pointed({24, 70}, 900, canvas.h).name, "b");
}

}  // namespace
