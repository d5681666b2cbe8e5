// VIEW SHEET, VIEW DOWN and VIEW UP: the levels, the simulation path, and what is refused in which order.
#include "commands/shared/sheet_levels.h"
#include "sheet_session.h"
#include "support/places/places.h"

namespace {

namespace fs = std::filesystem;

// Levels, files, the sheet in the window and the path, which a refused command leaves as they are.
std::string place() {
    std::string text =
        std::to_string(kol_ext.file_level_cur) + " of " + std::to_string(kol_ext.file_level_max) + " :";
    for (std::int16_t level = 1; level <= 4; ++level)
        text += " " + std::to_string(kol_level(level).file_index);
    return text + " : " + std::to_string(tm_vext.file_id_context) + " : " +
           std::string(tm_view(kol_ext.cur_sim_path));
}

class hierarchy : public sheet_session {
protected:
    static void expect_refused(const std::string& typed, const lines& shown) {
        const std::string before = place();
        EXPECT_EQ(type(typed), shown) << typed;
        EXPECT_EQ(place(), before) << typed;
    }
};

const std::string none_selected = "# !! Error : No Instance (OR More Than 1) Found selected ";
const std::string none_named = "# !! Error : No Instance(or more than 1) with \"INST\" ";

TEST_F(hierarchy, checks_come_in_order) {
    const std::string no_design = "# !! Error : No design Sheet available ";
    const std::string no_valid = "# !! Error : No valid design Sheet available ";
    expect_refused("view up u1", {"# VIEw UP \"u1\"   ", std::string(kol_count_invalid.error)});
    expect_refused("view down u1", {"# VIEw DOWn \"u1\"   ", no_design});
    kol_ext.file_level_cur = 29;
    expect_refused("view up", {"# VIEw UP ", no_design});
    kol_ext.file_level_cur = 1;
    tm_vext.file_id_context = 33;
    kol_ext.arrayof_file[0].file_index = 33;
    expect_refused("view down", {"# VIEw DOWn ", no_valid});
    tm_vext.file_id_context = 0;
    kol_ext.arrayof_file[0].file_index = 0;
    type("view sheet;view sheet adder");
    expect_refused("view down U1",
                   {"# VIEw DOWn \"U1\"   ", "# !! Error : No valid design Sheet to view down in Context "});
    expect_refused("view up", {"# VIEw UP ", "# !! Error : No valid design Sheet to view up in Context "});
    type("view sheet");
    kol_set_level(3, static_cast<tm_file_index_t>(tm_vext.file_id_context));
    kol_ext.file_level_cur = kol_ext.file_level_max = 3;
    expect_refused("view up", {"# VIEw UP ", "# !! Error : No VIEw UP valid design Sheet available "});
    kol_set_level(28, kol_level(3).file_index);
    kol_ext.file_level_cur = 28;
    expect_refused("view down U1", {"# VIEw DOWn \"U1\"   ", "# !! Error : Too many sheet levels ? : "});
}

TEST_F(hierarchy, goes_down_and_up_with_the_path_and_one_file_for_each_level) {
    EXPECT_EQ(type("view sheet"), lines{" VIEw SHEet "});
    EXPECT_EQ(place(), "1 of 1 : 1 0 0 0 : 1 : /");
    EXPECT_EQ(type("view down u1"), lines{" VIEw DOWn  U1 "});
    EXPECT_EQ(place(), "2 of 2 : 1 2 0 0 : 2 : /U1/");
    EXPECT_EQ(type("view down P1"), lines{" VIEw DOWn  P1 "});
    EXPECT_EQ(place(), "3 of 3 : 1 2 3 0 : 3 : /U1/P1/");
    EXPECT_TRUE(tm_inq_object_unvisible(sheet(), named("DRAWN_BY", "example_sheets")));
    EXPECT_FALSE(tm_inq_object_unvisible(sheet(), named("TITLE", "CARRY")));
    EXPECT_EQ(type("view up;view up"), (lines{" VIEw UP   ", " VIEw UP   "}));
    EXPECT_EQ(place(), "1 of 3 : 1 2 3 0 : 1 : /");
    tm_set_object_selected(2, 1, true);  // is gone when the level's file is read again
    tm_set_object_selected(sheet(), instance("U2"), true);
    EXPECT_EQ(type("view down"), lines{" VIEw DOWn  U2 "});
    EXPECT_EQ(place(), "2 of 3 : 1 2 3 0 : 2 : /U2/");
    EXPECT_FALSE(tm_inq_object_selected(2, 1));
    EXPECT_EQ(tm_vext.num_file_open, 3);
    kol_ext.cur_sim_path = tm_string("//");  // an instance without INST
    type("view up");
    EXPECT_EQ(sim_path(), "/");
}

TEST_F(hierarchy, enters_exactly_one_instance) {
    type("view sheet");
    for (const char* name : {"U1", "U2"}) tm_set_object_selected(sheet(), instance(name), true);
    expect_refused("view down", {"# VIEw DOWn ", none_selected});
    tm_set_object_deleted(sheet(), instance("U2"), true);
    rename("INST", "G1", "u1");
    expect_refused("view down U1", {"# VIEw DOWn \"U1\"   ", none_named});
    EXPECT_EQ(type("view down"), lines{" VIEw DOWn  U1 "});
}

TEST_F(hierarchy, enters_instances_of_any_name) {
    for (const int length : {95, 96}) {
        type("view sheet");
        const std::string name(static_cast<std::size_t>(length), 'u');
        auto& value = property("INST", "U1").nvalue;
        value.len = length;
        name.copy(value.char_, name.size());
        EXPECT_EQ(type("view down " + name).front().substr(0, 14), " VIEw DOWn  uu");
        EXPECT_EQ(sim_path(), "/" + name + "/");
    }
}

TEST_F(hierarchy, a_sheet_below_that_cannot_be_shown_changes_nothing) {
    type("view sheet");
    const lines no_sheet = {"# VIEw DOWn  \"U1\"   ",
                            "# !! Error : No Sheet Available ? : ", "# !! : \"adder\""};
    const lines invalid = {"# VIEw DOWn \"U1\"   ",
                           "# !! Error : Sheet not found or Invalid ? : ", "# !! : \"adder\" "};
    fs::rename(path("adder/sheet.tm"), path("link"));
    expect_refused("view down U1", no_sheet);
    fs::rename(path("link"), path("adder/sheet.tm"));
    fs::resize_file(path("adder/sheet.tm_1"), 1000);
    expect_refused("view down U1", invalid);
    EXPECT_EQ(tm_vext.num_file_open, 1);
    ASSERT_EQ(std::system(
                  (tst_program_dir() + "/example_sheets " + folder.string() + " > " + path("made")).c_str()),
              0);
    type("view down U1;view up");
    fs::resize_file(path("adder/sheet.tm_2"), 1000);
    expect_refused("view down U1", invalid);
    fs::remove(path("adder/sheet.tm"));
    expect_refused("view down U1",
                   {"# VIEw DOWn \"U1\"   ", "# !! Error : Sheet not found ? : ", "# !! \"adder\" "});
}

TEST_F(hierarchy, view_sheet_shows_the_top_sheet_or_one_beside_it) {
    const auto refusal = [](const std::string& what, const std::string& error, const std::string& directory) {
        return lines{"# VIEw SHEet " + what, error, "# !! : \"" + directory + "\" "};
    };
    fs::create_directories(folder / "empty");
    fs::create_directories(folder / "spoiled");
    file("spoiled/sheet.tm", "_1");
    file("spoiled/sheet.tm_1", "no sheet");
    type("view sheet;view down U1");
    for (const char* directory : {"empty", "nowhere"})
        expect_refused("view sheet " + std::string(directory),
                       refusal(directory + std::string(" "), "# !! Error : Sheet not found ? : ",
                               fs::exists(folder / directory) ? path(directory) : directory));
    expect_refused("view sheet spoiled",
                   refusal("spoiled ", "# !! Error : Sheet not found or Invalid ? : ", path("spoiled")));
    tm_vext.numpage = tm_page::results;
    tm_shell.show_other_page = [] { tm_vext.numpage = tm_page::context; };
    EXPECT_EQ(type("view sheet 'carry'"), lines{" VIEw SHEet 'carry' "});
    EXPECT_EQ(place(), "2 of 2 : 1 2 0 0 : 3 : /U1/");
    EXPECT_EQ(tm_vext.numpage, tm_page::context);
    EXPECT_TRUE(kol_ext.view_sheetaux_done && tm_vext.file_id_views == 3);
    type("view sheet adder");
    EXPECT_EQ(place(), "2 of 2 : 1 2 0 0 : 3 : /U1/");
    EXPECT_EQ(type("view sheet " + folder.string() + "/adder/.."),
              lines{" VIEw SHEet " + folder.string() + "/adder/.. "});
    EXPECT_EQ(place(), "1 of 1 : 1 2 0 0 : 1 : /");
}

TEST_F(hierarchy, a_sheet_may_have_pages) {
    fs::create_directories(folder / "page_2");
    for (const char* name : {"sheet.tm", "sheet.tm_1"}) fs::copy(folder / name, folder / "page_2" / name);
    type("view sheet");
    expect_each({{"view sheet page next", {" VIEw SHEet page next "}}});
    EXPECT_EQ(tm_view(tm_file_record(sheet()).dirname), path("page_2"));
    EXPECT_EQ(place(), "1 of 1 : 1 0 0 0 : 1 : /");
    expect_refused(
        "view sheet page n",
        {"# VIEw SHEet page n ", "# !! Error : Page not found ? : ", "# !! : \"" + path("page_3") + "\" "});
    type("view sheet page previous");
    rename("NET", "SUM", "");  // only the other page still shows it
    EXPECT_EQ(type("view net sum"), lines{" VIEw NET sum "});
    EXPECT_EQ(tm_view(tm_file_record(sheet()).dirname), path("page_2"));
    EXPECT_TRUE(tm_inq_object_selected(sheet(), net("SUM")));
    EXPECT_EQ(tm_vext.num_file_open, 1);
}

}  // namespace
