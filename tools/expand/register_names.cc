// The names of registers by the nets that they drive.
#include "expand/register_names.h"

namespace {

struct stored {
    std::int32_t name = -1;  // of the module's body
    std::uint32_t bit = 0;
};

// Inner vectors first, then those of ports, then single bits: a port often shows what a vector inside holds.
int rank_of(const xp_net_name& name) { return (xp_is_vector(name) ? 0 : 2) + (name.is_port ? 1 : 0); }

std::vector<stored> names_of_bits(const xp_mapping& m) {
    std::vector<stored> names(static_cast<std::size_t>(m.module.net_count));
    for (int rank = 0; rank < 4; ++rank)
        for (std::size_t i = 0; i < m.body.names.size(); ++i) {
            const xp_net_name& name = m.body.names[i];
            if (name.hidden || rank_of(name) != rank) continue;
            for (std::uint32_t k = 0; k < name.bits.count; ++k) {
                const std::int32_t bit = m.module.bits[name.bits.first + k];
                if (bit < 0 || static_cast<std::size_t>(bit) >= names.size()) continue;
                stored& known = names[static_cast<std::size_t>(bit)];
                if (known.name < 0) known = {static_cast<std::int32_t>(i), k};
            }
        }
    return names;
}

const xp_connection* register_output(const xp_mapping& m, const xp_cell& cell) {
    xp_timed_form form;
    const xp_timed_row* row = xp_find_timed(cell.type, form);
    return row != nullptr && xp_is_register(row->model) ? xp_find_connection(m.module, cell, "Q") : nullptr;
}

std::string name_for(const xp_mapping& m, const xp_bits& output, const std::vector<stored>& names) {
    const std::int32_t first = m.module.bits[output.first];
    if (output.count == 0 || first < 0 || static_cast<std::size_t>(first) >= names.size()) return {};
    const stored& s = names[static_cast<std::size_t>(first)];
    if (s.name < 0) return {};
    const xp_net_name& name = m.body.names[static_cast<std::size_t>(s.name)];
    const bool is_whole = output.count == name.bits.count;
    return std::string(name.name) + "_reg" + (is_whole ? "" : xp_bit_suffix(name, s.bit));
}

}  // namespace

std::vector<std::string> xp_register_names(const xp_mapping& m) {
    const std::vector<stored> names = names_of_bits(m);
    std::vector<std::string> registers(m.module.cells.size());
    for (std::size_t i = 0; i < registers.size(); ++i) {
        const xp_cell& cell = m.module.cells[i];
        const xp_connection* output = cell.hidden ? register_output(m, cell) : nullptr;
        if (output != nullptr) registers[i] = name_for(m, output->bits, names);
    }
    return registers;
}
