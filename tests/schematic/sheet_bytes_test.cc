// The bytes of each record of a sheet file.
#include <functional>

#include "foundation/records.h"
#include "schematic/object_pool.h"
#include "schematic/sheet_stream.h"

namespace {

std::string bytes_of(std::string_view hex) {
    std::string digits(hex), bytes;
    std::erase(digits, ' ');
    for (std::size_t i = 0; i < digits.size(); i += 2)
        bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
    return bytes;
}

std::string hex_of(std::string_view bytes) {
    constexpr char digits[] = "0123456789abcdef";
    std::string hex;
    for (const char c : bytes) hex += {digits[(c >> 4) & 15], digits[c & 15]};
    return hex;
}

template <typename Text>
void set_text(Text& text, std::string_view chars) {
    text.len = static_cast<std::int32_t>(chars.size());
    chars.copy(text.char_, chars.size());
}

struct record_row {
    std::int16_t type;
    std::string hex;
    std::function<void(tm_object_gene_rec_t&)> fill;
};

template <std::int16_t Type, typename Fill>
record_row row(std::string hex, Fill fill) {
    return {Type, std::move(hex),
            [fill](tm_object_gene_rec_t& object) { fill(static_cast<tm_record_of<Type>&>(object)); }};
}

template <typename Points>
void number(Points& points) {
    std::int32_t n = 0;
    for (tm_point_t& point : points) point = {++n, -n};
}

std::string numbered_points(int count) {
    std::string hex;
    for (int n = 1; n <= count; ++n) {
        const tm_point_t point{n, -n};
        writerectype(hex, &point, tm_rec_point);
    }
    return hex_of(hex);
}

const std::string polyline_start = "0003 0004 ", polyline_end = " 05 06 fff6";

const record_row records[] = {
    row<tm_type_net_family>("fff6", [](auto& r) { r.fin = -10; }),
    row<tm_type_instance>("03 01 0102 0304 0506 0708 fff6",
                          [](auto& r) {
                              r.rotate = 3, r.fliph = true, r.symbol = 0x102, r.n0_version = 0x304;
                              r.previous_inst = 0x506, r.following_inst = 0x708, r.fin = -10;
                          }),
    row<tm_type_symbol>("0102 00000003 612f73 fff6",
                        [](auto& r) { r.instance = 0x102, set_text(r.path, "a/s"), r.fin = -10; }),
    row<tm_type_pinpropfam>("01 00 0102 0201 0102 0304 fff6",
                            [](auto& r) {
                                r.dotted = true, r.net = 0x102, r.pin_start = 0x102, r.pin_end = 0x102;
                                r.pin_net_start = 0x304, r.fin = -10;
                            }),
    row<tm_type_net>("01020304 01 01 0506 fffe",
                     [](auto& r) {
                         r.net_index = 0x1020304, r.is_bus = r.reserved = true;
                         r.bus_start = 0x506, r.bus_end = -2;
                     }),
    row<tm_type_segment>("0102 03 04 0506 0708 090a fff6",
                         [](auto& r) {
                             r.reserved = 0x102, r.line_color = 3, r.line_width = 4, r.vertex1 = 0x506;
                             r.vertex2 = 0x708, r.line_style = 0x90a, r.fin = -10;
                         }),
    row<tm_type_tag>(
        "00000002 4e42 00000001 43 0102 fff6",
        [](auto& r) { set_text(r.name, "NB"), set_text(r.nvalue, "C"), r.reserved = 0x102, r.fin = -10; }),
    row<tm_type_vertex_2d>("00 01 0102 fff6", [](auto& r) { r.reserved = true, r.net = 0x102, r.fin = -10; }),
    row<tm_type_arc3p_2d>("00000001 fffffffe 00000003 00000004 00000005 00000006 00000007 00000008 00000009 "
                          "0a 0201 0b 0c0d fff6",
                          [](auto& r) {
                              r.pt2 = {1, -2}, r.pt3 = {3, 4}, r.center = {5, 6}, r.rad = 7, r.angle1 = 8;
                              r.angle2 = 9, r.border_color = 10, r.border_style = 0x102, r.c_reserved = 11;
                              r.i_reserved = 0xc0d, r.fin = -10;
                          }),
    row<tm_type_circle_2d>("01 02 01 03 01020304 0506 fff6",
                           [](auto& r) {
                               r.reserved = 1, r.border_color = 2, r.filled = true, r.fill_color = 3;
                               r.rad = 0x1020304, r.border_style = 0x506, r.fin = -10;
                           }),
    row<tm_type_grid_2d>("00000001 00000002 00002710 00001388 00 01 fff6",
                         [](auto& r) {
                             r.opposite_pt = {1, 2}, r.step_point = 10000, r.step_pin = 5000;
                             r.snap_on = true, r.fin = -10;
                         }),
    row<tm_type_line_2d>("0102 03 04 00000005 00000006 0708 fff6",
                         [](auto& r) {
                             r.reserved = 0x102, r.line_color = 3, r.line_width = 4, r.pt2 = {5, 6};
                             r.line_style = 0x708, r.fin = -10;
                         }),
    row<tm_type_polyline5_2d>(polyline_start + numbered_points(5) + polyline_end,
                              [](auto& r) {
                                  r.line_style = 3, r.n_points = 4, number(r.points), r.line_color = 5;
                                  r.reserved = 6, r.fin = -10;
                              }),
    row<tm_type_polyline_2d>(polyline_start + numbered_points(16) + polyline_end,
                             [](auto& r) {
                                 r.line_style = 3, r.n_points = 4, number(r.points), r.line_color = 5;
                                 r.reserved = 6, r.fin = -10;
                             }),
    row<tm_type_rectangle_2d>("01 02 00 03 00000004 00000005 0607 fff6",
                              [](auto& r) {
                                  r.reserved = 1, r.line_color = 2, r.fill_color = 3, r.pt2 = {4, 5};
                                  r.line_style = 0x607, r.fin = -10;
                              }),
    row<tm_type_property_2d>("01 00 02 03 00000001 4e 00000002 4142 01020304 0506 fff6",
                             [](auto& r) {
                                 r.fixed = true, r.line_color = 2, r.rotate = 3, set_text(r.name, "N");
                                 set_text(r.nvalue, "AB"), r.height = 0x1020304, r.reserved = 0x506;
                                 r.fin = -10;
                             }),
};

TEST(SheetBytes, every_type_stands_in_the_file_as_laid_out) {
    for (const auto& [type, hex, fill] : records) {
        tm_file_gene_recf_t file;
        tm_object_gene_rec_t& object = tm_pool_make(file, type);
        object = {0x102, 3, 4, 5, 6, 7, type, 8, {9, -10}, {11, 12, 13, 14}};
        fill(object);
        const std::string generic = bytes_of("0102 0003 0004 0005 0006 0007 00") + static_cast<char>(type) +
                                    bytes_of("0008 00000009 fffffff6 0000000b 0000000c 0000000d 0000000e");
        std::string written;
        writeOneObject(written, object);
        EXPECT_EQ(hex_of(written), hex_of(generic + bytes_of(hex))) << type;

        tm_sheet_input in{written};
        tm_object_gene_rec_t* const read = readOneObject(in, file);
        ASSERT_NE(read, nullptr) << type;
        std::string again;
        writeOneObject(again, *read);
        EXPECT_EQ(hex_of(again), hex_of(written)) << type;
        for (std::size_t cut = 0; cut < written.size(); ++cut) {
            tm_sheet_input rest{std::string_view(written).substr(0, cut)};
            EXPECT_EQ(readOneObject(rest, file), nullptr) << type;
            EXPECT_EQ(rest.fault, file_open_invalid) << type;
        }
    }
}

TEST(SheetBytes, the_header_has_38_bytes) {
    tm_file_gene_recf_t header;
    const std::string hex =
        "40000000 001d 0002 07e8 000d 002d 0102 0003 0004 0005 0006 0007 01020304 01 00000000 09 ffec";
    const std::string bytes = bytes_of(hex);
    tm_sheet_input in{bytes};
    readrectype(in, &header, tm_rec_header);
    EXPECT_EQ(std::tuple(header.software_revision, header.day, header.year, header.minute),
              std::tuple(2.0F, 29, 2024, 45));
    EXPECT_EQ(std::tuple(header.object_id_max, header.grid_obj_id, header.dot_width, header.displayed),
              std::tuple(0x102, 5, 0x1020304, true));
    std::string written;
    writerectype(written, &header, tm_rec_header);
    EXPECT_EQ(hex_of(written), hex_of(bytes));
}

TEST(SheetBytes, texts_too_long_negative_or_unprintable_are_refused) {
    const auto fault_of = [](std::int16_t rectype, std::int32_t len, const std::string& chars) {
        std::string bytes(sizeof len, '\0');
        lay_put_number<lay_order::high_first>(len, bytes.data());
        bytes += chars;
        tm_sheet_input in{bytes};
        tm_string_record_t room;
        readrectype(in, &room, rectype);
        return in.fault;
    };
    for (const auto& [rectype, capacity] :
         {std::pair(tm_rec_string, 199), {tm_rec_name, 64}, {tm_rec_value, 96}}) {
        EXPECT_EQ(fault_of(rectype, capacity, many('x', 300)), 0);
        for (const int len : {capacity + 1, -1, INT32_MIN, INT32_MAX})
            EXPECT_EQ(fault_of(rectype, len, many('x', 300)), file_open_invalid) << rectype << ' ' << len;
        EXPECT_EQ(fault_of(rectype, 3, "a\x7fz"), file_open_invalid);
        EXPECT_EQ(fault_of(rectype, 3, "ab"), file_open_invalid);
    }
    tm_file_gene_recf_t file;
    EXPECT_FATAL(writerectype(*std::make_unique<std::string>(), &file, 59), "code : 46\n");
}

}  // namespace
