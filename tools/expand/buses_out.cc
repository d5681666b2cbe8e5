// The command file of the vector ports and registers.
#include "expand/buses_out.h"

namespace {

constexpr std::size_t words_before_members = 4;  // DEFINE BUS C name

void add_bus(const xp_net_name& port, std::string& text) {
    const std::string name(port.name);
    std::string line = "DEFINE BUS C " + name;
    std::size_t words = words_before_members;
    for (std::uint32_t k = port.bits.count; k-- > 0;) {
        const std::string member = " " + name + xp_bit_suffix(port, k);
        if (words == xp_command_words || line.size() + member.size() > xp_command_characters) {
            text += line + "\n";
            line = "DEFINE BUS A " + name;
            words = words_before_members;
        }
        line += member;
        ++words;
    }
    text += line + "\n";
}

// A vector with a register behind every bit.
bool is_register(const xp_flat& flat, const xp_net_name& name) {
    if (!xp_is_vector(name)) return false;
    const xp_scope& top = flat.scopes[0];
    for (std::uint32_t k = 0; k < name.bits.count; ++k) {
        const std::int32_t net = xp_net_at(flat, top, xp_module_of(flat, top).bits[name.bits.first + k]);
        if (net < 0 || !xp_is_register_net(flat, flat.nets[static_cast<std::size_t>(net)])) return false;
    }
    return true;
}

}  // namespace

std::string xp_buses_text(const xp_flat& flat) {
    std::string text = "# The vector ports of the top module.\n";
    const std::vector<xp_net_name>& names = xp_body_of(flat, flat.scopes[0]).names;
    for (const xp_net_name& name : names)
        if (name.is_port && xp_is_vector(name)) add_bus(name, text);
    std::string registers;
    for (const xp_net_name& name : names)
        if (!name.is_port && !name.hidden && is_register(flat, name)) add_bus(name, registers);
    if (!registers.empty()) text += "# Its registers.\n" + registers;
    return text;
}
