// xp_blocks: which cells of a module belong together on its sheets.  Owns the blocks that pages are made of:
// the registers of one vector, or of one chain, in order and with the logic before them; else a cell with
// what only it reads, and what only that reads.
#pragma once

#include "expand/sheet_plan.h"

struct xp_block {
    std::vector<std::int32_t> cells;  // registers first, in the order in which they stand
    std::int32_t level = 0;           // of its deepest cell, in gates from inputs and registers
    std::int32_t page = -1;
    bool is_feeder = false;  // one inverter or buffer: stands with what it feeds
};

struct xp_blocks {
    xp_sheet_plan& plan;
    std::vector<std::vector<std::int32_t>> drivers, readers;  // cells by net
    std::vector<std::int32_t> level, block_of;                // by cell
    std::vector<xp_block> blocks;
};

// Blocks of at most that many cells, but for single cells; columns of registers get their numbers.
void xp_make_blocks(xp_blocks& b, std::size_t most);

template <typename Visit>
void xp_for_inputs(const xp_sheet_cell& cell, Visit visit) {
    for (std::size_t pin = 0; pin < cell.nets.size(); ++pin)
        if (cell.nets[pin] >= 0 && !cell.kind.pins[pin].is_right) visit(cell.nets[pin]);
}
