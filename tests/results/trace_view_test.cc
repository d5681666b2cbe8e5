// The trace view on a recording canvas: a plot 600 wide with 4 rows.
#include <algorithm>
#include <array>
#include <cstdio>

#include "list_table.h"

namespace {

using texts = std::vector<std::string>;

class drawn_trace : public list_table {
protected:
    drawn_trace() {
        canvas.w = 900, canvas.h = 42 * 9;
        tm_vext.display_on = true;
        kol_set_list_geometry(canvas.h);
        kol_ext.trace_scale = 100, kol_ext.cur_time = 5000;
    }
    texts draw() {
        kol_update_darea_edit(canvas);
        return canvas.segments;
    }
    recorder_canvas canvas;
};

TEST_F(drawn_trace, gives_names_the_rows_of_their_signals_and_one_row_to_a_combined_bus) {
    const std::string pad(19, ' ');
    struct {
        const char *entries, *names;  // of the rows shown
    } const cases[] = {{"a b c d e", "abcd"},       {"W[p q r] a", "Wa"},        {"V(p q r) a b", "pqra"},
                       {"a V(p W[q r] s)", "apWs"}, {"W[V(p q) r s] b", "pqWb"}, {"W[p V(q) r] b", "Wqb"},
                       {"V(p) a V W[q]", "papW"}};
    for (const auto& row : cases) {
        bus_of.clear();
        trace(row.entries);
        draw();
        texts names;
        for (const char name : std::string(row.names))
            names.push_back("648," + std::to_string(50 + 40 * names.size()) + " " + name + pad);
        EXPECT_EQ(texts(canvas.texts.begin(), canvas.texts.end() - 4), names) << row.entries;
    }
}

// The middle of the first row is at 50.
TEST_F(drawn_trace, shows_the_value_as_height_and_colour_and_the_drive_as_dash) {
    struct {
        char value;
        std::string y, colour;
    } const values[] = {
        {'i', "50", "red"}, {'0', "63", "yellow"}, {'x', "50", "yellow"}, {'1', "37", "yellow"}};
    for (const auto& [value, y, colour] : values)
        for (std::size_t drive = 0; drive < 5; ++drive) {
            trace("a");
            history("a", std::string{value, "SWRZU"[drive]} + "@0");
            const std::string style = (drive == 4 ? "cyan " : colour + " ") + std::to_string(drive);
            EXPECT_EQ(draw(), texts{"24 " + y + " 624 " + y + " " + style});
        }
}

TEST_F(drawn_trace, draws_changes_in_the_window_up_to_the_present) {
    struct {
        const char* history;
        std::int32_t from, scale, now;
        texts segments;
    } const cases[] = {{"1S@0 0W@300",
                        0,
                        100,
                        5000,
                        {"24 37 114 37 yellow 0", "114 37 114 63 yellow 1", "114 63 624 63 yellow 1"}},
                       // Changes just at the end of the window and at the present.
                       {"1S@0 0S@2000",
                        0,
                        100,
                        5000,
                        {"24 37 624 37 yellow 0", "624 37 624 63 yellow 0", "624 63 624 63 yellow 0"}},
                       {"1S@0 1W@900", 0, 100, 900, {"24 37 294 37 yellow 0", "294 37 294 37 yellow 1"}},
                       {"1S@0 1W@300", 0, 100, 900, {"24 37 114 37 yellow 0", "114 37 294 37 yellow 1"}},
                       {"iU@0 xR@100 1S@1101", 100, 50, 5000, {"24 50 624 50 yellow 2"}},
                       {"iS@0 0S@300", 300, 100, 301, {"24 63 24 63 yellow 0"}},
                       {"iS@0 0S@300", 301, 100, 301, {}},
                       {"0S@0 0W@1999", 0, 50000, 3000, {"24 63 25 63 yellow 0", "25 63 25 63 yellow 1"}},
                       {"0S@0 0W@1999", 0, 50001, 3000, {"24 63 24 63 yellow 0", "24 63 25 63 yellow 1"}},
                       {"0S@0", 2147483000, 2147483647, 2147483647, {"24 63 24 63 yellow 0"}},
                       {"0S@0", 0, 0, 900, {}},
                       {"0S@0", -1, 100, 900, {}}};
    for (const auto& row : cases) {
        trace("a");
        history("a", row.history);
        kol_ext.trace_cur_time = row.from, kol_ext.trace_scale = row.scale, kol_ext.cur_time = row.now;
        EXPECT_EQ(draw(), row.segments) << row.history << " from " << row.from;
    }
}

TEST_F(drawn_trace, draws_the_members_of_a_bus_wherever_it_stands_over_labels_and_a_grid) {
    trace("W[p q] b W");
    history("p", "0S@0"), history("q", "1W@0");
    EXPECT_EQ(draw(), (texts{"24 63 624 63 yellow 0", "24 37 624 37 yellow 1", "24 143 624 143 yellow 0",
                             "24 117 624 117 yellow 1"}));
    EXPECT_EQ(texts(canvas.texts.end() - 4, canvas.texts.end()),
              (texts{"24,222 0.0", "174,222 500.000", "324,222 1000.000", "474,222 1500.000"}));
    ASSERT_EQ(canvas.places.size(), 21U * 4);
    EXPECT_EQ(canvas.dots_drawn, (16 + 5 * 4) * 4);
    const auto at = [&](std::size_t i) { return std::pair(canvas.places[i].x, canvas.places[i].y); };
    EXPECT_EQ((std::array{at(0), at(7), at(83)}),
              (std::array{std::pair(23, 170), std::pair(54, 50), std::pair(623, 50)}));
    yx_sext.time_step = 10.0F;
    kol_ext.trace_cur_time = 2147480000, kol_ext.trace_scale = 1;
    draw();
    EXPECT_EQ(canvas.texts.back().size(), 8 + 14U) << canvas.texts.back();
    kol_ext.trace_cur_time = 0, kol_ext.trace_scale = 100;
    canvas.h = 1;  // a page pushed together
    draw();
    EXPECT_EQ(canvas.places.size(), 21U * 2);
    EXPECT_EQ(canvas.texts.back(), "12,0 Page too small for one row");
    EXPECT_EQ(canvas.texts.size(), 1 + 4 + 1U) << "one row's name, labels and this";
    canvas.h = 42 * 60;
    draw();
    EXPECT_EQ(canvas.places.size(), 21U * 55) << "no page is too high";
}

// What the segments leave on a page of 640 x 80 pixels, painted one over the other.
texts painted(const texts& segments) {
    texts page(640 * 80);
    for (const std::string& segment : segments) {
        int x0 = 0, y0 = 0, x1 = 0, y1 = 0, length = 0;
        std::sscanf(segment.c_str(), "%d %d %d %d%n", &x0, &y0, &x1, &y1, &length);
        const auto [top, bottom] = std::minmax(y0, y1);
        for (int y = top; y <= bottom; ++y)
            for (int x = x0; x <= x1; ++x) page[y * 640 + x] = segment.substr(length);
    }
    return page;
}

// The waveform step by step: a horizontal line in the state that was, a vertical one in the new state.
texts every_segment(const kol_history_t& records, std::int32_t now) {
    const auto height = [](const kol_change_t& record) {
        return std::array{50, 63, 50, 37}[record.state % 4];
    };
    const auto look = [](const kol_change_t& record) {
        const char* const colour = record.state < 4 ? "cyan" : record.state % 4 == 0 ? "red" : "yellow";
        return std::string(colour) + " " + std::to_string(4 - record.state / 4);
    };
    texts segments;
    std::int32_t x = 24;
    const auto draw = [&](int y0, std::int32_t to, int y1, const kol_change_t& as) {
        segments.push_back(std::to_string(x) + " " + std::to_string(y0) + " " + std::to_string(to) + " " +
                           std::to_string(y1) + " " + look(as));
        x = to;
    };
    for (std::size_t i = 1; i < records.size(); ++i) {
        const int before = height(records[i - 1]), after = height(records[i]);
        draw(before, static_cast<std::int32_t>(std::int64_t{records[i].time} * 600 / now) + 24, before,
             records[i - 1]);
        if (after != before) draw(before, x, after, records[i]);
    }
    draw(height(records.newest()), 624, height(records.newest()), records.newest());
    return segments;
}

TEST_F(drawn_trace, keeps_the_picture_of_many_changes_in_one_column_of_pixels_and_draws_few_segments) {
    constexpr int changes = 100'000;
    trace("a");
    kol_history_t& records = history("a", "iU@0");
    std::uint32_t random = 1;
    for (int i = 1; i < changes; ++i)
        records.append(i * 9, static_cast<std::int8_t>((random = random * 1664525 + 1013904223) >> 24) & 15);
    kol_ext.cur_time = 20 * (kol_ext.trace_scale = 9 * changes / 20);
    const texts& drawn = draw();
    EXPECT_LT(drawn.size(), 600 * 60U);
    EXPECT_TRUE(painted(drawn) == painted(every_segment(records, kol_ext.cur_time)));
}

}  // namespace
