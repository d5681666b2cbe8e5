// kol: the second step of the set-up.  Binds instances to models and pins to handlers.  User errors are shown
// and counted.
#pragma once

#include "kernel/model.h"

// False at the first instance without a model property.
bool kol_set_up_instances();
// The model of an instance; null when its MODEL property names none.
const kol_model_t* kol_model_of(const yx_inst_record_t& inst);
void kol_install_pinhdler(yx_pin_record_t* pin, const yx_prop_record_t* model, bool& install_ok);
void kol_exec_init_pinhdler(const tm_string_record_t& model, bool& model_init_ok);
