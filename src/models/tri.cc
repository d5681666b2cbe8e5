// The tri-state buffer: its roles, and the state that its inputs give.
#include "models/tri.h"

#include "kernel/state.h"
#include "models/pin_outputs.h"
#include "models/pin_roles.h"
#include "models/storage.h"
#include "models/user_data.h"

namespace {

struct kol_tri_userdata_rec_t {
    kol_timing_role_t a, e;
    kol_outputs_t outputs;

    std::array<kol_timing_role_t*, 2> roles() { return {&a, &e}; }
};

constexpr kol_role_rule_t role_rules[] = {
    {'A', "", false, 'X', 'X', "# !!! Error : Invalid Data Name (A) on pin : ", "", kol_limit_use::ignored,
     kol_limit_use::ignored, false},
    {'E', "", true, 'R', 'F', kol_enable_name_error, kol_enable_polarity_error, kol_limit_use::ignored,
     kol_limit_use::ignored},
};
constexpr kol_pin_plan_t plan = {role_rules, kol_other_pin::output, true, false};

constexpr std::int8_t high_impedance = 6;  // xZ

kol_user_data<kol_tri_userdata_rec_t> user_data;

void drive(yx_pin_record_t* pin, std::int16_t value, bool is_enabled, std::int32_t input_delay) {
    if (is_enabled)
        kol_schedule_output(pin, value, input_delay);
    else
        kol_schedule_state(pin, high_impedance, input_delay);
}

}  // namespace

void kol_tri_init() {
    kol_tri_userdata_rec_t& tri = user_data.create();
    kol_set_up_pins(plan, tri.roles(), &tri.outputs);
}

void kol_tri_clear() { user_data.all().clear(); }

void kol_tri_refresh() { kol_refresh_pins(plan, {}); }

void kol_tri_hdler() {
    const kol_tri_userdata_rec_t& tri = user_data.current();
    const std::int16_t enable = kol_role_value(tri.e),
                       off = tm_upper_case(tri.e.edge) == 'F' ? kol_v1 : kol_v0;
    const bool is_known = enable == kol_v0 || enable == kol_v1, is_enabled = enable != off || !tri.e.found;
    const std::int16_t value = is_known || !tri.e.found ? kol_role_value(tri.a) : std::int16_t{kol_vi};
    const std::int32_t input_delay =
        kol_input_delay(kol_ext.cur_pin, is_enabled ? value : std::int16_t{kol_vx});
    for (std::int32_t i = 0; i < tri.outputs.nb_q; ++i)
        drive(tri.outputs.q_pin[static_cast<std::size_t>(i)], value, is_enabled, input_delay);
    for (std::int32_t i = 0; i < tri.outputs.nb_qb; ++i)
        drive(tri.outputs.qb_pin[static_cast<std::size_t>(i)], kol_inverted(value), is_enabled, input_delay);
}
