// What the Context page shows.
#include "schematic/viewport.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "foundation/context.h"
#include "foundation/shell.h"
#include "schematic/page_area.h"
#include "schematic/snap.h"

namespace {

constexpr double least_coordinate = std::numeric_limits<std::int32_t>::min();
constexpr double most_coordinate = std::numeric_limits<std::int32_t>::max();
constexpr double coordinates = 4294967296.0;
constexpr double least_share = 0.1, most_share = 0.9, chosen_share = 0.25;
constexpr std::int32_t least_box = 20'000;  // what a point is shown with

struct direction_row {
    char letter;
    int x, y;
};
constexpr direction_row directions[] = {{'U', 0, 1}, {'D', 0, -1}, {'L', -1, 0}, {'R', 1, 0}};

direction_row direction_of(char letter) {
    for (const direction_row& row : directions)
        if (row.letter == tm_upper_case(letter)) return row;
    return {letter, 0, 0};
}

struct middle_t {
    double x, y;
};
middle_t middle_of(const tm_viewport_t& viewport) {
    return {viewport.left + viewport.units * viewport.width / 2,
            viewport.top - viewport.units * viewport.height / 2};
}

// Model units per pixel and the middle, held so that what is seen lies within 32 bits.
tm_viewport_t make_viewport(middle_t middle, double units, std::int32_t width, std::int32_t height) {
    tm_viewport_t made;
    made.width = std::max(width, 1);
    made.height = std::max(height, 1);
    made.units = std::clamp(units, tm_least_units, (coordinates - 1) / std::max(made.width, made.height));
    const double across = made.units * made.width, up = made.units * made.height;
    made.left = std::clamp(middle.x - across / 2, least_coordinate, most_coordinate - across);
    made.top = std::clamp(middle.y + up / 2, least_coordinate + up, most_coordinate);
    return made;
}

// What is kept of a file: the area asked for; the sheet's directory says whether it is still the same sheet.
struct kept_area {
    bool is_set = false;
    std::string sheet;
    tm_bounds_t area;
};
std::array<kept_area, tm_max_open_files> kept;

kept_area* kept_of(tm_file_index_t file_index) {
    if (file_index < 1 || static_cast<std::size_t>(file_index) > kept.size()) return nullptr;
    const auto slot = static_cast<std::size_t>(file_index - 1);
    const std::string_view sheet = tm_view(tm_vext.filear[slot].dirname);
    if (kept[slot].sheet != sheet) kept[slot] = {false, std::string(sheet), {}};
    return &kept[slot];
}

void keep(tm_file_index_t file_index, const tm_bounds_t& area) {
    kept_area* const own = kept_of(file_index);
    if (own == nullptr) return;
    own->is_set = true;
    own->area = area;
}

tm_bounds_t area_about(middle_t middle, double width, double height) {
    return {tm_coordinate(middle.x - width / 2), tm_coordinate(middle.y - height / 2),
            tm_coordinate(middle.x + width / 2), tm_coordinate(middle.y + height / 2)};
}

// The same size of what is seen, about another middle.
void move_to(tm_file_index_t file_index, middle_t middle) {
    const tm_viewport_t seen = tm_viewport(file_index);
    keep(file_index, area_about(middle, seen.units * seen.width, seen.units * seen.height));
}

}  // namespace

tm_viewport_t tm_fit(const tm_bounds_t& area, std::int32_t width, std::int32_t height) {
    const tm_box_t box = tm_box(area);
    const double units =
        std::max((box.xmax - box.xmin) / std::max(width, 1), (box.ymax - box.ymin) / std::max(height, 1));
    return make_viewport({(box.xmin + box.xmax) / 2, (box.ymin + box.ymax) / 2}, units, width, height);
}

tm_pixel tm_model_to_pixel(const tm_viewport_t& viewport, const tm_point_t& at) {
    const tm_spot_t pixel = tm_pixels(viewport, tm_spot(at));
    return {static_cast<std::int32_t>(std::floor(pixel.x)), static_cast<std::int32_t>(std::floor(pixel.y))};
}

tm_point_t tm_pixel_to_model(const tm_viewport_t& viewport, tm_pixel at) {
    return {tm_coordinate(viewport.left + (at.x + 0.5) * viewport.units),
            tm_coordinate(viewport.top - (at.y + 0.5) * viewport.units)};
}

tm_bounds_t tm_seen(const tm_viewport_t& viewport) {
    return area_about(middle_of(viewport), viewport.units * viewport.width, viewport.units * viewport.height);
}

tm_viewport_t tm_viewport_sized(tm_file_index_t file_index, std::int32_t width, std::int32_t height) {
    const kept_area* const own = kept_of(file_index);
    return tm_fit(own != nullptr && own->is_set ? own->area : tm_whole_page(file_index), width, height);
}

tm_viewport_t tm_viewport(tm_file_index_t file_index) {
    return tm_viewport_sized(file_index, tm_vext.bitmap_size.xmax, tm_vext.bitmap_size.ymax);
}

void tm_view_all(tm_file_index_t file_index) { keep(file_index, tm_whole_page(file_index)); }

void tm_view_area(tm_file_index_t file_index, const tm_bounds_t& area) {
    const tm_viewport_t seen = tm_viewport(file_index);
    const tm_box_t box = tm_box(area);
    const bool is_point = box.xmax - box.xmin < seen.units * tm_vext.pick_aperture.x &&
                          box.ymax - box.ymin < seen.units * tm_vext.pick_aperture.y;
    if (is_point) return move_to(file_index, {(box.xmin + box.xmax) / 2, (box.ymin + box.ymax) / 2});
    keep(file_index, area);
}

void tm_view_centre(tm_file_index_t file_index, const tm_bounds_t& box) {
    const tm_viewport_t seen = tm_viewport(file_index);
    const tm_box_t at = tm_box(box);
    const middle_t middle = {(at.xmin + at.xmax) / 2, (at.ymin + at.ymax) / 2};
    const double width = std::max<double>(at.xmax - at.xmin, least_box);
    const double height = std::max<double>(at.ymax - at.ymin, least_box);
    const double across = seen.units * seen.width, up = seen.units * seen.height;
    const bool is_small = std::max(width / across, height / up) < least_share;
    const bool is_large = at.xmax - at.xmin > most_share * across || at.ymax - at.ymin > most_share * up;
    if (!is_small && !is_large) return move_to(file_index, middle);
    keep(file_index, area_about(middle, width / chosen_share, height / chosen_share));
}

void tm_view_step(tm_file_index_t file_index, char direction, std::int32_t steps) {
    const direction_row towards = direction_of(direction);
    const tm_viewport_t seen = tm_viewport(file_index);
    const tm_box_t page = tm_box(tm_page_area(file_index));
    const double step = seen.units * steps / tm_viewport_steps;
    const middle_t middle = middle_of(seen);
    move_to(file_index, {std::clamp(middle.x + towards.x * step * seen.width, page.xmin, page.xmax),
                         std::clamp(middle.y + towards.y * step * seen.height, page.ymin, page.ymax)});
}

void tm_cursor_step(tm_file_index_t file_index, char direction, std::int32_t steps) {
    const direction_row towards = direction_of(direction);
    const tm_viewport_t seen = tm_viewport(file_index);
    const tm_bounds_t area = tm_seen(seen);
    const double grid = tm_snap_step;
    const double step = std::max(std::ceil(seen.units / grid), 1.0) * grid * steps;
    const tm_point_t from = tm_snapped(tm_vext.obj_pos);
    tm_vext.obj_pos = {tm_coordinate(std::clamp<double>(from.x + towards.x * step, area.xmin, area.xmax)),
                       tm_coordinate(std::clamp<double>(from.y + towards.y * step, area.ymin, area.ymax))};
    const tm_pixel at = tm_model_to_pixel(seen, tm_vext.obj_pos);
    tm_vext.pixel_pos = {std::clamp(at.x, 0, seen.width - 1), std::clamp(at.y, 0, seen.height - 1)};
    tm_shell.move_pointer(tm_vext.pixel_pos.x, tm_vext.pixel_pos.y);
}
