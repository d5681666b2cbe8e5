// Design files that are cut or spoiled are refused, with a line that names the place.
#include "sample_design.h"

namespace {

using edits_t = std::vector<std::tuple<std::string_view, std::int32_t, std::string_view, std::int64_t>>;

class refusal : public testing::Test {
protected:
    tst_directory directory;
    const yx_design_image_t design = tst_sample_design();
    const std::string bytes = tst_file_of(design);
    const std::vector<tst_field> fields = tst_fields(design, bytes);
    std::string said;

    // An empty text is no refusal.
    void expect(std::string_view section, std::int32_t record, const std::string& what,
                const std::string& file) {
        EXPECT_EQ(tst_load(file, said) == 0, what.empty()) << record << what;
        EXPECT_EQ(yx_sext.open_file_ok, what.empty());
        EXPECT_EQ(said, what.empty()
                            ? ""
                            : " !!! invalid design file \"./design_yx\" : section " + std::string(section) +
                                  " : record " + std::to_string(record) + " : " + what + "\n");
    }
    std::string edited(const edits_t& edits) {
        std::string spoiled = bytes;
        for (const auto& [section, record, name, value] : edits)
            for (const tst_field& f : fields)
                if (f.section == section && f.record == record && f.name == name) tst_set(spoiled, f, value);
        EXPECT_NE(spoiled, bytes);
        return spoiled;
    }
};

TEST_F(refusal, holds_every_bounded_field_to_its_bounds) {
    int refused = 0;
    for (const tst_field& f : fields) {
        if (f.range.bound == lay_bound::none) continue;
        ASSERT_EQ(tst_load(bytes, said), 0);  // the bounds of a counter are those of the sound design
        std::int64_t lowest = f.range.lowest, highest = f.range.highest;
        if (f.range.bound == lay_bound::place) lowest = highest = f.record;
        if (f.range.bound == lay_bound::counter) highest = *f.range.counter;
        const std::int64_t largest = (std::int64_t{1} << (8 * f.width - 1)) - 1;
        for (const std::int64_t value : {lowest - 1, highest + 1, largest, -largest - 1}) {
            if (value > largest || (value >= lowest && value <= highest)) continue;
            std::string spoiled = bytes;
            tst_set(spoiled, f, value);
            expect(f.section, f.record,
                   std::string(f.name) + " " + std::to_string(value) + " outside " + std::to_string(lowest) +
                       ".." + std::to_string(highest),
                   spoiled);
            ++refused;
        }
    }
    EXPECT_GT(refused, 500);
}

TEST_F(refusal, names_references_that_lead_astray) {
    constexpr std::string_view header = "header", names = "pin property names", strings = "strings";
    constexpr std::string_view insts = "instances", pins = "pins", nets = "nets", children = "net children";
    constexpr std::string_view macros = "macros", pinms = "macro pins";
    const char* const other_net = "the chain from first_pin_in_ind holds a pin of another net";
    const std::string no_root = " does not lead to a standard net that holds it";
    // clang-format off
    const std::tuple<edits_t, std::string_view, std::int32_t, std::string> rows[] = {
        {{{header, 1, "time_step", 0x7FC00000}}, header, 1, "time_step is no number"},
        {{{names, 2, "name text", 7}}, names, 2, "character 1 has code 7"},
        {{{strings, 1, "len", 127}, {strings, 1, "index", 5}}, strings, 1, "characters 5..131 outside 1..99"},
        {{{strings, 2, "index", 0}}, strings, 2, "characters 0..1 outside 1..99"},
        {{{insts, 1, "first_prop", 12}}, insts, 1, "first_prop 12 with nb_of_property 2 outside 1..12"},
        {{{insts, 2, "nb_of_pin", 4}}, insts, 2, "first_pin_ind 5 with nb_of_pin 4 outside 1..7"},
        {{{insts, 2, "first_pin_ind", 4}}, insts, 2, "pin 4 names instance 1"},
        {{{insts, 2, "nb_of_pin", 2}}, pins, 7, "instance_ind 2 whose pins do not include it"},
        {{{pins, 3, "first_prop", 10}}, pins, 3, "first_prop 10 with nb_of_property 4 outside 1..12"},
        {{{pins, 1, "pin_end", 1}}, pins, 1, "pin_end 1 on a net that is no bus"},
        {{{pins, 5, "pin_end", 2}}, pins, 5, "bits 0..2 outside 0..1 of bus 6"},
        {{{pins, 5, "pin_start", 2}}, pins, 5, "bits 2..1 outside 0..1 of bus 6"},
        {{{pins, 5, "pin_net_start", -1}}, pins, 5, "bits -1..0 outside 0..1 of bus 6"},
        {{{pins, 5, "next_pin_in_ind", 6}}, pins, 5, "next_pin_in_ind leads in a circle"},
        {{{pins, 4, "next_pin_out_ind", 4}}, pins, 4, "next_pin_out_ind leads in a circle"},
        {{{nets, 4, "nb_pin_in", 1}}, nets, 4, "nb_pin_in 1 but the chain from first_pin_in_ind has 2"},
        {{{nets, 8, "nb_pin_out", 2}}, nets, 8, "nb_pin_out 2 but the chain from first_pin_out_ind has 1"},
        {{{nets, 1, "first_pin_in_ind", 2}}, nets, 1, other_net},
        {{{nets, 7, "first_pin_in_ind", 5}}, nets, 7, other_net},
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
        {{{nets, 1, "first_sub_net", 0}, {nets, 2, "father_net", 3}, {nets, 2, "first_sub_net", 3},
          {nets, 2, "next_sub_net", 0}, {nets, 3, "father_net", 2}, {nets, 3, "first_sub_net", 2}},
         nets, 2, "father_net 3" + no_root},
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
        {{{"property values", 9, "valuet", -11}}, pins, 3, "delay of pin, net and input together is negative: a change before its cause"},
        {{{"property values", 9, "valuet", -10}}, "", 0, ""},  // the inputs take 10 at least
    };
    // clang-format on
    for (const auto& [edits, section, record, what] : rows) expect(section, record, what, edited(edits));
    // What the simulator does not use is kept as read.
    expect("", 0, "",
           edited({{pins, 1, "io_type", 77}, {nets, 1, "net_kind", 99}, {insts, 1, "timing_index", 120}}));
    EXPECT_TRUE(yx_ptrto_pin_rec(1)->io_type == 77 && yx_ptrto_net_rec(1)->net_kind == 99 &&
                yx_ptrto_inst_rec(1)->timing_index == 120);
}

TEST_F(refusal, names_where_a_file_that_is_cut_ends) {
    tst_each_section(design, [&](const auto& layout, std::size_t at, std::size_t count, auto) {
        for (std::size_t cut = at; cut < at + layout.bytes * count; cut += 7)
            expect(layout.section, static_cast<std::int32_t>((cut - at) / layout.bytes + 1),
                   "the file ends here", bytes.substr(0, cut));
    });
    expect("characters", 11, "the file ends here", bytes.substr(0, 68 + 8 * 416 + 10));
}

TEST_F(refusal, holds_strings_inside_one_block_and_to_printable_characters) {
    const std::tuple<std::int32_t, std::int8_t, const char*> rows[] = {
        {998, 3, ""},    {999, 3, "characters 999..1001 cross a border between blocks of 1000"},
        {1001, 100, ""}, {1001, 101, "characters 1001..1101 outside 1..1100"},
        {0, 0, ""},      {4, 3, "character 2 has code 200"}};
    for (const auto& [index, len, what] : rows) {
        yx_design_image_t text;
        text.chars = std::string(1100, 'c');
        text.strings.push_back({nullptr, index, len});
        std::string file = tst_file_of(text);
        file[yxl_header_bytes + 4] = static_cast<char>(200);
        expect("strings", 1, what, file);
    }
}

TEST_F(refusal, lets_a_pin_span_bits_of_narrow_buses_only) {
    for (const std::int16_t width : {std::int16_t{128}, std::int16_t{129}}) {
        yx_design_image_t d;
        tst_add(d, d.insts, "/g");
        tst_set_properties(tst_add_pin(d, "/g/a", 1), 0, 0).pin_end = 1;
        yx_net_record_t& bus = tst_add(d, d.nets, "/a");
        bus.net_type = YX_TSTD_BUS, bus.UU.U2.net_bus_start = 1;
        bus.UU.U2.net_bus_end = width, bus.UU.U2.netind_start = 2;
        for (std::int16_t k = 1; k <= width; ++k) {
            yx_net_record_t& member = tst_add(d, d.nets, "/a");
            member.net_type = YX_TSTANDARD, member.UU.U1.bus = 1, member.UU.U1.posinbus = k;
        }
        expect("pins", 1, width == 128 ? "" : "spans bits of a bus of 129 bits, at most 128", tst_file_of(d));
    }
}

}  // namespace
