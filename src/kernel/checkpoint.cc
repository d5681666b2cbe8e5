// States, timing, models, queue and histories as an archive.
#include "kernel/checkpoint.h"

#include "kernel/cell_records.h"
#include "kernel/cells.h"
#include "kernel/history.h"
#include "kernel/model.h"
#include "kernel/network.h"
#include "kernel/queue.h"
#include "kernel/say.h"
#include "kernel/setup.h"
#include "kernel/time_index.h"

namespace {

// ---- settings

void archive_settings(tm_archive_t& archive) {
    kol_defref_var_rec_t& e = kol_ext;
    archive(e.sim_range_type, e.timing_ar, e.cur_sim_path, e.scale_user_unit, e.start_time, e.cur_time,
            e.end_time, e.time_breaked, e.resume_time, e.history, e.history_abs, e.spike_on, e.spiked,
            e.spike_model, e.spike_min, e.spike_min_t0, e.spike_min_t, e.tspike_min, e.tim_coef_delay,
            e.tim_coef_setup, e.tim_coef_hold, e.tim_coef_minpulse);
}

// Times among the properties; delays and limits follow from them.
void archive_timing(tm_archive_t& archive) {
    for (std::int32_t i = 1; i <= yx_sext.max_prop_cur; ++i) {
        yx_prop_record_t& property = *yx_ptrto_prop_rec(i);
        if (property.prop_type == YX_PTIME) archive(property.valuet);
    }
    if (archive.is_reading()) kol_refresh_timing();
}

// ---- states

void archive_state(tm_archive_t& archive, yx_signal_state_rec& state) {
    archive(state.time, state.state, state.fixed);
}

void archive_pin_states(tm_archive_t& archive, yx_pin_record_t& pin) {
    if (pin.pin_end == 0) return archive_state(archive, pin.pin_state.std);
    if (pin.pin_state.bus == nullptr) return;  // a pin of no instance
    for (std::int32_t bit = pin.pin_start; bit <= pin.pin_end; ++bit)
        archive_state(archive, kol_pin_state(pin, *yx_ptrto_net_rec(kol_member_index(pin, bit))));
}

void archive_states(tm_archive_t& archive) {
    for (std::int32_t i = 1; i <= yx_sext.max_net_cur; ++i) {
        yx_net_record_t& net = *yx_ptrto_net_rec(i);
        if (net.net_type == YX_TSTD_BUS) continue;
        archive_state(archive, net.UU.U1.cur_state);
        archive_state(archive, net.UU.U1.old_state);
    }
    for (std::int32_t i = 1; i <= yx_sext.max_pin_cur; ++i) archive_pin_states(archive, *yx_ptrto_pin_rec(i));
}

void archive_models(tm_archive_t& archive) {
    for (const kol_model_t& model : kol_models())
        if (model.archive != nullptr) model.archive(archive);
}

// ---- the queue

void archive_event(tm_archive_t& archive, yx_event_rec_t& event) {
    archive(event.time, event.state, event.unordered);
    kol_archive_pin(archive, event.pin);
    kol_archive_net(archive, event.net);
}

void write_queue(tm_archive_t& archive) {
    std::size_t count = 0;
    for (const yx_event_rec_t* event = kol_ext.cur_event; event != nullptr; event = event->next) ++count;
    archive.count(count);
    for (yx_event_rec_t* event = kol_ext.cur_event; event != nullptr; event = event->next)
        archive_event(archive, *event);
}

void read_queue(tm_archive_t& archive) {
    kol_empty_queue();
    kol_advance_index(kol_ext.cur_time);
    const std::size_t count = archive.count(0);
    for (std::size_t k = 0; k < count && archive.is_sound(); ++k) {
        yx_event_rec_t event;
        archive_event(archive, event);
        if (event.net == nullptr) continue;
        kol_append_event(event.pin, event.net, event.time, event.state);
        kol_ext.last_event->unordered = event.unordered;
    }
}

// ---- histories

void archive_history(tm_archive_t& archive, kol_history_t& history) {
    const std::size_t count = archive.count(history.size());
    if (archive.is_reading()) history.reset();
    for (std::size_t k = 0; k < count; ++k) {
        kol_change_t change = archive.is_reading() ? kol_change_t{} : history[k];
        archive(change.time, change.state);
        if (!archive.is_reading()) continue;
        if (k == 0)
            history.newest() = change;
        else
            history.append(change.time, change.state);
    }
}

std::string_view bytes_of(const std::int32_t& number) {
    return {reinterpret_cast<const char*>(&number), sizeof number};
}

}  // namespace

void kol_archive_net(tm_archive_t& archive, yx_net_record_t*& net) {
    std::int32_t index = net == nullptr ? 0 : net->self;
    archive(index);
    if (!archive.is_reading()) return;
    net = index < 1 || index > yx_sext.max_net_cur ? nullptr : yx_ptrto_net_rec(index);
}

void kol_archive_pin(tm_archive_t& archive, yx_pin_record_t*& pin) {
    std::int32_t index = pin == nullptr ? 0 : pin->self;
    archive(index);
    if (!archive.is_reading()) return;
    pin = index < 1 || index > yx_sext.max_pin_cur ? nullptr : yx_ptrto_pin_rec(index);
}

std::uint64_t kol_design_fingerprint() {
    std::uint64_t hash = tm_hash({});
    for (std::int32_t i = 1; i <= yx_sext.max_string_cur; ++i) hash = tm_hash(kol_path(i), hash);
    for (std::int32_t i = 1; i <= yx_sext.max_pin_cur; ++i) {
        const yx_pin_record_t& pin = *yx_ptrto_pin_rec(i);
        for (const std::int32_t number : {pin.net_ind, pin.instance_ind, pin.sim_path,
                                          std::int32_t{pin.pin_start}, std::int32_t{pin.pin_end}})
            hash = tm_hash(bytes_of(number), hash);
    }
    for (const std::int32_t number : {yx_sext.max_net_cur, yx_sext.max_inst_cur, yx_sext.max_prop_cur})
        hash = tm_hash(bytes_of(number), hash);
    return hash;
}

void kol_archive_run(tm_archive_t& archive) {
    if (!archive.is_reading()) kol_bring_records_up();
    archive_settings(archive);
    archive_timing(archive);
    archive_states(archive);
    archive_models(archive);
    if (archive.is_reading())
        read_queue(archive);
    else
        write_queue(archive);
    kol_archive_stimuli(archive);
    if (archive.is_reading()) kol_forget_cells();
}

void kol_archive_histories(tm_archive_t& archive) {
    for (std::int32_t i = 1; i <= yx_sext.max_net_cur; ++i) {
        yx_net_record_t& net = *yx_ptrto_net_rec(i);
        if (net.net_type != YX_TSTD_BUS && net.UU.U1.history != nullptr)
            archive_history(archive, *net.UU.U1.history);
    }
}
