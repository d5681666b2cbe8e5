// Pending events in order of scheduling, FORCE events in order of time.
#include "kernel/net_events.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace {

constexpr std::int64_t no_change = std::numeric_limits<std::int64_t>::max();

void append_force(yx_net_u1_t& net, yx_event_rec_t* event) {
    event->net_next = nullptr;
    if (net.last_force == nullptr) {
        net.first_force = event;
        net.forces_sorted = true;
    } else {
        net.last_force->net_next = event;
        net.forces_sorted = net.forces_sorted && net.last_force->time <= event->time;
    }
    net.last_force = event;
}

// Events of one time keep their order, which is that of the queue.
void sort_forces(yx_net_u1_t& net) {
    if (net.forces_sorted) return;
    std::vector<yx_event_rec_t*> forces;
    for (yx_event_rec_t* event = net.first_force; event != nullptr; event = event->net_next)
        forces.push_back(event);
    std::ranges::stable_sort(forces, {}, &yx_event_rec_t::time);
    net.first_force = net.last_force = nullptr;
    for (yx_event_rec_t* event : forces) append_force(net, event);
}

// FORCE events leave in the order of the queue, so the one that leaves is the first.
void remove_first_force(yx_net_u1_t& net) {
    sort_forces(net);
    net.first_force = net.first_force->net_next;
    if (net.first_force == nullptr) net.last_force = nullptr;
}

void remove_pending(yx_net_u1_t& net, const yx_event_rec_t* event) {
    yx_event_rec_t** link = &net.first_pending;
    while (*link != event) link = &(*link)->net_next;
    *link = event->net_next;
}

std::int64_t first_other_pending(const yx_net_u1_t& net, std::int8_t state) {
    std::int64_t time = no_change;
    for (const yx_event_rec_t* event = net.first_pending; event != nullptr; event = event->net_next)
        if (event->state != state) time = std::min<std::int64_t>(time, event->time);
    return time;
}

std::int64_t first_other_force(yx_net_u1_t& net, std::int8_t state, std::int64_t limit) {
    sort_forces(net);
    for (const yx_event_rec_t* event = net.first_force; event != nullptr; event = event->net_next) {
        if (event->time > limit) return no_change;
        if (event->state != state) return event->time;
    }
    return no_change;
}

}  // namespace

void kol_add_net_event(yx_event_rec_t* event) {
    yx_net_u1_t& net = event->net->UU.U1;
    if (event->pin == nullptr) {
        append_force(net, event);
        return;
    }
    event->net_next = net.first_pending;
    net.first_pending = event;
}

void kol_remove_net_event(yx_event_rec_t* event) {
    if (event->pin == nullptr)
        remove_first_force(event->net->UU.U1);
    else
        remove_pending(event->net->UU.U1, event);
}

void kol_forget_net_events(yx_net_record_t& net) {
    net.UU.U1.first_pending = net.UU.U1.first_force = net.UU.U1.last_force = nullptr;
    net.UU.U1.forces_sorted = true;
}

std::int32_t kol_next_change(const yx_event_rec_t& event) {
    yx_net_u1_t& net = event.net->UU.U1;
    const std::int64_t limit = static_cast<std::int64_t>(event.time) + kol_max_delay;
    const std::int64_t time =
        std::min(first_other_pending(net, event.state), first_other_force(net, event.state, limit));
    return time > limit ? -1 : static_cast<std::int32_t>(time - event.time);
}
