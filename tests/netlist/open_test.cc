// Opening design files: names, missing files, the debug file; and what the writer refuses.
#include <sys/stat.h>

#include "sample_design.h"

namespace {

namespace fs = std::filesystem;

struct open_row {
    std::string directory, file;
    int exit_status;
    const char* said;
};

TEST(open, names_too_long_and_missing_files_end_the_program) {
    const tst_directory directory;
    const std::string d150(150, 'd'), f201(201, 'f');
    const open_row rows[] = {
        {d150, std::string(49, 'f'), 69,
         "!!! error invalid designfile dirname\n dirname  : \"d{150}\"\n filetype : \"f{49}\"\n \\?\\? error "
         "in TM_PACKAGE  code : 69\n \\?\\? error  :                 invalid_string\n"},
        {"d", f201, 69, "filetype : \"f{201}\"\n \\?\\? error in TM_PACKAGE  code : 69\n"},
        {d150, std::string(48, 'f'), 19,
         " \\?\\? error in TM_PACKAGE  code : 19\n \\?\\? error  :              file_data_invalid\n"},
        {".", "missing", 19, "file_data_invalid\n"},
    };
    for (const open_row& row : rows) {
        std::string dir = row.directory, file = row.file;
        const auto open = [&] {
            dup2(2, 1);
            STATUS_T status;
            yxi_init_dfi({static_cast<std::int32_t>(dir.size()), dir.data()},
                         {static_cast<std::int32_t>(file.size()), file.data()}, status);
        };
        EXPECT_EXIT(open(), testing::ExitedWithCode(row.exit_status), row.said);
    }
}

TEST(open, a_debug_file_that_cannot_be_made_ends_the_program) {
    const tst_directory directory;
    fs::create_directory("debug_yxdfi");
    EXPECT_EXIT(tst_load_file(".", "x"), testing::ExitedWithCode(1), "^$");
}

TEST(open, empty_names_and_directories_give_the_failure_status) {
    const tst_directory directory;
    EXPECT_NE(tst_load_file("", "x"), 0);
    EXPECT_NE(tst_load_file("x", ""), 0);
    fs::create_directory("sub");
    EXPECT_NE(tst_load_file(".", "sub"), 0);
    EXPECT_FALSE(yx_sext.open_file_ok);
}

TEST(writer, equal_texts_share_a_string_inside_one_block) {
    const tst_directory directory;
    yx_design_image_t design;
    EXPECT_EQ(yxw_string(design, ""), 0);
    for (int k = 1; k <= 30; ++k)
        EXPECT_EQ(yxw_string(design, std::string(127, 'a').replace(0, 2, std::to_string(10 + k))), k);
    EXPECT_EQ(yxw_string(design, "x"), 31);
    EXPECT_EQ(yxw_string(design, "X"), 32);
    EXPECT_EQ(yxw_string(design, "x"), 31);
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
    const struct {
        void (*spoil)(yx_design_image_t&);
        const char* path;
        std::string why;
    } rows[] = {
        {[](yx_design_image_t& d) { yxw_string(d, std::string(128, 'n')); }, "new",
         "a text of 128 characters, at most 127: \"" + std::string(128, 'n') + "\""},
        {[](yx_design_image_t& d) { yxw_string(d, "a\tb"); }, "new", "a character of code 9 in a text"},
        {[](yx_design_image_t& d) { d.chars.resize(500001, ' '); }, "new",
         "characters of names: 500001, at most 500000"},
        {[](yx_design_image_t& d) { d.props.resize(500001); }, "new",
         "property values: 500001, at most 500000"},
        {[](yx_design_image_t& d) { d.prop_pin.resize(17); }, "new", "pin property names: 17, at most 16"},
        {[](yx_design_image_t&) {}, "no/new", "cannot write \"no/new\": No such file or directory"},
        {[](yx_design_image_t&) {}, "taken", "cannot write \"taken\": Is a directory"},
    };
    fs::create_directory("taken");
    for (const auto& row : rows) {
        yx_design_image_t design = tst_sample_design();
        row.spoil(design);
        std::string why;
        EXPECT_FALSE(yxw_write(design, row.path, why));
        EXPECT_EQ(why, row.why);
    }
    EXPECT_EQ(std::distance(fs::directory_iterator("."), fs::directory_iterator()), 1);
}

TEST(writer, an_older_file_is_replaced_and_readable_as_the_mask_says) {
    const tst_directory directory;
    tst_write("design", "old");
    const mode_t before = umask(027);
    std::string why;
    EXPECT_TRUE(yxw_write(tst_sample_design(), "design", why)) << why;
    umask(before);
    EXPECT_EQ(fs::status("design").permissions(), fs::perms{0640});
    EXPECT_EQ(tst_load_file(".", "design"), 0);
    EXPECT_EQ(std::distance(fs::directory_iterator("."), fs::directory_iterator()), 2);
}

}  // namespace
