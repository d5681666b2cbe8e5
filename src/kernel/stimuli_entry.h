// kol: stimuli on their way into the queue of a run.  They enter when the head reaches them, in front of the
// events that the run has scheduled for their time, as if they had been there since the run began.  But those
// of a time for which earlier runs have left events go behind these when the run begins, and those of the
// last time, too, since pins put events in front of the last one of all.
#pragma once

#include <span>

#include "kernel/stimuli_reader.h"

struct kol_stimuli_target_t {
    void (*append)(const kol_stimulus_t& stimulus);  // behind the events of its time
    void (*put_first)(std::int32_t time, std::span<const kol_stimulus_t> stimuli);  // in front of them
};

class kol_stimuli_entry_t {
public:
    explicit kol_stimuli_entry_t(const kol_stimuli_target_t& target) : target_(target) {}

    std::int64_t next_time() const { return reader_.next_time(); }
    // The times are those of the events in the queue, in order.
    void begin(std::vector<std::int32_t> times);
    void enter_until(std::int64_t time) {
        while (next_time() <= time) enter_next();
    }
    // What is left waits for the next run, except at times for which the queue has events.
    void end(std::span<const std::int32_t> times);

private:
    bool is_entered(std::int64_t time) const;
    void enter_next();

    const kol_stimuli_target_t& target_;
    kol_stimuli_reader_t reader_;
    std::vector<std::int32_t> entered_;  // times whose stimuli have entered at once, in order
    std::vector<kol_stimulus_t> of_time_;
};

// The times of the event records that are queued.
std::vector<std::int32_t> kol_times_of_queue();
