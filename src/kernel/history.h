// kol: the state histories of observed nets.  A history begins with a change (0, iU) when the net gets its
// first observer (a list or trace signal, a member of a user bus) and goes on until the last one leaves; its
// changes are in order of time.  A net that has changed before it is observed gets its last change too, one
// whose state was restored a change to that.  Places count from 0, the oldest change.
#pragma once

#include <algorithm>
#include <memory>
#include <span>
#include <vector>

#include "kernel/context.h"

struct kol_change_t {
    std::int32_t time = 0;
    std::int8_t state = 0;
};
static_assert(sizeof(kol_change_t) == 8);

// The changes lie in chunks of one size; the first chunk grows to it.  There is always a change.
class kol_history_t {
public:
    std::int32_t known_from = 0;  // what was before is not recorded

    kol_history_t() { reset(); }

    std::size_t size() const { return before_last_ + static_cast<std::size_t>(next_ - chunks_.back().get()); }
    const kol_change_t& operator[](std::size_t place) const {
        return chunks_[place / chunk_size][place % chunk_size];
    }
    const kol_change_t& newest() const { return next_[-1]; }
    kol_change_t& newest() { return next_[-1]; }
    void append(std::int32_t time, std::int8_t state) {
        if (next_ == end_) [[unlikely]]
            grow();
        *next_++ = {time, state};
    }
    // Back to the single change (0, iU).
    void reset();

    // The place of the last change not later than a time, of the first one when all are later; found fastest
    // where it is just behind the hint.
    std::size_t find(std::int32_t time, std::size_t hint = 0) const;
    // The changes at the places [from, to) as far as they lie together.
    std::span<const kol_change_t> together(std::size_t from, std::size_t to) const {
        const std::size_t end = std::min(to, (from / chunk_size + 1) * chunk_size);
        return {&(*this)[from], end - from};
    }

private:
    static constexpr std::size_t least_size = 8, chunk_size = 1024;

    void grow();

    std::vector<std::unique_ptr<kol_change_t[]>> chunks_;
    kol_change_t* next_ = nullptr;  // behind the newest change
    kol_change_t* end_ = nullptr;   // of the last chunk
    std::size_t before_last_ = 0;   // changes in the chunks before the last one
};

// Begins or joins the net's history.
kol_history_t* kol_observe_net(yx_net_record_t* net);
// Takes one observer away; the last one ends the history.
void kol_forget_net(yx_net_record_t* net);
// The time from which the net's history is known: 0, or that of its last change when it was first observed
// later.
std::int32_t kol_recorded_from(const yx_net_record_t& net);
// Resets every history and moves every list and trace signal and user bus member to its first change.
void kol_init_list_state();
void kol_init_bus_list_state(yx_bus_rec_t* bus);
// Frees every history.
void kol_clear_history();
