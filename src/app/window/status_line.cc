// What is under the pointer, and the simulation's place and time.
#include "app/window/status_line.h"

#include <Xm/Form.h>
#include <Xm/Label.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <utility>

#include "commands/shared/picking.h"
#include "commands/shared/sheet_levels.h"
#include "kernel/say.h"
#include "kernel/state.h"
#include "results/pointed.h"

namespace {

using steady = std::chrono::steady_clock;
constexpr unsigned long pause_before_status = 80;  // milliseconds, in which the pointer may move on
constexpr std::chrono::milliseconds run_interval{250};

Widget pointed = nullptr, simulation = nullptr;
bool is_waiting = false;

void show(Widget label, const std::string& text) {
    static std::string shown[2];
    std::string& last = shown[label == pointed ? 0 : 1];
    if (std::exchange(last, text) == text) return;
    const tm_xm_string string(text.c_str());
    XtVaSetValues(label, XmNlabelString, string.get(), nullptr);
}

std::string place_of_simulation() {
    if (pointed == nullptr) return {};
    return std::string(tm_view(kol_ext.cur_sim_path)) + "   " + kol_time_text(kol_ext.cur_time);
}

std::string name_of_page;  // what the title begins with

void follow_title() {
    static std::string shown;
    const std::string place = place_of_simulation();
    std::string title = name_of_page + (place.empty() ? "" : "   " + place);
    if (title == shown) return;
    shown = std::move(title);
    XtVaSetValues(tm_window.top_window, XmNtitle, shown.c_str(), nullptr);
}

std::string joined(const std::string& name, const std::string& value, std::int32_t since) {
    if (value.empty()) return name;
    return name + " = " + value + "   since " + kol_time_text(since);
}

std::string text_of_results() {
    const rs_pointed_t found = rs_pointed({tm_vext.pixel_pos.x, tm_vext.pixel_pos.y},
                                          tm_vext.bitmap_size.xmax, tm_vext.bitmap_size.ymax);
    if (!found.entry) return {};
    const std::int32_t time = std::min(found.time, kol_ext.cur_time);
    std::int32_t since = 0;
    if (!rs_previous_change(found.entry, time + 1, since)) since = 0;
    return joined(found.name, rs_value_at(found.entry, time), since) + "   at " + kol_time_text(time);
}

std::string text_of_sheet() {
    kol_picked_net_t picked;
    if (!kol_net_near(tm_vext.obj_pos, picked)) return {};
    std::string name(tm_view(kol_name_of_net(*picked.net, picked.name)));
    std::int8_t state = 0;
    if (!rs_shown_state(*picked.net, state)) return name;
    char two[2];
    kol_state_to_statechar(state, two);
    return joined(name, {two, 2}, std::max(picked.net->UU.U1.cur_state.time, 0));
}

void show_all(XtPointer, XtIntervalId*) {
    is_waiting = false;
    follow_title();
    show(pointed, " " + (tm_vext.numpage == tm_page::results ? text_of_results() : text_of_sheet()));
    show(simulation, place_of_simulation() + " ");
}

Widget create_label(Widget form, const char* name) {
    const tm_xm_string blank(" ");
    return XtVaCreateManagedWidget(name, xmLabelWidgetClass, form, XmNlabelString, blank.get(),
                                   XmNtopAttachment, XmATTACH_FORM, XmNbottomAttachment, XmATTACH_FORM,
                                   nullptr);
}

}  // namespace

Widget status_create(Widget form) {
    Widget line =
        XtVaCreateManagedWidget("statusLine", xmFormWidgetClass, form, XmNbottomAttachment, XmATTACH_FORM,
                                XmNleftAttachment, XmATTACH_FORM, XmNrightAttachment, XmATTACH_FORM, nullptr);
    simulation = create_label(line, "simulation");
    XtVaSetValues(simulation, XmNrightAttachment, XmATTACH_FORM, nullptr);
    pointed = create_label(line, "pointed");
    XtVaSetValues(pointed, XmNleftAttachment, XmATTACH_FORM, XmNrightAttachment, XmATTACH_WIDGET,
                  XmNrightWidget, simulation, XmNalignment, XmALIGNMENT_BEGINNING, XmNrecomputeSize, False,
                  nullptr);
    return line;
}

void status_soon() {
    if (pointed == nullptr || std::exchange(is_waiting, true)) return;
    XtAppAddTimeOut(tm_window.app, pause_before_status, show_all, nullptr);
}

void status_show_run() {
    static steady::time_point last_show;
    static std::int32_t last_time = 0;
    const auto now = steady::now();
    if (pointed == nullptr || now - last_show < run_interval) return;
    const double seconds = std::chrono::duration<double>(now - last_show).count();
    const double steps = kol_ext.cur_time > last_time ? kol_ext.cur_time - last_time : 0;
    const std::int64_t span = std::max<std::int64_t>(std::int64_t{kol_ext.end_time} - kol_ext.start_time, 1);
    const std::int64_t part = (std::int64_t{kol_ext.cur_time} - kol_ext.start_time) * 100 / span;
    std::string text = "running   " + kol_time_text(kol_ext.cur_time) + "   " +
                       std::to_string(std::clamp<std::int64_t>(part, 0, 100)) + " %";
    if (seconds < 2) text += "   " + std::to_string(static_cast<std::int64_t>(steps / seconds)) + " steps/s";
    last_show = now;
    last_time = kol_ext.cur_time;
    show(simulation, text + " ");
    XmUpdateDisplay(simulation);
    status_soon();
}

void status_name_window(std::string_view name) {
    name_of_page = name;
    follow_title();
}
