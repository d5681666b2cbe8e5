// Histories of nets: chunks of changes, begun, reset, ended.
#include "kernel/history.h"

#include <unordered_map>

#include "kernel/cells.h"

namespace {

std::unordered_map<const yx_net_record_t*, kol_history_t> histories;

constexpr std::size_t near_places = 8;

void begin_history(const yx_signal_state_rec& cur, kol_history_t& history) {
    history.known_from = std::max(cur.time < 0 ? kol_ext.cur_time : cur.time, 0);
    if (cur.time == 0) history.newest().state = cur.state;
    if (cur.time > 0) history.append(cur.time, cur.state);
    if (cur.time < 0 && cur.state != 0) history.append(kol_ext.resume_time, cur.state);
}

void reset_signal(yx_signal_rec_t& signal) {
    if (signal.sig_bus) {
        if (signal.bus != nullptr) kol_init_bus_list_state(signal.bus);
        return;
    }
    if (signal.net == nullptr) return;
    if (signal.net->UU.U1.history != nullptr) signal.net->UU.U1.history->reset();
    signal.history = signal.net->UU.U1.history;
    signal.cursor = 0;
}

}  // namespace

void kol_history_t::reset() {
    chunks_.clear();
    chunks_.push_back(std::make_unique<kol_change_t[]>(least_size));
    known_from = 0;
    before_last_ = 0;
    next_ = chunks_.back().get() + 1;
    end_ = chunks_.back().get() + least_size;
}

void kol_history_t::grow() {
    const auto used = static_cast<std::size_t>(next_ - chunks_.back().get());
    const std::size_t size = std::min(2 * used, chunk_size);
    auto chunk = std::make_unique<kol_change_t[]>(size);
    next_ = chunk.get();
    end_ = next_ + size;
    if (used == chunk_size) {
        before_last_ += used;
        chunks_.push_back(std::move(chunk));
        return;
    }
    next_ = std::copy_n(chunks_.back().get(), used, next_);
    chunks_.back() = std::move(chunk);
}

std::size_t kol_history_t::find(std::int32_t time, std::size_t hint) const {
    const std::size_t count = size();
    std::size_t from = 0, to = count;  // the first later change is among [from, to]
    if (hint < count && (*this)[hint].time <= time) {
        from = hint + 1;
        while (from < count && from <= hint + near_places && (*this)[from].time <= time) ++from;
        if (from <= hint + near_places) to = from;
    } else {
        to = std::min(hint, count);
    }
    while (from < to) {
        const std::size_t middle = from + (to - from) / 2;
        if ((*this)[middle].time <= time)
            from = middle + 1;
        else
            to = middle;
    }
    return from == 0 ? 0 : from - 1;
}

kol_history_t* kol_observe_net(yx_net_record_t* net) {
    yx_net_u1_t& u1 = net->UU.U1;
    if (u1.nb_of_observer++ == 0) {
        u1.history = &histories[net];
        begin_history(u1.cur_state, *u1.history);
        kol_watch_cell(*net);
    }
    return u1.history;
}

void kol_forget_net(yx_net_record_t* net) {
    yx_net_u1_t& u1 = net->UU.U1;
    if (u1.nb_of_observer == 0 || --u1.nb_of_observer > 0) return;
    u1.history = nullptr;
    histories.erase(net);
    kol_watch_cell(*net);
}

std::int32_t kol_recorded_from(const yx_net_record_t& net) {
    return net.UU.U1.history == nullptr ? 0 : net.UU.U1.history->known_from;
}

void kol_init_list_state() {
    for (yx_signal_rec_t* signal = kol_ext.list_signal; signal != nullptr; signal = signal->previous)
        reset_signal(*signal);
    for (yx_signal_rec_t* signal = kol_ext.trace_signal; signal != nullptr; signal = signal->previous)
        reset_signal(*signal);
    for (yx_bus_rec_t* bus = kol_ext.start_sim_bus; bus != nullptr; bus = bus->next)
        kol_init_bus_list_state(bus);
}

void kol_init_bus_list_state(yx_bus_rec_t* bus) {
    for (yx_signal_rec_t* member = bus->signal; member != nullptr; member = member->next)
        reset_signal(*member);
}

void kol_clear_history() { histories.clear(); }
