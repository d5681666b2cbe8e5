// The program's own resources.
#include "app/window/options.h"

#include <algorithm>
#include <cstdlib>
#include <type_traits>

#include "app/window/window_record.h"
#include "commands/shared/picking.h"
#include "results/entries/geometry.h"
#include "results/entries/options.h"

namespace {

window_options_t options;

struct switch_row {
    const char* name;
    Cardinal offset;
};
constexpr switch_row switches[] = {
    {"resultsFollowWindow", offsetof(window_options_t, results_follow_window)},
    {"namesBesideRows", offsetof(window_options_t, names_beside_rows)},
    {"confirmLoss", offsetof(window_options_t, confirm_loss)},
    {"scalePages", offsetof(window_options_t, scale_pages)},
    {"busValues", offsetof(window_options_t, bus_values)},
    {"markUnrecorded", offsetof(window_options_t, mark_unrecorded)},
    {"hints", offsetof(window_options_t, hints)},
    {"scrollBars", offsetof(window_options_t, scroll_bars)},
    {"statusLine", offsetof(window_options_t, status_line)},
    {"wheelScrolls", offsetof(window_options_t, wheel_scrolls)},
    {"pickedByPath", offsetof(window_options_t, picked_by_path)},
    {"sheetShowsStates", offsetof(window_options_t, sheet_shows_states)},
};
constexpr std::array<const char*, tm_colours> colour_names = {"pageBlack",   "pageRed",   "pageGreen",
                                                              "pageBlue",    "pageCyan",  "pageYellow",
                                                              "pageMagenta", "pageWhite", "pageGrey"};

// Without the resource a number stays as it is, a switch is off and a text none.
template <typename Value>
void read(const char* name, const char* type, Value* value) {
    constexpr bool is_number = std::is_same_v<Value, int>;
    XtResource row = {const_cast<char*>(name),
                      const_cast<char*>(name),
                      const_cast<char*>(type),
                      sizeof(Value),
                      0,
                      const_cast<char*>(is_number ? XtRInt : XtRImmediate),
                      is_number ? value : nullptr};
    XtGetApplicationResources(tm_window.top_window, value, &row, 1, nullptr, 0);
}

}  // namespace

const window_options_t& window_options() { return options; }

void window_options_read() {
    auto* const base = reinterpret_cast<char*>(&options);
    for (const switch_row& row : switches)
        read(row.name, XtRBoolean, reinterpret_cast<Boolean*>(base + row.offset));
    read("traceRowHeight", XtRInt, &options.trace_row_height);
    read("colourScheme", XtRString, &options.scheme);
    for (std::size_t i = 0; i < tm_colours; ++i) read(colour_names[i], XtRString, &options.colours[i]);
    rs_scale_geometry(window_page_scale(), options.trace_row_height);
    kol_picked_by_path = options.picked_by_path != False;
    rs_options = {options.bus_values != False, options.mark_unrecorded != False, options.hints != False};
}

double window_text_scale() {
    const char* dpi = XGetDefault(tm_window.dpy, "Xft", "dpi");
    return dpi != nullptr ? std::clamp(std::atof(dpi) / 96, 0.5, 4.0) : 1.0;
}

double window_page_scale() { return options.scale_pages ? window_text_scale() : 1.0; }
