// The stability checker: its roles and what it checks at a change of each input.
#include "models/stable.h"

#include "models/pin_roles.h"
#include "models/timing_checks.h"
#include "models/user_data.h"

namespace {

struct kol_stable_userdata_rec_t {
    kol_timing_role_t d, clk, e;
    bool check_data_on = true;

    kol_stable_userdata_rec_t() { d.edge = 'X'; }
    std::array<kol_timing_role_t*, 3> roles() { return {&d, &clk, &e}; }
};

constexpr kol_role_rule_t role_rules[] = {
    kol_data_rule,
    {'C', "LK", true, 'R', 'F', "# !!! Error : Invalid Clock Name (CLK,CLKN,CLKP) on pin : ",
     kol_clock_polarity_error, kol_limit_use::stored, kol_limit_use::warned},
    {'E', "", true, 'R', 'F', kol_enable_name_error, kol_enable_polarity_error, kol_limit_use::ignored,
     kol_limit_use::ignored},
};
constexpr kol_pin_plan_t plan = {role_rules, kol_other_pin::refused, false, true};

kol_user_data<kol_stable_userdata_rec_t> user_data;

}  // namespace

void kol_stable_init() { kol_set_up_pins(plan, user_data.create().roles(), nullptr); }

void kol_stable_clear() { user_data.all().clear(); }

void kol_stable_restart() {
    for (kol_stable_userdata_rec_t& stable : user_data.all()) {
        for (kol_timing_role_t* role : stable.roles()) kol_restart_role(*role);
        kol_restart_enable(stable.e, true, stable.check_data_on);
    }
}

void kol_stable_archive(tm_archive_t& archive) {
    for (kol_stable_userdata_rec_t& stable : user_data.all()) {
        for (kol_timing_role_t* role : stable.roles()) kol_archive_role(archive, *role);
        archive(stable.check_data_on);
    }
}

void kol_stable_refresh() { kol_refresh_pins(plan, user_data.current().roles()); }

void kol_stable_d_hdler() {
    kol_stable_userdata_rec_t& stable = user_data.current();
    const kol_transition_t data = kol_record_transition(stable.d);
    if (stable.check_data_on) kol_check_hold(stable.d, data, stable.clk);
}

void kol_stable_clk_hdler() {
    kol_stable_userdata_rec_t& stable = user_data.current();
    const kol_transition_t clock = kol_record_transition(stable.clk);
    kol_check_pulse_width(stable.clk, clock);
    if (stable.check_data_on) kol_check_setup(stable.clk, clock, stable.d);
}

void kol_stable_e_hdler() {
    kol_stable_userdata_rec_t& stable = user_data.current();
    kol_follow_enable(stable.e.edge, kol_read_transition(stable.e).change, stable.check_data_on);
}
