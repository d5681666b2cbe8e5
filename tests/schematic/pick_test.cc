#include "schematic/pick.h"

#include "schematic/page_area.h"
#include "schematic/select.h"
#include "schematic/snap.h"
#include "schematic/wired_sheet.h"

namespace {

TEST(snap, goes_to_the_nearest_multiple_of_5000_halves_towards_zero) {
    constexpr std::int32_t rows[][2] = {
        {0, 0},
        {2500, 0},
        {2501, 5000},
        {7500, 5000},
        {7501, 10000},
        {-2500, 0},
        {-2501, -5000},
        {-7500, -5000},
        {-7501, -10000},
        {2147483647, 2147480000},
        {-2147483647 - 1, -2147480000},
    };
    for (const auto& row : rows) {
        const tm_point_t at = tm_snapped({row[0], -5000});
        EXPECT_EQ(at.x, row[1]) << row[0];
        EXPECT_EQ(at.y, -5000);
    }
}

TEST_F(wired_sheet, the_vertex_or_pin_at_a_point_is_found_exactly) {
    const auto at = [this](std::int32_t x, std::int32_t y) { return tm_vertex_at(file, {x * k, y * k}); };
    EXPECT_EQ(at(60, 20), corner);
    EXPECT_EQ(at(10, 20), pin_b);
    EXPECT_EQ(at(10, 10), pin_a) << "a pin without a net is better than nothing";
    EXPECT_EQ(at(30, 20), 0) << "the middle of a wire";
    EXPECT_EQ(tm_vertex_at(file, {60 * k + 1, 20 * k}), 0);
    set_status(corner, tm_object_is_deleted);
    EXPECT_EQ(at(60, 20), 0);
    for (const std::int16_t id : {pin_b, corner, end, segment}) EXPECT_EQ(tm_net_of(file, id), net) << id;
    for (const std::int16_t id : {pin_a, instance, std::int16_t{0}, std::int16_t{30000}})
        EXPECT_EQ(tm_net_of(file, id), 0) << id;
}

TEST_F(wired_sheet, of_several_at_a_point_one_with_a_net_and_then_a_vertex_is_found) {
    tm_object(file, pin_a).origin = {60 * k, 60 * k};
    EXPECT_EQ(tm_vertex_at(file, {60 * k, 60 * k}), end);
    tm_object_as<tm_type_vertex_2d>(file, end).net = 0;
    EXPECT_EQ(tm_vertex_at(file, {60 * k, 60 * k}), end);
    tm_object_as<tm_type_pinpropfam>(file, pin_a).net = net;
    EXPECT_EQ(tm_vertex_at(file, {60 * k, 60 * k}), pin_a);
    tm_object(file, end).origin = {60 * k, 20 * k};
    tm_object_as<tm_type_vertex_2d>(file, end).net = net;
    EXPECT_EQ(tm_vertex_at(file, {60 * k, 20 * k}), corner) << "the first of equals";
}

TEST_F(wired_sheet, the_border_belongs_to_the_page) {
    for (const auto& [at, is_inside] :
         {std::pair(tm_point_t{0, 0}, true), std::pair(tm_point_t{90 * k, 90 * k}, true),
          std::pair(tm_point_t{90 * k + 1, 0}, false), std::pair(tm_point_t{0, 90 * k + 1}, false),
          std::pair(tm_point_t{-1, 0}, false), std::pair(tm_point_t{0, -1}, false)})
        EXPECT_EQ(tm_inside_page(file, at), is_inside) << at.x << ' ' << at.y;
}

// Pixels are 1000 units, the aperture reaches 5 of them to each side.
TEST_F(wired_sheet, the_nearest_object_within_the_aperture_is_picked) {
    struct row {
        tm_family family;
        std::int32_t x, y;
        std::int16_t id;
        bool smash = false;
    };
    const row rows[] = {
        {tm_family::net, 30, 25, net},         {tm_family::net, 30, 26, 0},
        {tm_family::vertex, 58, 22, corner},   {tm_family::vertex, 60, 41, 0},
        {tm_family::pin, 11, 16, pin_b},       {tm_family::pin, 11, 14, pin_a},
        {tm_family::pin, 10, 15, pin_a},  // the first of equally near ones
        {tm_family::vertex, 65, 20, corner},   {tm_family::vertex, 66, 20, 0},
        {tm_family::instance, 8, 8, instance}, {tm_family::instance, 4, 8, 0},
        {tm_family::all, 58, 22, corner},      {tm_family::all, 30, 22, net},
        {tm_family::all, 10, 10, instance},    {tm_family::all, 14, 32, 0},
        {tm_family::all, 14, 32, own, true},   {tm_family::property, 14, 32, own},
        {tm_family::first, 60, 40, net},       {tm_family::frame, 10, 10, 0},
    };
    const tm_viewport_t viewport = {0, 100 * k, k, 100, 100};
    for (const row& row : rows) {
        tm_vext.smash_on = row.smash;
        EXPECT_EQ(tm_nearest(file, row.family, viewport, {row.x * k, row.y * k}), row.id)
            << static_cast<int>(row.family) << ' ' << row.x << ' ' << row.y;
    }
    EXPECT_EQ(tm_nearest_segment(file, viewport, {30 * k, 22 * k}), segment);
    const tm_viewport_t farther = {0, 200 * k, 2 * k, 100, 100};  // both pins are met
    EXPECT_EQ(tm_nearest(file, tm_family::pin, farther, {10 * k, 16 * k}), pin_b);
}

TEST_F(wired_sheet, areas_select_what_lies_wholly_inside) {
    struct row {
        tm_family family;
        tm_bounds_t area;  // thousand units
        std::vector<std::int16_t> ids;
        bool smash = false;
    };
    const row rows[] = {
        {tm_family::instance, {0, 0, 15, 15}, {instance}},
        {tm_family::instance, {12, 0, 30, 30}, {}},
        {tm_family::net, {0, 15, 65, 25}, {net}},
        {tm_family::net, {20, 15, 70, 50}, {}},
        {tm_family::vertex, {70, 70, 50, 10}, {corner, end}},
        {tm_family::vertex, {60, 20, 60, 60}, {corner, end}},
        {tm_family::pin, {0, 0, 20, 20}, {pin_a, pin_b}},
        {tm_family::property, {0, 28, 30, 40}, {own}},
        {tm_family::property, {0, 28, 15, 40}, {}},
        {tm_family::all, {0, 0, 80, 80}, {instance, net, corner, end}},
        {tm_family::all, {0, 15, 30, 40}, {}},
        {tm_family::all, {0, 15, 30, 40}, {own}, true},
        {tm_family::first, {0, 0, 80, 80}, {instance}},
        {tm_family::first, {0, 15, 65, 25}, {net}},
        {tm_family::first, {0, 28, 30, 40}, {own}, true},
        {tm_family::frame, {0, 0, 80, 80}, {}},
    };
    for (const row& row : rows) {
        tm_vext.smash_on = row.smash;
        const tm_bounds_t area = {row.area.xmin * k, row.area.ymin * k, row.area.xmax * k, row.area.ymax * k};
        std::int32_t count = -1;
        tm_select_area(file, row.family, area, true, count);
        EXPECT_EQ(selected(), row.ids) << static_cast<int>(row.family) << ' ' << row.area.xmin;
        EXPECT_EQ(count, static_cast<std::int32_t>(row.ids.size()));
        tm_select_area(file, row.family, area, true, count);
        EXPECT_EQ(count, 0) << "already selected";
        tm_unselect_all(file, count);
        EXPECT_EQ(count, static_cast<std::int32_t>(row.ids.size()));
        EXPECT_TRUE(selected().empty());
    }
}

TEST_F(wired_sheet, unselecting_first_takes_the_first_that_is_selected) {
    constexpr tm_bounds_t everywhere = {0, 0, 80 * k, 80 * k};
    std::int32_t count = 0;
    tm_select_area(file, tm_family::vertex, everywhere, true, count);
    tm_select_area(file, tm_family::first, everywhere, false, count);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(selected(), std::vector{end});
}

}  // namespace
