// What viewing, finding, selecting and the settings do to the sheet in the window.
#include "commands/language/entry_expansion.h"
#include "schematic/viewport.h"
#include "sheet_session.h"

namespace {

class sheet_commands : public sheet_session {
protected:
    void SetUp() override {
        sheet_session::SetUp();
        type("view sheet");
    }
    static tm_bounds_t seen_area() { return tm_seen(tm_viewport(sheet())); }
    static bool is_selected(std::int16_t id) { return tm_inq_object_selected(sheet(), id); }
};

TEST_F(sheet_commands, view_a_marked_area_and_what_has_a_name) {
    type("mark 0.5 0.5;mark 1.5 1.25;view area");
    EXPECT_NEAR(seen_area().xmax - seen_area().xmin, 100000, 1000);
    EXPECT_NEAR((seen_area().ymin + seen_area().ymax) / 2, 87500, 1000);
    type("view all;view instance g?");
    EXPECT_TRUE(is_selected(instance("G1")) && is_selected(instance("G2")));
    type("view net cout");  // what was shown before is not any more
    EXPECT_TRUE(is_selected(net("COUT")));
    type("view net n_" + std::to_string(net("SUM")));
    EXPECT_TRUE(is_selected(net("SUM")));
    type("view net u1/s");  // the signal's name below
    EXPECT_TRUE(is_selected(net("T")) && !is_selected(net("SUM")));
    EXPECT_EQ(type("unselect all").back(), "# 1 object unselected ");
}

TEST_F(sheet_commands, select_by_area_and_place) {
    const auto in_area = [](const std::string& command) {
        return last("mark rect 0.01 0.01 3.99 2.99;" + command, 1).back();
    };
    const std::vector<std::pair<std::string, std::string>> counts = {
        {"select area inst", "# 4 objects selected "},  {"select area Net", "# 10 objects selected "},
        {"unsel area first", "# 1 object unselected "}, {"unselect area", "# 13 objects unselected "},
        {"select area tag", "# 5 objects selected "},   {"sel area frame", "# 1 object selected "},
        {"sel area pin", "# 13 objects selected "},     {"unsel area pin", "# 13 objects unselected "}};
    for (const auto& [command, count] : counts) EXPECT_EQ(in_area(command), count) << command;
    type("unselect all;smash on");
    EXPECT_EQ(in_area("sel area first"), "# 1 object selected ");
    EXPECT_EQ(last("status property", 1), lines{" STAtus PROPerty "});
    type("unselect all;smash off;view all;mark rect 2.0 2.2 2.0 2.2;sel area all");  // a click
    EXPECT_TRUE(is_selected(net("T")));
    point_at(180000, 210000);
    EXPECT_EQ(type("unselect all;select pin").back(), "# 1 object selected ");
    point_at(-200000, 280000);
    EXPECT_EQ(type("select object").back(), "# !! Error : No object found at the cursor ? ");
}

TEST_F(sheet_commands, settings_change_the_sheet) {
    type("grid step 0.2;grid off");
    const auto& grid = tm_object_as<tm_type_grid_2d>(sheet(), tm_file_header(sheet()).grid_obj_id);
    EXPECT_EQ(std::pair(grid.step_point, grid.grid_on), std::pair(20000, false));
    for (const auto& [typed, entry] : {std::pair("GRI?", " GRId OFF "), {"GRI STEP?", " GRId STep 0.20 "}}) {
        kol_expand_cmd(tm_string(typed));
        EXPECT_EQ(seen.entry, entry);
    }
    const std::int16_t hidden = named("DRAWN_BY", "example_sheets");
    type("select property drawn_by;change property switch visible");
    EXPECT_FALSE(tm_inq_object_unvisible(sheet(), hidden));
    type("cha pro swi novisible");
    EXPECT_TRUE(tm_inq_object_unvisible(sheet(), hidden));
}

TEST_F(sheet_commands, arrows_move_the_cursor_and_what_is_seen) {
    type("view all");
    tm_vext.obj_pos = tm_pixel_to_model(tm_viewport(sheet()), {400, 300});
    const std::int32_t y = tm_vext.obj_pos.y;
    type("$cu4");
    EXPECT_NEAR(tm_vext.obj_pos.y - y, 20000, 5000);
    const tm_bounds_t before = seen_area();
    type("$vptr20");
    EXPECT_NEAR(seen_area().xmin - before.xmin, (before.xmax - before.xmin) / 5, 2000);
    type("plot sheet " + path("top.svg"));
    EXPECT_GT(std::filesystem::file_size(folder / "top.svg"), 1000U);
}

TEST_F(sheet_commands, list_every_object) {
    const auto count = static_cast<std::size_t>(tm_file_header(sheet()).object_id_max);
    const lines shown = type("list objects");
    ASSERT_EQ(shown.size(), count + 2);
    EXPECT_EQ(shown[0],
              "#     1  MAIN               father = 0 ;  child = 2 ;  next = 0 ;  origin = 0.0 0.0 ");
}

}  // namespace
