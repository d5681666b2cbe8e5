#include <limits>

#include "foundation/shell.h"
#include "schematic/drawn_sheet.h"
#include "schematic/pick.h"

namespace {

constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();

std::string text_of(const tm_bounds_t& b) {
    return std::to_string(b.xmin) + " " + std::to_string(b.ymin) + " " + std::to_string(b.xmax) + " " +
           std::to_string(b.ymax);
}

TEST(viewport, an_area_is_shown_whole_in_the_middle_and_within_32_bits) {
    struct row {
        tm_bounds_t area;
        std::int32_t width, height;
        const char* seen;
    };
    constexpr row rows[] = {
        {{0, 0, 1000, 1000}, 100, 100, "0 0 1000 1000"},
        {{1000, 1000, 0, 0}, 100, 100, "0 0 1000 1000"},
        {{0, 0, 1000, 1000}, 200, 100, "-500 0 1500 1000"},
        {{0, 0, 2000, 1000}, 100, 100, "0 -500 2000 1500"},
        {{50, 50, 50, 50}, 100, 50, "-450 -200 550 300"},  // a point: ten units to the pixel
        {{least, least, most, most}, 100, 100, "-2147483648 -2147483648 2147483647 2147483647"},
        {{most - 10, 0, most, 10}, 100, 100, "2147482647 -495 2147483647 505"},
        {{0, 0, 1000, 1000}, 0, 0, "0 0 1000 1000"},
    };
    for (const row& row : rows)
        EXPECT_EQ(text_of(tm_seen(tm_fit(row.area, row.width, row.height))), row.seen) << text_of(row.area);
}

TEST(viewport, a_pixel_is_found_again_through_its_model_point) {
    for (const tm_bounds_t& area :
         {tm_bounds_t{-70, 13, 1234567, 999999}, tm_bounds_t{least, least, most, most}}) {
        const tm_viewport_t viewport = tm_fit(area, 801, 603);
        for (const tm_pixel at : {tm_pixel{0, 0}, tm_pixel{800, 602}, tm_pixel{400, 77}}) {
            const tm_pixel again = tm_model_to_pixel(viewport, tm_pixel_to_model(viewport, at));
            EXPECT_EQ(again.x, at.x);
            EXPECT_EQ(again.y, at.y);
        }
    }
}

// The page is 0 0 90000 90000, the canvas 100 by 100 pixels.
TEST_F(drawn_sheet, viewing_commands_set_what_is_seen) {
    const auto seen = [this] { return text_of(tm_seen(tm_viewport(file))); };
    EXPECT_EQ(seen(), "-1800 -1800 91800 91800") << "a new sheet is seen whole";
    tm_view_area(file, {20 * k, 40 * k, 10 * k, 20 * k});
    EXPECT_EQ(seen(), "5000 20000 25000 40000");
    struct row {
        char direction;
        std::int32_t steps;
        const char* seen;
    };
    constexpr row rows[] = {
        {'R', 5, "6000 20000 26000 40000"},    {'l', 20, "2000 20000 22000 40000"},
        {'U', 80, "2000 36000 22000 56000"},   {'D', 80, "2000 20000 22000 40000"},
        {'L', 80, "-10000 20000 10000 40000"}, {'L', 80, "-10000 20000 10000 40000"},
        {'X', 80, "-10000 20000 10000 40000"},
    };
    for (const row& row : rows) {
        tm_view_step(file, row.direction, row.steps);
        EXPECT_EQ(seen(), row.seen) << row.direction << row.steps;
    }
    tm_view_area(file, {30 * k, 30 * k, 31 * k, 31 * k});  // smaller than the aperture
    EXPECT_EQ(seen(), "20500 20500 40500 40500");
    tm_view_area(file, {30 * k, 30 * k, 31 * k, 60 * k});  // smaller in one direction alone
    EXPECT_EQ(seen(), "15500 30000 45500 60000");
    tm_view_area(file, {20500, 20500, 40500, 40500});
    tm_view_centre(file, {50 * k, 50 * k, 54 * k, 52 * k});
    EXPECT_EQ(seen(), "42000 41000 62000 61000") << "a box that fits keeps the magnification";
    tm_view_centre(file, {0, 0, 80 * k, 40 * k});
    EXPECT_EQ(seen(), "-120000 -140000 200000 180000") << "one that is too large takes a quarter";
    tm_view_centre(file, {50 * k, 50 * k, 50 * k, 50 * k});
    EXPECT_EQ(seen(), "10000 10000 90000 90000") << "a point that would be too small";
    for (const auto& [box, area] :
         {std::pair(tm_bounds_t{50 * k, 50 * k, 70 * k, 52 * k}, "20000 11000 100000 91000"),
          std::pair(tm_bounds_t{50 * k, 50 * k, 52 * k, 70 * k}, "11000 20000 91000 100000")}) {
        tm_view_area(file, {40 * k, 40 * k, 60 * k, 60 * k});
        tm_view_centre(file, box);
        EXPECT_EQ(seen(), area) << "too wide or too high alone";
    }
    tm_view_centre(file, {0, 0, 80 * k, 40 * k});
    tm_vext.bitmap_size = {0, 0, 200, 100};
    EXPECT_EQ(seen(), "-120000 -60000 200000 100000") << "a wider window fits it more closely";
    tm_view_all(file);
    EXPECT_EQ(seen(), "-48600 -1800 138600 91800");
}

// From 0 0 100000 100000 on: the side of what is seen then, about the middle of the box.
TEST_F(drawn_sheet, a_box_that_is_too_wide_too_high_or_too_small_becomes_a_quarter) {
    constexpr std::tuple<std::int32_t, std::int32_t, std::int32_t> rows[] = {
        // width height side
        {90 * k, 90 * k, 100 * k}, {91 * k, 10 * k, 364 * k}, {10 * k, 91 * k, 364 * k},
        {10 * k, 0, 100 * k},      {0, 0, 100 * k},           {0, 10 * k, 100 * k},
    };
    for (const auto& [width, height, side] : rows) {
        tm_view_area(file, {0, 0, 100 * k, 100 * k});
        tm_view_centre(file, {0, 0, width, height});
        const tm_bounds_t seen = tm_seen(tm_viewport(file));
        EXPECT_EQ(seen.xmax - seen.xmin, side) << width << ' ' << height;
        EXPECT_EQ(seen.xmax + seen.xmin, width) << width << ' ' << height;
        EXPECT_EQ(seen.ymax + seen.ymin, height) << width << ' ' << height;
    }
    tm_view_area(file, {0, 0, 1000 * k, 1000 * k});
    for (const auto& [width, height, side] : {std::tuple{99 * k, 0, 396 * k}, std::tuple{0, 0, 80 * k}}) {
        tm_view_area(file, {0, 0, 1000 * k, 1000 * k});
        tm_view_centre(file, {0, 0, width, height});
        EXPECT_EQ(tm_seen(tm_viewport(file)).xmax * 2 - width, side) << width;
    }
    // Smaller than the aperture in both directions, or only in one.
    for (const auto& [width, height, side] :
         {std::tuple{9 * k, 9 * k, 100 * k}, {10 * k, 9 * k, 10 * k}, {9 * k, 10 * k, 10 * k}}) {
        tm_view_area(file, {0, 0, 100 * k, 100 * k});
        tm_view_area(file, {0, 0, width, height});
        const tm_bounds_t seen = tm_seen(tm_viewport(file));
        EXPECT_EQ(seen.xmax - seen.xmin, side) << width << ' ' << height;
    }
}

TEST_F(drawn_sheet, each_sheet_keeps_its_own_view) {
    tm_view_area(file, {10 * k, 20 * k, 20 * k, 30 * k});
    tm_file_index_t other = 0;
    STATUS_T status;
    tm_file_create_new(tm_string("below"), tm_string("sheet"), other, status);
    tm_view_area(other, {0, 0, 5 * k, 5 * k});
    EXPECT_EQ(text_of(tm_seen(tm_viewport(file))), "10000 20000 20000 30000");
    tm_file_record(other).dirname = tm_string("another");
    EXPECT_EQ(text_of(tm_seen(tm_viewport(other))), "-20000 -20000 1020000 1020000");
    tm_file_close(other, false, status);
    tm_file_select(file, status);
}

TEST_F(drawn_sheet, cursor_steps_move_the_pointer_on_the_grid) {
    static tm_pixel pointer;
    tm_shell.move_pointer = [](std::int32_t x, std::int32_t y) { pointer = {x, y}; };
    struct row {
        tm_bounds_t area;
        tm_point_t from;
        char direction;
        std::int32_t steps;
        tm_point_t to;
        tm_pixel pixel;
    };
    constexpr row rows[] = {
        {{0, 0, 100 * k, 100 * k}, {11 * k, 19 * k}, 'R', 1, {15 * k, 20 * k}, {15, 80}},
        {{0, 0, 100 * k, 100 * k}, {15 * k, 20 * k}, 'U', 4, {15 * k, 40 * k}, {15, 60}},
        {{0, 0, 100 * k, 100 * k}, {5 * k, 20 * k}, 'L', 4, {0, 20 * k}, {0, 80}},
        {{0, 0, 100 * k, 100 * k}, {95 * k, 20 * k}, 'R', 4, {100 * k, 20 * k}, {99, 80}},
        {{0, 0, 700 * k, 700 * k}, {0, 20 * k}, 'D', 1, {0, 10 * k}, {0, 98}},  // 5000 units are no pixel
    };
    for (const row& row : rows) {
        tm_view_area(file, row.area);
        tm_vext.obj_pos = row.from;
        tm_cursor_step(file, row.direction, row.steps);
        EXPECT_EQ(tm_vext.obj_pos.x, row.to.x) << row.direction << row.steps;
        EXPECT_EQ(tm_vext.obj_pos.y, row.to.y) << row.direction << row.steps;
        EXPECT_EQ(pointer.x, row.pixel.x) << row.direction << row.steps;
        EXPECT_EQ(pointer.y, row.pixel.y) << row.direction << row.steps;
    }
    tm_shell = tm_default_shell;
}

}  // namespace
