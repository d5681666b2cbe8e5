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

}  // namespace

std::string xp_buses_text(const xp_flat& flat) {
    std::string text = "# The vector ports of the top module.\n";
    for (const xp_net_name& name : xp_body_of(flat, flat.scopes[0]).names)
        if (name.is_port && xp_is_vector(name)) add_bus(name, text);
    return text;
}
