// Forces, clock blocks and the windows of runs as an archive.
#include "kernel/checkpoint.h"
#include "kernel/stimuli.h"

namespace {

void take(tm_archive_t& archive, kol_force_t& force) {
    archive(force.net, force.time, force.stop_time, force.order, force.state);
}
void take(tm_archive_t& archive, kol_window_t& window) {
    archive(window.start, window.end, window.from, window.forces, window.clocks, window.last_clock_forces);
}

void take(tm_archive_t& archive, kol_clock_t& clock);

template <typename Rows>
void take_rows(tm_archive_t& archive, Rows& rows) {
    rows.resize(archive.count(rows.size()));
    for (auto& row : rows) take(archive, row);
}

void take(tm_archive_t& archive, kol_clock_t& clock) {
    archive(clock.period, clock.start_time, clock.regular, clock.others);
    take_rows(archive, clock.forces);
}

}  // namespace

void kol_archive_stimuli(tm_archive_t& archive) {
    kol_stimuli_t& stimuli = kol_stimuli;
    take_rows(archive, stimuli.forces);
    take_rows(archive, stimuli.clocks);
    take_rows(archive, stimuli.windows);
    archive(stimuli.parts, stimuli.sorted);
}
