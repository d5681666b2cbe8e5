// Models by MODEL property, handlers by PIN property, and their error lines.
#include "kernel/setup_instances.h"

#include "foundation/shell.h"
#include "foundation/status.h"
#include "kernel/context.h"
#include "kernel/say.h"
#include "netlist/property.h"

namespace {

constexpr std::string_view no_model = "# !!! Error : NO property \"MODEL\" in design file on : ";
constexpr std::string_view model_type = "# !!! Error : INVALID  property \"MODEL\" type on instance : ";
constexpr std::string_view empty_model = "# !!! Error : NO property \"MODEL\" on instance : ";
constexpr std::string_view no_pin = "# !!! Error : NO property \"PIN\" on pin : ";
constexpr std::string_view pin_type = "# !!! Error : INVALID  property \"PIN\" type on pin : ";
constexpr std::string_view no_handler = "# !! ERROR : NO  handler installed for PIN : ";
constexpr std::string_view no_set_up = "# !! WARNING : NO init handler for instance : ";

constexpr std::int16_t priority_without_handler = 1;

void say_with_path(std::string_view text, std::int32_t path) {
    kol_say(text);
    kol_say(" !! ", kol_quoted_path(path));
}

void say_error(std::string_view text, std::int32_t path) {
    tm_count_error();
    say_with_path(text, path);
}

bool receives_a_signal(const yx_pin_record_t& pin) {
    return pin.io_type == YX_IO_INPUT || pin.io_type == YX_IO_BOTH || pin.io_type == YX_IO_TERMINAL;
}

const yx_prop_record_t* model_property(const yx_inst_record_t& inst) {
    static const tm_string_record_t name = tm_string("MODEL");
    yx_prop_record_t* model = nullptr;
    bool is_found = false;
    kol_inst_getvalueof_prop_on(&inst, name, model, is_found);
    return is_found ? model : nullptr;
}

// The MODEL property of an instance when it is a text that is not empty; shows why not otherwise.
const yx_prop_record_t* model_of(const yx_inst_record_t& inst) {
    const yx_prop_record_t* model = model_property(inst);
    std::string_view fault;
    if (model == nullptr)
        fault = no_model;
    else if (model->prop_type != YX_PSTRING)
        fault = model_type;
    else if (kol_path(model->valuec).empty())
        fault = empty_model;
    if (fault.empty()) return model;
    say_error(fault, inst.sim_path);
    return nullptr;
}

// The text of a pin's PIN property; false after an error.
bool find_role(const yx_pin_record_t& pin, std::string_view& role) {
    static const tm_string_record_t name = tm_string("PIN");
    yx_prop_record_t* value = nullptr;
    bool is_found = false;
    kol_pin_getvalueof_prop_on(&pin, name, value, is_found);
    const bool is_text = is_found && value->prop_type == YX_PSTRING;
    if (is_text)
        role = kol_path(value->valuec);
    else
        say_error(is_found ? pin_type : no_pin, pin.sim_path);
    return is_text;
}

void install_handlers(yx_inst_record_t& inst, const yx_prop_record_t& model) {
    for (yx_pin_record_t* pin = inst.first_pin_ptr; pin != nullptr; pin = pin->next_pin_inst_ptr) {
        if (!receives_a_signal(*pin)) continue;
        bool is_installed = false;
        kol_install_pinhdler(pin, &model, is_installed);
        if (is_installed) continue;
        say_with_path(no_handler, pin->sim_path);
        pin->pin_hdl_priority = priority_without_handler;
    }
}

bool set_up_instance(yx_inst_record_t& inst) {
    kol_ext.cur_inst = &inst;
    const yx_prop_record_t* model = model_of(inst);
    if (model == nullptr) return false;
    install_handlers(inst, *model);
    bool is_set_up = false;
    kol_exec_init_pinhdler(tm_string(kol_path(model->valuec)), is_set_up);
    if (!is_set_up) say_with_path(no_set_up, inst.sim_path);
    return true;
}

}  // namespace

bool kol_set_up_instances() {
    for (std::int32_t i = 1; i <= yx_sext.max_inst_cur; ++i)
        if (!set_up_instance(*yx_ptrto_inst_rec(i))) return false;
    return true;
}

const kol_model_t* kol_model_of(const yx_inst_record_t& inst) {
    const yx_prop_record_t* model = model_property(inst);
    const bool is_text = model != nullptr && model->prop_type == YX_PSTRING;
    return is_text ? kol_find_model(kol_path(model->valuec)) : nullptr;
}

void kol_install_pinhdler(yx_pin_record_t* pin, const yx_prop_record_t* model, bool& install_ok) {
    install_ok = false;
    if (model == nullptr || model->prop_type != YX_PSTRING) {
        kol_trace(" KOL_INSTALL_PINHDLER : no model : pin : %d", pin->self);
        tm_fatal(file_data_invalid);
    }
    pin->pin_hdler = nullptr;
    const kol_model_t* row = kol_find_model(kol_path(model->valuec));
    if (row == nullptr) return;
    std::string_view role;
    if (row->by_pin_property && !find_role(*pin, role)) return;
    pin->pin_hdler = row->handler_of(role);
    install_ok = pin->pin_hdler != nullptr;
}

void kol_exec_init_pinhdler(const tm_string_record_t& model, bool& model_init_ok) {
    const kol_model_t* row = kol_find_model(tm_view(model));
    model_init_ok = row != nullptr && row->set_up != nullptr;
    if (model_init_ok) row->set_up();
}
