// A sheet made for a test, seen through a viewport of 100 by 100 pixels of 1000 units each, and a canvas that
// writes down what is drawn: "line white 0 1: 50,50 70,50" (colour, dash, width), "fill red: ...", "point
// ...", "text white 6x10 r1 50,50: AB".
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "foundation/context.h"
#include "schematic/object_make.h"
#include "schematic/sheet_draw.h"
#include "schematic/sheet_file.h"

inline constexpr std::int32_t k = 1000;  // model units to the pixel

struct recording_canvas final : tm_canvas {
    std::vector<std::string> drawn;
    std::int32_t largest = 0;  // coordinate of a line or filling
    std::int32_t width() const override { return 100; }
    std::int32_t height() const override { return 100; }
    void clear() override { drawn.clear(); }
    void polyline(std::span<const tm_pixel> places, const tm_pen& pen) override {
        drawn.push_back("line " + name(pen.colour) + " " + std::to_string(static_cast<int>(pen.dash)) + " " +
                        std::to_string(pen.width) + ":" + list(places));
    }
    void fill(std::span<const tm_pixel> corners, tm_colour colour) override {
        drawn.push_back("fill " + name(colour) + ":" + list(corners));
    }
    void dots(tm_pixel, tm_pixel, tm_pixel, tm_colour) override {}
    void points(std::span<const tm_pixel> places, tm_colour colour) override {
        drawn.push_back("points " + name(colour) + ":" + list(places));
    }
    void text(tm_pixel at, std::string_view text, const tm_lettering& how) override {
        drawn.push_back("text " + name(how.colour) + " " + std::to_string(how.cell_width) + "x" +
                        std::to_string(how.cell_height) + " r" + std::to_string(how.quarter_turns) +
                        list({&at, 1}) + ": " + std::string(text));
    }

private:
    static std::string name(tm_colour colour) {
        constexpr const char* names[] = {"black", "red",    "green",   "blue",
                                         "cyan",  "yellow", "magenta", "white"};
        return names[static_cast<int>(colour)];
    }
    std::string list(std::span<const tm_pixel> places) {
        std::string text;
        for (const tm_pixel& at : places) {
            largest = std::max({largest, std::abs(at.x), std::abs(at.y)});
            text += " " + std::to_string(at.x) + "," + std::to_string(at.y);
        }
        return text;
    }
};

class drawn_sheet : public testing::Test {
protected:
    drawn_sheet() {
        tm_vext.init_done = tm_vext.display_on = true;
        tm_vext.bitmap_size = {0, 0, 100, 100};
        tm_vext.pick_aperture = {10, 10};
        STATUS_T status;
        tm_file_create_new(tm_string("drawn"), tm_string("sheet"), file, status);
        main = open(tm_type_main, {}, tm_main);
        page = add(tm_type_page, tm_page);
        tm_object(file, page).bounds = {0, 0, 90 * k, 90 * k};
    }
    ~drawn_sheet() override {
        while (!open_objects.empty()) close();
        STATUS_T status;
        tm_file_close(file, false, status);
        tm_vext = tm_defref_var_rec_t{};
    }

    template <typename Make>
    std::int16_t open(std::int16_t type, tm_point_t at, Make make) {
        std::int16_t id = 0;
        STATUS_T status;
        tm_object_create(file, type, at.x, at.y, id, status);
        make();
        open_objects.push_back(id);
        return id;
    }
    void close(int count = 1) {
        STATUS_T status;
        for (; count > 0; --count) {
            tm_object_close(file, open_objects.back(), status);
            open_objects.pop_back();
        }
    }
    template <typename Make>
    std::int16_t add(std::int16_t type, Make make, tm_point_t at = {}) {
        const std::int16_t id = open(type, at, make);
        close();
        return id;
    }
    std::int16_t line(tm_point_t from, tm_point_t to, std::int8_t colour = 7, std::int8_t width = 1) {
        return add(tm_type_line_2d, [=, this] { tm_line_2dreal(0, colour, width, from, to, bounds); });
    }
    std::int16_t text(const char* name, const char* value, tm_point_t at, std::int32_t height,
                      std::int8_t rotate = 0) {
        return add(tm_type_property_2d, [&] {
            tm_name_record_t prop_name;
            tm_value_record_t prop_value;
            tm_copy_name(tm_string(name), prop_name);
            tm_copy_value(tm_string(value), prop_value);
            tm_property_2dreal(prop_name, prop_value, false, true, 5, rotate, height, at, bounds);
        });
    }
    // The objects of a symbol up to its graphics; close(3) ends it.
    std::int16_t open_symbol() {
        open(tm_type_symbol_family, {}, tm_symbol_family);
        const std::int16_t id = open(tm_type_symbol, {}, [] { tm_symbol(tm_string("gate/symbol.tm_1")); });
        open(tm_type_body, {}, tm_body);
        open(tm_type_graphics, {}, tm_graphics);
        return id;
    }
    std::int16_t vertex(std::int16_t net, tm_point_t at, bool dotted = false) {
        return add(tm_type_vertex_2d, [=, this] { tm_vertex_2dreal(net, dotted, at, bounds); });
    }
    void set_status(std::int16_t id, std::int16_t bits) { tm_object(file, id).status = bits; }

    const std::vector<std::string>& draw(tm_viewport_t viewport = {0, 100 * k, k, 100, 100}) {
        canvas.clear();
        tm_draw_sheet(file, viewport, canvas);
        std::erase(canvas.drawn, "line blue 0 1: 0,100 90,100 90,10 0,10 0,100");  // the page's border
        return canvas.drawn;
    }

    recording_canvas canvas;
    tm_file_index_t file = 0;
    std::int16_t main = 0, page = 0;
    tm_bounds_t bounds;
    std::vector<std::int16_t> open_objects;
};

using lines = std::vector<std::string>;
