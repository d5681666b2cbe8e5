// kol: the reader of stimuli.  Tells, in order of time, what the windows of runs bring; the stimuli of one
// time in their stated order: window after window the single forces, the newest first, then clock after clock
// the repeated ones in the order of entry.  A reader holds an entry for each part of the forces and for each
// clock, whatever lies ahead; nothing may be added to the stimuli while it reads.
#pragma once

#include "kernel/stimuli.h"

struct kol_stimulus_t {
    std::int32_t time = 0;
    std::int32_t net = 0;  // index of its record
    std::int8_t state = 0;
    bool is_of_present = false;  // the present run brings it, not one that ended early
};

class kol_stimuli_reader_t {
public:
    static constexpr std::int64_t never = INT64_MAX;

    // Of all windows, or of the present run's alone, what comes from a time on and before another.
    explicit kol_stimuli_reader_t(bool only_present = false, std::int64_t from = 0, std::int64_t end = never);

    std::int64_t next_time() const { return sources_.empty() ? never : sources_.front().time; }
    // The next stimulus, of which there has to be one.
    kol_stimulus_t take();

private:
    enum class kind_t : std::uint8_t { part, regular, other };
    // A part of the single forces, the regular forces of a clock, or one of its others.
    struct source_t {
        kind_t kind = kind_t::part;
        std::uint32_t window = 0, group = 0;  // rank among the stimuli of one time
        std::int64_t first = 0, end = 0;      // times that it brings
        std::uint32_t limit = 0;              // forces of this order on are newer than the window
        const kol_clock_t* clock = nullptr;
        std::int64_t period_begin = 0;                // of a clock
        std::size_t at = 0;                           // place behind the next force, of a part in front of it
        std::size_t begin = 0, behind = 0, last = 0;  // of a part: the forces of one time, the part's end
        const kol_force_t* force = nullptr;           // the next one
        std::int64_t time = 0;
    };

    void add_window(std::uint32_t number, std::int64_t from, std::int64_t end);
    void add_part(source_t source, std::size_t part);
    void add_clock(source_t source, const kol_window_t& window);
    void add(const source_t& source);
    static bool move_on(source_t& source);
    static bool comes_later(const source_t& a, const source_t& b);

    std::vector<source_t> sources_;  // a heap
};

// The last time of what the windows still bring, -1 when they bring nothing.
std::int64_t kol_last_stimulus_time();
