// RISE, FALL and DRIVE of a pin, and how an error of a pin is shown.
#include "models/pin_setup.h"

#include <algorithm>

#include "foundation/shell.h"
#include "kernel/say.h"
#include "kernel/state.h"
#include "netlist/property.h"

namespace {

const tm_string_record_t rise = tm_string("RISE");
const tm_string_record_t fall = tm_string("FALL");
const tm_string_record_t drive = tm_string("DRIVE");

bool read_delay(const yx_pin_record_t& pin, const tm_string_record_t& name, std::int32_t (&delay)[3]) {
    const yx_prop_record_t* value = kol_pin_property(pin, name);
    if (value == nullptr) return kol_show_no_property(tm_view(name), pin);
    if (value->prop_type != YX_PTIME) return kol_show_property_type(tm_view(name), pin);
    std::copy(std::begin(value->valuet), std::end(value->valuet), delay);
    return true;
}

void refresh_delay(const yx_pin_record_t& pin, const tm_string_record_t& name, std::int32_t (&delay)[3]) {
    const yx_prop_record_t* value = kol_pin_property(pin, name);
    if (value != nullptr && value->prop_type == YX_PTIME) std::ranges::copy(value->valuet, delay);
}

std::int16_t drive_of(std::string_view letters, std::size_t k) {
    const std::int16_t code = k < letters.size() ? kol_drive_of_letter(letters[k]) : kol_drive_strong;
    return code < 0 ? kol_drive_strong : code;
}

}  // namespace

const yx_prop_record_t* kol_pin_property(const yx_pin_record_t& pin, const tm_string_record_t& name) {
    yx_prop_record_t* value = nullptr;
    bool is_found = false;
    kol_pin_getvalueof_prop_on(&pin, name, value, is_found);
    return is_found ? value : nullptr;
}

bool kol_show_pin_error(std::string_view text, const yx_pin_record_t& pin) {
    tm_count_error();
    kol_say(text);
    kol_say(" !! ", kol_quoted_path(pin.sim_path));
    return false;
}

bool kol_show_no_property(std::string_view name, const yx_pin_record_t& pin) {
    return kol_show_pin_error("# !!! Error : NO property " + kol_quoted(name) + " on pin : ", pin);
}

bool kol_show_property_type(std::string_view name, const yx_pin_record_t& pin) {
    return kol_show_pin_error("# !!! Error : INVALID  property " + kol_quoted(name) + " type on pin : ", pin);
}

bool kol_check_pin_type(const yx_pin_record_t& pin) {
    if (pin.io_type == YX_IO_INPUT || pin.io_type == YX_IO_OUTPUT) return true;
    return kol_show_pin_error(kol_pintype_error, pin);
}

bool kol_read_pin_delays(yx_pin_record_t& pin) {
    return read_delay(pin, rise, pin.rise) && read_delay(pin, fall, pin.fall);
}

void kol_refresh_pin_delays(const yx_inst_record_t& inst) {
    for (yx_pin_record_t* pin = inst.first_pin_ptr; pin != nullptr; pin = pin->next_pin_inst_ptr) {
        refresh_delay(*pin, rise, pin->rise);
        refresh_delay(*pin, fall, pin->fall);
    }
}

bool kol_read_pin_drive(yx_pin_record_t& pin) {
    const yx_prop_record_t* value = kol_pin_property(pin, drive);
    if (value != nullptr && value->prop_type != YX_PSTRING)
        return kol_show_property_type(tm_view(drive), pin);
    const std::string_view letters = value == nullptr ? std::string_view{} : kol_path(value->valuec);
    for (std::size_t k = 0; k < std::size(pin.drive_array); ++k) pin.drive_array[k] = drive_of(letters, k);
    return true;
}
