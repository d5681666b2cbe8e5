// The latch: its roles, its set-up and what a change of each input does.
#include "models/latch.h"

#include "models/storage.h"
#include "models/timing_checks.h"
#include "models/user_data.h"

namespace {

using kol_latch_userdata_rec_t = kol_storage_t;  // control.on: the latch holds

kol_user_data<kol_latch_userdata_rec_t> user_data;

// True on the latching edge.  With an enable that latches on any change nothing is ever captured.
bool follow_enable(kol_timing_role_t& enable, kol_change change) {
    if (tm_upper_case(enable.edge) == 'X') {
        enable.on = !enable.on;
        return false;
    }
    enable.on = kol_is_active(enable.edge, change);
    return enable.on;
}

}  // namespace

void kol_latch_init() {
    kol_latch_userdata_rec_t& latch = user_data.create();
    kol_set_up_pins(kol_latch_plan, latch.roles(), &latch.outputs);
}

void kol_latch_clear() { user_data.all().clear(); }

void kol_latch_restart() {
    for (kol_latch_userdata_rec_t& latch : user_data.all()) kol_restart_storage(latch);
}

void kol_latch_archive(tm_archive_t& archive) {
    for (kol_latch_userdata_rec_t& latch : user_data.all()) kol_archive_storage(archive, latch);
}

void kol_latch_refresh() { kol_refresh_pins(kol_latch_plan, user_data.current().roles()); }

void kol_latch_d_hdler() {
    kol_latch_userdata_rec_t& latch = user_data.current();
    const kol_transition_t data = kol_record_transition(latch.d);
    if (latch.s.on || latch.r.on) return;
    if (latch.check_data_on) kol_check_hold(latch.d, data, latch.control);
    if (!latch.control.on) kol_capture(latch, latch.d.pin);
}

void kol_latch_e_hdler() {
    kol_latch_userdata_rec_t& latch = user_data.current();
    const kol_transition_t enable = kol_record_transition(latch.control);
    if (latch.s.found) kol_check_setup(latch.control, enable, latch.s);
    if (latch.r.found) kol_check_setup(latch.control, enable, latch.r);
    if (latch.check_data_on) kol_check_pulse_width(latch.control, enable);
    if (!follow_enable(latch.control, enable.change)) return;
    if (latch.check_data_on) kol_check_setup(latch.control, enable, latch.d);
    if (!latch.s.on && !latch.r.on) kol_capture(latch, latch.control.pin);
}

void kol_latch_s_hdler() { kol_set_changed(user_data.current()); }
void kol_latch_r_hdler() { kol_reset_changed(user_data.current()); }
