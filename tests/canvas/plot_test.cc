// Plots of a small picture: what a plotter is told, and the dots of a PNG.
#include "canvas/plot.h"
#include "canvas/stroke_font.h"

#include <cairo.h>
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace {

// 100 x 50 pixels: a hundred plotter units to the pixel.
std::string bytes_of(tm_plot_format format, const std::function<void(tm_canvas&)>& draw) {
    std::string error;
    const std::string bytes = tm_plot_bytes({100, 50, draw}, format, error);
    EXPECT_EQ(error, "");
    return bytes;
}

std::string plotter_text(const std::function<void(tm_canvas&)>& draw) {
    const std::string text = bytes_of(tm_plot_format::hpgl, draw);
    const std::string begin = "IN;IP250,250,10250,7450;IW250,250,10250,5250;", end = "PU;SP0;\n";
    EXPECT_TRUE(text.starts_with(begin) && text.ends_with(end)) << text;
    return text.substr(begin.size(), text.size() - begin.size() - end.size());
}

TEST(plot, tells_a_plotter_pens_line_types_and_places_above_the_lower_edge) {
    const struct {
        const char* what;
        std::function<void(tm_canvas&)> draw;
        const char* text;
    } cases[] = {
        {"a corner",
         [](tm_canvas& c) {
             c.polyline(std::vector<tm_pixel>{{0, 0}, {10, 0}, {10, 50}}, {});
         },
         "SP1;PU250,5250;PD;PD1250,5250;PD1250,250;"},
        {"connected segments of two dashes",
         [](tm_canvas& c) {
             c.segment({0, 50}, {1, 50}, {tm_colour::yellow, tm_dash::solid, 1});
             c.segment({1, 50}, {2, 50}, {tm_colour::yellow, tm_dash::solid, 0});
             c.segment({2, 50}, {3, 50}, {tm_colour::yellow, tm_dash::dashed, 1});
             c.segment({3, 50}, {4, 50}, {tm_colour::cyan, tm_dash::solid, 3});
         },
         "SP6;PU250,250;PD;PD350,250;PD450,250;PU;LT2,9.74;PU450,250;PD;PD550,250;"
         "PU;SP5;LT;PW7.50;PU550,250;PD;PD650,250;"},
        {"dots",
         [](tm_canvas& c) {
             c.dots({0, 50}, {2, 1}, {2, 1}, tm_colour::red);
         },
         "SP2;PU250,250;PD;PU450,250;PD;"},
        {"a triangle",
         [](tm_canvas& c) {
             c.fill(std::vector<tm_pixel>{{0, 50}, {1, 50}, {0, 49}}, tm_colour::green);
         },
         "SP3;PU250,250;PD;PM0;PD350,250;PD250,350;PM2;FP;EP;PU;"},
        {"black, which is paper, and what was cleared",
         [](tm_canvas& c) {
             c.segment({0, 0}, {9, 9}, {});
             c.clear();
             c.segment({0, 0}, {9, 9}, {tm_colour::black, tm_dash::solid, 1});
         },
         ""},
        {"a bar, turned",
         [](tm_canvas& c) {
             c.text({50, 25}, "-", {tm_colour::white, 22, 32, 1});
         },
         "SP1;PU6850,3088;PD;PD6850,4612;"},
    };
    for (const auto& [what, draw, text] : cases) EXPECT_EQ(plotter_text(draw), text) << what;
}

TEST(plot, has_a_size_within_limits_and_a_format_by_its_name) {
    std::string error;
    for (const auto& [width, message] :
         {std::pair(0, "no picture of that size"), std::pair(1, ""), std::pair(tm_plot_largest, ""),
          std::pair(tm_plot_largest + 1, "no picture of that size")}) {
        tm_plot_bytes({width, 1, [](tm_canvas&) {}}, tm_plot_format::hpgl, error);
        EXPECT_EQ(error, message) << width;
    }
    for (const auto& [name, format] :
         {std::pair("a.PnG", tm_plot_format::png), std::pair(".svg", tm_plot_format::svg),
          std::pair("a.pdf.plt", tm_plot_format::hpgl), std::pair("pdf", tm_plot_format::hpgl)})
        EXPECT_EQ(tm_plot_format_of(name), format) << name;
    for (const char none : {'\x1f', '\x7f', ' '}) EXPECT_TRUE(tm_font_strokes(none, 12, 20).empty());
    for (const char some : {'!', '~'}) EXPECT_FALSE(tm_font_strokes(some, 12, 20).empty());
}

struct reader {
    std::string_view rest;
    static cairo_status_t read(void* from, unsigned char* data, unsigned length) {
        auto& rest = static_cast<reader*>(from)->rest;
        if (rest.size() < length) return CAIRO_STATUS_READ_ERROR;
        std::memcpy(data, rest.data(), length);
        rest.remove_prefix(length);
        return CAIRO_STATUS_SUCCESS;
    }
};

TEST(plot, draws_dark_inks_and_dashes_on_white_paper) {
    const std::string bytes = bytes_of(tm_plot_format::png, [](tm_canvas& c) {
        c.segment({10, 5}, {40, 5}, {tm_colour::white, tm_dash::dashed, 1});
        c.segment({10, 9}, {40, 9}, {tm_colour::red, tm_dash::solid, 1});
        c.dots({60, 5}, {1, 1}, {2, 2}, tm_colour::white);
    });
    reader source{bytes};
    cairo_surface_t* const picture = cairo_image_surface_create_from_png_stream(reader::read, &source);
    ASSERT_EQ(cairo_image_surface_get_width(picture), 200);
    const auto dot = [&](int x, int y) {  // two dots to the pixel
        std::uint32_t value = 0;
        std::memcpy(
            &value,
            cairo_image_surface_get_data(picture) + 2 * y * cairo_image_surface_get_stride(picture) + 8 * x,
            4);
        return value & 0xffffff;
    };
    constexpr std::uint32_t paper = 0xffffff, ink = 0, red = 0xcc0000;
    const struct {
        int x, y;
        std::uint32_t colour;
    } places[] = {{12, 5, ink},  {15, 5, ink},   {18, 5, paper}, {21, 5, paper}, {24, 5, ink},
                  {9, 5, paper}, {12, 4, paper}, {11, 9, red},   {39, 9, red},   {41, 9, paper},
                  {60, 5, ink},  {61, 6, ink},   {62, 5, paper}};
    for (const auto& [x, y, colour] : places) EXPECT_EQ(dot(x, y), colour) << x << "," << y;
    cairo_surface_destroy(picture);
}

}  // namespace
