// Opening design files: names, missing files, the debug file; and what the writer refuses.
#include <sys/stat.h>

#include "sample_design.h"

namespace {

namespace fs = std::filesystem;

TEST(open, names_too_long_and_missing_files_end_the_program) {
    const tst_directory directory;
    const std::string d150(150, 'd'), f48(48, 'f'), code = " \\?\\? error in TM_PACKAGE  code : ";
    const std::tuple<std::string, std::string, int, std::string> rows[] = {
        {d150, f48 + "f", 69,
         "!!! error invalid designfile dirname\n dirname  : \"d{150}\"\n filetype : \"f{49}\"\n" + code +
             "69\n \\?\\? error  :                 invalid_string\n"},
        {"d", std::string(201, 'f'), 69, "filetype : \"f{201}\"\n" + code + "69\n"},
        {d150, f48, 19, code + "19\n \\?\\? error  :              file_data_invalid\n"},
    };
    for (const auto& [where, name, exit_status, said] : rows)
        EXPECT_EXIT((dup2(2, 1), tst_load_file(where, name)), testing::ExitedWithCode(exit_status), said);
    for (const auto& [where, name] : {std::pair("", "x"), std::pair("x", ""), std::pair(".", "..")})
        EXPECT_NE(tst_load_file(where, name), 0);
    EXPECT_FALSE(yx_sext.open_file_ok);
    fs::remove("debug_yxdfi");
    fs::create_directory("debug_yxdfi");
    EXPECT_EXIT(tst_load_file(".", "x"), testing::ExitedWithCode(1), "^$");
}

TEST(writer, equal_texts_share_a_string_inside_one_block) {
    const tst_directory directory;
    yx_design_image_t design;
    EXPECT_EQ(yxw_string(design, ""), 0);
    for (int k = 1; k <= 30; ++k)
        EXPECT_EQ(yxw_string(design, std::to_string(10 + k) + std::string(125, 'a')), k);
    for (const auto& [text, index] : {std::pair("x", 31), std::pair("X", 32), std::pair("x", 31)})
        EXPECT_EQ(yxw_string(design, text), index);
    std::string said;
    ASSERT_EQ(tst_load(tst_file_of(design), said), 0) << said;
    for (const auto& [text, index] : design.string_index) {
        tm_string_record_t copy;
        yxi_copy_string_yx_tm(index, copy);
        EXPECT_EQ(tm_view(copy), text);
    }
}

TEST(writer, what_cannot_be_written_is_named_and_leaves_nothing) {
    const tst_directory directory;
    using image = yx_design_image_t;
    const std::string n128(128, 'n');
    const std::tuple<std::function<void(image&)>, const char*, std::string> rows[] = {
        {[&](image& d) { yxw_string(d, n128); }, "new",
         "a text of 128 characters, at most 127: \"" + n128 + "\""},
        {[](image& d) { yxw_string(d, "a\tb"); }, "new", "a character of code 9 in a text"},
        {[](image& d) { d.chars.resize(500001, ' '); }, "new", "characters of names: 500001, at most 500000"},
        {[](image& d) { d.props.resize(500001); }, "new", "property values: 500001, at most 500000"},
        {[](image& d) { d.prop_pin.resize(17); }, "new", "pin property names: 17, at most 16"},
        {[](image&) {}, "no/new", "cannot write \"no/new\": No such file or directory"},
        {[](image&) {}, "taken", "cannot write \"taken\": Is a directory"},
    };
    fs::create_directory("taken");
    for (const auto& [spoil, path, expected] : rows) {
        image design = tst_sample_design();
        spoil(design);
        std::string why;
        EXPECT_FALSE(yxw_write(design, path, why));
        EXPECT_EQ(why, expected);
    }
    EXPECT_EQ(std::distance(fs::directory_iterator("."), {}), 1);
}

TEST(writer, files_of_a_large_revision_hold_more_than_others) {
    const tst_directory directory;
    yx_design_image_t design;
    design.props.resize(500001);
    std::string said;
    for (const auto& [revision, is_large] : {std::pair(2.99F, false), std::pair(3.0F, true)}) {
        design.info.software_revision = 3.0F;
        std::string bytes = tst_file_of(design);
        std::memcpy(&bytes[8], &revision, sizeof revision);
        EXPECT_EQ(tst_load(bytes, said) == 0, is_large) << said;
        EXPECT_EQ(said.find("record 1 : nbof_prop 500001 outside 0..500000") != said.npos, !is_large) << said;
        EXPECT_EQ(yx_sext.max_prop_cur, is_large ? 500001 : 0);
        design.info.software_revision = revision;
        EXPECT_EQ(yxw_write(design, "new", said), is_large);
    }
}

TEST(writer, a_new_file_is_readable_as_the_mask_says_and_an_older_one_as_before) {
    const tst_directory directory;
    const mode_t before = umask(027);
    for (const fs::perms mode : {fs::perms{0640}, fs::perms{0604}}) {
        std::string why;
        EXPECT_TRUE(yxw_write(tst_sample_design(), "design", why)) << why;
        EXPECT_EQ(fs::status("design").permissions(), mode);
        EXPECT_EQ(tst_load_file(".", "design"), 0);
        fs::permissions("design", fs::perms{0604});
    }
    umask(before);
    EXPECT_EQ(std::distance(fs::directory_iterator("."), {}), 2);
}

}  // namespace
