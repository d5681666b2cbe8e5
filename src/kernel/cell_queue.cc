// Stimuli into the wheel, and events from records to the wheel and back.
#include "kernel/cell_queue.h"

#include "kernel/queue.h"
#include "kernel/time_index.h"

namespace {

yx_net_record_t& record_of(std::uint32_t at) { return *yx_ptrto_net_rec(static_cast<std::int32_t>(at)); }

std::uint32_t what_of(const kol_stimulus_t& stimulus) {
    const yx_net_record_t& root = *kol_root_net(yx_ptrto_net_rec(stimulus.net));
    return kol_what(kol_first_force() + static_cast<std::uint32_t>(root.self), stimulus.state);
}

void remember_newest(const yx_event_rec_t& event, std::uint32_t place, std::uint32_t index) {
    const bool is_cell = index < kol_first_force();
    kol_driver_t* const driver = is_cell ? nullptr : &kol_cells.drivers[index - kol_first_driver()];
    std::uint32_t& newest = is_cell ? kol_cells.cell[index].newest : driver->newest;
    std::int32_t& newest_time = is_cell ? kol_cells.cell[index].newest_time : driver->newest_time;
    if (!kol_cells.is_plain) kol_link_pending(place, event.time, {newest, newest_time});
    newest = place;
    newest_time = event.time;
}

std::uint32_t index_of(const yx_event_rec_t& event) {
    const auto at = static_cast<std::uint32_t>(event.net->self);
    if (event.pin == nullptr) return kol_first_force() + at;
    if ((kol_cells.cell[at].flags & kol_cell_single) != 0) return at;
    return kol_first_driver() + kol_driver_of(*event.pin, *event.net);
}

}  // namespace

const kol_stimuli_target_t kol_wheel_of_cells = {
    [](const kol_stimulus_t& stimulus) { kol_cells.wheel.append(stimulus.time, what_of(stimulus), 0); },
    [](std::int32_t time, std::span<const kol_stimulus_t> stimuli) {
        static std::vector<std::uint32_t> whats;
        whats.clear();
        for (const kol_stimulus_t& stimulus : stimuli) whats.push_back(what_of(stimulus));
        kol_cells.wheel.add_first(time, whats);
    },
};

void kol_take_queue() {
    for (const yx_event_rec_t* event = kol_ext.cur_event; event != nullptr; event = event->next) {
        const std::uint32_t index = index_of(*event);
        const std::uint32_t rank = event->pin == nullptr ? 0 : kol_rank_of(event->pin->pin_hdl_priority);
        const std::uint32_t place = kol_cells.wheel.append(event->time, kol_what(index, event->state), rank);
        if (event->pin != nullptr) remember_newest(*event, place, index);
    }
    kol_empty_queue();
}

std::vector<std::int32_t> kol_times_of_wheel() {
    std::vector<std::int32_t> times;
    kol_cells.wheel.for_each([&](std::int32_t time, std::uint32_t) {
        if (times.empty() || times.back() != time) times.push_back(time);
    });
    return times;
}

void kol_give_queue_back() {
    kol_advance_index(kol_ext.cur_time);
    kol_cells.wheel.for_each([](std::int32_t time, std::uint32_t what) {
        const std::uint32_t index = what >> kol_what_shift;
        const auto state = static_cast<std::int8_t>(what & 31);
        if (index >= kol_first_driver()) {
            kol_driver_t& driver = kol_cells.drivers[index - kol_first_driver()];
            driver.newest_time = -1;
            kol_append_event(driver.pin, driver.net, time, state);
        } else if (index >= kol_first_force()) {
            kol_append_event(nullptr, &record_of(index - kol_first_force()), time, state);
        } else {
            kol_cells.cell[index].newest_time = -1;
            kol_append_event(kol_drivers_of(record_of(index))[0].pin, &record_of(index), time, state);
        }
    });
}
