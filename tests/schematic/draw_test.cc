#include <cmath>
#include <iterator>
#include <limits>

#include "schematic/object_box.h"
#include "schematic/outline.h"
#include "schematic/pick.h"
#include "schematic/probe_display.h"
#include "schematic/wired_sheet.h"

namespace {

TEST_F(drawn_sheet, symbols_are_flipped_then_turned_and_their_texts_stay_readable) {
    struct row {
        bool fliph;
        std::int8_t rotate;
        const char *shape, *text;
    };
    constexpr row rows[] = {
        {false, 0, "50,50 70,50 70,40", "r0 55,38"}, {false, 1, "50,50 50,30 40,30", "r1 38,45"},
        {false, 2, "50,50 30,50 30,60", "r0 33,52"}, {false, 3, "50,50 50,70 60,70", "r1 52,67"},
        {true, 0, "50,50 30,50 30,40", "r0 33,38"},  {true, 1, "50,50 50,70 40,70", "r1 38,67"},
        {true, 2, "50,50 70,50 70,60", "r0 55,52"},  {true, 3, "50,50 50,30 60,30", "r1 52,45"},
        {false, 5, "50,50 50,30 40,30", "r1 38,45"},
    };
    const std::int16_t symbol = open_symbol();
    const tm_point_t shape[] = {{0, 0}, {20 * k, 0}, {20 * k, 10 * k}};
    add(tm_type_polyline5_2d, [&] { tm_polyline5_2dreal(0, 2, shape, bounds); });
    text("MODEL", "AB", {5 * k, 2 * k}, 10 * k);
    close(4);
    open(tm_type_instance_family, {}, tm_instance_family);
    std::int16_t last = 0;
    for (const row& row : rows) {
        if (last != 0) tm_set_object_deleted(file, last, true);
        last = add(tm_type_instance, [&] { tm_instance(symbol, row.rotate, row.fliph); }, {50 * k, 50 * k});
        EXPECT_EQ(draw(), (lines{std::string("line green 0 1: ") + row.shape,
                                 std::string("text yellow 6x10 ") + row.text + ": AB"}))
            << row.fliph << ' ' << int{row.rotate};
    }
}

TEST_F(drawn_sheet, texts_on_the_sheet_are_read_upright_and_small_ones_are_lines) {
    struct row {
        std::int8_t rotate;
        std::int32_t height;
        const char* drawn;
    };
    constexpr row rows[] = {
        {0, 10 * k, "text yellow 6x10 r0 50,40: AB"}, {1, 10 * k, "text yellow 6x10 r1 40,50: AB"},
        {2, 10 * k, "text yellow 6x10 r0 38,50: AB"}, {3, 10 * k, "text yellow 6x10 r1 50,62: AB"},
        {0, 6 * k, "text yellow 3x6 r0 50,44: AB"},   {0, 5 * k, "line yellow 0 1: 50,47 56,47"},
        {1, 3 * k, "line yellow 0 1: 48,50 48,46"},
    };
    std::int16_t last = 0;
    for (const row& row : rows) {
        if (last != 0) set_status(last, tm_object_is_unvisible);
        last = text("NOTE", "AB", {50 * k, 50 * k}, row.height, row.rotate);
        EXPECT_EQ(draw(), lines{row.drawn}) << int{row.rotate} << ' ' << row.height;
    }
}

TEST_F(drawn_sheet, every_primitive_has_its_colour_width_style_and_filling) {
    line({10 * k, 10 * k}, {20 * k, 10 * k}, 1, 4);
    add(tm_type_line_2d, [&] { tm_line_2dreal(2, 3, 0, {0, 0}, {10 * k, 20 * k}, bounds); });
    add(tm_type_circle_2d, [&] { tm_circle_real(0, 1, true, 2, {80 * k + 500, 80 * k + 500}, 400, bounds); });
    add(tm_type_rectangle_2d, [&] {
        tm_rectangle_2dreal(1, 4, true, 6, {60 * k, 60 * k}, {50 * k, 70 * k}, bounds);
    });
    const tm_point_t path[] = {{1 * k, 1 * k}, {2 * k, 1 * k}, {2 * k, 9 * k},
                               {5 * k, 9 * k}, {5 * k, 3 * k}, {7 * k, 3 * k}};
    add(tm_type_polyline_2d, [&] { tm_polyline_2dreal(4, 5, path, bounds); });
    EXPECT_EQ(draw(), (lines{"points green: 80,19", "fill magenta: 60,40 50,40 50,30 60,30 60,40",
                             "points red: 80,19", "line red 0 4: 10,90 20,90", "line blue 2 1: 0,100 10,80",
                             "line cyan 1 1: 60,40 50,40 50,30 60,30 60,40",
                             "line yellow 4 1: 1,99 2,99 2,91 5,91 5,97 7,97"}));
}

TEST_F(drawn_sheet, circles_and_arcs_keep_their_radius_and_their_ends) {
    struct row {
        const char* what;
        tm_point_t p1, p2, p3;  // of an arc; a circle has its radius in p2.x
        double from, extent;    // degrees
    };
    const double diagonal = 20 * k * std::sqrt(0.5);
    const auto on_circle = [&](double x, double y) {
        return tm_point_t{static_cast<std::int32_t>(50 * k + x), static_cast<std::int32_t>(50 * k + y)};
    };
    const row rows[] = {
        {"quarter", on_circle(20 * k, 0), on_circle(diagonal, diagonal), on_circle(0, 20 * k), 0, 90},
        {"clockwise", on_circle(0, 20 * k), on_circle(diagonal, diagonal), on_circle(20 * k, 0), 90, -90},
        {"three quarters", on_circle(20 * k, 0), on_circle(-20 * k, 0), on_circle(0, -20 * k), 0, 270},
        {"whole", on_circle(20 * k, 0), on_circle(-20 * k, 0), on_circle(20 * k, 0), 0, 360},
    };
    for (const row& row : rows) {
        const std::int16_t id = add(
            tm_type_arc3p_2d, [&] { tm_arc3p_2dreal(0, 7, row.p1, row.p2, row.p3, bounds); }, row.p1);
        tm_outline_t outline;
        ASSERT_TRUE(tm_outline(tm_object(file, id), k, outline)) << row.what;
        double turned = 0, before = row.from;
        for (const tm_spot_t& at : outline.points) {
            EXPECT_NEAR(std::hypot(at.x - 50 * k, at.y - 50 * k), 20 * k, 2) << row.what;
            const double angle = std::atan2(at.y - 50 * k, at.x - 50 * k) * 180 / M_PI;
            turned += std::remainder(angle - before, 360);
            before = angle;
        }
        EXPECT_NEAR(turned, row.extent, 0.1) << row.what;
        EXPECT_GT(outline.points.size(), 6U) << row.what;
        EXPECT_LT(outline.points.size(), 60U) << row.what;
    }
}

TEST_F(drawn_sheet, an_arc_through_points_of_one_line_is_that_line) {
    add(tm_type_arc3p_2d,
        [&] {
            tm_arc3p_2dreal(0, 7, {10 * k, 10 * k}, {20 * k, 10 * k}, {30 * k, 10 * k}, bounds);
        },
        {10 * k, 10 * k});
    EXPECT_EQ(draw(), lines{"line white 0 1: 10,90 20,90 30,90"});
}

TEST_F(drawn_sheet, tags_stand_before_or_behind_their_origin_and_point_where_signals_go) {
    const std::pair<const char*, const char*> kinds[] = {
        {"INPUT", "37,50 37,55 46,55 50,50 46,45 37,45 37,50"},
        {"TO_PAGE", "50,50 50,55 58,55 62,50 58,45 50,45 50,50"},
        {"INOUT", "50,50 54,55 62,55 66,50 62,45 54,45 50,50"},
    };
    open(tm_type_tag_family, {}, tm_tag_family);
    std::int16_t last = 0;
    for (const auto& [kind, corners] : kinds) {
        if (last != 0) tm_set_object_deleted(file, last, true);
        tm_name_record_t name;
        tm_value_record_t value;
        tm_copy_name(tm_string(kind), name);
        tm_copy_value(tm_string("A"), value);
        last = add(tm_type_tag, [&] { tm_tag(name, value); }, {50 * k, 50 * k});
        EXPECT_EQ(draw().front(), std::string("line cyan 0 1: ") + corners);
    }
}

TEST_F(drawn_sheet, a_net_takes_the_place_of_its_wires_without_its_texts) {
    open(tm_type_net_family, {}, tm_net_family);
    const std::int16_t net = open(tm_type_net, {}, [] { tm_net(false, 0, 0); });
    open(tm_type_vertex_family, {}, tm_vertex_family);
    vertex(net, {10 * k, 20 * k});
    close();
    open(tm_type_property_family, {}, tm_property_family);
    text("NAME", "far away", {50 * k, 50 * k}, 10 * k);
    close();
    const tm_box_t box = tm_object_box(tm_reader_t(file), net);
    EXPECT_EQ(std::tuple(box.xmin, box.ymin, box.xmax, box.ymax), std::tuple(10 * k, 20 * k, 10 * k, 20 * k));
}

TEST_F(drawn_sheet, what_touches_the_canvas_is_drawn) {
    line({100 * k, 10 * k}, {100 * k, 20 * k});
    EXPECT_EQ(draw().size(), 1U) << "half of its width is seen";
    line({101 * k, 10 * k}, {101 * k, 20 * k});
    EXPECT_EQ(draw().size(), 1U);
}

TEST_F(drawn_sheet, hidden_and_deleted_objects_are_left_out_with_all_they_contain) {
    open(tm_type_frame_family, {}, tm_frame_family);
    const std::int16_t frame = open(tm_type_frame, {}, tm_frame);
    open(tm_type_graphics, {}, tm_graphics);
    const std::int16_t first = line({10 * k, 10 * k}, {20 * k, 10 * k});
    line({10 * k, 20 * k}, {20 * k, 20 * k});
    close(4);
    EXPECT_EQ(draw().size(), 2U);
    set_status(first, tm_object_is_deleted);
    EXPECT_EQ(draw(), lines{"line white 0 1: 10,80 20,80"});
    set_status(frame, tm_object_is_unvisible);
    EXPECT_EQ(draw(), lines{});
}

TEST_F(drawn_sheet, selected_objects_are_white_and_wider_and_texts_are_boxed) {
    const std::int16_t wide = line({10 * k, 10 * k}, {20 * k, 10 * k}, 2, 3);
    const std::int16_t note = text("NOTE", "A", {50 * k, 50 * k}, 10 * k);
    set_status(wide, tm_object_is_selected);
    set_status(note, tm_object_is_selected);
    EXPECT_EQ(draw(), (lines{"line white 0 1: 50,50 56,50 56,40 50,40 50,50", "line white 0 5: 10,90 20,90",
                             "text white 6x10 r0 50,40: A"}));
}

TEST_F(wired_sheet, properties_of_an_instance_and_its_pins_hide_the_symbols) {
    draw();
    for (const char* shown : {"text yellow 3x6 r0 10,64: AND", "text yellow 3x6 r0 10,74: 1",
                              "text yellow 3x6 r0 40,84: own", "text yellow 3x6 r0 30,84: B"})
        EXPECT_TRUE(has(shown)) << shown << testing::PrintToString(canvas.drawn);
    for (const char* hidden : {"text yellow 3x6 r0 10,84: OR", "text yellow 3x6 r0 30,84: A"})
        EXPECT_FALSE(has(hidden)) << hidden;
    set_status(own, tm_object_is_deleted);
    draw();
    EXPECT_TRUE(has("text yellow 3x6 r0 10,84: OR"));
}

TEST_F(wired_sheet, wires_are_drawn_with_their_junctions_and_open_pins) {
    draw();
    EXPECT_TRUE(has("line green 0 3: 10,80 60,80"));
    EXPECT_TRUE(has("line green 1 5: 60,80 60,40"));
    EXPECT_TRUE(has("line red 0 1: 8,88 12,88 12,92 8,92 8,88"));
    EXPECT_FALSE(has("line red 0 1: 8,78 12,78 12,82 8,82 8,78")) << "a pin that is connected";
    const auto junctions =
        std::count_if(canvas.drawn.begin(), canvas.drawn.end(), [](const std::string& entry) {
            return entry.starts_with("fill green: 12,80 ") || entry.starts_with("fill green: 62,80 ");
        });
    EXPECT_EQ(junctions, 2);
    set_status(net, tm_object_is_selected);
    draw();
    EXPECT_TRUE(has("line white 0 5: 10,80 60,80"));
    EXPECT_TRUE(has("line white 1 7: 60,80 60,40"));
}

TEST_F(wired_sheet, probes_show_their_text_of_now_beside_their_place) {
    tm_probe_display_t second{corner, tm_string("two"), nullptr, nullptr, nullptr};
    tm_probe_display_t first{corner, tm_string("one"), nullptr, nullptr, &second};
    tm_object_as<tm_type_net>(file, net).ptrto_probe = &first;
    draw();
    EXPECT_TRUE(has("text yellow 10x16 r0 64,54: one")) << testing::PrintToString(canvas.drawn);
    EXPECT_TRUE(has("text yellow 10x16 r0 64,34: two"));
    static std::string value;
    first.text = second.text = [](const tm_probe_display_t& probe) -> std::string_view {
        static std::string text;
        return text = std::string(tm_view(probe.name)) + value;
    };
    for (const char* now : {"0", "1"}) {
        value = now;
        draw();
        EXPECT_TRUE(has(std::string("text yellow 10x16 r0 54,54: one") + now));
    }
    draw({-40 * k, 100 * k, k, 100, 100});  // its place is just off the canvas
    for (const std::string& drawn : canvas.drawn) EXPECT_EQ(drawn.find("one"), std::string::npos) << drawn;
}

TEST_F(drawn_sheet, lines_and_fillings_far_beyond_the_canvas_are_cut) {
    constexpr std::int32_t far = 1'000'000'000;
    line({-far, -far}, {far, far});
    line({far, far - k}, {far, far});
    add(tm_type_rectangle_2d, [&] { tm_rectangle_2dreal(0, 1, true, 2, {-far, -far}, {far, 500}, bounds); });
    add(tm_type_circle_2d, [&] { tm_circle_real(0, 3, true, 4, {-far + 50, 50}, far, bounds); });
    draw({0, 1000, tm_least_units, 100, 100});
    constexpr const char* begins[] = {"line blue 0 1: 0,100 ", "line blue 0 1: 0,-2000 0,100",
                                      "fill green: ",          "fill cyan: 5,95 ",
                                      "line red 0 1: ",        "line blue 0 1: 5,95 ",
                                      "line blue 0 1: 3,2100", "line white 0 1: -2000,2100 2100,-2000"};
    ASSERT_EQ(canvas.drawn.size(), std::size(begins)) << testing::PrintToString(canvas.drawn);
    for (std::size_t i = 0; i < std::size(begins); ++i)
        EXPECT_TRUE(canvas.drawn[i].starts_with(begins[i])) << canvas.drawn[i];
    EXPECT_LE(canvas.largest, 2100);
}

// Whatever numbers a file holds, no coordinate overflows and no symbol holds itself.
TEST_F(wired_sheet, wild_numbers_keep_the_picture_in_bounds) {
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t values[] = {-most - 1, -most, -1, 0, most};
    std::int16_t type = 0;
    STATUS_T status;
    close();  // the main object
    tm_object_open(file, symbol, type, status);
    open_objects.push_back(symbol);
    const std::int16_t arc = add(tm_type_arc3p_2d,
                                 [&] {
                                     tm_arc3p_2dreal(0, 7, {0, 0}, {k, 0}, {0, k}, bounds);
                                 },
                                 {0, 0});
    add(tm_type_instance, [&] { tm_instance(symbol, 1, true); });
    for (const std::int32_t x : values)
        for (const std::int32_t y : values) {
            tm_object(file, corner).origin = tm_object(file, instance).origin = {x, y};
            tm_object_as<tm_type_property_2d>(file, own).height = x;
            tm_object_as<tm_type_property_2d>(file, own).rotate = static_cast<std::int8_t>(y);
            auto& curve = tm_object_as<tm_type_arc3p_2d>(file, arc);
            curve.center = {y, x};
            curve.rad = curve.angle1 = curve.angle2 = x;
            for (const tm_viewport_t& viewport :
                 {tm_fit({0, 0, 0, 0}, 100, 100), tm_fit({x, y, y, x}, 100, 100)})
                draw(viewport);
            EXPECT_LE(canvas.largest, 2200) << x << ' ' << y;
            EXPECT_EQ(tm_nearest(file, tm_family::frame, tm_fit({x, y, y, x}, 100, 100), {y, x}), 0);
        }
}

TEST_F(drawn_sheet, grid_dots_stand_on_the_grid_and_are_thinned_when_dense) {
    struct row {
        std::int32_t step;
        const char* dots;
        bool grid_on = true;
    };
    constexpr row rows[] = {
        {20 * k, "points blue: 10,90 30,90 50,90 10,70 30,70 50,70"},
        {5 * k,
         "points blue: 10,90 20,90 30,90 40,90 50,90 10,80 20,80 30,80 40,80 50,80 10,70 20,70 30,70 "
         "40,70 50,70"},
        {8 * k,  // as close as dots may stand
         "points blue: 10,90 18,90 26,90 34,90 42,90 50,90 10,82 18,82 26,82 34,82 42,82 50,82 10,74 18,74 "
         "26,74 34,74 42,74 50,74 10,66 18,66 26,66 34,66 42,66 50,66"},
        {20 * k, nullptr, false},
        {0, nullptr},
    };
    open(tm_type_page, {}, tm_page);
    const std::int16_t grid = add(tm_type_grid_2d, [&] {
        tm_grid_real({10 * k, 10 * k}, {55 * k, 35 * k}, 1, 5 * k, true, false, bounds);
    });
    close();
    for (const row& row : rows) {
        tm_object_as<tm_type_grid_2d>(file, grid).step_point = row.step;
        tm_vext.grid_on = row.grid_on;
        EXPECT_EQ(draw(), row.dots != nullptr ? lines{row.dots} : lines{}) << row.step;
    }
}

}  // namespace
