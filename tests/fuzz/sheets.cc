// Sheet files and links: opened, walked, drawn, checked for properties, saved.
#include <cstdlib>
#include <filesystem>

#include "canvas/canvas.h"
#include "foundation/context.h"
#include "fuzz/targets.h"
#include "schematic/object_property.h"
#include "schematic/object_walk.h"
#include "schematic/sheet_draw.h"
#include "schematic/sheet_file.h"
#include "support/places/places.h"

namespace {

struct blind_canvas final : tm_canvas {
    std::int32_t width() const override { return 100; }
    std::int32_t height() const override { return 100; }
    void clear() override {}
    void polyline(std::span<const tm_pixel>, const tm_pen&) override {}
    void fill(std::span<const tm_pixel>, tm_colour) override {}
    void dots(tm_pixel, tm_pixel, tm_pixel, tm_colour) override {}
    void points(std::span<const tm_pixel>, tm_colour) override {}
    void text(tm_pixel, std::string_view, const tm_lettering&) override {}
};

void use_sheet(tm_file_index_t file) {
    tm_string_record_t value;
    bool found = false;
    for (const std::int16_t id : tm_instances(file)) {
        yx_get_valueof_prop_inst(file, id, tm_string("SIZE"), value, found);
        for (const std::int16_t pin : tm_pins(file, id))
            yx_get_valueof_prop_pinpropfam(file, pin, tm_string("SIZE"), value, found);
    }
    for (const std::int16_t id : tm_symbols(file))
        for (const std::int16_t pin : tm_pins(file, id))
            yx_get_valueof_prop_pin(file, pin, tm_string("SIZE"), value, found);
    blind_canvas canvas;
    for (const double scale : {1e3, 1e5}) tm_draw_sheet(file, {0, 100 * scale, scale, 100, 100}, canvas);
}

void open_and_use() {
    tm_vext = {};
    tm_vext.init_done = tm_vext.display_on = true;
    tm_file_index_t file = 0;
    STATUS_T status;
    tm_file_open(tm_string("."), tm_string("sheet"), file, status);
    if (status.all != 0) return;
    use_sheet(file);
    tm_file_close(file, true, status);
    if (status.all == 0) std::filesystem::remove("sheet.tm_2");
}

}  // namespace

void fz_feed_sheet(const std::string& bytes) {
    fz_write("sheet.tm", "_1");
    fz_write("sheet.tm_1", bytes);
    open_and_use();
}

void fz_feed_link(const std::string& bytes) {
    fz_write("sheet.tm", bytes);
    open_and_use();
}

void fz_seed_sheets(const std::string& folder) {
    std::filesystem::create_directories(folder);
    std::exit(std::system((tst_program_dir() + "/example_sheets '" + folder + "' > /dev/null").c_str()));
}
