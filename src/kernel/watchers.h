// kol: what watches a run.  Owns who is told of a run, and who stops it, between two times, when every event
// of a time is done: the watcher of all nets (DUMP), the keeper of appointments (CHECK TABLE), and breaks of
// whole buses.  While nobody watches, a run pays one test a time.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "kernel/context.h"

struct kol_net_change_t {
    std::uint32_t net = 0;  // index of a root net that may have changed
    std::int8_t state = 0;  // its state now
};

// The procedures may be absent.
struct kol_net_watcher_t {
    void (*begin)(std::int32_t time) = nullptr;  // of a run: the records are up, states may be new
    void (*changed)(std::int32_t time, std::span<const kol_net_change_t> changes) = nullptr;
    void (*end)(std::int32_t time) = nullptr;
};

struct kol_appointments_t {
    static constexpr std::int64_t none = INT64_MAX;
    std::int64_t next = none;                     // time of the next one
    void (*begin)(std::int32_t time) = nullptr;   // of a run
    void (*keep)(std::int32_t before) = nullptr;  // every one that is earlier; moves `next` on
    void (*end)(std::int32_t time) = nullptr;
};

// A bus that ends the run when its bits have these states once the events of a time are done.
struct kol_bus_break_t {
    tm_string_record_t name, cur_sim_path;
    std::string value;                   // as typed
    std::vector<yx_net_record_t*> bits;  // roots
    std::string values;                  // of them: 0, 1, z, or x for any
};

struct kol_watchers_t {
    bool is_on = false;  // one of those below is there
    kol_net_watcher_t nets;
    kol_appointments_t appointments;
    std::vector<kol_bus_break_t> bus_breaks;
    std::vector<kol_net_change_t> changes;  // of the time at hand, for the watcher of nets
};
extern kol_watchers_t kol_watchers;

// After one of them has come or gone.
void kol_set_watchers();

void kol_begin_watched_run();
// Every event before the next time is done; true ends the run.
bool kol_watch_time(std::int64_t next_time, std::int64_t counted_before);
void kol_end_watched_run();
