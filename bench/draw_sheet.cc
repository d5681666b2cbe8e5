// The picture of a sheet of 10,000 objects, without the window's own work, and what picking on it costs.
#include <benchmark/benchmark.h>

#include "schematic/object_make.h"
#include "schematic/pick.h"
#include "schematic/sheet_draw.h"
#include "schematic/sheet_file.h"

namespace {

constexpr std::int32_t columns = 32, pitch = 120'000;
constexpr std::int32_t width = 1200, height = 800;  // of the canvas, pixels

struct counting_canvas final : tm_canvas {
    std::size_t points_drawn = 0;
    std::int32_t width() const override { return ::width; }
    std::int32_t height() const override { return ::height; }
    void clear() override { points_drawn = 0; }
    void polyline(std::span<const tm_pixel> places, const tm_pen&) override { points_drawn += places.size(); }
    void fill(std::span<const tm_pixel> corners, tm_colour) override { points_drawn += corners.size(); }
    void dots(tm_pixel, tm_pixel, tm_pixel, tm_colour) override {}
    void text(tm_pixel, std::string_view text, const tm_lettering&) override { points_drawn += text.size(); }
};

struct maker {
    tm_file_index_t file = 0;
    tm_bounds_t bounds;

    template <typename Make, typename Children>
    std::int16_t add(std::int16_t type, tm_point_t at, Make make, Children children) {
        std::int16_t id = 0;
        STATUS_T status;
        tm_object_create(file, type, at.x, at.y, id, status);
        make();
        children();
        tm_object_close(file, id, status);
        return id;
    }
    template <typename Make>
    std::int16_t add(std::int16_t type, tm_point_t at, Make make) {
        return add(type, at, make, [] {});
    }
    void text(std::string_view name, std::string_view value, tm_point_t at) {
        tm_name_record_t prop_name;
        tm_value_record_t prop_value;
        tm_copy_name(tm_string(name), prop_name);
        tm_copy_value(tm_string(value), prop_value);
        add(tm_type_property_2d, at,
            [&] { tm_property_2dreal(prop_name, prop_value, false, true, 7, 0, 6000, at, bounds); });
    }
    std::int16_t symbol() {
        std::int16_t id = 0;
        const auto shape = [this] {
            for (std::int32_t y = 0; y <= 40'000; y += 10'000)
                add(tm_type_line_2d, {}, [&] { tm_line_2dreal(0, 6, 1, {0, y}, {60'000, y}, bounds); });
            add(tm_type_arc3p_2d, {60'000, 0}, [&] {
                tm_arc3p_2dreal(0, 6, {60'000, 0}, {80'000, 20'000}, {60'000, 40'000}, bounds);
            });
            add(tm_type_circle_2d, {83'000, 20'000}, [&] {
                tm_circle_real(0, 6, true, 0, {83'000, 20'000}, 3000, bounds);
            });
        };
        const auto parts = [&] {
            add(tm_type_body, {}, tm_body, [&] { add(tm_type_graphics, {}, tm_graphics, shape); });
            add(tm_type_pin_family, {}, tm_pin_family, [&] {
                for (const std::int32_t y : {0, 20'000, 40'000}) add(tm_type_pin, {0, y}, tm_pin);
            });
        };
        add(tm_type_symbol_family, {}, tm_symbol_family, [&] {
            const auto make = [] { tm_symbol(tm_string("gate/symbol.tm_1")); };
            id = add(tm_type_symbol, {}, make, parts);
        });
        return id;
    }
    void instance(std::int16_t symbol, tm_point_t at, std::int32_t number) {
        const auto make = [&] { tm_instance(symbol, static_cast<std::int8_t>(number & 3), number % 3 == 0); };
        add(tm_type_instance, at, make, [&] {
            add(tm_type_bodpropfam, {}, tm_bodpropfam, [&] {
                text("INST", "U" + std::to_string(number), {at.x, at.y + 50'000});
            });
            for (const std::int32_t y : {0, 20'000, 40'000})
                add(tm_type_pinpropfam, {at.x, at.y + y}, [] { tm_pinpropfam(0, false, 0, 0, 0); });
        });
    }
    void net(tm_point_t at, std::int32_t number) {
        const auto make = [] { tm_net(false, 0, 0); };
        add(tm_type_net, {}, make, [&] {
            std::int16_t corners[3] = {};
            add(tm_type_vertex_family, {}, tm_vertex_family, [&] {
                for (std::int32_t i = 0; i < 3; ++i)
                    corners[i] = add(tm_type_vertex_2d, {}, [&] {
                        tm_vertex_2dreal(0, i == 1, {at.x + i * 30'000, at.y + (i & 1) * 20'000}, bounds);
                    });
            });
            add(tm_type_graphics, {}, tm_graphics, [&] {
                add(tm_type_property_family, {}, tm_property_family,
                    [&] { text("NET", "net" + std::to_string(number), at); });
                for (int i = 0; i < 2; ++i)
                    add(tm_type_segment, {}, [&] { tm_segment(0, 2, 1, corners[i], corners[i + 1]); });
            });
        });
    }
    tm_file_index_t sheet(std::int16_t objects) {
        tm_vext.init_done = tm_vext.display_on = true;
        tm_vext.pick_aperture = {10, 10};
        STATUS_T status;
        tm_file_create_new(tm_string("bench"), tm_string("sheet"), file, status);
        const auto place = [](std::int32_t i) {
            return tm_point_t{i % columns * pitch, i / columns * pitch};
        };
        const auto is_full = [&](int share) {
            return tm_file_header(file).object_id_max > objects * share / 2;
        };
        add(tm_type_main, {}, tm_main, [&] {
            const std::int16_t gate = symbol();
            add(tm_type_instance_family, {}, tm_instance_family, [&] {
                for (std::int32_t i = 0; !is_full(1); ++i) instance(gate, place(i), i);
            });
            add(tm_type_net_family, {}, tm_net_family, [&] {
                for (std::int32_t i = 0; !is_full(2); ++i) net(place(i), i);
            });
        });
        return file;
    }
};

void close(tm_file_index_t file) {
    STATUS_T status;
    tm_file_close(file, false, status);
}

// The share of the page's width and height that is seen, in percent.
void draw_10000_objects(benchmark::State& state) {
    const tm_file_index_t file = maker{}.sheet(10'000);
    tm_bounds_t area = tm_page_area(file);
    area.xmax =
        area.xmin + static_cast<std::int32_t>((std::int64_t{area.xmax} - area.xmin) * state.range(0) / 100);
    area.ymax =
        area.ymin + static_cast<std::int32_t>((std::int64_t{area.ymax} - area.ymin) * state.range(0) / 100);
    counting_canvas canvas;
    for (auto _ : state) {
        canvas.clear();
        tm_draw_sheet(file, tm_fit(area, width, height), canvas);
    }
    if (canvas.points_drawn < 100) state.SkipWithError("the picture is empty");
    state.counters["points"] = static_cast<double>(canvas.points_drawn);
    close(file);
}
BENCHMARK(draw_10000_objects)->Arg(100)->Arg(30)->Arg(5)->Unit(benchmark::kMillisecond);

// The cost of one pick as the sheet grows.
void pick_nearest(benchmark::State& state) {
    const tm_file_index_t file = maker{}.sheet(static_cast<std::int16_t>(state.range(0)));
    const tm_viewport_t viewport = tm_fit(tm_page_area(file), width, height);
    for (auto _ : state)
        benchmark::DoNotOptimize(tm_nearest(file, tm_family::all, viewport, {5 * pitch, 5 * pitch}));
    state.SetComplexityN(state.range(0));
    close(file);
}
BENCHMARK(pick_nearest)->RangeMultiplier(3)->Range(1000, 27'000)->Complexity()->Unit(benchmark::kMicrosecond);

}  // namespace
