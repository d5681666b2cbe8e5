// The set-up of pins by the roles of a model, and the refresh of what it read.
#include "models/pin_roles.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "foundation/shell.h"
#include "foundation/status.h"
#include "kernel/say.h"
#include "models/pin_properties.h"
#include "models/pin_setup.h"

namespace {

struct limit_row {
    tm_string_record_t property;
    std::string_view warning;
    std::int32_t (kol_timing_role_t::*limit)[3];
    kol_limit_use kol_role_rule_t::*use;
};

const limit_row limit_rows[] = {
    {tm_string("MIN_TIME_HIGH"), "# !!! Warning: Minimum Time High Not Checked on pin : ",
     &kol_timing_role_t::min_time_high, &kol_role_rule_t::pulse},
    {tm_string("MIN_TIME_LOW"), "# !!! Warning: Minimum Time Low Not Checked on pin : ",
     &kol_timing_role_t::min_time_low, &kol_role_rule_t::pulse},
    {tm_string("SETUP_TIME"), "# !!! Warning: Setup Not Allowed on Clock : ", &kol_timing_role_t::setup,
     &kol_role_rule_t::window},
    {tm_string("HOLD_TIME"), "# !!! Warning: Hold Not Allowed on Clock : ", &kol_timing_role_t::hold,
     &kol_role_rule_t::window},
};

bool read_polarity(const kol_role_rule_t& rule, char letter, const yx_pin_record_t& pin, char& edge) {
    switch (letter) {
        case 'P':
            edge = rule.edge_of_p;
            return true;
        case 'N':
            edge = rule.edge_of_n;
            return true;
        case 'X':
            edge = 'X';
            return true;
        default:
            return kol_show_pin_error(rule.polarity_error, pin);
    }
}

bool set_up_role(const kol_role_rule_t& rule, std::string_view name, yx_pin_record_t& pin,
                 kol_timing_role_t& role) {
    const std::string_view tail = name.substr(1);
    const std::size_t extra = tail.size() - std::min(tail.size(), rule.rest.size());
    if (!tail.starts_with(rule.rest) || extra > (rule.has_polarity ? 1U : 0U))
        return kol_show_pin_error(rule.name_error, pin);
    role.found = true;
    if (extra > 0 && !read_polarity(rule, name.back(), pin, role.edge)) return false;
    if (extra == 0 && rule.has_edge && !kol_read_edge(pin, role.edge)) return false;
    role.pin = &pin;
    return true;
}

bool add_output(std::string_view name, yx_pin_record_t& pin, kol_outputs_t& outputs) {
    const bool inverted = !name.empty() && name.back() == 'B';
    std::int32_t& count = inverted ? outputs.nb_qb : outputs.nb_q;
    if (pin.io_type != YX_IO_OUTPUT || count == static_cast<std::int32_t>(kol_max_outputs))
        return kol_show_pin_error("# !!! Error : Invalid Pin Type Output  on pin : ", pin);
    (inverted ? outputs.qb_pin : outputs.q_pin)[static_cast<std::size_t>(count++)] = &pin;
    return true;
}

bool set_up_other(kol_other_pin other, std::string_view name, yx_pin_record_t& pin, kol_outputs_t* outputs) {
    switch (other) {
        case kol_other_pin::output:
            return add_output(name, pin, *outputs);
        case kol_other_pin::terminal:
            return pin.io_type == YX_IO_TERMINAL ||
                   kol_show_pin_error("# !!! Error : Invalid Pin Type Output  on pin : ", pin);
        case kol_other_pin::refused:
            break;
    }
    return kol_show_pin_error("# !!! Error : Invalid Pin :   " + kol_quoted_path(pin.sim_path), pin);
}

bool is_io_type_allowed(kol_other_pin other, std::int16_t io_type) {
    return io_type == YX_IO_INPUT ||
           io_type == (other == kol_other_pin::terminal ? YX_IO_TERMINAL : YX_IO_OUTPUT);
}

void warn_when_set(const limit_row& row, const std::int32_t (&limit)[3], const yx_pin_record_t& pin) {
    if (std::int64_t{limit[0]} + limit[1] + limit[2] <= 0) return;
    tm_count_warning();
    kol_say(row.warning);
    kol_say("    ", kol_quoted_path(pin.sim_path));
}

bool read_limits(const kol_role_rule_t& rule, const yx_pin_record_t& pin, kol_timing_role_t& role) {
    for (const limit_row& row : limit_rows) {
        std::int32_t limit[3] = {0, 0, 0};
        bool found = false;
        if (!kol_read_limit(pin, row.property, limit, found)) return false;
        if (!found) continue;
        if (rule.*row.use == kol_limit_use::stored) std::copy_n(limit, 3, role.*row.limit);
        if (rule.*row.use == kol_limit_use::warned) warn_when_set(row, limit, pin);
    }
    return true;
}

bool set_up_pin(const kol_pin_plan_t& plan, std::span<kol_timing_role_t* const> roles, kol_outputs_t* outputs,
                yx_pin_record_t& pin) {
    if (pin.pin_end != 0) return kol_show_pin_error("# !!! Error : Pin Bus Not Allowed on pin : ", pin);
    std::string name;
    if (!kol_read_pin_name(pin, name)) return false;
    const auto rule = std::find_if(
        plan.roles.begin(), plan.roles.end(),
        [&](const kol_role_rule_t& candidate) { return !name.empty() && candidate.letter == name.front(); });
    const bool has_role = rule != plan.roles.end();
    kol_timing_role_t* role = has_role ? roles[static_cast<std::size_t>(rule - plan.roles.begin())] : nullptr;
    if (!(has_role ? set_up_role(*rule, name, pin, *role) : set_up_other(plan.other, name, pin, outputs)))
        return false;
    if (!is_io_type_allowed(plan.other, pin.io_type)) return kol_show_pin_error(kol_pintype_error, pin);
    if (plan.has_delays && !kol_read_pin_delays(pin)) return false;
    if (plan.has_limits && has_role && pin.io_type == YX_IO_INPUT && !read_limits(*rule, pin, *role))
        return false;
    return plan.other != kol_other_pin::output || pin.io_type != YX_IO_OUTPUT || kol_read_pin_drive(pin);
}

void take_over(const yx_pin_record_t& pin, const tm_string_record_t& property, std::int32_t (&copy)[3]) {
    bool found = false;
    kol_read_limit(pin, property, copy, found);
}

}  // namespace

void kol_set_up_pins(const kol_pin_plan_t& plan, std::span<kol_timing_role_t* const> roles,
                     kol_outputs_t* outputs) {
    yx_pin_record_t* pin = kol_ext.cur_inst->first_pin_ptr;
    for (std::int16_t n = 0; n < kol_ext.cur_inst->nb_of_pin; ++n, pin = pin->next_pin_inst_ptr) {
        if (pin == nullptr) {
            kol_trace(" KOL_SET_UP_PINS : missing pin : instance %d", kol_ext.cur_inst->self);
            tm_fatal(file_data_invalid);
        }
        if (!set_up_pin(plan, roles, outputs, *pin)) return;
    }
}

void kol_refresh_pins(const kol_pin_plan_t& plan, std::span<kol_timing_role_t* const> roles) {
    if (plan.has_delays) kol_refresh_pin_delays(*kol_ext.cur_inst);
    for (std::size_t k = 0; k < roles.size(); ++k)
        for (const limit_row& row : limit_rows)
            if (plan.has_limits && roles[k]->pin != nullptr &&
                plan.roles[k].*row.use == kol_limit_use::stored)
                take_over(*roles[k]->pin, row.property, roles[k]->*row.limit);
}
