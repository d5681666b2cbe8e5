// The trace view on a recording canvas.
#include "results/trace_view.h"
#include "list_table.h"
#include "results/trace_layout.h"

namespace {

using texts = std::vector<std::string>;

class drawn_trace : public list_table {
protected:
    drawn_trace() {
        canvas.w = 900;     // a plot 600 wide
        canvas.h = 42 * 9;  // 4 rows
        rs_results_canvas = &canvas;
        tm_vext.display_on = true;
        kol_set_list_geometry(canvas.h);
        kol_ext.trace_scale = 100;
        kol_ext.cur_time = 5000;
    }
    texts draw() {
        kol_update_darea_edit();
        return canvas.segments;
    }
    texts names() {
        canvas.texts.clear();
        kol_trace_write_signame();
        return canvas.texts;
    }
    // The signals' rows in order of tracing, those of a bus's members inside brackets.
    std::string rows(const yx_signal_rec_t* entry) {
        std::string text;
        for (; entry != nullptr; entry = entry->next) {
            if (entry->sig_bus) kol_trace_place_members(*entry);
            text += entry->sig_bus ? "[" + rows(entry->bus->signal) + "]" : std::to_string(entry->row) + " ";
        }
        return text;
    }
    recorder_canvas canvas;
};

TEST_F(drawn_trace, gives_each_signal_a_row_and_the_signals_of_a_combined_bus_one_for_all) {
    struct {
        const char *entries, *rows;
    } const cases[] = {{"a b c", "1 2 3 "},
                       {"W[p q r] a", "[1 1 1 ]2 "},
                       {"V(p q r) a", "[1 2 3 ]4 "},
                       {"a V(p W[q r] s) b", "1 [2 [3 3 ]4 ]5 "},
                       {"W[V(p q) r s] b", "[[1 2 ]3 3 ]4 "},
                       {"W[p V(q) r] b", "[1 [2 ]1 ]3 "},
                       {"V(p q) a V", "[1 2 ]3 [4 5 ]"}};
    for (const auto& row : cases) {
        trace(row.entries);
        kol_update_row_trace(nullptr);
        EXPECT_EQ(rows(kol_trace_first_entry()), row.rows) << row.entries;
        bus_of.clear();
    }
    trace("a V(p) b W[q r]");
    signal_of["b"]->row = 77;
    kol_update_row_trace(bus_of["V"]);
    EXPECT_EQ(signal_of["b"]->row, 77);  // behind the bus to stop at
}

TEST_F(drawn_trace, writes_names_at_the_right_cut_to_20_characters) {
    trace("a_name_of_25_characters_x W[V(p) q r] b c d");
    kol_update_row_trace(nullptr);
    EXPECT_EQ(names(), (texts{"648,50 a_name_of_25_charact", "648,90 p                   ",
                              "648,130 W                   ", "648,170 b                   "}));
}

// A row per value with its height and colour, a column per drive with its dash; the row's middle is 50.
TEST_F(drawn_trace, shows_the_value_as_height_and_colour_and_the_drive_as_dash) {
    struct {
        char value;
        int y;
        std::string colour;
    } const values[] = {{'i', 50, "red"}, {'0', 63, "yellow"}, {'x', 50, "yellow"}, {'1', 37, "yellow"}};
    trace("a");
    for (const auto& value : values)
        for (std::size_t drive = 0; drive < 5; ++drive) {
            history("a", std::string{value.value, "SWRZU"[drive]} + "@0");
            signal_of["a"]->list_state_cur = nullptr;
            const std::string y = std::to_string(value.y), colour = drive == 4 ? "cyan" : value.colour;
            EXPECT_EQ(draw(), texts{"24 " + y + " 624 " + y + " " + colour + " " + std::to_string(drive)});
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
                       {"1S@0 1W@300", 0, 100, 900, {"24 37 114 37 yellow 0", "114 37 294 37 yellow 1"}},
                       {"iU@0 xR@100 1S@1100",
                        100,
                        50,
                        5000,
                        {"24 50 624 50 yellow 2", "624 50 624 37 yellow 0", "624 37 624 37 yellow 0"}},
                       {"iS@0 0S@1101", 100, 50, 5000, {"24 50 624 50 red 0"}},
                       {"iS@0 0S@300", 300, 100, 301, {"24 63 24 63 yellow 0"}},
                       {"iS@0 0S@300", 301, 100, 301, {}},
                       {"0S@0 1S@1999",
                        0,
                        50000,
                        3000,
                        {"24 63 25 63 yellow 0", "25 63 25 37 yellow 0", "25 37 25 37 yellow 0"}},
                       {"0S@0 1S@1999",
                        0,
                        50001,
                        3000,
                        {"24 63 24 63 yellow 0", "24 63 24 37 yellow 0", "24 37 25 37 yellow 0"}},
                       {"0S@0", 2147483000, 2147483647, 2147483647, {"24 63 24 63 yellow 0"}},
                       {"0S@0", 0, 0, 900, {}},
                       {"0S@0", -1, 100, 900, {}}};
    for (const auto& row : cases) {
        trace("a");
        history("a", row.history);
        kol_ext.trace_cur_time = row.from;
        kol_ext.trace_scale = row.scale;
        kol_ext.cur_time = row.now;
        EXPECT_EQ(draw(), row.segments) << row.history << " from " << row.from;
    }
}

TEST_F(drawn_trace, draws_a_bus_member_by_member_wherever_the_bus_stands) {
    trace("a W[p q] b W c");
    history("p", "0S@0 1S@1000");
    history("q", "1W@0");
    const texts one = {"24 103 324 103 yellow 0", "324 103 324 77 yellow 0", "324 77 624 77 yellow 0",
                       "24 77 624 77 yellow 1"};
    ASSERT_EQ(draw().size(), 8U);
    EXPECT_EQ(texts(canvas.segments.begin(), canvas.segments.begin() + 4), one);
    EXPECT_EQ(canvas.segments[4], "24 183 324 183 yellow 0");
}

TEST_F(drawn_trace, labels_every_fifth_division_and_dots_a_grid) {
    trace("a");
    kol_ext.trace_scale = 1000;
    draw();
    EXPECT_EQ(canvas.texts, (texts{"648,50 a                   ", "24,222 0.0", "174,222 5000.000",
                                   "324,222 10000.000", "474,222 15000.000"}));
    ASSERT_EQ(canvas.places.size(), 21U * 4);
    EXPECT_EQ(canvas.dots_drawn, (16 + 5 * 4) * 4);
    const auto at = [&](std::size_t i) { return std::pair(canvas.places[i].x, canvas.places[i].y); };
    EXPECT_EQ(at(0), std::pair(23, 170));
    EXPECT_EQ(at(7), std::pair(54, 50));
    EXPECT_EQ(at(83), std::pair(623, 50));
    for (const std::int32_t height : {1, 5000}) {  // a page pushed together or beyond every screen
        canvas.h = height;
        draw();
        EXPECT_EQ(canvas.places.size(), height == 1 ? 21U * 2 : 21U * 49);
    }
    trace("");
    draw();
    EXPECT_EQ(canvas.texts.size() + canvas.places.size(), 0U);
}

}  // namespace
