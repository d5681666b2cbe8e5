// Plots drawn by cairo.
#include "canvas/cairo_canvas.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>
#include <cairo.h>

#include <algorithm>
#include <array>

#include "canvas/plot_text.h"

namespace {

struct ink {
    double red, green, blue;
};
// By colour, on white paper.
constexpr std::array<ink, 9> inks = {{
    /* black   */ {1, 1, 1},
    /* red     */ {0.80, 0, 0},
    /* green   */ {0, 0.50, 0},
    /* blue    */ {0, 0, 0.85},
    /* cyan    */ {0, 0.50, 0.60},
    /* yellow  */ {0.60, 0.45, 0},
    /* magenta */ {0.65, 0, 0.65},
    /* white   */ {0, 0, 0},
    /* grey    */ {0.88, 0.88, 0.88},
}};

struct dash_row {
    std::array<double, 6> pattern;
    int length;
};
constexpr std::array<dash_row, 5> dashes = {{
    /* solid        */ {{}, 0},
    /* dashed       */ {{6, 6}, 2},
    /* dotted       */ {{3, 6}, 2},
    /* dash_dot     */ {{12, 6, 3, 6}, 4},
    /* dash_dot_dot */ {{12, 6, 3, 6, 3, 6}, 6},
}};

constexpr double points_per_pixel = 0.75;

cairo_status_t append(void* bytes, const unsigned char* data, unsigned length) {
    static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

cairo_surface_t* create_surface(std::int32_t width, std::int32_t height, tm_plot_format format,
                                std::string& bytes) {
    switch (format) {
        case tm_plot_format::svg:
            return cairo_svg_surface_create_for_stream(append, &bytes, width * points_per_pixel,
                                                       height * points_per_pixel);
        case tm_plot_format::pdf:
            return cairo_pdf_surface_create_for_stream(append, &bytes, width * points_per_pixel,
                                                       height * points_per_pixel);
        default:
            return cairo_image_surface_create(CAIRO_FORMAT_RGB24, width * cairo_png_scale,
                                              height * cairo_png_scale);
    }
}

}  // namespace

void cairo_canvas::closer::operator()(cairo_t* context) const { cairo_destroy(context); }
void cairo_canvas::closer::operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }

cairo_canvas::cairo_canvas(std::int32_t width, std::int32_t height, tm_plot_format format)
    : width_(width),
      height_(height),
      format_(format),
      surface_(create_surface(width, height, format, bytes_)),
      context_(cairo_create(surface_.get())) {
    const double scale = format == tm_plot_format::png ? cairo_png_scale : points_per_pixel;
    cairo_scale(context_.get(), scale, scale);
    clear();
}

void cairo_canvas::use_colour(tm_colour colour) {
    const ink& used = inks[static_cast<std::size_t>(colour)];
    cairo_set_source_rgb(context_.get(), used.red, used.green, used.blue);
}

void cairo_canvas::clear() {
    use_colour(tm_colour::black);
    cairo_paint(context_.get());
}

// Lines run through the middle of their pixels.
void cairo_canvas::trace_path(std::span<const tm_pixel> points) {
    cairo_new_path(context_.get());
    for (const tm_pixel& at : points) cairo_line_to(context_.get(), at.x + 0.5, at.y + 0.5);
}

void cairo_canvas::polyline(std::span<const tm_pixel> points, const tm_pen& pen) {
    const dash_row& dash = dashes[static_cast<std::size_t>(pen.dash)];
    use_colour(pen.colour);
    cairo_set_line_cap(context_.get(), CAIRO_LINE_CAP_BUTT);
    cairo_set_line_join(context_.get(), CAIRO_LINE_JOIN_MITER);
    cairo_set_line_width(context_.get(), std::max(pen.width, 1));
    cairo_set_dash(context_.get(), dash.pattern.data(), dash.length, 0);
    trace_path(points);
    cairo_stroke(context_.get());
}

void cairo_canvas::fill(std::span<const tm_pixel> corners, tm_colour colour) {
    use_colour(colour);
    cairo_set_fill_rule(context_.get(), CAIRO_FILL_RULE_EVEN_ODD);
    trace_path(corners);
    cairo_fill(context_.get());
}

void cairo_canvas::dots(tm_pixel from, tm_pixel step, tm_pixel count, tm_colour colour) {
    use_colour(colour);
    cairo_new_path(context_.get());
    for (std::int32_t j = 0; j < count.y; ++j)
        for (std::int32_t i = 0; i < count.x; ++i)
            cairo_rectangle(context_.get(), from.x + double(i) * step.x, from.y + double(j) * step.y, 1, 1);
    cairo_fill(context_.get());
}

void cairo_canvas::text(tm_pixel at, std::string_view text, const tm_lettering& how) {
    use_colour(how.colour);
    cairo_set_line_cap(context_.get(), CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(context_.get(), CAIRO_LINE_JOIN_ROUND);
    cairo_set_line_width(context_.get(), 1);
    cairo_set_dash(context_.get(), nullptr, 0, 0);
    cairo_new_path(context_.get());
    for (const tm_fine_path& path : tm_text_paths(at, text, how)) {
        cairo_new_sub_path(context_.get());
        for (const tm_fine_point& point : path) cairo_line_to(context_.get(), point.x + 0.5, point.y + 0.5);
    }
    cairo_stroke(context_.get());
}

std::string cairo_canvas::finish(std::string& error) {
    cairo_status_t status = cairo_status(context_.get());
    context_.reset();
    if (status == CAIRO_STATUS_SUCCESS && format_ == tm_plot_format::png)
        status = cairo_surface_write_to_png_stream(surface_.get(), append, &bytes_);
    cairo_surface_finish(surface_.get());
    if (status == CAIRO_STATUS_SUCCESS) status = cairo_surface_status(surface_.get());
    error = status == CAIRO_STATUS_SUCCESS ? "" : cairo_status_to_string(status);
    return std::move(bytes_);
}
