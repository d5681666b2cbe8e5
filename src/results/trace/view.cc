// Drawing of the trace.
#include "results/trace/view.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string>
#include <vector>

#include "kernel/history.h"
#include "kernel/say.h"
#include "kernel/state.h"
#include "results/entries/cursors.h"
#include "results/entries/geometry.h"
#include "results/entries/options.h"
#include "results/trace/layout.h"

namespace {

constexpr std::int32_t divisions = kol_trace_divisions, divisions_per_label = 5;
constexpr std::size_t label_width = 14;
constexpr std::int32_t least_grid = 2;  // dots below each other
constexpr std::int64_t large_span = 1'000'000, coarse_step = 1'000;

std::int32_t plot_width_of(std::int32_t page_width) {
    return page_width - kol_ext.trace_right_x - kol_ext.trace_left_x;
}

std::int64_t window_span() { return std::int64_t{divisions} * kol_ext.trace_scale; }

// Where waveforms end: at the window's end or at the present.
std::int32_t plot_end() {
    return static_cast<std::int32_t>(
        std::min<std::int64_t>(kol_ext.cur_time, kol_ext.trace_cur_time + window_span()));
}

// A large window counts in thousands of time steps.
std::int32_t x_of(std::int32_t time, std::int32_t plot_width) {
    const std::int64_t unit = window_span() > large_span ? coarse_step : 1;
    const std::int64_t offset = (std::int64_t{time} - kol_ext.trace_cur_time) / unit;
    return static_cast<std::int32_t>(offset * plot_width / (window_span() / unit)) + kol_ext.trace_left_x;
}

struct value_row {
    std::int32_t side;  // of the row's middle line: +1 below, -1 above
    tm_colour colour;
};
constexpr value_row values[] = {
    /* i */ {0, tm_colour::red},
    /* 0 */ {+1, tm_colour::yellow},
    /* x */ {0, tm_colour::yellow},
    /* 1 */ {-1, tm_colour::yellow},
};
constexpr tm_dash drives[] = {
    /* U */ tm_dash::dash_dot_dot, /* Z */ tm_dash::dash_dot, /* R */ tm_dash::dotted,
    /* W */ tm_dash::dashed,       /* S */ tm_dash::solid,
};

// The end of a waveform that is being drawn.
struct wave_end {
    tm_pixel at;
    tm_colour colour;
    tm_dash dash;
    bool operator==(const wave_end& other) const {
        return at.x == other.at.x && at.y == other.at.y && colour == other.colour && dash == other.dash;
    }
};

// Draws a waveform.  Many changes may fall into one column of pixels: drawn twice, a segment looks as it does
// drawn once, so within a column only the last of equal segments is kept.
class waveform {
public:
    waveform(tm_canvas& canvas, const wave_end& first) : canvas_(canvas), end_(first) {}
    ~waveform() { draw_column(); }
    waveform(const waveform&) = delete;
    waveform& operator=(const waveform&) = delete;

    void line_to(tm_pixel to) {
        if (to.x != column_x_) draw_column();
        column_x_ = to.x;
        const segment added{end_, to};
        std::erase(column_, added);
        column_.push_back(added);
        end_.at = to;
    }
    void step_to(const wave_end& next) {
        line_to({next.at.x, end_.at.y});
        end_.colour = next.colour;
        end_.dash = next.dash;
        if (next.at.y != end_.at.y) line_to(next.at);
    }
    void end_at(std::int32_t x) { line_to({x, end_.at.y}); }
    // Goes on where another change in the same column has left off.
    void resume_at(const wave_end& end) { end_ = end; }

private:
    struct segment {
        wave_end from;
        tm_pixel to;
        bool operator==(const segment& other) const {
            return from == other.from && to.x == other.to.x && to.y == other.to.y;
        }
    };
    void draw_column() {
        for (const segment& kept : column_)
            canvas_.segment(kept.from.at, kept.to, {kept.from.colour, kept.from.dash});
        column_.clear();
    }

    tm_canvas& canvas_;
    wave_end end_;
    std::vector<segment> column_;  // that ends in column_x_, in the order of drawing
    std::int32_t column_x_ = -1;
};

// A state code that is none is drawn as iU.
wave_end wave_at(std::int8_t state, std::int32_t x, std::int32_t middle) {
    std::int16_t value = 0, drive = 0;
    kol_state_to_valdrive(state, value, drive);
    const value_row& row = values[value];
    return {{x, middle + row.side * (kol_ext.trace_stepv / 3)},
            drive == 0 ? tm_colour::cyan : row.colour,
            drives[drive]};
}

// The last time whose place is that of a time.
std::int32_t last_time_at_place_of(std::int32_t time, std::int32_t plot_width) {
    if (plot_width < 1) return time;
    const std::int64_t unit = window_span() > large_span ? coarse_step : 1, span = window_span() / unit;
    const std::int64_t along = (std::int64_t{time} - kol_ext.trace_cur_time) / unit * plot_width / span;
    const std::int64_t next = ((along + 1) * span + plot_width - 1) / plot_width;  // offset of the next pixel
    return static_cast<std::int32_t>(std::min<std::int64_t>(kol_ext.trace_cur_time + next * unit - 1,
                                                            std::numeric_limits<std::int32_t>::max()));
}

constexpr std::size_t few_changes = 32;

constexpr std::size_t drawn_state(std::int8_t state) {
    return kol_state_is_valid(state) ? static_cast<std::size_t>(state) : 0;
}

// Changes in one column of pixels.  What a change draws depends on the states before and behind it, so of
// many only the last one of each such pair counts.
void draw_many(waveform& drawn, const kol_history_t& history, std::size_t from, std::size_t to, tm_pixel at) {
    struct pair_t {
        std::size_t last;  // number of its last change, from 1
        std::size_t before, behind;
    };
    std::array<std::size_t, std::size_t{kol_state_count} * kol_state_count> last{};
    std::size_t number = 0, before = drawn_state(history[from - 1].state);
    for (std::size_t place = from; place < to;) {
        const std::span<const kol_change_t> changes = history.together(place, to);
        for (const kol_change_t& change : changes) {
            const std::size_t behind = drawn_state(change.state);
            last[before * kol_state_count + behind] = ++number;
            before = behind;
        }
        place += changes.size();
    }
    std::vector<pair_t> pairs;
    for (std::size_t pair = 0; pair < last.size(); ++pair)
        if (last[pair] != 0) pairs.push_back({last[pair], pair / kol_state_count, pair % kol_state_count});
    std::ranges::sort(pairs, {}, &pair_t::last);
    for (const pair_t& pair : pairs) {
        drawn.resume_at(wave_at(static_cast<std::int8_t>(pair.before), at.x, at.y));
        drawn.step_to(wave_at(static_cast<std::int8_t>(pair.behind), at.x, at.y));
    }
}

void draw_column(waveform& drawn, const kol_history_t& history, std::size_t from, std::size_t to,
                 tm_pixel at) {
    if (to > from + few_changes) return draw_many(drawn, history, from, to, at);
    for (; from < to; ++from) drawn.step_to(wave_at(history[from].state, at.x, at.y));
}

// Where the waveform begins: at the window's begin, or where the history does.
std::int32_t begin_of(const yx_signal_rec_t& signal) {
    if (!rs_options.mark_unrecorded || signal.net == nullptr) return kol_ext.trace_cur_time;
    return std::max(kol_ext.trace_cur_time, kol_recorded_from(*signal.net));
}

void draw_waveform(tm_canvas& canvas, yx_signal_rec_t& signal) {
    const std::int32_t begin = begin_of(signal);
    kol_trace_get_sigresult(&signal, begin);
    if (signal.history == nullptr || !kol_trace_row_shown(signal, canvas.height())) return;
    const std::int32_t end = plot_end(), middle = kol_trace_row_y(signal.row);
    const std::int32_t width = plot_width_of(canvas.width());
    if (end <= begin) return;
    const kol_history_t& history = *signal.history;
    waveform drawn(canvas, wave_at(history[signal.cursor].state, x_of(begin, width), middle));
    std::size_t place = signal.cursor + 1;
    signal.cursor = history.find(end, signal.cursor);
    while (place <= signal.cursor) {
        const kol_change_t& change = history[place];
        const std::int32_t x = x_of(change.time, width);
        drawn.step_to(wave_at(change.state, x, middle));
        const std::size_t next =
            std::min(history.find(last_time_at_place_of(change.time, width), place), signal.cursor) + 1;
        draw_column(drawn, history, place + 1, next, {x, middle});
        place = next;
    }
    drawn.end_at(x_of(end, width));
}

void draw_labels(tm_canvas& canvas) {
    constexpr std::int64_t latest = std::numeric_limits<std::int32_t>::max();
    const std::int32_t step = plot_width_of(canvas.width()) / divisions;
    rs_clear_band(canvas, canvas.width() - kol_ext.trace_sig1n_x0, kol_ext.trace_sig1t_y0,
                  kol_ext.trace_height);
    for (std::int32_t division = 0; division < divisions; division += divisions_per_label) {
        const std::int64_t time = kol_ext.trace_cur_time + std::int64_t{division} * kol_ext.trace_scale;
        const std::string text = kol_time_text(static_cast<std::int32_t>(std::min(time, latest)));
        const tm_pixel at{division * step + kol_ext.trace_sig1t_x0, kol_ext.trace_sig1t_y0};
        canvas.text(at, text.substr(0, label_width),
                    {tm_colour::white, kol_ext.trace_steph / 2, kol_ext.trace_height});
    }
}

// Dots at across times down places, at least two each, spread evenly between the two points; every fifth
// column is of 2 x 2 dots.
void draw_grid(tm_canvas& canvas, tm_pixel from, tm_pixel to, std::int32_t across, std::int32_t down,
               tm_colour colour) {
    for (std::int32_t column = 0; column < across; ++column) {
        const bool bold = column % divisions_per_label == 0;
        const std::int32_t x = from.x + (to.x - from.x) * column / (across - 1);
        for (std::int32_t row = 0; row < down; ++row) {
            const std::int32_t y = from.y + (to.y - from.y) * row / (down - 1);
            canvas.dots({bold ? x - 1 : x, y}, {1, 1}, bold ? tm_pixel{2, 2} : tm_pixel{1, 1}, colour);
        }
    }
}

bool is_drawable(const yx_signal_rec_t* first) {
    if (first == nullptr || kol_ext.trace_cur_time < 0) {
        kol_trace(" TRACE : nothing to draw : time : %d", kol_ext.trace_cur_time);
        return false;
    }
    if (kol_ext.trace_scale >= 1) return true;
    kol_trace(" TRACE : INVALID trace_scale : %d", kol_ext.trace_scale);
    return false;
}

}  // namespace

void kol_trace_get_sigresult(yx_signal_rec_t* signal, std::int32_t cur_time) {
    kol_list_get_sigresult(signal, cur_time);
}

void kol_trace_get_busresult(yx_bus_rec_t* bus, std::int32_t cur_time) {
    kol_list_get_busresult(bus, cur_time);
}

// A bus may hold another one twice, so each waveform moves its own cursor back.
void kol_trace_plotbusresult(tm_canvas& canvas, yx_bus_rec_t* bus) {
    for (yx_signal_rec_t* member = bus->signal; member != nullptr; member = member->next) {
        if (!member->sig_bus) {
            draw_waveform(canvas, *member);
        } else if (member->bus != nullptr) {
            kol_trace_place_members(*member);
            kol_trace_plotbusresult(canvas, member->bus);
        }
    }
}

void kol_trace_plot_sigresult(tm_canvas& canvas) {
    yx_signal_rec_t* entry = kol_trace_first_entry();
    if (!is_drawable(entry)) return;
    for (; entry != nullptr; entry = entry->next) {
        if (!entry->sig_bus) {
            draw_waveform(canvas, *entry);
        } else if (entry->bus != nullptr) {
            kol_trace_place_members(*entry);
            kol_trace_plotbusresult(canvas, entry->bus);
        }
    }
    draw_grid(canvas, {kol_ext.trace_sig1g_x1, kol_ext.trace_sig1g_y1},
              {plot_width_of(canvas.width()) + kol_ext.trace_left_x, kol_ext.trace_sig1g_y2}, divisions + 1,
              std::max(rs_trace_rows(canvas.height()), least_grid), tm_colour::white);
    draw_labels(canvas);
}

std::int32_t kol_trace_time_at(std::int32_t x, std::int32_t page_width) {
    const std::int64_t width = std::max(plot_width_of(page_width), 1);
    const std::int64_t along = std::clamp<std::int64_t>(std::int64_t{x} - kol_ext.trace_left_x, 0, width);
    const std::int64_t time = kol_ext.trace_cur_time + along * window_span() / width;
    return static_cast<std::int32_t>(std::min<std::int64_t>(time, std::numeric_limits<std::int32_t>::max()));
}

std::int32_t kol_trace_x_of(std::int32_t time, std::int32_t page_width) {
    return x_of(time, plot_width_of(page_width));
}

std::int32_t kol_trace_plot_end() { return plot_end(); }

void kol_set_trace_geometry(std::int32_t bitmap_height) {
    const rs_trace_geometry_t& page = rs_trace_geometry;
    const std::int32_t rows = bitmap_height / page.row_pitch - page.rows_below;
    kol_ext.trace_height = page.text_height;
    kol_ext.trace_stepv = page.row_step;
    kol_ext.trace_steph = page.left;
    kol_ext.trace_left_x = kol_ext.trace_sig1t_x0 = kol_ext.trace_sig1r_x0 = page.left;
    kol_ext.trace_left_y = kol_ext.trace_right_y = page.top;
    kol_ext.trace_right_x = page.left + page.names_width;
    kol_ext.trace_sig1n_x0 = page.names_width;
    kol_ext.trace_sig1n_y0 = kol_ext.trace_sig1r_y0 = page.top;
    kol_ext.trace_sig1t_y0 = page.row_step * rows + page.top + page.label_drop;
    kol_ext.trace_sig1g_x1 = page.left;
    kol_ext.trace_sig1g_y1 = page.row_step * (rows - 1) + page.top;
    kol_ext.trace_sig1g_y2 = page.top;
}
