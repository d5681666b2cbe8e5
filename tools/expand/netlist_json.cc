// The events of the JSON parser become the modules of a netlist.
#include "expand/netlist_json.h"

#include <unistd.h>

#include <algorithm>
#include <bitset>
#include <cerrno>
#include <cstring>
#include <nlohmann/json.hpp>
#include <unordered_map>

#include "foundation/input.h"

namespace {

constexpr std::size_t chunk_bytes = 1U << 20;

// Where in the file a value stands.
enum class place : std::uint8_t {
    skipped,
    root,
    modules,
    module,
    module_attributes,
    ports,
    port,
    cells,
    cell,
    cell_parameters,
    cell_attributes,
    connections,
    netnames,
    netname,
    netname_attributes,
    bits,
};

struct scalar {
    enum class kind : std::uint8_t { number, text, other } kind = kind::other;
    std::int64_t number = 0;
    std::string_view text;
};

struct frame {
    place at = place::skipped;
    bool is_array = false;
    std::string key;  // of the value being read
};

struct reader {
    xp_netlist& netlist;
    xp_status& status;
    const std::string& path;
    std::vector<frame> frames;
    std::size_t depth = 0;
    std::unordered_map<std::int64_t, std::int32_t> local;  // bit of the file to bit of the module
    xp_bits* owner = nullptr;                              // of the bits being read
};

xp_module& module_of(reader& r) { return r.netlist.modules.back(); }
const std::string& key_of(const reader& r) { return r.frames[r.depth - 1].key; }

// The keys that lead to the value being read, as a path.
std::string place_text(const reader& r) {
    std::string text = r.path;
    for (std::size_t i = 0; i < r.depth; ++i)
        if (!r.frames[i].is_array && !r.frames[i].key.empty())
            text += (i == 0 ? ": " : "/") + r.frames[i].key;
    return text;
}

bool refuse(reader& r, std::string_view what) {
    xp_fail(r.status, xp_fault::bad_value, place_text(r), what);
    return false;
}

bool refuse_missing(reader& r, std::string_view what) {
    xp_fail(r.status, xp_fault::missing_value, place_text(r), what);
    return false;
}

// ---- values

// The number that a parameter or attribute stands for: a JSON number or binary digits.
bool number_of(const scalar& value, std::int64_t& number) {
    number = value.number;
    if (value.kind == scalar::kind::number) return true;
    if (value.kind != scalar::kind::text || value.text.empty()) return false;
    if (value.text.find_first_not_of("01xz") != std::string_view::npos) return false;
    number = 0;
    const std::size_t low = value.text.size() > 32 ? value.text.size() - 32 : 0;
    for (const char c : value.text.substr(low)) number = number * 2 + (c == '1' ? 1 : 0);
    return true;
}

bool flag_of(const scalar& value, bool& flag) {
    std::int64_t number = 0;
    if (!number_of(value, number)) return false;
    flag = number != 0;
    return true;
}

bool set_top(reader& r, const scalar& value) { return flag_of(value, module_of(r).top); }
bool set_black_box(reader& r, const scalar& value) { return flag_of(value, module_of(r).black_box); }

bool set_direction(reader& r, const scalar& value) {
    xp_direction& direction = module_of(r).ports.back().direction;
    direction = value.text == "input"    ? xp_direction::input
                : value.text == "output" ? xp_direction::output
                : value.text == "inout"  ? xp_direction::inout
                                         : xp_direction::none;
    return direction != xp_direction::none;
}

template <auto Member>
bool set_offset(reader& r, const scalar& value) {
    (module_of(r).*Member).back().offset = static_cast<std::int32_t>(value.number);
    return value.kind == scalar::kind::number && std::abs(value.number) <= 1'000'000;
}

template <auto Member>
bool set_upto(reader& r, const scalar& value) {
    return flag_of(value, (module_of(r).*Member).back().upto);
}

template <auto Member>
bool set_hidden(reader& r, const scalar& value) {
    return flag_of(value, (module_of(r).*Member).back().hidden);
}

bool set_type(reader& r, const scalar& value) {
    module_of(r).cells.back().type = xp_keep_once(r.netlist.texts, value.text);
    return value.kind == scalar::kind::text && !value.text.empty();
}

bool set_drive(reader& r, const scalar& value) {
    module_of(r).cells.back().drive = xp_keep_once(r.netlist.texts, value.text);
    return value.kind == scalar::kind::text && !value.text.empty();
}

// The binary digits of a parameter or attribute.
std::string digits_of(const scalar& value) {
    return value.kind == scalar::kind::number
               ? std::bitset<32>(static_cast<std::uint64_t>(value.number)).to_string()
               : std::string(value.text);
}

bool set_init(reader& r, const scalar& value) {
    std::int64_t number = 0;
    if (!number_of(value, number)) return false;
    module_of(r).netnames.back().init = xp_keep_once(r.netlist.texts, digits_of(value));
    return true;
}

bool add_parameter(reader& r, const scalar& value) {
    std::int64_t number = 0;
    if (!number_of(value, number)) return true;
    const bool has_digits = value.kind == scalar::kind::text || key_of(r).ends_with("_VALUE");
    const std::string_view bits =
        has_digits ? xp_keep_once(r.netlist.texts, digits_of(value)) : std::string_view();
    module_of(r).parameters.push_back({xp_keep_once(r.netlist.texts, key_of(r)), number, bits});
    ++module_of(r).cells.back().parameter_count;
    return true;
}

bool add_bit(reader& r, const scalar& value) {
    xp_module& module = module_of(r);
    std::int32_t bit = 0;
    if (value.kind == scalar::kind::number) {
        if (value.number < 0) return false;
        const auto [known, is_new] = r.local.try_emplace(value.number, module.net_count);
        if (is_new) ++module.net_count;
        bit = known->second;
    } else {
        const std::size_t constant = std::string_view("01xz").find(value.text);
        if (value.kind != scalar::kind::text || value.text.size() != 1 || constant == std::string_view::npos)
            return false;
        bit = -1 - static_cast<std::int32_t>(constant);
    }
    module.bits.push_back(bit);
    ++r.owner->count;
    return true;
}

struct scalar_row {
    place at;
    std::string_view key;  // empty: any
    bool (*set)(reader&, const scalar&);
    std::string_view expected;
};

// clang-format off
constexpr scalar_row scalar_rows[] = {
    {place::bits,              "",          add_bit,                           "a bit is a number, \"0\", \"1\", \"x\" or \"z\""},
    {place::cell,              "hide_name", set_hidden<&xp_module::cells>,     "expected 0 or 1"},
    {place::cell,              "type",      set_type,                          "expected a text"},
    {place::cell_parameters,   "",          add_parameter,                     ""},
    {place::cell_attributes,   "drive",     set_drive,                         "expected a text"},
    {place::netname,           "hide_name", set_hidden<&xp_module::netnames>,  "expected 0 or 1"},
    {place::netname,           "offset",    set_offset<&xp_module::netnames>,  "expected a number"},
    {place::netname,           "upto",      set_upto<&xp_module::netnames>,    "expected 0 or 1"},
    {place::netname_attributes, "init",     set_init,                          "expected the digits 0, 1 and x"},
    {place::port,              "direction", set_direction,                     "expected \"input\", \"output\" or \"inout\""},
    {place::port,              "offset",    set_offset<&xp_module::ports>,     "expected a number"},
    {place::port,              "upto",      set_upto<&xp_module::ports>,       "expected 0 or 1"},
    {place::module_attributes, "top",       set_top,                           "expected 0 or 1"},
    {place::module_attributes, "blackbox",  set_black_box,                     "expected 0 or 1"},
};
// clang-format on

// ---- objects and arrays

std::uint32_t size_of(std::size_t count) { return static_cast<std::uint32_t>(count); }

void begin_bits(reader& r, xp_bits& bits) {
    bits = {size_of(module_of(r).bits.size()), 0};
    r.owner = &bits;
}

void begin_module(reader& r) {
    r.netlist.modules.emplace_back().name = xp_keep(r.netlist.texts, key_of(r));
    r.local.clear();
}
void begin_port(reader& r) { module_of(r).ports.emplace_back().name = xp_keep(r.netlist.texts, key_of(r)); }
void begin_netname(reader& r) {
    module_of(r).netnames.emplace_back().name = xp_keep(r.netlist.texts, key_of(r));
}
void begin_cell(reader& r) {
    xp_module& module = module_of(r);
    xp_cell& cell = module.cells.emplace_back();
    cell.name = xp_keep(r.netlist.texts, key_of(r));
    cell.first_connection = size_of(module.connections.size());
    cell.first_parameter = size_of(module.parameters.size());
}
void begin_connection(reader& r) {
    xp_module& module = module_of(r);
    xp_connection& connection = module.connections.emplace_back();
    connection.port = xp_keep_once(r.netlist.texts, key_of(r));
    ++module.cells.back().connection_count;
    begin_bits(r, connection.bits);
}
void begin_port_bits(reader& r) { begin_bits(r, module_of(r).ports.back().bits); }
void begin_netname_bits(reader& r) { begin_bits(r, module_of(r).netnames.back().bits); }
void begin_plain(reader&) {}

struct branch_row {
    place from;
    std::string_view key;  // empty: any
    place to;
    bool is_array;
    void (*begin)(reader&);
};

// clang-format off
constexpr branch_row branch_rows[] = {
    {place::root,        "modules",     place::modules,           false, begin_plain},
    {place::modules,     "",            place::module,            false, begin_module},
    {place::module,      "attributes",  place::module_attributes, false, begin_plain},
    {place::module,      "ports",       place::ports,             false, begin_plain},
    {place::module,      "cells",       place::cells,             false, begin_plain},
    {place::module,      "netnames",    place::netnames,          false, begin_plain},
    {place::ports,       "",            place::port,              false, begin_port},
    {place::port,        "bits",        place::bits,              true,  begin_port_bits},
    {place::cells,       "",            place::cell,              false, begin_cell},
    {place::cell,        "parameters",  place::cell_parameters,   false, begin_plain},
    {place::cell,        "attributes",  place::cell_attributes,   false, begin_plain},
    {place::cell,        "connections", place::connections,       false, begin_plain},
    {place::connections, "",            place::bits,              true,  begin_connection},
    {place::netnames,    "",            place::netname,           false, begin_netname},
    {place::netname,     "attributes",  place::netname_attributes, false, begin_plain},
    {place::netname,     "bits",        place::bits,              true,  begin_netname_bits},
};
// clang-format on

const branch_row* find_branch(const reader& r, place at) {
    for (const branch_row& row : branch_rows)
        if (row.from == at && (row.key.empty() || row.key == key_of(r))) return &row;
    return nullptr;
}

const char* expected_of(const branch_row& row) {
    return row.is_array ? "expected an array" : "expected an object";
}

bool take_scalar(reader& r, const scalar& value) {
    if (r.depth == 0) return refuse(r, "expected an object");
    const place at = r.frames[r.depth - 1].at;
    if (at == place::skipped) return true;
    for (const scalar_row& row : scalar_rows)
        if (row.at == at && (row.key.empty() || row.key == key_of(r)))
            return row.set(r, value) || refuse(r, row.expected);
    const branch_row* branch = find_branch(r, at);
    return branch == nullptr || refuse(r, expected_of(*branch));
}

void push(reader& r, place at, bool is_array) {
    if (r.depth == r.frames.size()) r.frames.emplace_back();
    r.frames[r.depth].at = at;
    r.frames[r.depth].is_array = is_array;
    r.frames[r.depth++].key.clear();
}

bool begin(reader& r, bool is_array) {
    if (r.depth == 0) {
        push(r, place::root, is_array);
        return !is_array || refuse(r, "expected an object");
    }
    const place at = r.frames[r.depth - 1].at;
    if (at == place::bits) return refuse(r, scalar_rows[0].expected);
    const branch_row* row = find_branch(r, at);
    if (row != nullptr && row->is_array != is_array) return refuse(r, expected_of(*row));
    if (row != nullptr) row->begin(r);
    push(r, row != nullptr ? row->to : place::skipped, is_array);
    return true;
}

bool end(reader& r) {
    const place at = r.frames[--r.depth].at;
    if (at == place::cell && module_of(r).cells.back().type.empty())
        return refuse_missing(r, "\"type\" of the cell");
    if (at == place::port && module_of(r).ports.back().direction == xp_direction::none)
        return refuse_missing(r, "\"direction\" of the port");
    return true;
}

// What the JSON parser calls, value by value.
struct json_events {
    reader& r;

    bool take(const scalar& value) { return take_scalar(r, value); }
    bool null() { return take({}); }
    bool boolean(bool) { return take({}); }
    bool number_integer(std::int64_t value) { return take({scalar::kind::number, value, {}}); }
    bool number_unsigned(std::uint64_t value) {
        if (value > INT64_MAX) return take({});
        return number_integer(static_cast<std::int64_t>(value));
    }
    bool number_float(double, const std::string&) { return take({}); }
    bool string(std::string& value) { return take({scalar::kind::text, 0, value}); }
    bool binary(std::vector<std::uint8_t>&) { return take({}); }
    bool start_object(std::size_t) { return begin(r, false); }
    bool start_array(std::size_t) { return begin(r, true); }
    bool end_object() { return end(r); }
    bool end_array() { return end(r); }
    bool key(std::string& text) {
        r.frames[r.depth - 1].key = text;
        return true;
    }
    bool parse_error(std::size_t position, const std::string& token, const nlohmann::detail::exception&) {
        xp_fail(r.status, xp_fault::bad_json, r.path,
                "byte " + std::to_string(position) + ", near " + xp_quoted(token.substr(0, 40)));
        return false;
    }
};

}  // namespace

std::string_view xp_keep(xp_text_store& store, std::string_view text) {
    if (store.chunks.empty() || store.chunks.back().capacity() - store.chunks.back().size() < text.size())
        store.chunks.emplace_back().reserve(std::max(chunk_bytes, text.size()));
    std::string& chunk = store.chunks.back();
    chunk += text;
    return std::string_view(chunk).substr(chunk.size() - text.size());
}

std::string_view xp_keep_once(xp_text_store& store, std::string_view text) {
    const auto known = store.known.find(text);
    return known != store.known.end() ? *known : *store.known.insert(xp_keep(store, text)).first;
}

namespace {

void refuse_input(const std::string& path, xp_status& status) {
    xp_fail(status, xp_fault::cannot_read, path, errno == ENOENT ? "" : std::strerror(errno));
}

}  // namespace

void xp_check_input(const std::string& path, xp_status& status) {
    if (!xp_ok(status)) return;
    const int fd = tm_open_input(path);
    if (fd < 0) return refuse_input(path, status);
    ::close(fd);
}

void xp_read_file(const std::string& path, std::string& text, xp_status& status) {
    if (xp_ok(status) && !tm_read_input(path, text)) refuse_input(path, status);
}

void xp_read_netlist(const std::string& path, xp_netlist& netlist, xp_status& status) {
    std::string text;
    xp_read_file(path, text, status);
    xp_parse_netlist(path, text, netlist, status);
}

void xp_parse_netlist(const std::string& path, std::string_view text, xp_netlist& netlist,
                      xp_status& status) {
    if (!xp_ok(status)) return;
    reader r{netlist, status, path, {}, 0, {}, nullptr};
    json_events events{r};
    nlohmann::json::sax_parse(text.begin(), text.end(), &events);
    if (netlist.modules.empty()) xp_fail(status, xp_fault::missing_value, path, "no modules");
}

const xp_connection* xp_find_connection(const xp_module& module, const xp_cell& cell, std::string_view port) {
    for (std::uint32_t i = 0; i < cell.connection_count; ++i)
        if (module.connections[cell.first_connection + i].port == port)
            return &module.connections[cell.first_connection + i];
    return nullptr;
}

namespace {

const xp_parameter* find_parameter(const xp_module& module, const xp_cell& cell, std::string_view name) {
    for (std::uint32_t i = 0; i < cell.parameter_count; ++i)
        if (module.parameters[cell.first_parameter + i].name == name)
            return &module.parameters[cell.first_parameter + i];
    return nullptr;
}

}  // namespace

std::int64_t xp_parameter_of(const xp_module& module, const xp_cell& cell, std::string_view name,
                             std::int64_t absent) {
    const xp_parameter* parameter = find_parameter(module, cell, name);
    return parameter == nullptr ? absent : parameter->value;
}

std::string_view xp_bits_of_parameter(const xp_module& module, const xp_cell& cell, std::string_view name) {
    const xp_parameter* parameter = find_parameter(module, cell, name);
    return parameter == nullptr ? std::string_view() : parameter->bits;
}
