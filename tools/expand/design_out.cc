// The records of the design file: properties, nets, pins, instances, macros.
#include "expand/design_out.h"

#include <algorithm>

#include "foundation/files.h"
#include "kernel/state.h"

namespace {

constexpr float small_revision = 1.0F;

struct property_name {
    std::string_view name, type;
};
// In the order of need: an object carries the values of the first names only.
constexpr property_name instance_properties[] = {
    {"MODEL", "string"}, {"INST", "string"}, {"TABLE", "string"}, {"WORDS", "string"}};
constexpr property_name pin_properties[] = {
    {"PIN", "string"},        {"RISE", "time"},         {"FALL", "time"},          {"DRIVE", "string"},
    {"EDGE", "string"},       {"SETUP_TIME", "time"},   {"HOLD_TIME", "time"},     {"MIN_TIME_HIGH", "time"},
    {"MIN_TIME_LOW", "time"}, {"VALUES", "string"},     {"RECOVERY_TIME", "time"}, {"REMOVAL_TIME", "time"},
    {"MIN_PERIOD", "time"},   {"MIN_TIME_IDLE", "time"}};
constexpr property_name net_properties[] = {{"NET", "string"}};

struct property_run {
    std::int32_t first = 0;
    std::int8_t count = 0;
};

// The values of a pin in that order, strings by their index, times as three numbers; 0 for none.
using pin_values = std::array<std::int32_t, 34>;
constexpr std::size_t at_rise = 1, at_fall = 4, at_drive = 7, at_edge = 8, at_limits = 9, at_values = 21,
                      at_edges = 22;
struct hash_of_values {
    std::size_t operator()(const pin_values& values) const {
        std::size_t hash = 0;
        for (const std::int32_t value : values) hash = hash * 1'000'003 + static_cast<std::size_t>(value);
        return hash;
    }
};

struct builder {
    const xp_flat& flat;
    const std::vector<xp_delays>& delays;
    const xp_annotation& annotation;
    yx_design_image_t& image;
    xp_paths& paths;
    xp_status& status;
    std::unordered_map<pin_values, property_run, hash_of_values> pin_runs;
    std::unordered_map<std::int32_t, property_run> model_runs;  // instances without a name of their own
    std::vector<std::int32_t> last_in, last_out;                // by net: the last pin of its chain
    std::vector<std::int32_t> last_child;                       // by record of a net
    std::vector<std::int32_t> sink;  // by net: the net or sub-net that takes input pins
    std::int32_t pin_string = 0;     // next of paths.pin_path
};

std::int32_t net_index(std::int32_t net) { return net + 1; }

// ---- properties

void add_names(std::span<const property_name> names, std::vector<yx_prop_type_record_t>& table) {
    table.clear();
    for (const property_name& row : names) table.push_back({tm_string(row.name), tm_string(row.type)});
}

void add_string_property(builder& b, std::int32_t string) {
    yx_prop_record_t& property = b.image.props.emplace_back();
    property.prop_type = YX_PSTRING;
    property.valuec = string;
}

void add_time_property(builder& b, const std::int32_t* times) {
    yx_prop_record_t& property = b.image.props.emplace_back();
    property.prop_type = YX_PTIME;
    std::copy(times, times + 3, property.valuet);
}

std::int32_t next_property(const builder& b) { return static_cast<std::int32_t>(b.image.props.size()) + 1; }

// What stands for a string that nothing reads, in front of values that are read.
std::int32_t unread_string(builder& b, std::size_t at) {
    return yxw_string(b.image, at == at_drive ? "SSSS" : "X");
}

// Values behind the last one that is needed are left out.
property_run pin_run(builder& b, const pin_values& values) {
    const auto [known, is_new] = b.pin_runs.try_emplace(values);
    if (!is_new) return known->second;
    property_run run{next_property(b), 0};
    std::size_t needed = values.size();
    while (needed > at_drive && values[needed - 1] == 0) --needed;
    std::size_t at = 0;
    for (const property_name& name : pin_properties) {
        if (at >= needed) break;
        const bool is_time = name.type == "time";
        if (is_time)
            add_time_property(b, &values[at]);
        else
            add_string_property(b, values[at] != 0 ? values[at] : unread_string(b, at));
        at += is_time ? 3 : 1;
        ++run.count;
    }
    return known->second = run;
}

property_run name_run(builder& b, std::int32_t string) {  // of a net or a macro pin
    if (string == 0) return {};
    const property_run run{next_property(b), 1};
    add_string_property(b, string);
    return run;
}

property_run instance_run(builder& b, std::string_view model, std::int32_t own_name,
                          std::string_view config = {}, bool is_memory = false) {
    const std::int32_t model_string = yxw_string(b.image, model);
    if (own_name == 0 && config.empty()) {
        const auto [known, is_new] = b.model_runs.try_emplace(model_string);
        if (is_new) known->second = name_run(b, model_string);
        return known->second;
    }
    property_run run{next_property(b), 2};
    add_string_property(b, model_string);
    add_string_property(b, own_name);
    if (config.empty()) return run;
    if (is_memory) add_string_property(b, 0);  // TABLE
    add_string_property(b, yxw_string(b.image, config));
    run.count = is_memory ? 4 : 3;
    return run;
}

// ---- nets

struct constant_row {
    std::int32_t constant;
    std::string_view state;  // as commands have it
};
constexpr constant_row constant_states[] = {
    {xp_const_0, "0s"}, {xp_const_1, "1s"}, {xp_const_x, "xs"}, {xp_const_z, "xz"}};

std::int8_t state_of(std::int32_t constant) {
    std::int8_t state = 0;
    for (const constant_row& row : constant_states)
        if (row.constant == constant) kol_keyword_to_state(row.state, state);
    return state;
}

std::int16_t kind_of(const xp_flat_net& net) {
    if (net.constant != 0) return yx_kind_initialised;
    return net.is_input ? (net.is_output ? xp_kind_inout : xp_kind_input)
                        : (net.is_output ? xp_kind_output : xp_kind_inner);
}

template <typename Record>
void set_properties(Record& record, const property_run& run) {
    record.first_prop = run.first;
    record.nb_of_property = run.count;
}

void add_nets(builder& b) {
    b.image.nets.reserve(b.flat.nets.size() + b.flat.buses.size());
    for (std::size_t i = 0; i < b.flat.nets.size(); ++i) {
        const xp_flat_net& net = b.flat.nets[i];
        yx_net_record_t& record = b.image.nets.emplace_back();
        record.self = net_index(static_cast<std::int32_t>(i));
        record.net_type = YX_TSTANDARD;
        record.net_kind = kind_of(net);
        record.name = b.paths.net_name[i];
        record.sim_path = b.paths.net_path[i];
        record.UU.U1.state_init = state_of(net.constant != 0 ? net.constant : net.initial);
        set_properties(record, name_run(b, record.name));
    }
}

std::uint32_t width_of(const builder& b, const xp_bus& bus) {
    return xp_name_of(b.flat, {bus.scope, bus.name, 0}).bits.count;
}

// A bus that has no path is left out; the record numbers of the others close up.
void add_buses(builder& b) {
    for (std::size_t i = 0; i < b.flat.buses.size(); ++i) {
        if (b.paths.bus_path[i] == 0) continue;
        const xp_bus& bus = b.flat.buses[i];
        yx_net_record_t& record = b.image.nets.emplace_back();
        record.self = static_cast<std::int32_t>(b.image.nets.size());
        record.net_type = YX_TSTD_BUS;
        record.name = b.paths.bus_name[i];
        record.sim_path = b.paths.bus_path[i];
        record.UU.U2.net_bus_end = static_cast<std::int16_t>(width_of(b, bus) - 1);
        record.UU.U2.netind_start = net_index(bus.first_net);
        set_properties(record, name_run(b, record.name));
        for (std::uint32_t k = 0; k < width_of(b, bus); ++k) {
            yx_net_u1_t& member = b.image.nets[static_cast<std::size_t>(bus.first_net) + k].UU.U1;
            member.bus = record.self;
            member.posinbus = static_cast<std::int16_t>(k + 1);
        }
    }
}

// Adds a further name behind those that the net has.
void add_child(builder& b, std::int32_t net, std::int32_t path, std::int32_t name, std::int16_t object_id) {
    yx_net_record_t& parent = b.image.nets[static_cast<std::size_t>(net)];
    std::int32_t& last = b.last_child[static_cast<std::size_t>(net)];
    yx_net_child_record_t record;
    record.self = static_cast<std::int32_t>(b.image.net_children.size()) + 1;
    record.sim_path = path;
    record.name = name;
    record.net_kind = parent.net_kind;
    record.object_id = object_id;
    (last == 0 ? parent.first_child : b.image.net_children[static_cast<std::size_t>(last - 1)].next_child) =
        record.self;
    ++parent.nb_of_child;
    last = record.self;
    b.image.net_children.push_back(record);
}

void add_children(builder& b) {
    b.last_child.assign(b.image.nets.size(), 0);
    for (const xp_child_name& child : b.paths.children)
        add_child(b, b.flat.aliases[child.alias].net, child.path, child.name, 0);
}

// ---- the nets of sheets

// The record of a bus, or of its first member where the bus is not written.
std::int32_t record_of(const builder& b, const xp_object_id& object) {
    if (object.bus < 0 || b.paths.bus_path[static_cast<std::size_t>(object.bus)] == 0) return object.net;
    return b.image.nets[static_cast<std::size_t>(object.net)].UU.U1.bus - 1;
}

bool is_named_there(const builder& b, const xp_object_id& object) {
    return object.bus < 0 ? b.flat.nets[static_cast<std::size_t>(object.net)].name.scope == object.scope
                          : b.flat.buses[static_cast<std::size_t>(object.bus)].scope == object.scope;
}

void add_object_ids(builder& b) {
    for (std::size_t i = 0; i < b.paths.object_path.size(); ++i) {
        const xp_object_id& object = b.flat.object_ids[i];
        const std::int32_t net = record_of(b, object);
        std::int16_t& own = b.image.nets[static_cast<std::size_t>(net)].object_id;
        const std::int16_t id =
            object.id <= INT16_MAX ? static_cast<std::int16_t>(object.id) : std::int16_t{0};
        if (own == 0 && is_named_there(b, object)) own = id;
        if (b.paths.object_alias[i] != 0) add_child(b, net, b.paths.object_alias[i], 0, 0);
        if (b.paths.object_path[i] != 0) add_child(b, net, b.paths.object_path[i], 0, id);
    }
}

std::int16_t cell_id(const builder& b, const xp_scope& scope, std::uint32_t cell) {
    if (b.flat.cell_ids.empty() || b.flat.cell_ids[scope.module].empty()) return 0;
    return b.flat.cell_ids[scope.module][cell];
}

// ---- pins and instances

// A net counts 32,767 input pins; more of them hang on sub-nets of it.
yx_net_record_t& net_for_input(builder& b, std::int32_t net) {
    const auto place = static_cast<std::size_t>(net);
    yx_net_record_t& taking = b.image.nets[static_cast<std::size_t>(b.sink[place] - 1)];
    if (taking.nb_pin_in < INT16_MAX) return taking;
    yx_net_record_t sub_net;
    yx_net_record_t& root = b.image.nets[place];
    sub_net.self = static_cast<std::int32_t>(b.image.nets.size()) + 1;
    sub_net.net_type = YX_TSUB_NET;
    sub_net.name = root.name;
    sub_net.sim_path = root.sim_path;
    sub_net.UU.U1.father_net = root.self;
    sub_net.UU.U1.next_sub_net = root.UU.U1.first_sub_net;
    root.UU.U1.first_sub_net = sub_net.self;
    b.sink[place] = sub_net.self;
    b.last_in[place] = 0;
    return b.image.nets.emplace_back(sub_net);
}

yx_pin_record_t& add_pin(builder& b, std::int16_t io_type, const pin_values& values) {
    yx_pin_record_t& pin = b.image.pins.emplace_back();
    pin.self = static_cast<std::int32_t>(b.image.pins.size());
    pin.io_type = io_type;
    pin.pin_hdl_priority = xp_priority_data;
    pin.instance_ind = static_cast<std::int32_t>(b.image.insts.size());
    pin.sim_path = b.paths.pin_path[static_cast<std::size_t>(b.pin_string++)];
    set_properties(pin, pin_run(b, values));
    return pin;
}

void chain_input(builder& b, yx_pin_record_t& pin, std::int32_t net, yx_net_record_t& record) {
    std::int32_t& last = b.last_in[static_cast<std::size_t>(net)];
    (last == 0 ? record.first_pin_in_ind : b.image.pins[static_cast<std::size_t>(last - 1)].next_pin_in_ind) =
        pin.self;
    last = pin.self;
    ++record.nb_pin_in;
}

void chain_output(builder& b, yx_pin_record_t& pin, std::int32_t net, yx_net_record_t& record) {
    std::int32_t& last = b.last_out[static_cast<std::size_t>(net)];
    (last == 0 ? record.first_pin_out_ind
               : b.image.pins[static_cast<std::size_t>(last - 1)].next_pin_out_ind) = pin.self;
    last = pin.self;
    ++record.nb_pin_out;
}

constexpr std::int16_t io_input = 1, io_output = 2;

void add_input(builder& b, const pin_values& values, std::int32_t net) {
    yx_pin_record_t& pin = add_pin(b, io_input, values);
    yx_net_record_t& record = net_for_input(b, net);
    pin.net_ind = record.self;
    chain_input(b, pin, net, record);
}

void put_time(pin_values& values, std::size_t at, const xp_delay& time) {
    std::copy(time.begin(), time.end(), values.begin() + static_cast<std::ptrdiff_t>(at));
}

pin_values output_values(builder& b, const xp_pin& pin, const xp_delays& delays, std::string_view drive) {
    pin_values values{yxw_string(b.image, pin.name)};
    put_time(values, at_rise, delays.rise);
    put_time(values, at_fall, delays.fall);
    values[at_drive] = yxw_string(b.image, drive);
    values[at_values] = yxw_string(b.image, pin.values);
    return values;
}

void add_output(builder& b, const pin_values& values, std::int32_t net) {
    yx_pin_record_t& pin = add_pin(b, io_output, values);
    yx_net_record_t& record = b.image.nets[static_cast<std::size_t>(net)];
    pin.net_ind = record.self;
    if (b.flat.nets[static_cast<std::size_t>(net)].is_clock) pin.pin_hdl_priority = xp_priority_clock;
    chain_output(b, pin, net, record);
}

// ---- registers

pin_values register_input_values(builder& b, const xp_pin& pin, const xp_limits& limits) {
    pin_values values{yxw_string(b.image, pin.name)};
    if (pin.name == "D") {
        values[at_edge] = yxw_string(b.image, "X");
        put_time(values, at_limits, limits.setup);
        put_time(values, at_limits + 3, limits.hold);
    } else if (pin.name.starts_with("CLK") || pin.name.starts_with('E')) {
        put_time(values, at_limits + 6, limits.min_high);
        put_time(values, at_limits + 9, limits.min_low);
    }
    return values;
}

// All inputs but clock and asynchronous reset have the setup of the cell's type.
pin_values memory_input_values(builder& b, const xp_pin& pin, const xp_limits& limits) {
    pin_values values{yxw_string(b.image, pin.name)};
    const char role = pin.name[pin.name.find_first_not_of("0123456789", 1)];
    if (role != 'C' && role != 'R') put_time(values, at_limits, limits.setup);
    values[at_values] = yxw_string(b.image, pin.values);
    return values;
}

xp_pin output_of(const xp_gate& gate) {
    return {xp_output_name(gate), gate.output, true, gate.output_values};
}

void add_gate_pins(builder& b, const xp_scope& scope, const xp_gate& gate, const xp_delays& delays,
                   std::string_view drive) {
    const xp_body& body = xp_body_of(b.flat, scope);
    for (std::uint32_t i = 0; i < gate.pin_count; ++i) {
        const xp_pin& pin = body.pins[gate.first_pin + i];
        const std::int32_t net = xp_net_at(b.flat, scope, pin.net);
        constexpr xp_limits none{{}, {}, {}, {}};
        if (pin.is_output)
            add_output(b, output_values(b, pin, delays, drive), net);
        else if (xp_is_memory(gate.model))
            add_input(b, memory_input_values(b, pin, *delays.limits), net);
        else if (xp_is_register(gate.model))
            add_input(b, register_input_values(b, pin, gate.is_checked ? *delays.limits : none), net);
        else
            add_input(b, {yxw_string(b.image, pin.name)}, net);
    }
    add_output(b, output_values(b, output_of(gate), delays, drive), xp_net_at(b.flat, scope, gate.output));
}

// The same with times of their own.
void add_annotated_pins(builder& b, const xp_scope& scope, const xp_gate& gate, const xp_pin_timing* timing,
                        std::string_view drive) {
    const xp_body& body = xp_body_of(b.flat, scope);
    for (std::uint32_t i = 0; i < gate.pin_count; ++i, ++timing) {
        const xp_pin& pin = body.pins[gate.first_pin + i];
        const xp_limits limits{timing->setup, timing->hold, timing->min_high, timing->min_low};
        if (pin.is_output) {
            add_output(b, output_values(b, pin, {timing->rise, timing->fall, nullptr}, drive),
                       xp_net_at(b.flat, scope, pin.net));
            continue;
        }
        pin_values values = xp_is_register(gate.model) ? register_input_values(b, pin, limits)
                            : xp_is_memory(gate.model) ? memory_input_values(b, pin, limits)
                                                       : pin_values{yxw_string(b.image, pin.name)};
        put_time(values, at_limits + 6, timing->min_high);  // of set and reset, too
        put_time(values, at_limits + 9, timing->min_low);
        put_time(values, at_edges, timing->recovery);
        put_time(values, at_edges + 3, timing->removal);
        put_time(values, at_edges + 6, timing->period);
        put_time(values, at_edges + 9, timing->idle);
        put_time(values, at_rise, timing->rise);
        put_time(values, at_fall, timing->fall);
        add_input(b, values, xp_net_at(b.flat, scope, pin.net));
    }
    add_output(b, output_values(b, output_of(gate), {timing->rise, timing->fall, nullptr}, drive),
               xp_net_at(b.flat, scope, gate.output));
}

void add_instance(builder& b, const xp_scope& scope, std::uint32_t index) {
    constexpr xp_delays one_step{{1, 1, 1}, {1, 1, 1}, nullptr};
    const xp_body& body = xp_body_of(b.flat, scope);
    const xp_gate& gate = body.gates[index];
    const xp_part& part = body.parts[gate.part];
    const xp_cell& cell = xp_module_of(b.flat, scope).cells[part.cell];
    const bool is_last = xp_is_last_gate(body, index);
    yx_inst_record_t& record = b.image.insts.emplace_back();
    record.self = static_cast<std::int32_t>(b.image.insts.size());
    record.sim_path = b.paths.gate_path[scope.first_gate + index];
    record.object_id = cell_id(b, scope, part.cell);
    record.file_path = yxw_string(b.image, cell.type);
    record.nb_of_pin = static_cast<std::int16_t>(gate.pin_count + 1);
    record.first_pin_ind = static_cast<std::int32_t>(b.image.pins.size()) + 1;
    set_properties(record,
                   instance_run(b, gate.model->model.name, b.paths.gate_name[scope.first_gate + index],
                                gate.config, xp_is_memory(gate.model)));
    const xp_delays& of_cell = b.delays[scope.first_part + gate.part];
    const std::int32_t annotated =
        b.annotation.first.empty() ? -1 : b.annotation.first[scope.first_gate + index];
    if (annotated >= 0)
        return add_annotated_pins(b, scope, gate, &b.annotation.pins[static_cast<std::size_t>(annotated)],
                                  cell.drive);
    add_gate_pins(b, scope, gate, is_last ? xp_last_gate_delays(of_cell, part.depth) : one_step,
                  is_last ? cell.drive : "");
}

void add_instances(builder& b) {
    b.image.insts.reserve(b.flat.gate_count);
    b.image.pins.reserve(b.flat.pin_count);
    b.last_in.assign(b.flat.nets.size(), 0);
    b.last_out.assign(b.flat.nets.size(), 0);
    for (const yx_net_record_t& net : b.image.nets) b.sink.push_back(net.self);
    for (const xp_scope& scope : b.flat.scopes)
        for (std::uint32_t gate = 0; gate < xp_body_of(b.flat, scope).gates.size(); ++gate)
            add_instance(b, scope, gate);
}

// ---- macros

std::int32_t macro_pin_path(builder& b, std::size_t scope, const std::string& pin) {
    const std::string text = std::string(xp_string_text(b.image, b.paths.macro_path[scope])) + "/" + pin;
    if (text.size() > xp_text_max) return b.paths.macro_path[scope];
    return yxw_string(b.image, text);
}

void add_macro_pin(builder& b, std::size_t scope, const std::string& name, std::int32_t net,
                   std::int16_t pin_end, std::int16_t pin_net_start) {
    yx_pinm_record_t& pin = b.image.pinms.emplace_back();
    pin.self = static_cast<std::int32_t>(b.image.pinms.size());
    pin.sim_path = macro_pin_path(b, scope, name);
    pin.macro_ind = static_cast<std::int32_t>(b.image.macros.size());
    pin.net_ind = net;
    pin.pin_end = pin_end;
    pin.pin_net_start = pin_net_start;
    const std::int32_t string = name.size() <= xp_text_max ? yxw_string(b.image, name) : 0;
    if (string == 0) return;
    const auto [known, is_new] = b.pin_runs.try_emplace(pin_values{string, -1});
    if (is_new) known->second = name_run(b, string);
    set_properties(pin, known->second);
}

// The first of consecutive members of one bus that the bits of a port are, else -1.
std::int32_t bus_range(const builder& b, const std::vector<std::int32_t>& nets) {
    const std::int32_t bus = b.flat.nets[static_cast<std::size_t>(nets[0])].bus;
    if (nets.size() < 2 || bus < 0 || b.paths.bus_path[static_cast<std::size_t>(bus)] == 0) return -1;
    for (std::size_t k = 0; k < nets.size(); ++k)
        if (nets[k] != nets[0] + static_cast<std::int32_t>(k) ||
            b.flat.nets[static_cast<std::size_t>(nets[k])].bus != bus)
            return -1;
    return nets[0] - b.flat.buses[static_cast<std::size_t>(bus)].first_net;
}

void add_macro_port(builder& b, std::size_t scope, const xp_net_name& port) {
    std::vector<std::int32_t> nets;
    for (std::uint32_t k = 0; k < port.bits.count; ++k)
        nets.push_back(xp_net_at(b.flat, b.flat.scopes[scope],
                                 xp_module_of(b.flat, b.flat.scopes[scope]).bits[port.bits.first + k]));
    const bool is_read = std::none_of(nets.begin(), nets.end(), [](std::int32_t net) { return net < 0; });
    const std::int32_t range = is_read && !nets.empty() ? bus_range(b, nets) : -1;
    if (range >= 0)
        return add_macro_pin(b, scope, std::string(port.name),
                             b.image.nets[static_cast<std::size_t>(nets[0])].UU.U1.bus,
                             static_cast<std::int16_t>(nets.size() - 1), static_cast<std::int16_t>(range));
    for (std::uint32_t k = 0; k < port.bits.count; ++k)
        if (nets[k] >= 0)
            add_macro_pin(b, scope, std::string(port.name) + xp_bit_suffix(port, k), net_index(nets[k]), 0,
                          0);
}

void add_macro(builder& b, std::size_t scope) {
    const xp_body& body = xp_body_of(b.flat, b.flat.scopes[scope]);
    const std::string module = xp_clean_name(xp_module_of(b.flat, b.flat.scopes[scope]).name);
    yx_macro_record_t& macro = b.image.macros.emplace_back();
    macro.self = static_cast<std::int32_t>(b.image.macros.size());
    macro.sim_path = b.paths.macro_path[scope];
    macro.object_id = cell_id(b, b.flat.scopes[static_cast<std::size_t>(b.flat.scopes[scope].parent)],
                              xp_child_of(b.flat, b.flat.scopes[scope]).cell);
    macro.file_path = yxw_string(b.image, module);
    macro.first_pin_ind = static_cast<std::int32_t>(b.image.pinms.size()) + 1;
    set_properties(macro, instance_run(b, module, b.paths.macro_name[scope]));
    for (const xp_net_name& name : body.names)
        if (name.is_port) add_macro_port(b, scope, name);
    const std::size_t count = b.image.pinms.size() + 1 - static_cast<std::size_t>(macro.first_pin_ind);
    if (count > INT16_MAX)
        return xp_fail(
            b.status, xp_fault::too_large, xp_raw_scope_path(b.flat, scope),
            "pins of a macro: " + std::to_string(count) + ", at most " + std::to_string(INT16_MAX));
    macro.nb_of_pin = static_cast<std::int16_t>(count);
    if (count == 0) macro.first_pin_ind = 0;
}

// ---- the whole

void set_header(yx_design_image_t& image, float time_step, const xp_status& status) {
    std::int16_t hour = 0, minute = 0;
    tm_get_date(image.info.day, image.info.month, image.info.year, hour, minute);
    image.info.time_step = time_step;
    image.info.num_warnings =
        static_cast<std::int16_t>(std::min<std::size_t>(status.warnings.size(), INT16_MAX));
}

// The lower revision where the design fits.
float revision_of(const yx_design_image_t& image) {
    const auto fits = [](const auto& records) { return records.size() <= yx_max_index; };
    const bool all_fit = fits(image.chars) && fits(image.strings) && fits(image.props) && fits(image.insts) &&
                         fits(image.pins) && fits(image.nets) && fits(image.net_children) &&
                         fits(image.macros) && fits(image.pinms);
    return all_fit ? small_revision : yx_large_revision;
}

void build(const xp_flat& flat, const std::vector<xp_delays>& delays, const xp_annotation& annotation,
           yx_design_image_t& image, xp_paths& paths, xp_status& status) {
    xp_make_paths(flat, image, paths);
    builder b{flat, delays, annotation, image, paths, status, {}, {}, {}, {}, {}, {}, 0};
    add_nets(b);
    add_buses(b);
    add_children(b);
    add_object_ids(b);
    add_instances(b);
    for (std::size_t scope = 1; scope < flat.scopes.size(); ++scope) add_macro(b, scope);
}

}  // namespace

void xp_build_design(const xp_flat& flat, const std::vector<xp_delays>& delays,
                     const xp_annotation& annotation, float time_step, yx_design_image_t& image,
                     xp_paths& paths, xp_status& status) {
    if (!xp_ok(status)) return;
    add_names(instance_properties, image.prop_instance);
    add_names(pin_properties, image.prop_pin);
    add_names(net_properties, image.prop_net);
    set_header(image, time_step, status);
    build(flat, delays, annotation, image, paths, status);
    image.info.software_revision = revision_of(image);
}
