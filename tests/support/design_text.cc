#include <algorithm>
#include <map>
#include <span>
#include <sstream>

#include "kernel/state.h"
#include "support/design_build.h"

namespace {

using words_t = std::vector<std::string>;
using indexes_t = std::vector<std::int32_t>;

// The properties of a pin, in the order of their values; its name is 0.
constexpr std::size_t RISE = 1, FALL = 2, DRIVE = 3, EDGE = 4, SETUP_TIME = 5, HOLD_TIME = 6,
                      MIN_TIME_HIGH = 7, MIN_TIME_LOW = 8, VALUES = 9;
const words_t pin_prop_names{"PIN",        "RISE",      "FALL",          "DRIVE",        "EDGE",
                             "SETUP_TIME", "HOLD_TIME", "MIN_TIME_HIGH", "MIN_TIME_LOW", "VALUES"};
const words_t inst_prop_names{"MODEL", "TABLE", "WORDS"};
const words_t prop_types{"string", "integer", "time", "real"};

struct builder_t {
    yx_design_image_t image;
    std::map<std::string, std::int32_t> nets, insts, pins;
    std::vector<std::int32_t> last_in{0}, last_out{0};                 // ends of the nets' pin chains, by net
    std::vector<std::vector<yx_prop_record_t>> pin_props, inst_props;  // element k-1: of record k
    std::string error;
};

std::string take(std::istream& in) {
    std::string word;
    in >> word;
    return word;
}

std::int16_t take_number(std::istream& in) { return static_cast<std::int16_t>(std::stoi(take(in))); }

// N or MIN:TYP:MAX.
yx_prop_record_t time_prop(const std::string& word) {
    yx_prop_record_t prop;
    prop.prop_type = YX_PTIME;
    std::size_t at = 0;
    for (std::int32_t& value : prop.valuet) {
        value = std::stoi(word.substr(at));
        if (const std::size_t colon = word.find(':', at); colon != word.npos) at = colon + 1;
    }
    return prop;
}

yx_prop_record_t text_prop(builder_t& b, const std::string& text) {
    yx_prop_record_t prop;
    prop.valuec = yxw_string(b.image, text);
    return prop;
}

std::size_t position_in(builder_t& b, const words_t& names, const std::string& name) {
    const auto found = static_cast<std::size_t>(std::ranges::find(names, name) - names.begin());
    if (found < names.size()) return found;
    b.error = "unknown: " + name;
    return 0;
}

std::int32_t find(builder_t& b, const std::map<std::string, std::int32_t>& records, const std::string& name) {
    const auto found = records.find(name);
    if (found != records.end()) return found->second;
    b.error = "no record " + name;
    return 1;
}

// ---- options: a word and its value, given to one record or to several

template <typename Record>
Record& at(std::vector<Record>& records, std::int32_t index) {
    return records[static_cast<std::size_t>(index - 1)];
}

using option_t = void (*)(builder_t&, std::int32_t, std::istream&);
using options_t = std::map<std::string, option_t>;

// Values are positional: those in front get neutral ones.
void put_prop(builder_t& b, std::int32_t pin, std::size_t k, const yx_prop_record_t& prop) {
    auto& props = at(b.pin_props, pin);
    while (props.size() <= k) props.push_back(props.size() > EDGE ? time_prop("0") : text_prop(b, "SSSS"));
    props[k] = prop;
}

template <std::size_t k>
void take_time_prop(builder_t& b, std::int32_t pin, std::istream& in) {
    put_prop(b, pin, k, time_prop(take(in)));
}

template <std::size_t k>
void take_text_prop(builder_t& b, std::int32_t pin, std::istream& in) {
    put_prop(b, pin, k, text_prop(b, take(in)));
}

template <auto field>
void take_delays(builder_t& b, std::int32_t net, std::istream& in) {
    std::ranges::copy(time_prop(take(in)).valuet, at(b.image.nets, net).UU.U1.*field);
}

template <auto records, auto field>
void take_number(builder_t& b, std::int32_t i, std::istream& in) {
    auto& value = at(b.image.*records, i).*field;
    value = static_cast<std::remove_reference_t<decltype(value)>>(take_number(in));
}

template <auto records, auto field>
void take_string(builder_t& b, std::int32_t i, std::istream& in) {
    at(b.image.*records, i).*field = yxw_string(b.image, take(in));
}

template <auto props, const words_t& names>
void drop_prop(builder_t& b, std::int32_t i, std::istream& in) {
    auto& of_record = at(b.*props, i);
    of_record.resize(std::min(of_record.size(), position_in(b, names, take(in))));
}

template <auto props, const words_t& names>
void change_type(builder_t& b, std::int32_t i, std::istream& in) {
    const std::size_t k = position_in(b, names, take(in));
    const auto type = static_cast<std::int16_t>(position_in(b, prop_types, take(in)));
    if (k < at(b.*props, i).size()) at(b.*props, i)[k].prop_type = type;
}

void append_to_chain(builder_t& b, yx_net_record_t& net, const yx_pin_record_t& pin, bool is_output) {
    std::int32_t& last = (is_output ? b.last_out : b.last_in)[static_cast<std::size_t>(net.self)];
    std::int32_t& first = is_output ? net.first_pin_out_ind : net.first_pin_in_ind;
    const auto next = is_output ? &yx_pin_record_t::next_pin_out_ind : &yx_pin_record_t::next_pin_in_ind;
    (last == 0 ? first : at(b.image.pins, last).*next) = pin.self;
    last = pin.self;
    ++(is_output ? net.nb_pin_out : net.nb_pin_in);
}

// clang-format off
using image_t = yx_design_image_t;
const options_t net_options{
    {"fixed", [](builder_t& b, std::int32_t i, std::istream&) { at(b.image.nets, i).UU.U1.cur_state.fixed = true; }},
    {"init", [](builder_t& b, std::int32_t i, std::istream& in) {
         if (!kol_keyword_to_state(take(in), at(b.image.nets, i).UU.U1.state_init)) b.error = "bad state";
     }},
    {"kind", take_number<&image_t::nets, &yx_net_record_t::net_kind>},
    {"object", take_number<&image_t::nets, &yx_net_record_t::object_id>},
    {"rise", take_delays<&yx_net_u1_t::rise>}, {"fall", take_delays<&yx_net_u1_t::fall>},
    {"name", take_string<&image_t::nets, &yx_net_record_t::name>},
    {"path", take_string<&image_t::nets, &yx_net_record_t::sim_path>}};
const options_t child_options{
    {"object", take_number<&image_t::net_children, &yx_net_child_record_t::object_id>},
    {"name", take_string<&image_t::net_children, &yx_net_child_record_t::name>},
    {"path", take_string<&image_t::net_children, &yx_net_child_record_t::sim_path>}};
const options_t pin_options{
    {"prio", take_number<&image_t::pins, &yx_pin_record_t::pin_hdl_priority>},
    {"io", [](builder_t& b, std::int32_t i, std::istream& in) {
         yx_pin_record_t& pin = at(b.image.pins, i);
         pin.io_type = take_number(in);
         if (pin.io_type == 4) append_to_chain(b, at(b.image.nets, pin.net_ind), pin, true);
     }},
    {"drive", take_text_prop<DRIVE>}, {"edge", take_text_prop<EDGE>},
    {"rise", take_time_prop<RISE>}, {"fall", take_time_prop<FALL>}, {"setup", take_time_prop<SETUP_TIME>},
    {"hold", take_time_prop<HOLD_TIME>}, {"high", take_time_prop<MIN_TIME_HIGH>},
    {"low", take_time_prop<MIN_TIME_LOW>}, {"values", take_text_prop<VALUES>},
    {"without", drop_prop<&builder_t::pin_props, pin_prop_names>},
    {"type", change_type<&builder_t::pin_props, pin_prop_names>}};
const options_t inst_options{
    {"timing", take_number<&image_t::insts, &yx_inst_record_t::timing_index>},
    {"table", [](builder_t& b, std::int32_t i, std::istream& in) { at(b.inst_props, i).push_back(text_prop(b, take(in))); }},
    {"words", [](builder_t& b, std::int32_t i, std::istream& in) {
         at(b.inst_props, i).resize(2, text_prop(b, "0"));
         at(b.inst_props, i).push_back(text_prop(b, take(in)));
     }},
    {"without", drop_prop<&builder_t::inst_props, inst_prop_names>},
    {"type", change_type<&builder_t::inst_props, inst_prop_names>}};
// clang-format on

void read_option(builder_t& b, const options_t& options, const std::string& word, const indexes_t& records,
                 std::istream& in) {
    if (!options.contains(word)) b.error = "unknown option " + word;
    const std::istream::pos_type value = in.tellg();
    for (const std::int32_t record : records) {
        if (!b.error.empty()) return;
        in.clear();
        in.seekg(value);
        options.at(word)(b, record, in);
    }
}

void read_options(builder_t& b, const options_t& options, const indexes_t& records, std::istream& in) {
    for (std::string word = take(in); !word.empty() && b.error.empty(); word = take(in))
        read_option(b, options, word, records, in);
}

// The words up to the first that is an option or the given end.
words_t take_names(const options_t& options, std::string_view end, std::istream& in) {
    words_t names;
    for (std::istream::pos_type before = in.tellg();; before = in.tellg()) {
        const std::string word = take(in);
        if (word.empty() || word == end) return names;
        if (options.contains(word)) {
            in.seekg(before);
            return names;
        }
        names.push_back(word);
    }
}

// ---- nets

std::int32_t add_net(builder_t& b, const std::string& name, std::int16_t type) {
    yx_net_record_t& net = b.image.nets.emplace_back();
    net.self = static_cast<std::int32_t>(b.image.nets.size());
    net.net_type = type;
    net.sim_path = yxw_string(b.image, "/" + name);
    if (!b.nets.emplace(name, net.self).second) b.error = "a second net " + name;
    b.last_in.push_back(0);
    b.last_out.push_back(0);
    return net.self;
}

void read_nets(builder_t& b, std::istream& in) {
    indexes_t nets;
    for (const std::string& name : take_names(net_options, "", in))
        nets.push_back(add_net(b, name, YX_TSTANDARD));
    read_options(b, net_options, nets, in);
}

void read_sub_net(builder_t& b, std::istream& in) {
    const std::int32_t net = add_net(b, take(in), YX_TSUB_NET);
    take(in);  // of
    const std::int32_t father = find(b, b.nets, take(in));
    at(b.image.nets, net).UU.U1.father_net = father;
    std::int32_t* link = &at(b.image.nets, father).UU.U1.first_sub_net;
    while (*link != 0) link = &at(b.image.nets, *link).UU.U1.next_sub_net;
    *link = net;
    read_options(b, net_options, {net}, in);
}

void read_bus(builder_t& b, std::istream& in) {
    const std::string name = take(in), width = take(in);
    words_t names;
    if (width == "=") names = take_names(net_options, "", in);
    for (std::int32_t k = 0; width != "=" && k < std::stoi(width); ++k)
        names.push_back(name + "[" + std::to_string(k) + "]");
    const std::int32_t bus = add_net(b, name, YX_TSTD_BUS);
    at(b.image.nets, bus).UU.U2.netind_start = bus + 1;
    at(b.image.nets, bus).UU.U2.net_bus_end = static_cast<std::int16_t>(names.size() - 1);
    indexes_t members;
    for (const std::string& member : names) {
        members.push_back(add_net(b, member, YX_TSTANDARD));
        at(b.image.nets, members.back()).UU.U1.bus = bus;
        at(b.image.nets, members.back()).UU.U1.posinbus = static_cast<std::int16_t>(members.size());
    }
    read_options(b, net_options, members, in);
}

void read_child(builder_t& b, std::istream& in) {
    yx_net_record_t& net = at(b.image.nets, find(b, b.nets, take(in)));
    const auto child = static_cast<std::int32_t>(b.image.net_children.size()) + 1;
    b.image.net_children.emplace_back().self = child;
    std::int32_t* link = &net.first_child;
    while (*link != 0) link = &at(b.image.net_children, *link).next_child;
    *link = child;
    ++net.nb_of_child;
    read_options(b, child_options, {child}, in);
}

// ---- instances and pins

// word: [NAME:]NET[.BIT[-BIT]]
void add_pin(builder_t& b, const std::string& inst, std::string name, std::string word, bool is_output) {
    if (const std::size_t colon = word.find(':'); colon != word.npos) {
        name = word.substr(0, colon);
        word.erase(0, colon + 1);
    }
    const std::size_t point = word.find('.');
    const std::string net_name = word.substr(0, point);
    if (!b.nets.contains(net_name)) add_net(b, net_name, YX_TSTANDARD);
    yx_net_record_t& net = at(b.image.nets, b.nets[net_name]);

    yx_pin_record_t& pin = b.image.pins.emplace_back();
    pin.self = static_cast<std::int32_t>(b.image.pins.size());
    pin.io_type = is_output ? 2 : 1;
    pin.pin_hdl_priority = 1;
    pin.sim_path = yxw_string(b.image, inst + "/" + name);
    pin.instance_ind = static_cast<std::int32_t>(b.image.insts.size());
    pin.net_ind = net.self;
    if (point == word.npos && net.net_type == YX_TSTD_BUS) pin.pin_end = net.UU.U2.net_bus_end;
    if (point != word.npos) pin.pin_start = static_cast<std::int16_t>(std::stoi(word.substr(point + 1)));
    if (const std::size_t dash = word.find('-'); dash != word.npos)
        pin.pin_end = static_cast<std::int16_t>(std::stoi(word.substr(dash + 1)));
    b.pins.emplace(inst + "/" + name, pin.self);
    b.pin_props.push_back({text_prop(b, name), time_prop("0"), time_prop("0")});
    append_to_chain(b, net, pin, is_output);
}

// An option of the instance; of its output pins; or, with an i in front, of its input pins.
void read_new_inst_option(builder_t& b, const std::string& word, std::int32_t inst, std::istream& in) {
    if (inst_options.contains(word)) {
        read_option(b, inst_options, word, {inst}, in);
        return;
    }
    const bool of_inputs = word.starts_with('i');
    indexes_t pins;
    for (const yx_pin_record_t& pin : b.image.pins)
        if (pin.instance_ind == inst && (pin.io_type == 1) == of_inputs) pins.push_back(pin.self);
    read_option(b, pin_options, of_inputs ? word.substr(1) : word, pins, in);
}

void read_instance(builder_t& b, const std::string& model, std::istream& in) {
    static const options_t ends{{"rise", {}},  {"fall", {}},  {"prio", {}},  {"drive", {}},
                                {"irise", {}}, {"ifall", {}}, {"iprio", {}}, {"timing", {}}};
    const std::string name = take(in), path = "/" + name;
    const words_t outs = take_names(ends, "=", in), ins = take_names(ends, "", in);
    const auto inst = static_cast<std::int32_t>(b.image.insts.size()) + 1;
    yx_inst_record_t& record = b.image.insts.emplace_back();
    record.self = inst;
    record.sim_path = yxw_string(b.image, path);
    record.nb_of_pin = static_cast<std::int16_t>(outs.size() + ins.size());
    record.first_pin_ind = record.nb_of_pin == 0 ? 0 : static_cast<std::int32_t>(b.image.pins.size()) + 1;
    b.inst_props.push_back({text_prop(b, model)});
    if (!b.insts.emplace(name, inst).second) b.error = "a second instance " + name;
    for (std::size_t k = 0; k < outs.size(); ++k)
        add_pin(b, path, outs.size() == 1 ? "O" : "O" + std::to_string(k + 1), outs[k], true);
    for (std::size_t k = 0; k < ins.size(); ++k) add_pin(b, path, "I" + std::to_string(k + 1), ins[k], false);
    for (std::string word = take(in); !word.empty() && b.error.empty(); word = take(in))
        read_new_inst_option(b, word, inst, in);
}

void change_pin(builder_t& b, std::istream& in) {
    read_options(b, pin_options, {find(b, b.pins, take(in))}, in);
}

void change_instance(builder_t& b, std::istream& in) {
    read_options(b, inst_options, {find(b, b.insts, take(in))}, in);
}

// clang-format off
const std::map<std::string, void (*)(builder_t&, std::istream&)> readers{
    {"net", read_nets}, {"in", read_nets}, {"sub", read_sub_net}, {"bus", read_bus}, {"child", read_child},
    {"pin", change_pin}, {"inst", change_instance}};
// clang-format on

void read_statement(builder_t& b, const std::string& statement) {
    std::istringstream in(statement);
    const std::string first = take(in);
    if (readers.contains(first))
        readers.at(first)(b, in);
    else if (!first.empty())
        read_instance(b, first, in);
}

// ---- the image

template <typename Record>
void add_props(yx_design_image_t& image, std::vector<Record>& records,
               const std::vector<std::vector<yx_prop_record_t>>& props) {
    for (std::size_t k = 0; k < records.size(); ++k) {
        records[k].first_prop = props[k].empty() ? 0 : static_cast<std::int32_t>(image.props.size()) + 1;
        records[k].nb_of_property = static_cast<std::int8_t>(props[k].size());
        image.props.insert(image.props.end(), props[k].begin(), props[k].end());
    }
}

void add_names(std::vector<yx_prop_type_record_t>& table, const words_t& names) {
    for (const std::string& name : names) table.push_back({tm_string(name), tm_string("")});
}

}  // namespace

yx_design_image_t tst_design(std::string_view text, std::string& error) {
    builder_t b;
    b.image.info.time_step = 1;
    add_names(b.image.prop_pin, pin_prop_names);
    add_names(b.image.prop_instance, inst_prop_names);
    std::string statements(text), statement;
    std::ranges::replace(statements, '\n', ';');
    std::istringstream in(statements);
    while (b.error.empty() && std::getline(in, statement, ';')) read_statement(b, statement);
    if (!b.error.empty()) error = b.error + " in:" + statement;
    add_props(b.image, b.image.pins, b.pin_props);
    add_props(b.image, b.image.insts, b.inst_props);
    return std::move(b.image);
}
