// Viewing, finding, selecting and reporting on the sheet in the window, and its settings.
#include <algorithm>

#include "schematic/viewport.h"
#include "sheet_session.h"

namespace {

using sheet_commands = sheet_session;

const std::string no_sheet = "# !! Error :  No sheet in Context window ? ";

TEST_F(sheet_commands, need_a_sheet_in_the_window) {
    for (const char* typed : {"VIEW ALL",
                              "VIEW AREA",
                              "VIEW NET A",
                              "VIEW PIN A",
                              "VIEW INSTANCE A",
                              "SEARCH A",
                              "MARK",
                              "BASEPOINT",
                              "SELECT AREA ALL",
                              "SELECT OBJECT 1",
                              "SELECT OBJECT",
                              "SELECT PIN A",
                              "SELECT PROPERTY A",
                              "UNSELECT ALL",
                              "UNSELECT AREA",
                              "STATUS OBJECT",
                              "STATUS PROPERTY",
                              "LIST OBJECTS",
                              "SHOW LINK",
                              "CHECK SHEET",
                              "CHANGE PROPERTY SWITCH VISIBLE",
                              "PLOT SHEET",
                              "HARDCOPY"})
        EXPECT_EQ(last(typed, 1), lines{no_sheet}) << typed;
    EXPECT_EQ(type("GRID STEP 1").back(), "# !! Error : No grid on this sheet ? ");
    EXPECT_EQ(type("SHOW FILE").back(), "# !! Error : No sheet open ? ");
}

TEST_F(sheet_commands, find_things_by_name_and_show_them) {
    type("view sheet");
    type("view area");
    expect_each({{"mark 0.5 0.5;mark 1.5 1.25;view area",
                  {" MARK 0.50 0.50 ", "# from base point : 0.50 0.50 ", " MARK 1.50 1.25 ",
                   "# from base point : 1.50 1.25 ", " VIEw ARea "}}});
    const tm_bounds_t area = tm_seen(tm_viewport(sheet()));
    EXPECT_NEAR(area.xmax - area.xmin, 100000, 1000);
    EXPECT_NEAR((area.ymin + area.ymax) / 2, 87500, 1000);
    expect_each({{"view all", {" VIEw ALl "}},
                 {"view instance g?", {" VIEw INStance g? "}},
                 {"select object 1", {" SELect OBJect 1 ", "# 1 object selected "}},
                 {"unselect all", {" UNSelect ALl ", "# 3 objects unselected "}},
                 {"view pin u2/s", {" VIEw PIN u2/s "}},
                 {"view net cout", {" VIEw NET cout "}},
                 {"view net x", {"# VIEw NET x ", "# !! Error : Net not found on this sheet ? "}},
                 {"view pin u9/s", {"# VIEw PIN u9/s ", "# !! Error : Pin not found on this sheet ? "}},
                 {"view ins x", {"# VIEw INStance x ", "# !! Error : Instance not found on this sheet ? "}}});
    EXPECT_TRUE(tm_inq_object_selected(sheet(), net("COUT")));  // what was shown before is not any more
    EXPECT_EQ(type("unselect all").back(), "# 1 object unselected ");
}

TEST_F(sheet_commands, search_selects_all_that_fits_and_shows_one_after_the_other) {
    type("view sheet");
    const auto found = [](const char* place, std::int16_t id, const std::string& name) {
        return "# " + std::string(place) + " : object " + std::to_string(id) + " \"" + name + "\" ";
    };
    EXPECT_EQ(type("search").back(), "# !! Error : No text searched before ? ");
    EXPECT_EQ(type("search 'or'"),
              (lines{" SEArch 'or' ", found("1 of 1", instance("G1"), "G1")}));  // its symbol's MODEL
    EXPECT_EQ(type("search c?").back(), found("1 of 2", net("C1"), "C1"));
    EXPECT_EQ(type("search").back(), found("2 of 2", net("C2"), "C2"));
    EXPECT_EQ(type("search").back(), found("1 of 2", net("C1"), "C1"));
    EXPECT_EQ(type("search xyz").back(), "# !! Error : Nothing found on this sheet ? ");
    EXPECT_EQ(type("unselect all").back(), "# 2 objects unselected ");
}

TEST_F(sheet_commands, select_by_area_number_name_and_place) {
    type("view sheet");
    const std::string none = "# !! Error : No area marked ( MARK RECTANGLE ) ? ";
    const auto in_area = [](const std::string& command) {
        return last("mark rect 0.01 0.01 3.99 2.99;" + command, 1).back();
    };
    expect_each(
        {{"select area inst", {"# SELect AREa inst ", none}},
         {"sel area x",
          {"# SELect AREa x ",
           "# !! Error : Invalid 3rd parameter (All,First,Inst,Vertex,Frame,Property,Net,Pin,Tag) ? "}}});
    const std::vector<std::pair<std::string, std::string>> counts = {
        {"select area inst", "# 4 objects selected "},  {"select area Net", "# 10 objects selected "},
        {"unsel area first", "# 1 object unselected "}, {"unselect area", "# 13 objects unselected "},
        {"select area tag", "# 5 objects selected "},   {"sel area frame", "# 1 object selected "},
        {"sel area pin", "# 13 objects selected "},     {"unsel area pin", "# 13 objects unselected "}};
    for (const auto& [command, count] : counts) EXPECT_EQ(in_area(command), count) << command;
    type("unselect all;smash on");
    EXPECT_EQ(in_area("sel area first"), "# 1 object selected ");
    EXPECT_EQ(type("status property").size(), 2U);
    type("unselect all;smash off;view all");
    EXPECT_EQ(last("mark rect 2.0 2.2 2.0 2.2;sel area all", 1).back(),
              "# 1 object selected ");  // a click on T
    EXPECT_TRUE(tm_inq_object_selected(sheet(), net("T")));
    const std::string wrong = "# !! Error : No object of this number on the sheet ? ";
    expect_each(
        {{"select object 0", {"# SELect OBJect 0 ", wrong}},
         {"select object 1 201", {"# SELect OBJect 1 201 ", wrong}},
         {"select pin g1/*", {" SELect PIN g1/* ", "# 3 objects selected "}},
         {"select pin z", {"# SELect PIN z ", "# !! Error : Pin not found on this sheet ? "}},
         {"select pro inst u*", {" SELect PROperty inst u* ", "# 2 objects selected "}},
         {"select pro x", {"# SELect PROperty x ", "# !! Error : Property not found on this sheet ? "}}});
    point_at(180000, 210000);
    EXPECT_EQ(type("unselect all;select pin").back(), "# 1 object selected ");
    point_at(-200000, 280000);
    EXPECT_EQ(type("select object").back(), "# !! Error : No object found at the cursor ? ");
}

TEST_F(sheet_commands, reports_tell_what_objects_are_and_where_sheets_come_from) {
    type("view sheet");
    const auto number = [](std::int16_t id) { return std::to_string(id); };
    const auto is_told = [](const std::string& line) { return std::ranges::count(seen.shown, line) == 1; };
    EXPECT_EQ(type("status object").back(), "# !! Error : No object selected ? ");
    EXPECT_EQ(type("status property").back(), "# !! Error : No property selected ? ");
    type("view instance g2;status object");
    EXPECT_TRUE(is_told("#  OBJect : Handle = " + number(instance("G2")) + " ;  type = INSTANCE  "));
    EXPECT_TRUE(is_told("#    INST = \"G2\"") && is_told(" STAtus OBJect "));
    type("status property inst");
    EXPECT_TRUE(is_told("#  PROPERTY : Handle = " + number(named("INST", "G2")) +
                        " ;  name = \"INST\" ;  value = \"G2\" ;  VISIBLE"));
    type("status object " + number(net("D")));
    EXPECT_TRUE(is_told("#    NET = \"D\" ;  bus 0:1"));
    EXPECT_EQ(type("status object 30001").back(), "# !! Error : No object of this number on the sheet ? ");
    EXPECT_EQ(last("list objects", 2), (lines{"# 200 objects ", " LIST OBJects "}));
    EXPECT_TRUE(
        is_told("#     1  MAIN               father = 0 ;  child = 2 ;  next = 0 ;  origin = 0.0 0.0 "));
    EXPECT_EQ(last("view down u1;view sheet carry;show link", 4),
              (lines{"# link  : \"" + path("carry/sheet.tm") + "\" ", "# value : \"_1\" ",
                     "# data  : \"" + path("carry/sheet.tm_1") + "\" ", " SHOw LINk "}));
    type("show file");
    EXPECT_TRUE(is_told("# level 2   file 2 ;  version 1 ;  objects 104") &&
                is_told("# beside * file 3 ;  version 1 ;  objects 87"));
}

TEST_F(sheet_commands, settings_change_the_sheet_and_its_points) {
    type("view sheet");
    const auto grid = [] {
        return tm_object_as<tm_type_grid_2d>(sheet(), tm_file_header(sheet()).grid_obj_id);
    };
    expect_each(
        {{"grid step 0.2", {" GRId STep 0.20 "}},
         {"grid step 0", {"# GRId STep 0 ", "# !! Error : Invalid grid step ( should be above 0 ) "}},
         {"grid off", {" GRId OFF "}},
         {"grid o", {"# GRId o ", std::string(second_par_incorrect)}},
         {"snap on;base edit 1.02 0.98", {" SNAp ON ", " BASEpoint 1.00 1.00 "}},
         {"mark 1.03 0.5", {" MARK 1.05 0.50 ", "# from base point : 0.05 -0.50 "}},
         {"snap off;base 1 2 3 4", {" SNAp OFF ", "# BASEpoint 1 2 3 4 ", std::string(nb_par_invalid)}},
         {"base x y", {"# BASEpoint x y ", std::string(nb_par_invalid)}},
         {"base 1 y", {"# BASEpoint 1 y ", "# !! Error : Invalid coordinate ? "}}});
    EXPECT_EQ(std::pair(grid().step_point, grid().grid_on), std::pair(20000, false));
    kol_expand_cmd(tm_string("GRI?"));
    EXPECT_EQ(seen.entry, " GRId OFF ");
    kol_expand_cmd(tm_string("GRI STEP?"));
    EXPECT_EQ(seen.entry, " GRId STep 0.20 ");
    expect_each({{"cha pro swi x",
                  {"# CHAnge PROperty SWItches x ",
                   "# !! Error : 4th parameter invalid (should be :\"Visible\",\"Novisible\")"}},
                 {"cha pro swi v", {"# CHAnge PROperty SWItches v ", "# !! Error : No property selected ? "}},
                 {"sel pro drawn_by;cha pro switch visible",
                  {" SELect PROperty drawn_by ", "# 1 object selected ", " CHAnge PROperty SWItches visible ",
                   "# 1 property "}}});
    const std::int16_t hidden = named("DRAWN_BY", "example_sheets");
    EXPECT_FALSE(tm_inq_object_unvisible(sheet(), hidden));
    type("cha pro swi novisible");
    EXPECT_TRUE(tm_inq_object_unvisible(sheet(), hidden));
}

TEST_F(sheet_commands, arrows_move_the_cursor_and_what_is_seen) {
    type("view sheet;view all");
    tm_vext.obj_pos = tm_pixel_to_model(tm_viewport(sheet()), {400, 300});
    const std::int32_t y = tm_vext.obj_pos.y;
    type("$cu4");
    EXPECT_NEAR(tm_vext.obj_pos.y - y, 20000, 5000);
    const tm_bounds_t before = tm_seen(tm_viewport(sheet()));
    type("$vptr20");
    const tm_bounds_t after = tm_seen(tm_viewport(sheet()));
    EXPECT_NEAR(after.xmin - before.xmin, (before.xmax - before.xmin) / 5, 2000);
    type("plot sheet " + path("top.svg"));
    EXPECT_GT(std::filesystem::file_size(folder / "top.svg"), 1000U);
}

}  // namespace
