// The flip-flop: its roles, its set-up and what a change of each input does.
#include "models/dff.h"

#include "models/storage.h"
#include "models/timing_checks.h"
#include "models/user_data.h"

namespace {

using kol_dff_userdata_rec_t = kol_storage_t;

constexpr kol_role_rule_t role_rules[] = {
    kol_data_rule,
    {'C', "LK", true, 'R', 'F', "# !!! Error : Invalid Clock Name (CLK,CLKN,CLKP,CLKX) on pin : ",
     kol_clock_polarity_error, kol_limit_use::stored, kol_limit_use::warned},
    kol_reset_rule,
    kol_set_rule,
};
constexpr kol_pin_plan_t plan = {role_rules, kol_other_pin::output, true, true};

kol_user_data<kol_dff_userdata_rec_t> user_data;

// Of data that is checked at any change, the later of both times counts.
void note_data_time(const yx_inst_record_t& inst, std::int32_t time) {
    kol_timing_role_t& data = static_cast<kol_dff_userdata_rec_t*>(inst.user_data_area)->d;
    data.rising_time = data.falling_time = time;
}

}  // namespace

void kol_dff_init() {
    kol_dff_userdata_rec_t& dff = user_data.create();
    kol_set_up_pins(plan, dff.roles(), &dff.outputs);
    dff.edges = kol_read_edge_checks(dff.edge_roles());
}

void kol_dff_clear() { user_data.all().clear(); }

void kol_dff_restart() {
    for (kol_dff_userdata_rec_t& dff : user_data.all()) kol_restart_storage(dff);
}

void kol_dff_archive(tm_archive_t& archive) {
    for (kol_dff_userdata_rec_t& dff : user_data.all()) kol_archive_storage(archive, dff);
}

void kol_dff_refresh() {
    kol_dff_userdata_rec_t& dff = user_data.current();
    kol_refresh_pins(plan, dff.roles());
    kol_refresh_edge_checks(dff.edge_roles(), dff.edges.get());
}

kol_short_way_t kol_dff_short_way(const yx_inst_record_t& inst) {
    const auto* const dff = static_cast<const kol_dff_userdata_rec_t*>(inst.user_data_area);
    if (dff == nullptr || dff->d.pin == nullptr || dff->control.pin == nullptr) return {};
    if (dff->s.found || dff->r.found || dff->edges != nullptr || kol_has_limits(dff->control) ||
        !kol_checks_setup_only(dff->d))
        return {};
    const kol_outputs_t& outputs = dff->outputs;
    if (outputs.nb_q + outputs.nb_qb != 1) return {};
    const bool is_inverted = outputs.nb_qb == 1;
    return {nullptr,          dff->d.pin,
            dff->control.pin, is_inverted ? outputs.qb_pin[0] : outputs.q_pin[0],
            is_inverted,      kol_active_changes(dff->control.edge),
            dff->d.setup,     note_data_time};
}

void kol_dff_d_hdler() {
    kol_dff_userdata_rec_t& dff = user_data.current();
    const kol_transition_t data = kol_record_transition(dff.d);
    if (dff.check_data_on) kol_check_hold(dff.d, data, dff.control);
}

void kol_dff_clk_hdler() {
    kol_dff_userdata_rec_t& dff = user_data.current();
    const kol_transition_t clock = kol_record_transition(dff.control);
    if (dff.check_data_on) {
        kol_check_pulse_width(dff.control, clock);
        kol_check_setup(dff.control, clock, dff.d);
    }
    if (dff.s.found) kol_check_setup(dff.control, clock, dff.s);
    if (dff.r.found) kol_check_setup(dff.control, clock, dff.r);
    kol_check_clock(dff.edges.get(), dff.edge_roles(), clock);
    if (!kol_is_active(dff.control.edge, clock.change) || dff.s.on || dff.r.on) return;
    kol_capture(dff, dff.control.pin);
}

void kol_dff_s_hdler() { kol_set_changed(user_data.current()); }
void kol_dff_r_hdler() { kol_reset_changed(user_data.current()); }
