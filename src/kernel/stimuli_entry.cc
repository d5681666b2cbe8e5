// What enters at once, what enters in time, what is left.
#include "kernel/stimuli_entry.h"

#include <algorithm>

#include "kernel/context.h"

void kol_stimuli_entry_t::begin(std::vector<std::int32_t> times) {
    entered_ = std::move(times);
    if (next_time() == kol_stimuli_reader_t::never) return;
    const std::int64_t last = kol_last_stimulus_time();
    const auto enter = [&](std::int64_t time, bool only_present) {
        kol_stimuli_reader_t reader(only_present, time, time + 1);
        while (reader.next_time() == time) target_.append(reader.take());
    };
    for (const std::int32_t time : entered_)
        if (time <= last) enter(time, true);
    if (is_entered(last)) return;
    enter(last, false);
    entered_.push_back(static_cast<std::int32_t>(last));
    std::ranges::sort(entered_);
}

bool kol_stimuli_entry_t::is_entered(std::int64_t time) const {
    return std::ranges::binary_search(entered_, time, {}, [](std::int32_t t) { return std::int64_t{t}; });
}

void kol_stimuli_entry_t::enter_next() {
    const std::int64_t time = next_time();
    of_time_.clear();
    while (next_time() == time) of_time_.push_back(reader_.take());
    if (!is_entered(time)) target_.put_first(static_cast<std::int32_t>(time), of_time_);
}

void kol_stimuli_entry_t::end(std::span<const std::int32_t> times) {
    if (next_time() != kol_stimuli_reader_t::never)
        for (const std::int32_t time : times) {
            if (time < next_time() || is_entered(time)) continue;
            of_time_.clear();
            kol_stimuli_reader_t reader(false, time, std::int64_t{time} + 1);
            while (reader.next_time() == time) of_time_.push_back(reader.take());
            target_.put_first(time, of_time_);
        }
    kol_keep_windows(next_time());
}

std::vector<std::int32_t> kol_times_of_queue() {
    std::vector<std::int32_t> times;
    for (const yx_event_rec_t* event = kol_ext.cur_event; event != nullptr; event = event->next)
        if (times.empty() || times.back() != event->time) times.push_back(event->time);
    return times;
}
