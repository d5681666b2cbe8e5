#include <algorithm>

#include "foundation/shell.h"
#include "list_table.h"

namespace {

using texts = std::vector<std::string>;

class drawn_list : public list_table {
protected:
    drawn_list() {
        canvas.w = 14 * 49;  // 20 columns with drives, 24 without
        canvas.h = 22 * 15;  // 3 value rows
        tm_vext.display_on = true;
        kol_set_list_geometry(canvas.h);
    }
    const texts& draw() {
        kol_update_darea_edit(canvas);
        return canvas.texts;
    }
    texts header() {
        kol_update_column_list(nullptr, canvas.w);
        canvas.texts.clear();
        kol_list_write_signame(canvas);
        return canvas.texts;
    }
    recorder_canvas canvas;
};

TEST_F(drawn_list, shows_names_below_and_one_row_per_change_while_drawing_is_on) {
    list("clk W[p q] bit");
    history("clk", "iU@0 1S@5 0S@10");
    history("p", "0S@0 1S@7");
    history("q", "0W@0");
    history("bit", "xZ@0");
    kol_ext.cur_time = 30;
    EXPECT_EQ(draw(), (texts{"132,20 0.0", "192,20 iU", "228,20 0S", "252,20 0W", "288,20 xZ",    //
                             "108,40 5.000", "192,40 1S", "228,40 0S", "252,40 0W", "288,40 xZ",  //
                             "108,60 7.000", "192,60 1S", "228,60 1S", "252,60 0W", "288,60 xZ",  //
                             "204,100 clk         ", "240,120 W           ", "300,160 bit         "}));
    EXPECT_EQ(canvas.grounds, (texts{"100..180 behind 15 texts"}));
    tm_vext.display_on = false;
    draw();
    EXPECT_EQ(canvas.clears, 1);
    tm_vext.display_on = true;
    kol_ext.list_or_trace = false;
    EXPECT_EQ(draw(), texts{});
    canvas.h = 22 * 13 - 1;
    kol_ext.list_or_trace = true;
    EXPECT_EQ(draw().back(), "12,0 Page too small for one row");
}

TEST_F(drawn_list, ends_at_the_present_time_in_either_mode) {
    list("a");
    history("a", "0S@0 1S@4");
    kol_ext.list_state_on = false;
    kol_ext.cur_time = 9;
    kol_ext.list_cur_time = 4;
    EXPECT_EQ(draw(), (texts{"108,20 4.000", "192,20 1", "108,40 9.000", "192,40 1", "204,100 a       "}));
    kol_ext.list_change_on = false;
    kol_ext.list_period = 3;
    EXPECT_EQ(draw(), (texts{"108,20 4.000", "192,20 1", "108,40 7.000", "192,40 1", "204,100 a       "}));
    kol_ext.list_cur_time = kol_ext.cur_time = 2147483647;
    EXPECT_EQ(draw()[0], "24,20 47483648.000");  // the end of a long time
}

TEST_F(drawn_list, cuts_names_and_names_a_combined_bus_once_at_its_first_shown_member) {
    list("entry_with_number_7 B(member_with_number_8) combined_bus_9[p]");
    EXPECT_EQ(header(), (texts{"204,100 ith_number_7", "240,120 member_with_", "276,140 combined_bus"}));
    list("a W[p q r] b");
    kol_ext.list_cur_column = 5;
    EXPECT_EQ(header(), (texts{"216,140 W           ", "276,100 b           "}));
}

TEST_F(drawn_list, a_height_of_the_page_belongs_to_the_row_that_is_drawn_there) {
    list("a");
    history("a", "0S@0 1S@4 0S@7");
    kol_ext.cur_time = 9;
    for (const auto& [y, time] : {std::pair(0, 0), std::pair(39, 0), std::pair(40, 4), std::pair(60, 7),
                                  std::pair(80, 9), std::pair(500, 9)})
        EXPECT_EQ(kol_list_time_at(y), time) << y;
}

TEST_F(drawn_list, shows_the_columns_that_begin_on_the_page) {
    for (const char* const entries : {"W[a b c d e f g h i j k]", "z W[a b c d e f g h i j k]"}) {
        list(entries);  // the values of k begin in columns 21 and 24, the last ones shown in 19 and 20
        for (const auto& [name, signal] : signal_of) history(name, "0S@0");
        draw();
        EXPECT_EQ(std::count_if(canvas.texts.begin(), canvas.texts.end(),
                                [](const std::string& text) { return text.ends_with(" 0S"); }),
                  10)
            << entries;
        signal_of.clear(), bus_of.clear();
    }
}

int redraws = 0;

TEST_F(list_table, scrolls_the_view_that_is_shown_by_a_step_that_follows_the_end_time) {
    // clang-format off
    const std::int32_t rows[][4] = {  // the end time, from where, then down or up
        {50000, 1000, 1500, 500}, {50000, 49500, 49500, 49000},  {50000, 499, 999, 499}, {50000, 500, 1000, 0},
        {100200, 1002, 2002, 2},  {5000000, 20000, 30000, 10000}, {500000000, 0, 1000000, 0},
        {2147483647, 2147000000, 2147000000, 2146000000}};
    // clang-format on
    tm_shell.redraw_results = [] { ++redraws; };
    tm_vext.numpage = tm_page::results;
    for (const auto& [end_time, from, down, up] : rows) {
        kol_ext.end_time = end_time;
        kol_ext.list_cur_time = from;
        kol_cursor_down_1st();
        EXPECT_EQ(kol_ext.list_cur_time, down) << end_time << " from " << from;
        kol_ext.list_cur_time = from;
        kol_cursor_up_1st();
        EXPECT_EQ(kol_ext.list_cur_time, up) << end_time << " from " << from;
    }
    EXPECT_EQ(redraws, 12);  // only when the time moves
    kol_ext.list_cur_time = kol_ext.trace_cur_time = 2000000;
    kol_ext.list_or_trace = false;
    kol_cursor_right_1st();
    kol_cursor_down_1st();
    EXPECT_EQ(std::pair(kol_ext.trace_cur_time, kol_ext.list_cur_time), std::pair(3000000, 2000000));
    kol_cursor_left_1st();
    kol_cursor_left_1st();
    tm_vext.numpage = tm_page::context;
    kol_cursor_left_1st();
    EXPECT_EQ(std::pair(kol_ext.trace_cur_time, redraws), std::pair(1000000, 15));
    tm_shell = tm_default_shell;
}

}  // namespace
