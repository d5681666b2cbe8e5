#include "foundation/records.h"
#include "schematic/arc.h"
#include "schematic/object_property.h"
#include "schematic/object_walk.h"
#include "schematic/wired_sheet.h"

namespace {

using drawn = drawn_sheet;
using wired = wired_sheet;

std::string ids(const tm_walk& walk) {
    std::string text;
    for (const std::int16_t id : walk) text += std::to_string(id) + " ";
    return text;
}

std::tuple<int, int, int, int> box(const tm_bounds_t& b) { return {b.xmin, b.ymin, b.xmax, b.ymax}; }

TEST_F(drawn, objects_get_ids_and_siblings_in_the_order_of_creation) {
    EXPECT_EQ(std::pair(main, page), std::pair(std::int16_t{1}, std::int16_t{2}));
    const tm_file_gene_recf_t& header = tm_file_header(file);
    EXPECT_EQ(std::tuple(header.primary_object, header.page_obj_id, header.grid_obj_id), std::tuple(1, 2, 0));
    close();
    EXPECT_EQ(tm_vext.cur_obj_level, 0);
    const std::int16_t second = open(tm_type_main, {}, tm_main);
    EXPECT_EQ(std::tuple(tm_object(file, 1).following, tm_object(file, second).previous), std::tuple(3, 1));
    EXPECT_EQ(header.primary_object, 1);
    std::int16_t last = 0;
    for (int n = header.object_id_max; n < 2000; ++n) last = line({}, {});
    EXPECT_EQ(header.ar_objindex.size(), 2000U);
    EXPECT_EQ(line({}, {}), 2001);
    EXPECT_EQ(header.ar_objindex.size(), 4000U);
    EXPECT_EQ(std::tuple(tm_object(file, last).following, tm_object(file, 2001).previous),
              std::tuple(2001, last));
}

TEST_F(drawn, every_breach_of_the_protocol_ends_the_program_with_its_code) {
    std::int16_t id = 0;
    STATUS_T status;
    const tm_point_t points[17] = {};
    tm_object_gene_rec_t* record = nullptr;
    const auto create = [&](std::int16_t type) { tm_object_create(file, type, 0, 0, id, status); };
    const std::pair<int, std::function<void()>> rows[] = {
        {8, [&] { tm_object_create(2, tm_type_page, 0, 0, id, status); }},
        {8, [&] { tm_vext.init_done = false, create(tm_type_page); }},
        {8, [&] { tm_object_id_ptr(0, 1, record, status); }},
        {16, [&] { tm_vext.cur_file = 2, create(tm_type_page); }},
        {41,
         [&] {
             while (true) line({}, {});
         }},
        {42,
         [&] {
             while (true) open(tm_type_frame, {}, tm_frame);
         }},
        {43, [&] { tm_object_id_ptr(file, 3, record, status); }},
        {43, [&] { tm_object_id_ptr(file, 0, record, status); }},
        {43, [&] { tm_object_close(file, 3, status); }},
        {48, [&] { create(33); }},
        {48, [&] { tm_object_as<tm_type_net>(file, page); }},
        {48, [&] { open(tm_type_instance, {}, [&] { tm_instance(page, 0, false); }); }},
        {43, [&] { open(tm_type_instance, {}, [&] { tm_instance(9, 0, false); }); }},
        {48, [&] { open(tm_type_vertex_2d, {}, [&] { tm_vertex_2dreal(page, false, {}, bounds); }); }},
        {50, [&] { create(tm_type_page), tm_object_open(file, page, id, status); }},
        {51,
         [&] {
             tm_object_open(file, page, id, status), tm_object_close(file, page, status);
             tm_vext.cur_obj_level = 2, create(tm_type_line_2d);
         }},
        {51, [&] { create(tm_type_page), tm_main(); }},
        {51, [&] { tm_page(); }},
        {52, [&] { tm_object_open(file, main, id, status); }},
        {52, [&] { tm_set_object_deleted(file, page, true), tm_object_open(file, page, id, status); }},
        {53, [&] { tm_object_close(file, page, status); }},
        {60, [&] { create(tm_type_page), tm_arc3p_2dreal(0, 0, {}, {}, {}, bounds); }},
        {61, [&] { create(tm_type_page), tm_circle_real(0, 0, false, 0, {}, 1, bounds); }},
        {62, [&] { create(tm_type_page), tm_grid_real({}, {}, 1, 1, false, false, bounds); }},
        {63, [&] { create(tm_type_page), tm_line_2dreal(0, 0, 0, {}, {}, bounds); }},
        {64, [&] { create(tm_type_polyline_2d), tm_polyline_2dreal(0, 0, points, bounds); }},
        {65, [&] { create(tm_type_polyline5_2d), tm_polyline5_2dreal(0, 0, {}, bounds); }},
        {66, [&] { create(tm_type_page), tm_rectangle_2dreal(0, 0, false, 0, {}, {}, bounds); }},
        {67, [&] { create(tm_type_page), tm_tag({}, {}); }},
        {68, [&] { create(tm_type_page), tm_property_2dreal({}, {}, false, true, 0, 0, 1, {}, bounds); }},
    };
    for (std::size_t i = 0; i < std::size(rows); ++i)
        EXPECT_FATAL(rows[i].second(), "code : " + std::to_string(rows[i].first) + "\n") << "row " << i;
}

TEST_F(drawn, opening_puts_new_objects_below_the_opened_one) {
    close();
    std::int16_t type = 0;
    STATUS_T status;
    tm_object_open(file, page, type, status);
    EXPECT_EQ(std::tuple(type, tm_vext.cur_obj_level, tm_inq_object_open(file, page)),
              std::tuple(tm_type_page, 2, true));
    const std::int16_t shape = line({1, 1}, {2, 2});
    tm_object_close(file, page, status);
    EXPECT_EQ(std::tuple(tm_object(file, page).child1, tm_object(file, shape).father),
              std::tuple(shape, page));
    EXPECT_FALSE(tm_inq_object_open(file, page));
}

TEST_F(drawn, shapes_lie_relative_to_their_first_point_and_widen_what_holds_them) {
    open(tm_type_frame_family, {5, 5}, tm_frame_family);
    const std::int16_t frame = open(tm_type_frame, {100, 0}, tm_frame);
    EXPECT_EQ(box(tm_object(file, frame).bounds), box(tm_empty_bounds));
    const std::int16_t id = line({150, 20}, {130, 60});
    EXPECT_EQ(box(bounds), std::tuple(130, 20, 150, 60));
    const auto& shape = tm_object_as<tm_type_line_2d>(file, id);
    EXPECT_EQ(std::tuple(shape.origin.x, shape.origin.y, shape.pt2.x, shape.pt2.y, shape.fin),
              std::tuple(150, 20, -20, 40, -10));
    EXPECT_EQ(box(shape.bounds), std::tuple(-20, 0, 0, 40));
    EXPECT_EQ(box(tm_object(file, frame).bounds), std::tuple(30, 20, 50, 60));
    text("N", "ABC", {100, -10}, 10, 1);  // three cells of 6 by 10 upward
    EXPECT_EQ(box(bounds), std::tuple(90, -10, 100, 8));
    EXPECT_EQ(box(tm_object(file, frame).bounds), std::tuple(-10, -10, 50, 60));
    EXPECT_EQ(box(tm_object(file, tm_object(file, frame).father).bounds), std::tuple(85, -15, 145, 55));
    add(tm_type_circle_2d, [&] { tm_circle_real(0, 0, false, 0, {INT32_MAX, 0}, 10, bounds); });
    EXPECT_EQ(box(bounds), std::tuple(INT32_MAX - 10, -10, INT32_MAX, 10));
}

TEST(Arc, three_points_make_a_circle) {
    struct arc_row {
        tm_point_t pt2, pt3, center;
        int rad, angle1, angle2;
    };
    constexpr arc_row rows[] = {
        {{-100, 100}, {-200, 0}, {-100, 0}, 100, 0, 11520},       // over the top
        {{-100, -100}, {-200, 0}, {-100, 0}, 100, 0, -11520},     // below
        {{100, 100}, {100, -100}, {100, 0}, 100, 11520, -17280},  // three quarters, clockwise
        {{100, -100}, {100, 100}, {100, 0}, 100, 11520, 17280},   // counter-clockwise
        {{101, 0}, {0, 0}, {50, 0}, 50, 0, 23040},                // closed
        {{30, 40}, {30, 40}, {15, 20}, 25, 0, 23040},             // pt3 on pt2
        {{0, 0}, {-30, 40}, {-15, 20}, 25, 0, 23040},             // pt2 on the first point
        {{10, 10}, {30, 30}, {0, 0}, 0, 0, 0},                    // on one line
        {{1000000000, 1}, {2000000000, 1}, {0, 0}, 0, 0, 0},      // nearly
    };
    for (const arc_row& row : rows) {
        const tm_arc_circle circle = tm_circle_through(row.pt2, row.pt3);
        EXPECT_EQ(std::tuple(circle.center.x, circle.center.y, circle.rad, circle.angle1, circle.angle2),
                  std::tuple(row.center.x, row.center.y, row.rad, row.angle1, row.angle2))
            << row.pt2.x << ',' << row.pt2.y;
    }
}

TEST_F(wired, walks_meet_what_is_not_deleted) {
    EXPECT_EQ(ids(tm_instances(file)), std::to_string(instance) + " ");
    EXPECT_EQ(ids(tm_pins(file, instance)), std::to_string(pin_a) + " " + std::to_string(pin_b) + " ");
    EXPECT_EQ(tm_pins(file, symbol).empty(), false);
    EXPECT_EQ(ids(tm_vertices(file, net)), std::to_string(corner) + " " + std::to_string(end) + " ");
    tm_set_object_deleted(file, pin_a, true);
    EXPECT_EQ(ids(tm_pins(file, instance)), std::to_string(pin_b) + " ");
    EXPECT_EQ(ids(tm_properties(file, instance)), std::to_string(own) + " ");
    EXPECT_EQ(tm_ancestor_of_type(file, segment, tm_type_net), net);
    EXPECT_EQ(tm_ancestor_of_type(file, segment, tm_type_symbol), 0);
}

TEST_F(wired, properties_are_found_where_their_kind_keeps_them) {
    std::string said;
    const auto look = [&](auto lookup, std::int16_t id, const char* name) {
        tm_string_record_t value = tm_string("left over");
        bool found = true;
        lookup(file, id, tm_string(name), value, found);
        said = found ? text_of(value) : value.len == 0 && value.char_[0] == ' ' ? "none" : "?";
        return said;
    };
    const std::int16_t pin = tm_pins(file, symbol).first();
    EXPECT_EQ(look(yx_get_valueof_prop_symb, symbol, "Model"), "OR");
    EXPECT_EQ(look(yx_get_valueof_prop_inst, instance, "MODEL"), "AND");  // its own hides the symbol's
    EXPECT_EQ(look(yx_get_valueof_prop_inst, instance, "SIZE"), "1");
    EXPECT_EQ(look(yx_get_valueof_prop_inst, instance, "COLOUR"), "none");
    EXPECT_EQ(look(yx_get_valueof_prop_pin, pin, "PIN"), "A");
    EXPECT_EQ(look(yx_get_valueof_prop_pinpropfam, pin_a, "pin"), "own");
    EXPECT_EQ(look(yx_get_valueof_prop_pinpropfam, pin_b, "pin"), "none");
    EXPECT_EQ(look(yx_get_valueof_prop_net, net, "NET"), "none");
    tm_set_object_deleted(file, own, true);
    EXPECT_EQ(look(yx_get_valueof_prop_inst, instance, "MODEL"), "OR");
    tm_object_as<tm_type_instance>(file, instance).symbol = 0;
    EXPECT_EQ(look(yx_get_valueof_prop_inst, instance, "MODEL"), "none");

    const std::int16_t last = tm_file_header(file).object_id_max;
    const auto fails = [&](tm_file_index_t index, std::int16_t id) {
        tm_string_record_t value;
        bool found = false;
        yx_get_valueof_prop_inst(index, id, tm_string("X"), value, found);
    };
    EXPECT_FATAL(fails(33, instance), "code : 18\n");
    EXPECT_FATAL(fails(file, 0), "code : 43\n");
    EXPECT_FATAL(fails(file, static_cast<std::int16_t>(last + 1)), "code : 43\n");
    EXPECT_FATAL(fails(file, net), "code : 48\n");
    EXPECT_FATAL((tm_set_object_deleted(file, net, true), fails(file, net)), "code : 19\n");
    EXPECT_FATAL((tm_object_as<tm_type_instance>(file, instance).symbol = -1, fails(file, instance)),
                 "code : 43\n");
}

}  // namespace
