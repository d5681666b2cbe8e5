// The layout of the design file: where each field lies, and that what is written is what is read.
#include <random>

#include "sample_design.h"

namespace {

// Every field of a kind: name, offset and width; reference slots left out.
// clang-format off
constexpr std::pair<const char*, const char*> documented[] = {
    {"header", "day 0 2 month 2 2 year 4 2 software_revision 8 4 nbof_prop_instance 12 4 nbof_prop_pin 16 4 "
               "nbof_prop_net 20 4 nbof_char 24 4 nbof_string 28 4 nbof_prop 32 4 nbof_instance 36 4 "
               "nbof_pin 40 4 nbof_net 44 4 nbof_net_child 48 4 nbof_pinm 52 4 nbof_macro 56 4 time_step 60 4 "
               "num_errors 64 2 num_warnings 66 2"},
    {"strings", "index 0 4 len 8 1"},
    {"property values", "prop_type 0 2 valuec 4 4"},
    {"instances", "self 0 4 object_id 4 2 status 6 2 timing_index 8 1 sim_path 16 4 file_path 20 4 "
                  "nb_of_pin 24 2 first_pin_ind 28 4 nb_of_property 36 1 first_prop 40 4"},
    {"pins", "self 0 4 object_id 4 2 status 6 2 io_type 8 2 pin_hdl_priority 16 2 rise 36 4 fall 48 4 "
             "drive_array 60 2 sim_path 68 4 instance_ind 72 4 net_ind 84 4 next_pin_in_ind 92 4 "
             "next_pin_out_ind 100 4 pin_start 108 2 pin_end 110 2 pin_net_start 112 2 nb_of_property 114 1 "
             "first_prop 116 4 pin_state.state 20 1 pin_state.time 24 4 pin_state.fixed 28 1"},
    {"nets", "self 0 4 object_id 4 2 net_type 6 2 status 8 2 net_kind 10 2 name 12 4 sim_path 16 4 "
             "nb_of_child 20 4 first_child 24 4 nb_of_property 32 1 first_prop 36 4 nb_pin_in 40 2 "
             "first_pin_in_ind 44 4 nb_pin_out 52 2 first_pin_out_ind 56 4 state_init 64 1 "
             "cur_state.state 68 1 cur_state.time 72 4 cur_state.fixed 76 1 old_state.state 80 1 "
             "old_state.time 84 4 old_state.fixed 88 1 rise 92 4 fall 104 4 bus 124 4 posinbus 132 2 "
             "first_sub_net 136 4 father_net 144 4 next_sub_net 152 4"},
    {"net children", "self 0 4 sim_path 4 4 object_id 8 2 name 12 4 net_kind 16 2 next_child 20 4"},
    {"macros", "self 0 4 object_id 4 2 status 6 2 timing_index 8 1 sim_path 12 4 file_path 16 4 "
               "nb_of_pin 20 2 first_pin_ind 24 4 nb_of_property 32 1 first_prop 36 4"},
    {"macro pins", "self 0 4 object_id 4 2 status 6 2 sim_path 8 4 macro_ind 12 4 net_ind 20 4 pin_start 28 2 "
                   "pin_end 30 2 pin_net_start 32 2 nb_of_property 34 1 first_prop 36 4"},
};
// clang-format on

TEST(layout, fields_lie_where_the_file_format_has_them) {
    const tst_directory directory;
    const yx_design_image_t design = tst_sample_design();
    const std::vector<tst_field> fields = tst_fields(design, tst_file_of(design));
    for (const auto& [section, expected] : documented) {
        std::string found;
        std::size_t begin = 0;
        for (const tst_field& field : fields) {
            if (field.section != section || field.record != 1) continue;
            if (found.empty()) begin = field.offset;
            found += (found.empty() ? "" : " ") + std::string(field.name) + " " +
                     std::to_string(field.offset - begin) + " " + std::to_string(field.width);
        }
        EXPECT_EQ(found, expected) << section;
    }
}

// The records of the loaded store, encoded again, are the file.
void expect_store_is(const yx_design_image_t& design, const std::string& bytes) {
    tst_each_section(design, [&](const auto& layout, std::size_t at, std::size_t count, auto record_of) {
        for (std::size_t k = 1; k <= count; ++k, at += layout.bytes) {
            std::string image;
            lay_put(layout, *record_of(k), image);
            ASSERT_EQ(image, bytes.substr(at, layout.bytes)) << layout.section << " record " << k;
        }
    });
}

TEST(layout, a_written_design_is_loaded_field_by_field) {
    const tst_directory directory;
    const yx_design_image_t design = tst_sample_design();
    const std::string bytes = tst_file_of(design);
    std::string said;
    ASSERT_EQ(tst_load(bytes, said), 0) << said;
    EXPECT_TRUE(yx_sext.open_file_ok);
    EXPECT_FALSE(yx_sext.tm_graphics_used);
    expect_store_is(design, bytes);
    std::int32_t errors = -1, warnings = -1;
    yxi_close_dfi(errors, warnings);
    EXPECT_EQ(std::pair(errors, warnings), std::pair(0, 2));
}

TEST(layout, any_image_keeps_its_fields_and_loses_its_reference_slots) {
    std::mt19937 random(1);
    const auto survive = [&]<typename T>(const lay_layout<T>& layout) {
        std::string image(layout.bytes, '\0'), again, kept(layout.bytes, '\0');
        for (char& byte : image) byte = static_cast<char>(random());
        T record;
        std::size_t at = 0;
        EXPECT_TRUE(lay_get(layout, image, at, record));
        lay_put(layout, record, again);
        lay_each_row(layout, record, [&](const lay_row<T>& row) {
            for (auto i = row.offset; row.value != nullptr && i < row.end(); ++i)
                kept[i] = row.name.ends_with("fixed") ? image[i] != 0 : image[i];
            return true;
        });
        EXPECT_EQ(again, kept) << layout.section;
    };
    for (int round = 0; round < 200; ++round)
        survive(yxl_header), survive(yxl_strings), survive(yxl_insts), survive(yxl_pins), survive(yxl_nets),
            survive(yxl_net_children), survive(yxl_macros), survive(yxl_pinms);
}

TEST(layout, blocks_are_filled_to_their_border_and_no_further) {
    const tst_directory directory;
    for (const std::int32_t count : {0, 1, 999, 1000, 1001, 2000}) {
        yx_design_image_t design;
        for (std::int32_t k = 1; k <= count; ++k)
            tst_add(design, design.nets, "/n" + std::to_string(k)).net_type = YX_TSTANDARD;
        const std::string bytes = tst_file_of(design);
        std::string said;
        ASSERT_EQ(tst_load(bytes, said), 0) << said;
        expect_store_is(design, bytes);
        const auto blocks = static_cast<std::size_t>((count + 999) / 1000);
        EXPECT_TRUE(blocks == 0 || yx_sext.arrayof_bnetptr[blocks - 1] != nullptr) << count;
        EXPECT_EQ(yx_sext.arrayof_bnetptr.size(), blocks) << count;
    }
}

}  // namespace
