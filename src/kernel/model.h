// kol: what a model is to the kernel.  The models register one table at start-up; the set-up binds instances
// to rows by their MODEL property and pins to handlers by their PIN property.
#pragma once

#include <span>
#include <string_view>

#include "netlist/store.h"

struct kol_model_t {
    std::string_view name;  // MODEL value, compared without regard to case, exact length
    yx_procedure_t set_up;  // for kol_ext.cur_inst
    bool by_pin_property;   // false: one handler serves every input pin
    // Null result: no handler; the text is empty where one handler serves every pin.
    yx_procedure_t (*handler_of)(std::string_view pin_value);
    yx_procedure_t clear = nullptr;    // forgets the data of every instance
    yx_procedure_t restart = nullptr;  // the data of every instance to what the states of the nets say
    yx_procedure_t refresh = nullptr;  // takes the timing of kol_ext.cur_inst over from its properties again
};

void kol_set_models(std::span<const kol_model_t> table);
std::span<const kol_model_t> kol_models();
// The row of a MODEL value, null when there is none.
const kol_model_t* kol_find_model(std::string_view name);
// Runs every model's clear, or restart.
void kol_clear_models();
void kol_restart_models();
