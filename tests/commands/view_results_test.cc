// VIEW: which view the Results page shows, and from which time.
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
    tm_vext.numpage = 1;
    EXPECT_EQ(type("view all"), refused("VIEw ALl ", std::string(not_available)));
}

}  // namespace
