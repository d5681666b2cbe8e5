// kol: what a model is to the kernel.  The models register one table at start-up; the set-up binds instances
// to rows by their MODEL property and pins to handlers by their PIN property.
#pragma once

#include <span>
#include <string_view>

#include "foundation/archive.h"
#include "netlist/store.h"

// The value of a gate's output for those of its inputs, in pin order.
using kol_value_of_t = std::int16_t (*)(std::span<const std::int16_t>);

// What an instance does, when that is so little that a run does it without calling handlers.
struct kol_short_way_t {
    kol_value_of_t value_of = nullptr;  // of a gate
    // Of a register that nothing overrides and that checks the setup time of its data only; at an active
    // change of the clock the output takes the value of the data.
    const yx_pin_record_t* data = nullptr;
    const yx_pin_record_t* clock = nullptr;
    const yx_pin_record_t* output = nullptr;
    bool is_inverted = false;             // the output takes the inverse
    std::uint16_t active = 0;             // a bit for each change: old value x 4 + new value
    const std::int32_t* setup = nullptr;  // by timing range; the clock's handler is called for a violation
    void (*note_data_time)(const yx_inst_record_t&, std::int32_t) = nullptr;  // of the data's last change
};

struct kol_model_t {
    std::string_view name;  // MODEL value, compared without regard to case, exact length
    yx_procedure_t set_up;  // for kol_ext.cur_inst
    bool by_pin_property;   // false: one handler serves every input pin
    // Null result: no handler; the text is empty where one handler serves every pin.
    yx_procedure_t (*handler_of)(std::string_view pin_value);
    yx_procedure_t clear = nullptr;    // forgets the data of every instance
    yx_procedure_t restart = nullptr;  // the data of every instance to what the states of the nets say
    yx_procedure_t refresh = nullptr;  // takes the timing of kol_ext.cur_inst over from its properties again
    kol_short_way_t (*short_way)(const yx_inst_record_t&) = nullptr;  // none: its handlers are called
    void (*archive)(tm_archive_t&) = nullptr;  // what every instance keeps between events; none: nothing
};

void kol_set_models(std::span<const kol_model_t> table);
std::span<const kol_model_t> kol_models();
// The row of a MODEL value, null when there is none.
const kol_model_t* kol_find_model(std::string_view name);
// Runs every model's clear, or restart.
void kol_clear_models();
void kol_restart_models();
