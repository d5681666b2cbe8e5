// kol: what flip-flop and latch share: data, control (clock or enable), set and reset inputs, up to 8 true
// and 8 inverted outputs, capture of the data value, and the set and reset handlers, in which reset wins.
#pragma once

#include "kernel/state.h"
#include "models/edge_checks.h"
#include "models/pin_roles.h"

struct kol_storage_t {
    kol_timing_role_t d, control, r, s;
    kol_outputs_t outputs;
    std::unique_ptr<kol_edge_checks_t> edges;  // none for most
    bool check_data_on = true;                 // data checks are on; off while set or reset is active

    kol_storage_t() { d.edge = 'X'; }
    std::array<kol_timing_role_t*, 4> roles() { return {&d, &control, &r, &s}; }
    kol_edge_roles_t edge_roles() const { return {control, {&r, &s}}; }
};

// The reset and set rows of both models.
inline constexpr kol_role_rule_t kol_reset_rule = {'R',
                                                   "",
                                                   true,
                                                   'R',
                                                   'F',
                                                   "# !!! Error : Invalid Reset Name (R,RN,RP,RX)  on pin : ",
                                                   "# !!! Error : INVALID Pin Name(RN,RP,RX)  on pin : ",
                                                   kol_limit_use::stored,
                                                   kol_limit_use::stored};
inline constexpr kol_role_rule_t kol_set_rule = {'S',
                                                 "",
                                                 true,
                                                 'R',
                                                 'F',
                                                 "# !!! Error : Invalid Set Name (S,SN,SP,SX) on pin : ",
                                                 "# !!! Error : INVALID Pin Name (SN,SP,SX)  on pin : ",
                                                 kol_limit_use::stored,
                                                 kol_limit_use::stored};

// The pins of the latches, transparent or not.
inline constexpr kol_role_rule_t kol_latch_rules[] = {
    kol_data_rule,
    {'E', "", true, 'F', 'R', kol_enable_name_error, kol_enable_polarity_error, kol_limit_use::stored,
     kol_limit_use::warned},
    kol_reset_rule,
    kol_set_rule,
};
inline constexpr kol_pin_plan_t kol_latch_plan = {kol_latch_rules, kol_other_pin::output, true, true};

constexpr std::int16_t kol_inverted(std::int16_t value) {
    if (value == kol_v0) return kol_v1;
    return value == kol_v1 ? std::int16_t{kol_v0} : value;
}

// True outputs to value, inverted ones to its inverse.
void kol_drive_outputs(const kol_outputs_t& outputs, std::int16_t value, std::int32_t input_delay);
// Schedules the data value on the outputs; the input delay is that of the pin that caused it.
void kol_capture(const kol_storage_t& storage, const yx_pin_record_t* cause);
// The handlers of set and reset.
void kol_set_changed(kol_storage_t& storage);
void kol_reset_changed(kol_storage_t& storage);
// Returns the run-time fields to what the states of the nets say.
void kol_restart_storage(kol_storage_t& storage);
void kol_archive_storage(tm_archive_t& archive, kol_storage_t& storage);
