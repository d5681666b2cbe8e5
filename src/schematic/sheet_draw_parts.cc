// Page border, grid, junctions and probes.
#include "schematic/sheet_draw_parts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <string>
#include <unordered_map>
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

struct probe_text {
    tm_pixel corner;  // upper left
    std::string text;
};

void draw_probe(const tm_pixel& at, const probe_text& probe, tm_canvas& canvas) {
    const auto width = static_cast<std::int32_t>(probe.text.size()) * probe_width;
    const std::int32_t left = probe.corner.x - 2, right = probe.corner.x + width + 2;
    const std::int32_t top = probe.corner.y - 1, bottom = probe.corner.y + tm_probe_height + 1;
    const tm_pixel frame[] = {{left, top}, {right, top}, {right, bottom}, {left, bottom}, {left, top}};
    canvas.fill(std::span(frame).first(4), tm_colour::black);
    canvas.polyline(frame, {tm_colour::yellow});
    canvas.segment(at, {left, bottom}, {tm_colour::yellow});
    canvas.text(probe.corner, probe.text, {tm_colour::yellow, probe_width, tm_probe_height, 0});
}

std::string text_of(const tm_probe_display_t& probe) {
    return std::string(probe.text != nullptr ? probe.text(probe) : tm_view(probe.name));
}

// The canvas's edges push a text inward.
tm_pixel text_corner(tm_pixel at, std::size_t length, std::int32_t above, const tm_viewport_t& viewport) {
    const auto width = static_cast<std::int32_t>(length) * probe_width + probe_gap;
    return {std::max(std::min(at.x + probe_gap, viewport.width - width), probe_gap),
            std::max(at.y - probe_gap - probe_line * above, probe_gap)};
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
                    tm_canvas& canvas) {
    std::unordered_map<std::int16_t, std::int32_t> drawn;  // by place
    const auto* probe = static_cast<const tm_probe_display_t*>(net.ptrto_probe);
    for (; probe != nullptr; probe = probe->next) {
        const tm_object_gene_rec_t* const place = reader.object(probe->vertex);
        if (place == nullptr) continue;
        const tm_pixel at = tm_model_to_pixel(viewport, place->origin);
        if (at.x < 0 || at.y < 0 || at.x >= viewport.width || at.y >= viewport.height) continue;
        probe_text text{{}, text_of(*probe)};
        text.corner = text_corner(at, text.text.size(), ++drawn[probe->vertex], viewport);
        draw_probe(at, text, canvas);
    }
}
