// VIEW: which view the Results page shows, and from which time.
#include "commands/shared/marks.h"
#include "design_session.h"

namespace {

using view_results = design_session;

TEST_F(view_results, chooses_the_view_its_time_and_all_of_the_simulated_time) {
    const std::string third = "# !! Error : Invalid 3rd parameter (should be \"List\",\"Trace\") ? ";
    const std::string time = "# !! Error : Invalid view time ";
    kol_ext.end_time = 4010;
    expect_each({{" View  Windows TRACE ", {" VIEw WINdow TRACE "}},
                 {"view window x", refused("VIEw WINdow x ", third)},
                 {"view time trace 150", {" VIEw TIMe trace 150 "}},
                 {"view time l 30", {" VIEw TIMe l 30 "}},
                 {"view time x 1", refused("VIEw TIMe x 1 ", third)},
                 {"view time t -1", refused("VIEw TIMe t -1 ", time)},
                 {"view time l 1z", refused("VIEw TIMe l 1z ", time)}});
    EXPECT_EQ(std::pair(kol_ext.trace_cur_time, kol_ext.list_cur_time), std::pair(150, 30));
    expect_each({{"view all", {" VIEw ALl "}}, {"view win l;view all", {" VIEw WINdow l ", " VIEw ALl "}}});
    EXPECT_EQ(std::pair(kol_ext.trace_cur_time, kol_ext.trace_scale), std::pair(0, 200));
    EXPECT_EQ(std::pair(kol_ext.list_cur_time, kol_ext.list_or_trace), std::pair(0, true));
    tm_shell.show_other_page = [] { tm_vext.numpage = tm_page::results; };
    tm_vext.numpage = tm_page::context;
    type("view window trace");
    EXPECT_EQ(tm_vext.numpage, tm_page::results) << "what is asked for comes to the front";
}

// The page is 900 wide: its plot begins at 24 and is 600 wide, rows of the list are 20 high.
TEST_F(view_results, fits_the_window_to_the_marked_area) {
    const std::string narrow = "# !! Error : Marked area too narrow ( at least 3 pixels ) ? ";
    const std::string none = "# !! Error : No area marked ( MARK RECTANGLE ) ? ";
    const auto from_and_scale = [] { return std::pair(kol_ext.trace_cur_time, kol_ext.trace_scale); };
    tm_vext.bitmap_size = {0, 0, 900, 378};
    kol_ext.end_time = kol_ext.cur_time = 6000;
    kol_ext.trace_scale = 300;
    type("view window trace");
    expect_each({{"view area", refused("VIEw ARea ", none)},
                 {"mark rect 324 1 24 5;view area", {" MARK RECTangle 324 1 24 5 ", " VIEw ARea "}},
                 {"mark rect 1 2 x 4",
                  refused("MARK RECTangle 1 2 x 4 ", "# !! Error : Invalid corner of rectangle ? ")}});
    EXPECT_EQ(from_and_scale(), std::pair(0, 150));
    tm_vext.pixel_pos = {324, 10};
    EXPECT_EQ(type("MARK RECT "), lines{" MARK RECTangle "});
    tm_point_t corner;
    EXPECT_TRUE(kol_mark_band(tm_page::results, corner) && corner.x == 324 &&
                !kol_mark_band(tm_page::context, corner));
    tm_vext.pixel_pos = {341, 90};
    EXPECT_EQ(type("view area;view area"), (lines{" VIEw ARea ", "# VIEw ARea ", none}));
    EXPECT_EQ(from_and_scale(), std::pair(1500, 5));
    EXPECT_FALSE(tm_vext.mark_rectangle_on);
    for (const char* const too_narrow :
         {"mark rect 100 0 102 99;view area", "mark rect 623 0 900 99;view area"})
        EXPECT_EQ(type(too_narrow).back(), narrow);
    EXPECT_EQ(from_and_scale(), std::pair(1500, 5));
    type("mark rect 24 0 27 0;view area;mark rect 24 0 27 0;view area");
    EXPECT_EQ(from_and_scale(), std::pair(1500, 1));
    tm_vext.numpage = tm_page::context;
    type("mark rect 24 0 300 9");
    tm_vext.numpage = tm_page::results;
    EXPECT_EQ(type("view area").back(), none) << "marked on the other page";
}

TEST_F(view_results, begins_the_list_at_the_row_at_the_top_of_the_marked_area) {
    type("list b a y;force a a 1 10;force a b 1 30;run 50");
    for (const auto& [y, time] :
         {std::pair(45, 10), std::pair(19, 10), std::pair(41, 11), std::pair(300, 50)}) {
        type("mark rect 10 200 100 " + std::to_string(y) + ";view area");
        EXPECT_EQ(kol_ext.list_cur_time, time) << y;
    }
}

}  // namespace
