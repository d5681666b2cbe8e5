// xp_netlist: a netlist in Yosys' JSON format as it stands in the file.  Owns the modules with their ports,
// cells and net names, and the texts they refer to.  Bits are numbered densely from 0 within their module;
// the constants are negative.  Attributes other than "top", "blackbox", a cell's "drive" and a net's "init"
// are skipped. Malformed text and values of the wrong kind are refused with their place in the file.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "expand/message.h"

// A bit: a net of the module, from 0, or a constant.
inline constexpr std::int32_t xp_const_0 = -1, xp_const_1 = -2, xp_const_x = -3, xp_const_z = -4;
inline constexpr std::int32_t xp_constants = 4;

enum class xp_direction : std::uint8_t { none, input, output, inout };

struct xp_bits {  // a range of xp_module::bits, least significant first
    std::uint32_t first = 0, count = 0;
};

struct xp_port {
    std::string_view name;
    xp_direction direction = xp_direction::none;
    xp_bits bits;
    std::int32_t offset = 0;  // index of the lowest bit
    bool upto = false;        // written [low:high]: the last bit has the lowest index
};

struct xp_netname {
    std::string_view name;
    bool hidden = false;
    xp_bits bits;
    std::int32_t offset = 0;
    bool upto = false;
    std::string_view init;  // initial values, most significant bit first
};

struct xp_connection {
    std::string_view port;
    xp_bits bits;
};

struct xp_parameter {
    std::string_view name;
    std::int64_t value = 0;
    std::string_view bits;  // of a text, or of a number that ends in "_VALUE", most significant first
};

struct xp_cell {
    std::string_view name, type;
    std::string_view drive;  // attribute "drive": drive letters of the output for i, 0, x, 1
    bool hidden = false;
    std::uint32_t first_connection = 0, connection_count = 0;
    std::uint32_t first_parameter = 0, parameter_count = 0;
};

struct xp_module {
    std::string_view name;
    bool top = false, black_box = false;
    std::int32_t net_count = 0;
    std::vector<std::int32_t> bits;
    std::vector<xp_port> ports;
    std::vector<xp_netname> netnames;
    std::vector<xp_cell> cells;
    std::vector<xp_connection> connections;
    std::vector<xp_parameter> parameters;  // those with a numeric value
};

// Texts that stay where they are.
struct xp_text_store {
    std::deque<std::string> chunks;
    std::unordered_set<std::string_view> known;  // texts kept once
};

std::string_view xp_keep(xp_text_store& store, std::string_view text);
std::string_view xp_keep_once(xp_text_store& store, std::string_view text);  // for texts that come often

struct xp_netlist {
    xp_text_store texts;
    std::vector<xp_module> modules;
};

// Refuses what is no ordinary file, and one that another program could not read.
void xp_check_input(const std::string& path, xp_status& status);
// The whole file as text.
void xp_read_file(const std::string& path, std::string& text, xp_status& status);
void xp_read_netlist(const std::string& path, xp_netlist& netlist, xp_status& status);
// The same from text; path is for messages.
void xp_parse_netlist(const std::string& path, std::string_view text, xp_netlist& netlist, xp_status& status);

// The bits connected to a port; null when the port is not connected.
const xp_connection* xp_find_connection(const xp_module& module, const xp_cell& cell, std::string_view port);
std::int64_t xp_parameter_of(const xp_module& module, const xp_cell& cell, std::string_view name,
                             std::int64_t absent);
// Empty for a parameter that is not there.
std::string_view xp_bits_of_parameter(const xp_module& module, const xp_cell& cell, std::string_view name);
