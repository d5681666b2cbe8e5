#include "commands/bindings.h"

#include <algorithm>

#include "command_session.h"

namespace {

using bindings = command_session;

const std::string count_error(nb_par_invalid);

lines every_key_name() {
    lines names = {"B1", "B1U", "B2", "B2U", "B3", "B3U"};
    for (int n = 1; n <= 12; ++n)
        for (const char* suffix : {"", "S", "C", "A", "U", "US", "UC", "UA"})
            names.push_back("F" + std::to_string(n) + suffix);
    for (const char* direction : {"AU", "AL", "AD", "AR"})
        for (const char* suffix : {"", "S", "C", "A"}) names.push_back(std::string(direction) + suffix);
    for (char c = 'N'; c <= 'Z'; ++c) names.push_back(std::string("CNTL_") + c);
    return names;
}

std::string lower(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(), ::tolower);
    return name;
}

bool set_key(const std::string& key, const std::string& text) {
    bool ok = false;
    tm_set_key_action(tm_string(key), tm_string(text), ok);
    return ok;
}

std::string bound(const std::string& key) {
    tm_string_record_t text;
    bool ok = false;
    tm_get_key_action(tm_string(key), text, ok);
    return ok ? std::string(tm_view(text)) : "unknown";
}

TEST_F(bindings, give_every_key_name_a_text_of_its_own) {
    for (const std::string& name : every_key_name()) EXPECT_TRUE(set_key(lower(name), "of " + name)) << name;
    for (const std::string& name : every_key_name()) EXPECT_EQ(bound(name), "of " + name);
    for (const char* name : {"", "B", "B0", "B4", "B1S", "B1UU", "F", "F0", "F01", "F13", "F111", "F1SU", "A",
                             "AX", "AUU", "CNTL_", "CNTL_M", "CNTL_NN", "G1"})
        EXPECT_TRUE(!set_key(name, "x") && bound(name) == "unknown") << name;
}

TEST_F(bindings, are_defined_and_shown_by_command) {
    expect_each({
        {"DEFINE KEY F12C \"RUN 100\"", {" DEFine KEY F12C \"RUN 100\" "}},
        {"STATUS KEY f12c", {"# KEY : f12c RUN 100 ", " STAtus KEY f12c "}},
        {"def key b2 'har 1;har 2';def key b2u ''", {" DEFine KEY b2 'har 1;har 2' ", " DEFine KEY b2u '' "}},
        {"DEFINE KEY F13 \"RUN\"", {"# DEFine KEY F13 \"RUN\" ", "# !! Error :  Invalid DEFine KEY "}},
        {"DEFINE KEY F1", {"# DEFine KEY F1 ", count_error}},
        {"STATUS KEY F13", {"# STAtus KEY F13 ", "# !! Error :  Invalid  KEY name "}},
    });
    EXPECT_EQ(bound("F12C"), "RUN 100 ");
    EXPECT_EQ(bound("B2U"), " ");
    EXPECT_EQ(type(bound("b2")), (lines{" HARdcopy 1 ", " HARdcopy 2 "}));
}

TEST_F(bindings, start_with_the_defaults_and_the_installation_key_file) {
    const std::string path = file("kolv/init_key", "DEFINE KEY F9 'RUN $VAR1$ARG1'\n");
    kol_ext.top_var[0] = tm_string("mine");
    tm_vext.bitmap_size.ymax = 440;
    kol_init_menu_action();
    EXPECT_EQ(seen.shown.front(), "# DO " + path + " ");
    lines texts;
    for (const char* key :
         {"F9", "F9S", "F1UA", "F2U", "F11UC", "ADS", "ARC", "AUA", "B1U", "CNTL_O", "CNTL_Y"})
        texts.push_back(bound(key));
    EXPECT_EQ(texts, (lines{"RUN  ", "UPDATE List ", "SELECT AREA FRAME  ", "", "MOVe SIGnal List ",
                            "$VPTD5 ", "$CR4 ", "$VPTU20 ", "VIEW AREA ", "", "BYE "}));
    EXPECT_TRUE(tm_vext.base_point.x == 512 && tm_vext.obj_pos.y == 290 && tm_vext.display_on);
    EXPECT_EQ(kol_ext.list_sig1n_y0, 200);
}

TEST_F(bindings, are_listed_by_group) {
    kol_init_menu_action();
    const lines shown = type("STATUS KEY");
    ASSERT_EQ(shown.size(), 9U + 1 + 12 * 9 + 1 + 13 + 1);
    const auto at = [&shown](std::size_t first, std::size_t count) {
        return lines(shown.begin() + static_cast<int>(first),
                     shown.begin() + static_cast<int>(first + count));
    };
    EXPECT_EQ(at(0, 3), (lines{"# button 1 : ", "#   \"b1\"  (down) : 'MARK RECTANGLE ' ",
                               "#   \"b1u\" (up)   : 'VIEW AREA ' "}));
    EXPECT_EQ(at(9, 6),
              (lines{"# ", "# key f1 : ", "#  \"f1\"  : 'MARK RECT ' ", "#  \"f1u\"  : 'SELECT AREA ALL  ' ",
                     "#  \"f1s\" : 'MARK RECT ' ", "#  \"f1su\" : 'SELECT AREA INST ' "}));
    EXPECT_EQ(at(117, 3), (lines{"#  \"f12au\" : '' ", "# ", "# \"cntl_N : 'QUIT ' "}));
}

}  // namespace
