// Page border, grid, junctions and probes.
#include "schematic/sheet_draw_parts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <string>
#include <vector>

#include "schematic/page_area.h"
#include "schematic/probe_display.h"

namespace {

constexpr std::int32_t least_junction = 2, most_junction = 200;  // pixels
constexpr std::size_t junction_corners = 16;
constexpr std::int32_t probe_gap = 6, probe_width = 10, probe_line = tm_probe_height + 4;  // pixels

// Every 1st, 2nd, 5th, 10th, 20th ... dot of the grid, so that they keep their distance.
double thinned(double step, double units) {
    constexpr double multiples[] = {1, 2, 5};
    for (double decade = 1; decade < 1e9; decade *= 10)
        for (const double multiple : multiples)
            if (step * multiple * decade >= units * tm_least_grid) return step * multiple * decade;
    return 0;
}

struct range_t {
    double from, to;
};

// The places of the grid's lines in one direction that can be seen.
std::vector<double> grid_lines(range_t grid, range_t seen, double step) {
    std::vector<double> lines;
    const double first = std::max(std::ceil((seen.from - grid.from) / step), 0.0);
    for (double at = grid.from + first * step; at <= std::min(grid.to, seen.to); at += step)
        lines.push_back(at);
    return lines;
}

void draw_grid(const tm_object_grid_rec_t& grid, const tm_viewport_t& viewport, tm_canvas& canvas,
               tm_colour colour) {
    const double step = grid.step_point > 0 ? thinned(grid.step_point, viewport.units) : 0;
    if (step <= 0) return;
    tm_box_t area;
    const tm_spot_t at = tm_spot(grid.origin);
    tm_enclose(area, at);
    tm_enclose(area, tm_spot_t{at.x + grid.opposite_pt.x, at.y + grid.opposite_pt.y});
    const double right = viewport.left + viewport.units * viewport.width;
    const double bottom = viewport.top - viewport.units * viewport.height;
    const std::vector<double> columns = grid_lines({area.xmin, area.xmax}, {viewport.left, right}, step);
    std::vector<tm_pixel> dots;
    for (const double y : grid_lines({area.ymin, area.ymax}, {bottom, viewport.top}, step))
        for (const double x : columns) {
            const tm_spot_t pixel = tm_pixels(viewport, {x, y});
            dots.push_back({static_cast<std::int32_t>(std::floor(pixel.x)),
                            static_cast<std::int32_t>(std::floor(pixel.y))});
        }
    if (!dots.empty()) canvas.points(dots, colour);
}

// The sizes of a probe on a canvas.
struct probe_sizes {
    std::int32_t gap, width, height, line, border;

    explicit probe_sizes(const tm_canvas& canvas)
        : gap(scaled(canvas, probe_gap)),
          width(scaled(canvas, probe_width)),
          height(scaled(canvas, tm_probe_height)),
          line(scaled(canvas, probe_line)),
          border(scaled(canvas, 1)) {}

private:
    static std::int32_t scaled(const tm_canvas& canvas, std::int32_t length) {
        return static_cast<std::int32_t>(std::lround(length * canvas.scale()));
    }
};

bool overlap(const tm_bounds_t& a, const tm_bounds_t& b) {
    return a.xmin <= b.xmax && b.xmin <= a.xmax && a.ymin <= b.ymax && b.ymin <= a.ymax;
}

// Beside a place on the canvas, whose edges push a box inward.
tm_bounds_t box_beside(tm_pixel at, std::size_t length, const probe_sizes& sizes,
                       const tm_viewport_t& viewport) {
    const std::int32_t width = static_cast<std::int32_t>(length) * sizes.width;
    const std::int32_t left =
        std::max(std::min(at.x + sizes.gap, viewport.width - width - sizes.gap), sizes.gap);
    const std::int32_t top = std::max(at.y - sizes.gap - sizes.line, sizes.gap);
    return {left - 2 * sizes.border, top - sizes.border, left + width + 2 * sizes.border,
            top + sizes.height + sizes.border};
}

// The nearest free place above, or else below, of a box; where there is none it stays.
tm_bounds_t free_box(const tm_bounds_t& wanted, const tm_probe_boxes_t& drawn, const probe_sizes& sizes,
                     const tm_viewport_t& viewport) {
    const auto is_free = [&](const tm_bounds_t& box) {
        return box.ymin >= 0 && box.ymax < viewport.height &&
               std::ranges::none_of(drawn, [&](const tm_bounds_t& other) { return overlap(box, other); });
    };
    for (const std::int32_t way : {-sizes.line, sizes.line})
        for (tm_bounds_t box = wanted; box.ymin >= 0 && box.ymax < viewport.height;
             box.ymin += way, box.ymax += way)
            if (is_free(box)) return box;
    return wanted;
}

void draw_probe(const tm_pixel& at, const tm_bounds_t& box, std::string_view text, const probe_sizes& sizes,
                tm_canvas& canvas) {
    const tm_pixel frame[] = {{box.xmin, box.ymin},
                              {box.xmax, box.ymin},
                              {box.xmax, box.ymax},
                              {box.xmin, box.ymax},
                              {box.xmin, box.ymin}};
    canvas.fill(std::span(frame).first(4), tm_colour::black);
    canvas.polyline(frame, {tm_colour::yellow});
    canvas.segment(at, {box.xmin, box.ymin > at.y ? box.ymin : box.ymax}, {tm_colour::yellow});
    canvas.text({box.xmin + 2 * sizes.border, box.ymin + sizes.border}, text,
                {tm_colour::yellow, sizes.width, sizes.height, 0});
}

std::string text_of(const tm_probe_display_t& probe) {
    return std::string(probe.text != nullptr ? probe.text(probe) : tm_view(probe.name));
}

}  // namespace

void tm_draw_page(tm_file_index_t file_index, const tm_viewport_t& viewport, tm_canvas& canvas,
                  tm_colour colour) {
    const tm_box_t page = tm_box(tm_page_area(file_index));
    const tm_spot_t border[] = {{page.xmin, page.ymin},
                                {page.xmax, page.ymin},
                                {page.xmax, page.ymax},
                                {page.xmin, page.ymax},
                                {page.xmin, page.ymin}};
    tm_drawing_t drawing(viewport);
    tm_add_line(drawing, border, {colour}, tm_layer::page);
    tm_draw_list(drawing, canvas);
    const tm_reader_t reader(file_index);
    if (reader.file == nullptr || !tm_vext.grid_on) return;
    const auto* grid = reader.record<tm_type_grid_2d>(reader.file->grid_obj_id);
    if (grid != nullptr && grid->grid_on && tm_is_shown(*grid)) draw_grid(*grid, viewport, canvas, colour);
}

void tm_add_junction(tm_drawing_t& drawing, const tm_spot_t& at, tm_colour colour) {
    const auto radius = std::clamp(static_cast<std::int32_t>(tm_junction_size / drawing.viewport.units),
                                   least_junction, most_junction);
    std::array<tm_pixel, junction_corners + 1> circle;
    for (std::size_t i = 0; i < circle.size(); ++i) {
        const double angle = 2 * std::numbers::pi * static_cast<double>(i) / junction_corners;
        circle[i] = {static_cast<std::int32_t>(std::lround(radius * std::cos(angle))),
                     static_cast<std::int32_t>(std::lround(radius * std::sin(angle)))};
    }
    tm_add_mark(drawing, at, circle, {colour}, tm_layer::junction, true);
    tm_add_mark(drawing, at, circle, {colour}, tm_layer::junction_rim);
}

void tm_draw_probes(const tm_reader_t& reader, const tm_object_net_rec_t& net, const tm_viewport_t& viewport,
                    tm_canvas& canvas, tm_probe_boxes_t& drawn) {
    const probe_sizes sizes(canvas);
    const auto* probe = static_cast<const tm_probe_display_t*>(net.ptrto_probe);
    for (; probe != nullptr; probe = probe->next) {
        const tm_object_gene_rec_t* const place = reader.object(probe->vertex);
        if (place == nullptr) continue;
        const tm_pixel at = tm_model_to_pixel(viewport, place->origin);
        if (at.x < 0 || at.y < 0 || at.x >= viewport.width || at.y >= viewport.height) continue;
        const std::string text = text_of(*probe);
        const tm_bounds_t wanted = box_beside(at, text.size(), sizes, viewport);
        drawn.push_back(free_box(wanted, drawn, sizes, viewport));
        draw_probe(at, drawn.back(), text, sizes, canvas);
    }
}
