// Scroll bars and what they move.
#include "app/window/scroll_bars.h"

#include <Xm/Form.h>
#include <Xm/ScrollBar.h>

#include <algorithm>

#include "app/window/options.h"
#include "kernel/context.h"
#include "results/scroll.h"

namespace {

constexpr int usual_width = 15;
constexpr int fine = 10000;  // steps of a bar for the time

Widget vertical = nullptr, horizontal = nullptr;

struct slider {
    int first, shown, all;
};

// Times are too large for a bar's numbers to be its steps.
slider slider_of(bool is_vertical) {
    const rs_extent_t extent = rs_extent(is_vertical);
    const bool counts_from_1 = is_vertical != kol_ext.list_or_trace;
    if (counts_from_1) {
        const int all = std::max({extent.end - 1, extent.first, 1});
        const int shown = std::clamp(extent.shown, 1, all);
        return {std::clamp(extent.first - 1, 0, all - shown), shown, all};
    }
    const std::int64_t all = std::max<std::int64_t>({extent.end, std::int64_t{extent.first} + 1, 1});
    const int shown =
        static_cast<int>(std::clamp<std::int64_t>(fine * std::int64_t{extent.shown} / all, 1, fine));
    const int first = static_cast<int>(std::int64_t{fine} * extent.first / all);
    return {std::clamp(first, 0, fine - shown), shown, fine};
}

void follow(Widget bar, bool is_vertical) {
    const slider now = slider_of(is_vertical);
    XtVaSetValues(bar, XmNmaximum, now.all, XmNsliderSize, now.shown, XmNvalue, now.first, XmNpageIncrement,
                  now.shown, XmNincrement, std::max(now.all == fine ? now.shown / 10 : 1, 1), nullptr);
}

void moved_cb(Widget bar, XtPointer, XtPointer call_data) {
    const bool is_vertical = bar == vertical;
    const int value = static_cast<XmScrollBarCallbackStruct*>(call_data)->value;
    const bool counts_from_1 = is_vertical != kol_ext.list_or_trace;
    if (counts_from_1) return rs_scroll_to(is_vertical, value + 1);
    const rs_extent_t extent = rs_extent(is_vertical);
    rs_scroll_to(is_vertical, static_cast<std::int32_t>(std::int64_t{value} * extent.end / fine));
}

Widget create_bar(Widget form, bool is_vertical) {
    const auto width = static_cast<Dimension>(usual_width * window_text_scale());
    Widget bar = XtVaCreateManagedWidget(
        is_vertical ? "verticalBar" : "horizontalBar", xmScrollBarWidgetClass, form, XmNorientation,
        is_vertical ? XmVERTICAL : XmHORIZONTAL, is_vertical ? XmNwidth : XmNheight, width, XmNtraversalOn,
        False, XmNrightAttachment, XmATTACH_FORM, XmNbottomAttachment, XmATTACH_FORM,
        is_vertical ? XmNtopAttachment : XmNleftAttachment, XmATTACH_FORM,
        is_vertical ? XmNbottomOffset : XmNrightOffset, int{width}, nullptr);
    XtAddCallback(bar, XmNvalueChangedCallback, moved_cb, nullptr);
    XtAddCallback(bar, XmNdragCallback, moved_cb, nullptr);
    return bar;
}

}  // namespace

void scroll_bars_create(Widget form, Widget area) {
    vertical = create_bar(form, true);
    horizontal = create_bar(form, false);
    XtVaSetValues(area, XmNrightAttachment, XmATTACH_WIDGET, XmNrightWidget, vertical, XmNbottomAttachment,
                  XmATTACH_WIDGET, XmNbottomWidget, horizontal, nullptr);
}

void scroll_bars_follow() {
    if (vertical == nullptr) return;
    follow(vertical, true);
    follow(horizontal, false);
}
