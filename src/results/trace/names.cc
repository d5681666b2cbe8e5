// The names of the trace, at the right of the waveforms.
#include <string>

#include "results/trace/layout.h"
#include "results/trace/view.h"

namespace {

constexpr std::size_t name_width = 20;

void draw_name(tm_canvas& canvas, const yx_signal_rec_t& place, const tm_string_record_t& name) {
    std::string shown(tm_view(name));
    shown.resize(name_width, ' ');
    const tm_pixel at{canvas.width() - kol_ext.trace_sig1n_x0,
                      kol_trace_row_y(place.row) + kol_ext.trace_sig1n_y0 - kol_ext.trace_sig1r_y0};
    canvas.text(at, shown, {tm_colour::white, kol_ext.trace_steph / 2, kol_ext.trace_height});
}

}  // namespace

void kol_trace_bus_write_signame(tm_canvas& canvas, yx_bus_rec_t* bus) {
    bool named = false;
    for (yx_signal_rec_t* member = bus->signal; member != nullptr; member = member->next) {
        if (member->sig_bus) {
            if (member->bus == nullptr) continue;
            kol_trace_place_members(*member);
            kol_trace_bus_write_signame(canvas, member->bus);
        } else if (!named && kol_trace_row_shown(*member, canvas.height())) {
            draw_name(canvas, *member, bus->combine ? bus->name : member->name);
            named = bus->combine;
        }
    }
}

void kol_trace_write_signame(tm_canvas& canvas) {
    for (yx_signal_rec_t* entry = kol_trace_first_entry(); entry != nullptr; entry = entry->next) {
        if (!entry->sig_bus) {
            if (kol_trace_row_shown(*entry, canvas.height())) draw_name(canvas, *entry, entry->name);
        } else if (entry->bus != nullptr) {
            kol_trace_place_members(*entry);
            kol_trace_bus_write_signame(canvas, entry->bus);
        }
    }
}
