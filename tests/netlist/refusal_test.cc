// Design files that are cut or spoiled are refused, with a line that names the place.
#include <algorithm>

#include "sample_design.h"

namespace {

std::string refusal(std::string_view section, std::int32_t record, const std::string& what) {
    return " !!! invalid design file \"./design_yx\" : section " + std::string(section) + " : record " +
           std::to_string(record) + " : " + what + "\n";
}

TEST(refusal, every_bounded_field_is_held_to_its_bounds) {
    const tst_directory directory;
    const yx_design_image_t design = tst_sample_design();
    const std::string bytes = tst_file_of(design);
    std::string said;
    ASSERT_EQ(tst_load(bytes, said), 0) << said;
    const std::vector<tst_field> fields = tst_fields(design, bytes);
    int refused = 0;
    for (const tst_field& field : fields) {
        if (field.range.bound == yxl_bound::none) continue;
        ASSERT_EQ(tst_load(bytes, said), 0);  // the bounds of a counter are those of the sound design
        const bool own_place = field.range.bound == yxl_bound::place;
        const std::int64_t lowest = own_place ? field.record : field.range.lowest;
        const std::int64_t highest = own_place                                 ? field.record
                                     : field.range.bound == yxl_bound::counter ? yx_sext.*field.range.counter
                                                                               : field.range.highest;
        const std::int64_t largest = (std::int64_t{1} << (8 * field.width - 1)) - 1;
        for (const std::int64_t value : {lowest - 1, highest + 1, largest, -largest - 1}) {
            if (value > largest || (value >= lowest && value <= highest)) continue;
            std::string spoiled = bytes;
            tst_set(spoiled, field, value);
            EXPECT_NE(tst_load(spoiled, said), 0);
            EXPECT_EQ(said, refusal(field.section, field.record,
                                    std::string(field.name) + " " + std::to_string(value) + " outside " +
                                        std::to_string(lowest) + ".." + std::to_string(highest)));
            ++refused;
        }
    }
    EXPECT_GT(refused, 500);
    EXPECT_FALSE(yx_sext.open_file_ok);
}

struct edit {
    std::string_view section;
    std::int32_t record;
    std::string_view field;
    std::int64_t value;
};

std::string edited(const std::string& bytes, const std::vector<tst_field>& fields,
                   const std::vector<edit>& edits) {
    std::string spoiled = bytes;
    for (const edit& e : edits) {
        const auto at = std::find_if(fields.begin(), fields.end(), [&](const tst_field& f) {
            return f.section == e.section && f.record == e.record && f.name == e.field;
        });
        EXPECT_NE(at, fields.end()) << e.section << " " << e.field;
        if (at != fields.end()) tst_set(spoiled, *at, e.value);
    }
    return spoiled;
}

struct refusal_row {
    std::vector<edit> edits;
    std::string_view section;
    std::int32_t record;
    std::string what;
};

TEST(refusal, references_that_lead_astray_are_named) {
    const tst_directory directory;
    const yx_design_image_t design = tst_sample_design();
    const std::string bytes = tst_file_of(design);
    const std::vector<tst_field> fields = tst_fields(design, bytes);
    constexpr std::string_view header = "header", names = "pin property names", strings = "strings";
    constexpr std::string_view insts = "instances", pins = "pins", nets = "nets", children = "net children";
    constexpr std::string_view macros = "macros", pinms = "macro pins";
    const char* const other_net = "the chain from first_pin_in_ind holds a pin of another net";
    const char* const no_root = " does not lead to a standard net that holds it";
    // clang-format off
    const refusal_row rows[] = {
        {{{header, 1, "time_step", 0x7FC00000}}, header, 1, "time_step is no number"},
        {{{names, 2, "name text", 7}}, names, 2, "character 1 has code 7"},
        {{{strings, 1, "len", 127}, {strings, 1, "index", 5}}, strings, 1, "characters 5..131 outside 1..99"},
        {{{strings, 2, "index", 0}}, strings, 2, "characters 0..1 outside 1..99"},
        {{{insts, 1, "first_prop", 12}}, insts, 1, "first_prop 12 with nb_of_property 2 outside 1..12"},
        {{{insts, 1, "first_prop", 0}}, insts, 1, "first_prop 0 with nb_of_property 2 outside 1..12"},
        {{{insts, 2, "nb_of_pin", 4}}, insts, 2, "first_pin_ind 5 with nb_of_pin 4 outside 1..7"},
        {{{insts, 2, "first_pin_ind", 4}}, insts, 2, "pin 4 names instance 1"},
        {{{insts, 2, "nb_of_pin", 2}}, pins, 7, "instance_ind 2 whose pins do not include it"},
        {{{pins, 3, "first_prop", 10}}, pins, 3, "first_prop 10 with nb_of_property 4 outside 1..12"},
        {{{pins, 1, "pin_end", 1}}, pins, 1, "pin_end 1 on a net that is no bus"},
        {{{pins, 5, "pin_end", 2}}, pins, 5, "bits 0..2 outside 0..1 of bus 6"},
        {{{pins, 5, "pin_start", 2}}, pins, 5, "bits 2..1 outside 0..1 of bus 6"},
        {{{pins, 5, "pin_net_start", -1}}, pins, 5, "bits -1..0 outside 0..1 of bus 6"},
        {{{pins, 1, "next_pin_in_ind", 1}}, pins, 1, "next_pin_in_ind leads in a circle"},
        {{{pins, 5, "next_pin_in_ind", 6}}, pins, 5, "next_pin_in_ind leads in a circle"},
        {{{pins, 4, "next_pin_out_ind", 4}}, pins, 4, "next_pin_out_ind leads in a circle"},
        {{{nets, 4, "nb_pin_in", 1}}, nets, 4, "nb_pin_in 1 but the chain from first_pin_in_ind has 2"},
        {{{nets, 8, "nb_pin_out", 2}}, nets, 8, "nb_pin_out 2 but the chain from first_pin_out_ind has 1"},
        {{{nets, 1, "first_pin_in_ind", 2}}, nets, 1, other_net},
        {{{nets, 7, "first_pin_in_ind", 5}}, nets, 7, other_net},
        {{{nets, 6, "first_pin_in_ind", 6}}, nets, 6, other_net},
        {{{pins, 1, "next_pin_in_ind", 2}}, nets, 1, other_net},
        {{{children, 2, "next_child", 1}}, children, 1, "next_child leads in a circle"},
        {{{nets, 1, "nb_of_child", 1}}, nets, 1, "nb_of_child 1 but the chain from first_child has 2"},
        {{{nets, 8, "first_child", 2}, {nets, 8, "nb_of_child", 1}}, nets, 8, "first_child belongs to another net"},
        {{{nets, 3, "first_prop", 0}}, nets, 3, "first_prop 0 with nb_of_property 2 outside 1..12"},
        {{{nets, 1, "father_net", 2}}, nets, 1, "father_net 2 of a standard net"},
        {{{nets, 1, "next_sub_net", 2}}, nets, 1, "next_sub_net 2 of a standard net"},
        {{{nets, 3, "father_net", 2}}, nets, 2, "next_sub_net 3 is no sub-net of net 1"},
        {{{nets, 3, "next_sub_net", 2}}, nets, 3, "next_sub_net 2 is no sub-net of net 1"},
        {{{nets, 1, "first_sub_net", 7}}, nets, 1, "first_sub_net 7 is no sub-net of net 1"},
        {{{nets, 2, "next_sub_net", 0}}, nets, 3, "father_net 1" + std::string(no_root)},
        {{{nets, 1, "first_sub_net", 0}, {nets, 2, "father_net", 3}, {nets, 2, "first_sub_net", 3},
          {nets, 2, "next_sub_net", 0}, {nets, 3, "father_net", 2}, {nets, 3, "first_sub_net", 2}},
         nets, 2, "father_net 3" + std::string(no_root)},
        {{{nets, 4, "bus", 0}, {nets, 5, "bus", 0}, {nets, 6, "net_bus_end", -1}},
         nets, 6, "netind_start 4 with net_bus_start 0 and net_bus_end -1 outside 1..8"},
        {{{nets, 6, "net_bus_end", 5}},
         nets, 6, "netind_start 4 with net_bus_start 0 and net_bus_end 5 outside 1..8"},
        {{{nets, 6, "net_bus_end", 2}}, nets, 6, "member net 6 is not net 3 of this bus"},
        {{{nets, 4, "posinbus", 2}}, nets, 6, "member net 4 is not net 1 of this bus"},
        {{{nets, 6, "netind_start", 5}}, nets, 4, "bus 6 of which it is no member"},
        {{{nets, 8, "bus", 1}}, nets, 8, "bus 1 of which it is no member"},
        {{{macros, 1, "nb_of_pin", 3}}, macros, 1, "first_pin_ind 1 with nb_of_pin 3 outside 1..2"},
        {{{pinms, 2, "first_prop", 0}}, pinms, 2, "first_prop 0 with nb_of_property 1 outside 1..12"},
    };
    // clang-format on
    for (const refusal_row& row : rows) {
        std::string said;
        EXPECT_NE(tst_load(edited(bytes, fields, row.edits), said), 0);
        EXPECT_EQ(said, refusal(row.section, row.record, row.what));
    }
}

TEST(refusal, what_the_simulator_does_not_use_is_kept_as_read) {
    const tst_directory directory;
    const yx_design_image_t design = tst_sample_design();
    const std::string bytes = tst_file_of(design);
    const std::vector<edit> edits = {{"pins", 1, "io_type", 77},
                                     {"pins", 2, "status", -5},
                                     {"nets", 1, "net_kind", 99},
                                     {"nets", 1, "status", 9},
                                     {"nets", 1, "name", 0},
                                     {"instances", 1, "file_path", 0},
                                     {"instances", 1, "object_id", -1},
                                     {"header", 1, "time_step", 0},
                                     {"instances", 1, "timing_index", 120},
                                     {"macros", 1, "timing_index", 120}};
    std::string said;
    EXPECT_EQ(tst_load(edited(bytes, tst_fields(design, bytes), edits), said), 0) << said;
    EXPECT_EQ(yx_ptrto_pin_rec(1)->io_type, 77);
    EXPECT_EQ(yx_ptrto_net_rec(1)->net_kind, 99);
    EXPECT_EQ(yx_ptrto_inst_rec(1)->timing_index, 120);
}

TEST(refusal, a_file_cut_anywhere_is_refused_where_it_ends) {
    const tst_directory directory;
    const yx_design_image_t design = tst_sample_design();
    const std::string bytes = tst_file_of(design);
    std::string said;
    tst_each_section(design, [&](const auto& layout, std::size_t at, std::size_t count, auto) {
        for (std::size_t cut = at; cut < at + layout.bytes * count; cut += 7) {
            EXPECT_NE(tst_load(bytes.substr(0, cut), said), 0);
            const auto record = static_cast<std::int32_t>((cut - at) / layout.bytes + 1);
            ASSERT_EQ(said, refusal(layout.section, record, "the file ends here"));
        }
    });
    EXPECT_NE(tst_load(bytes.substr(0, 68 + 8 * 416 + 10), said), 0);
    EXPECT_EQ(said, refusal("characters", 11, "the file ends here"));
}

TEST(refusal, strings_stay_inside_one_block_and_are_printable) {
    const tst_directory directory;
    const struct {
        std::int32_t index;
        std::int8_t len;
        const char* what;  // null: a sound string
    } rows[] = {{998, 3, nullptr},
                {999, 3, "characters 999..1001 cross a border between blocks of 1000"},
                {1001, 100, nullptr},
                {1001, 101, "characters 1001..1101 outside 1..1100"},
                {0, 0, nullptr},
                {500, 0, nullptr},
                {4, 3, "character 2 has code 200"}};
    for (const auto& row : rows) {
        yx_design_image_t design;
        design.chars = std::string(1100, 'c');
        design.strings.push_back({row.index, nullptr, row.len});
        std::string bytes = tst_file_of(design), said;
        bytes[yxl_header_bytes + 4] = static_cast<char>(200);
        EXPECT_EQ(tst_load(bytes, said) == 0, row.what == nullptr) << row.index << said;
        EXPECT_EQ(said, row.what == nullptr ? "" : refusal("strings", 1, row.what));
    }
}

TEST(refusal, a_pin_spans_bits_of_narrow_buses_only) {
    const tst_directory directory;
    for (const std::int16_t width : {std::int16_t{128}, std::int16_t{129}}) {
        yx_design_image_t design;
        tst_add_inst(design, "/g", 1);
        tst_add_pin(design, "/g/a", 1).pin_end = 1;
        yx_net_record_t& bus = tst_add_net(design, YX_TSTD_BUS, "/a");
        bus.UU.U2.net_bus_start = 1, bus.UU.U2.net_bus_end = width, bus.UU.U2.netind_start = 2;
        for (std::int16_t k = 1; k <= width; ++k) {
            yx_net_record_t& member = tst_add_net(design, YX_TSTANDARD, "/a");
            member.UU.U1.bus = 1, member.UU.U1.posinbus = k;
        }
        std::string said;
        EXPECT_EQ(tst_load(tst_file_of(design), said) == 0, width == 128);
        EXPECT_EQ(said,
                  width == 128 ? "" : refusal("pins", 1, "spans bits of a bus of 129 bits, at most 128"));
    }
}

}  // namespace
