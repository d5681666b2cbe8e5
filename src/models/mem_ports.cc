// The pins of a memory, read by their names, and the errors of those that do not fit.
#include "models/mem_ports.h"

#include <algorithm>
#include <charconv>

#include "kernel/say.h"
#include "models/instance_properties.h"
#include "models/pin_properties.h"
#include "models/pin_setup.h"
#include "netlist/property.h"

namespace {

constexpr std::size_t most_ports = 127, most_bits = 65536;
constexpr std::string_view name_error = "# !!! Error : Invalid Memory Pin Name on pin : ";
constexpr std::string_view missing_error = "# !!! Error : Memory Pins are missing on instance : ";

// "R0A3": port, role, and what stands behind the role.
struct pin_name_t {
    bool is_read = false;
    std::size_t port = 0, index = 0;
    char role = 0;    // A, D, E, C, S or R
    char edge = 'R';  // of C
};

bool read_number(std::string_view& text, std::size_t& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return error == std::errc{};
}

bool read_name(std::string_view text, pin_name_t& name) {
    if (text.empty() || (text[0] != 'R' && text[0] != 'W')) return false;
    name.is_read = text[0] == 'R';
    text.remove_prefix(1);
    if (!read_number(text, name.port) || name.port >= most_ports || text.empty()) return false;
    name.role = text[0];
    text.remove_prefix(1);
    switch (name.role) {
        case 'A':
        case 'D':
            return read_number(text, name.index) && name.index < most_bits && text.empty();
        case 'E':
            if (!text.empty() && !read_number(text, name.index)) return false;
            return text.empty() && name.index < most_bits;
        case 'C':
            name.edge = text == "N" ? 'F' : 'R';
            return text == "P" || text == "N";
        case 'S':
        case 'R':
            return name.is_read && text.empty();
        default:
            return false;
    }
}

std::string values_of(const yx_pin_record_t& pin) {
    static const tm_string_record_t name = tm_string("VALUES");
    const yx_prop_record_t* value = kol_pin_property(pin, name);
    return value == nullptr || value->prop_type != YX_PSTRING ? "" : std::string(kol_path(value->valuec));
}

template <typename T>
T& at(std::vector<T>& items, std::size_t index) {
    if (items.size() <= index) items.resize(index + 1);
    return items[index];
}

void add_output(kol_mem_port_t& port, std::size_t bit, yx_pin_record_t& pin) {
    at(port.outputs, bit) = &pin;
    std::string values = values_of(pin);
    values.resize(3, 'x');
    at(port.values, bit) = values;
}

kol_timing_role_t& role_of(kol_mem_port_t& port, const pin_name_t& name, const yx_pin_record_t& pin) {
    switch (name.role) {
        case 'A':
            return at(port.address, name.index);
        case 'D':
            return at(port.data, name.index);
        case 'E':
            return port.enables[name.index];
        case 'C':
            port.with_writes = values_of(pin);
            return port.clock;
        case 'S':
            port.enable_over_reset = values_of(pin).starts_with('c');
            return port.sync_reset;
        default:
            return port.async_reset;
    }
}

bool read_setup(const yx_pin_record_t& pin, kol_timing_role_t& role) {
    static const tm_string_record_t name = tm_string("SETUP_TIME");
    bool is_found = false;
    return kol_read_limit(pin, name, role.setup, is_found);
}

bool add_pin(kol_mem_ports_t& ports, yx_pin_record_t& pin) {
    if (pin.pin_end != 0) return kol_show_pin_error("# !!! Error : Pin Bus Not Allowed on pin : ", pin);
    std::string text;
    pin_name_t name;
    if (!kol_read_pin_name(pin, text)) return false;
    if (!read_name(text, name)) return kol_show_pin_error(name_error, pin);
    if (!kol_check_pin_type(pin) || !kol_read_pin_delays(pin)) return false;
    kol_mem_port_t& port = at(name.is_read ? ports.reads : ports.writes, name.port);
    const bool is_output = name.is_read && name.role == 'D';
    if (is_output != (pin.io_type == YX_IO_OUTPUT)) return kol_show_pin_error(kol_pintype_error, pin);
    if (is_output) {
        add_output(port, name.index, pin);
        return kol_read_pin_drive(pin);
    }
    kol_timing_role_t& role = role_of(port, name, pin);
    role.pin = &pin;
    role.found = true;
    role.edge = name.role == 'C' ? name.edge : 'X';
    return name.role == 'C' || read_setup(pin, role);
}

bool is_whole(const kol_mem_port_t& port, std::size_t width) {
    const auto has_pin = [](const kol_timing_role_t& role) { return role.pin != nullptr; };
    return std::ranges::all_of(port.address, has_pin) && std::ranges::all_of(port.data, has_pin) &&
           std::max(port.data.size(), port.outputs.size()) == width &&
           std::ranges::find(port.outputs, nullptr) == port.outputs.end();
}

template <typename Take>
void each_input(kol_mem_port_t& port, Take take) {
    for (kol_timing_role_t& role : port.address) take(role);
    for (kol_timing_role_t& role : port.data) take(role);
    for (auto& [bit, role] : port.enables) take(role);
    for (kol_timing_role_t* role : {&port.sync_reset, &port.async_reset}) take(*role);
}

}  // namespace

bool kol_set_up_ports(kol_mem_ports_t& ports, std::size_t& width) {
    for (yx_pin_record_t* pin = kol_ext.cur_inst->first_pin_ptr; pin != nullptr; pin = pin->next_pin_inst_ptr)
        if (!add_pin(ports, *pin)) return false;
    width = 0;
    for (const auto* all : {&ports.reads, &ports.writes})
        for (const kol_mem_port_t& port : *all)
            width = std::max({width, port.data.size(), port.outputs.size()});
    const auto whole = [width](const kol_mem_port_t& port) { return is_whole(port, width); };
    if (width > 0 && std::ranges::all_of(ports.reads, whole) && std::ranges::all_of(ports.writes, whole))
        return true;
    return kol_show_instance_error(missing_error);
}

void kol_refresh_ports(kol_mem_ports_t& ports) {
    for (auto* all : {&ports.reads, &ports.writes})
        for (kol_mem_port_t& port : *all)
            each_input(port, [](kol_timing_role_t& role) {
                if (role.pin != nullptr) read_setup(*role.pin, role);
            });
}

bool kol_is_of_port(const kol_mem_port_t& port, const yx_pin_record_t* pin) {
    const auto is_it = [pin](const kol_timing_role_t& role) { return role.pin == pin; };
    return std::ranges::any_of(port.address, is_it) || std::ranges::any_of(port.data, is_it) ||
           std::ranges::any_of(port.enables, [&](const auto& enable) { return is_it(enable.second); }) ||
           is_it(port.sync_reset) || is_it(port.async_reset);
}
