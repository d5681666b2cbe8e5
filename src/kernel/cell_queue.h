// kol: what enters and leaves the wheel of a run: the queue that earlier runs left, the stimuli, and at its
// end what has not happened yet.
#pragma once

#include "kernel/cells.h"
#include "kernel/stimuli.h"

// Enters FORCE events when their time has come, in front of the events that this run has scheduled for it.
// But those of a time for which events are left of an earlier run go behind these at once, and those of the
// last time, too, since pins put events in front of the last one of all.
class kol_stimuli_reader_t {
public:
    explicit kol_stimuli_reader_t(const kol_stimuli_t& stimuli) : stimuli_(stimuli) {}
    std::int64_t next_time() const {
        return next_ == stimuli_.size() ? kol_wheel_t::never : std::int64_t{stimuli_[next_].time};
    }
    void enter_behind(const std::vector<std::int32_t>& times_of_queue);
    void enter(std::int32_t time);
    void enter_rest();

private:
    void enter_at_once(std::int32_t time);

    const kol_stimuli_t& stimuli_;
    std::size_t next_ = 0;
    std::vector<std::int32_t> entered_;  // times entered at once, in order
};

// The queue into the wheel; the result is its times.
std::vector<std::int32_t> kol_take_queue();
void kol_give_queue_back();
