// The blocks of a module: registers of a vector or a chain with their logic, and fan-in cones.
#include "expand/sheet_blocks.h"

#include <algorithm>
#include <map>

#include "sheets/place_of.h"

namespace {

constexpr std::size_t column_most = 8;  // registers that stand in one column

void find_ends(xp_blocks& b) {
    b.drivers.resize(b.plan.nets.size());
    b.readers.resize(b.plan.nets.size());
    for (std::size_t cell = 0; cell < b.plan.cells.size(); ++cell)
        for (std::size_t pin = 0; pin < b.plan.cells[cell].nets.size(); ++pin)
            if (const std::int32_t net = b.plan.cells[cell].nets[pin]; net >= 0)
                (b.plan.cells[cell].kind.pins[pin].is_right ? b.drivers : b.readers)[sg_at(net)].push_back(
                    static_cast<std::int32_t>(cell));
}

bool starts_anew(const xp_blocks& b, std::int32_t cell) {
    return b.plan.cells[sg_at(cell)].is_register || b.plan.cells[sg_at(cell)].module >= 0;
}

// Logic levels from inputs and registers, in an order in which a cell stands behind its drivers.
std::vector<std::int32_t> find_levels(xp_blocks& b) {
    const auto count = static_cast<std::int32_t>(b.plan.cells.size());
    std::vector<std::int32_t> order, waiting(sg_at(count));
    b.level.assign(sg_at(count), 0);
    for (std::int32_t cell = 0; cell < count; ++cell) {
        xp_for_inputs(b.plan.cells[sg_at(cell)], [&](std::int32_t net) {
            for (const std::int32_t driver : b.drivers[sg_at(net)])
                if (!starts_anew(b, driver)) ++waiting[sg_at(cell)];
        });
        if (waiting[sg_at(cell)] == 0) order.push_back(cell);
    }
    for (std::size_t i = 0; i < order.size(); ++i) {
        const xp_sheet_cell& c = b.plan.cells[sg_at(order[i])];
        for (std::size_t pin = 0; pin < c.nets.size(); ++pin) {
            if (c.nets[pin] < 0 || !c.kind.pins[pin].is_right || starts_anew(b, order[i])) continue;
            for (const std::int32_t reader : b.readers[sg_at(c.nets[pin])]) {
                b.level[sg_at(reader)] = std::max(b.level[sg_at(reader)], b.level[sg_at(order[i])] + 1);
                if (--waiting[sg_at(reader)] == 0) order.push_back(reader);
            }
        }
    }
    for (std::int32_t cell = 0; cell < count; ++cell)
        if (waiting[sg_at(cell)] > 0) order.push_back(cell);  // in a loop of gates
    return order;
}

// ---- registers that belong together

using bank = std::vector<std::int32_t>;  // registers in their order

std::vector<bank> vector_banks(const xp_blocks& b) {
    std::map<std::int32_t, bank> by_vector;
    const auto count = static_cast<std::int32_t>(b.plan.cells.size());
    for (std::int32_t cell = 0; cell < count; ++cell)
        if (b.plan.cells[sg_at(cell)].is_register && b.plan.cells[sg_at(cell)].vector >= 0)
            by_vector[b.plan.cells[sg_at(cell)].vector].push_back(cell);
    std::vector<bank> banks;
    for (auto& [vector, registers] : by_vector) {
        std::stable_sort(registers.begin(), registers.end(), [&](std::int32_t x, std::int32_t y) {
            return b.plan.cells[sg_at(x)].vector_bit > b.plan.cells[sg_at(y)].vector_bit;
        });
        if (registers.size() > 1) banks.push_back(std::move(registers));
    }
    return banks;
}

// The register without a vector that gets its data straight from this one and alone, -1 for none.
std::int32_t next_in_chain(const xp_blocks& b, std::int32_t cell) {
    const xp_sheet_cell& c = b.plan.cells[sg_at(cell)];
    std::int32_t next = -1;
    for (std::size_t pin = 0; pin < c.nets.size(); ++pin) {
        if (c.nets[pin] < 0 || !c.kind.pins[pin].is_right) continue;
        const std::vector<std::int32_t>& readers = b.readers[sg_at(c.nets[pin])];
        if (readers.size() == 1) next = readers[0];
    }
    const bool is_link = next >= 0 && next != cell && b.plan.cells[sg_at(next)].is_register &&
                         b.plan.cells[sg_at(next)].vector < 0;
    return is_link ? next : -1;
}

std::vector<bank> chain_banks(const xp_blocks& b) {
    const auto count = static_cast<std::int32_t>(b.plan.cells.size());
    std::vector<std::int32_t> next(sg_at(count), -1);
    std::vector<bool> has_previous(sg_at(count));
    for (std::int32_t cell = 0; cell < count; ++cell) {
        if (!b.plan.cells[sg_at(cell)].is_register || b.plan.cells[sg_at(cell)].vector >= 0) continue;
        next[sg_at(cell)] = next_in_chain(b, cell);
        if (next[sg_at(cell)] >= 0) has_previous[sg_at(next[sg_at(cell)])] = true;
    }
    std::vector<bank> banks;
    for (std::int32_t cell = 0; cell < count; ++cell) {
        if (next[sg_at(cell)] < 0 || has_previous[sg_at(cell)]) continue;
        banks.emplace_back();
        for (std::int32_t link = cell; link >= 0; link = next[sg_at(link)]) banks.back().push_back(link);
    }
    return banks;
}

// ---- cones

// The only block that reads all that a cell drives, -1 when there are several or none, or a port reads it.
std::int32_t only_reader(const xp_blocks& b, std::int32_t cell, const std::vector<bool>& is_at_port) {
    std::int32_t block = -1;
    const xp_sheet_cell& c = b.plan.cells[sg_at(cell)];
    for (std::size_t pin = 0; pin < c.nets.size(); ++pin) {
        if (c.nets[pin] < 0 || !c.kind.pins[pin].is_right) continue;
        if (is_at_port[sg_at(c.nets[pin])]) return -1;
        for (const std::int32_t reader : b.readers[sg_at(c.nets[pin])]) {
            const std::int32_t other = b.block_of[sg_at(reader)];
            if (other < 0 || (block >= 0 && block != other)) return -1;
            block = other;
        }
    }
    return block;
}

void put_into(xp_blocks& b, std::int32_t cell, std::int32_t block) {
    b.block_of[sg_at(cell)] = block;
    b.blocks[sg_at(block)].cells.push_back(cell);
    b.blocks[sg_at(block)].level = std::max(b.blocks[sg_at(block)].level, b.level[sg_at(cell)]);
}

std::int32_t new_block(xp_blocks& b) {
    b.blocks.emplace_back();
    return static_cast<std::int32_t>(b.blocks.size() - 1);
}

// Registers of banks start blocks, which then take up the cells before them.
void grow_blocks(xp_blocks& b, const std::vector<std::int32_t>& order, std::size_t most) {
    std::vector<bool> is_at_port(b.plan.nets.size());
    for (const xp_sheet_port& port : b.plan.ports) is_at_port[sg_at(port.net)] = true;
    for (auto cell = order.rbegin(); cell != order.rend(); ++cell) {
        if (b.block_of[sg_at(*cell)] >= 0) continue;
        std::int32_t block = only_reader(b, *cell, is_at_port);
        if (block < 0 || b.blocks[sg_at(block)].cells.size() >= most) block = new_block(b);
        put_into(b, *cell, block);
    }
}

// How many cells stand before each register alone.
std::vector<std::size_t> cone_sizes(xp_blocks& b, const std::vector<std::int32_t>& order,
                                    const std::vector<bank>& banks, std::size_t most) {
    std::vector<std::size_t> sizes(b.plan.cells.size());
    for (const bank& registers : banks)
        for (const std::int32_t cell : registers) put_into(b, cell, new_block(b));
    grow_blocks(b, order, most);
    for (const bank& registers : banks)
        for (const std::int32_t cell : registers)
            sizes[sg_at(cell)] = b.blocks[sg_at(b.block_of[sg_at(cell)])].cells.size();
    b.blocks.clear();
    b.block_of.assign(b.plan.cells.size(), -1);
    return sizes;
}

// A bank in parts of about the same size, each with the cells before it on one page.
void start_bank(xp_blocks& b, const bank& registers, const std::vector<std::size_t>& sizes,
                std::size_t most) {
    std::size_t total = 0;
    for (const std::int32_t cell : registers) total += sizes[sg_at(cell)];
    const std::size_t parts = (total + most - 1) / most, aim = (total + parts - 1) / parts;
    std::size_t filled = SIZE_MAX;
    for (const std::int32_t cell : registers) {
        if (filled == SIZE_MAX || filled + sizes[sg_at(cell)] / 2 > aim) {
            new_block(b);
            filled = 0;
        }
        filled += sizes[sg_at(cell)];
        put_into(b, cell, static_cast<std::int32_t>(b.blocks.size() - 1));
    }
}

// ---- columns

bool are_neighbours(const xp_blocks& b, std::int32_t cell, std::int32_t other) {
    const std::uint32_t bit = b.plan.cells[sg_at(cell)].vector_bit,
                        other_bit = b.plan.cells[sg_at(other)].vector_bit;
    return bit + 1 == other_bit || other_bit + 1 == bit;
}

// Whether most registers get their data from their neighbour in the bank: a chain, which is drawn as one.
bool is_chain(const xp_blocks& b, const bank& registers) {
    std::size_t links = 0;
    const std::int32_t vector = b.plan.cells[sg_at(registers[0])].vector;
    if (vector < 0) return true;
    for (const std::int32_t cell : registers) {
        std::vector<std::int32_t> sources, open{cell};
        for (std::size_t i = 0; i < open.size() && i < 8; ++i)
            xp_for_inputs(b.plan.cells[sg_at(open[i])], [&](std::int32_t net) {
                for (const std::int32_t driver : b.drivers[sg_at(net)]) {
                    const bool is_inside = b.plan.cells[sg_at(driver)].vector == vector;
                    if (is_inside && driver != cell) sources.push_back(driver);
                    if (!starts_anew(b, driver) && b.readers[sg_at(net)].size() == 1) open.push_back(driver);
                }
            });
        links += sources.size() == 1 && are_neighbours(b, cell, sources[0]) ? 1 : 0;
    }
    return links * 4 >= registers.size() * 3;
}

// Registers of a bank that are on one page stand in columns.
void number_columns(xp_blocks& b, const std::vector<bank>& banks) {
    std::int32_t column = 0;
    for (const bank& registers : banks) {
        if (is_chain(b, registers)) continue;
        std::size_t in_column = 0;
        std::int32_t block = -1;
        for (const std::int32_t cell : registers) {
            if (b.block_of[sg_at(cell)] != block || in_column == column_most) {
                ++column;
                in_column = 0;
                block = b.block_of[sg_at(cell)];
            }
            ++in_column;
            b.plan.cells[sg_at(cell)].column = column;
        }
    }
}

bool is_feeder(const xp_blocks& b, const xp_block& block) {
    if (block.cells.size() != 1 || starts_anew(b, block.cells[0])) return false;
    const xp_sheet_cell& cell = b.plan.cells[sg_at(block.cells[0])];
    return cell.nets.size() == 2 && !xp_is_joint(cell) &&
           std::any_of(cell.nets.begin(), cell.nets.end(),
                       [&](std::int32_t net) { return net >= 0 && !b.readers[sg_at(net)].empty(); });
}

}  // namespace

void xp_make_blocks(xp_blocks& b, std::size_t most) {
    find_ends(b);
    const std::vector<std::int32_t> order = find_levels(b);
    b.block_of.assign(b.plan.cells.size(), -1);
    std::vector<bank> banks = vector_banks(b), chains = chain_banks(b);
    banks.insert(banks.end(), chains.begin(), chains.end());
    const std::vector<std::size_t> sizes = cone_sizes(b, order, banks, most);
    for (const bank& registers : banks) start_bank(b, registers, sizes, most);
    grow_blocks(b, order, most);
    number_columns(b, banks);
    for (xp_block& block : b.blocks) block.is_feeder = is_feeder(b, block);
}
