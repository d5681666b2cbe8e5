#include "commands/language/bindings.h"

#include <algorithm>

#include "command_session.h"

namespace {

using bindings = command_session;

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

bool set_key(std::string key, const std::string& text) {
    std::transform(key.begin(), key.end(), key.begin(), ::tolower);
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
    for (const std::string& name : every_key_name()) EXPECT_TRUE(set_key(name, "of " + name)) << name;
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
    });
    EXPECT_EQ(bound("F12C") + "," + bound("B2U"), "RUN 100 , ");
    EXPECT_EQ(type(bound("b2")), (lines{" HARdcopy 1 ", " HARdcopy 2 "}));
}

TEST_F(bindings, start_with_the_installation_key_file_and_no_variables_of_the_session) {
    const std::string path = file("kolv/init_key", "DEFINE KEY F9 'RUN $VAR1$ARG1'\n");
    kol_ext.top_var[0] = tm_string("mine");
    kol_init_menu_action();
    EXPECT_EQ(seen.shown.front(), "# DO " + path + " ");
    EXPECT_EQ(bound("F9") + bound("ADS") + bound("ARC") + bound("AUA"), "RUN  $VPTD5 $CR4 $VPTU20 ");
    EXPECT_EQ((numbers{tm_vext.base_point.x, tm_vext.obj_pos.y, tm_vext.display_on}), (numbers{512, 290, 1}));
}

}  // namespace
