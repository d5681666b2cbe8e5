// The pages of a module: blocks, gathered by the nets that they share.
#include <algorithm>
#include <numeric>

#include "expand/sheet_blocks.h"

#include "sheets/place_of.h"

namespace {

constexpr std::size_t wide_net = 16;         // nets with more pins say nothing about nearness
constexpr std::int32_t levels_of_page = 10;  // logic levels that a page goes over, about

// What a page has in common with nets and blocks; an entry counts for the page that it names.
struct mark {
    std::int32_t page = -1, count = 0;
};

// The number of marks before this one.
std::int32_t put_mark(mark& m, std::int32_t page) {
    if (m.page != page) m = {page, 0};
    return m.count++;
}

struct sharing {
    xp_sheet_plan& plan;
    xp_blocks b;
    std::vector<std::vector<std::int32_t>> blocks_at;  // by net
    std::vector<mark> net_marks, block_marks;
};

void find_blocks_at_nets(sharing& s) {
    s.blocks_at.resize(s.plan.nets.size());
    for (std::size_t net = 0; net < s.blocks_at.size(); ++net) {
        if (s.b.drivers[net].size() + s.b.readers[net].size() > wide_net) continue;
        std::vector<std::int32_t>& blocks = s.blocks_at[net];
        for (const auto* cells : {&s.b.drivers[net], &s.b.readers[net]})
            for (const std::int32_t cell : *cells) blocks.push_back(s.b.block_of[sg_at(cell)]);
        std::sort(blocks.begin(), blocks.end());
        blocks.erase(std::unique(blocks.begin(), blocks.end()), blocks.end());
    }
}

struct page {
    std::int32_t number = -1;
    std::int32_t lowest = 0;
    std::size_t cells = 0;
    std::vector<std::int32_t> neighbours;  // blocks that share nets
};

void meet_neighbours(sharing& s, page& p, const xp_sheet_cell& cell) {
    for (const std::int32_t net : cell.nets) {
        if (net < 0 || put_mark(s.net_marks[sg_at(net)], p.number) > 0) continue;
        for (const std::int32_t other : s.blocks_at[sg_at(net)])
            if (s.b.blocks[sg_at(other)].page < 0 && put_mark(s.block_marks[sg_at(other)], p.number) == 0)
                p.neighbours.push_back(other);
    }
}

// With the inverters and buffers before it, which are nowhere else yet.
void take_block(sharing& s, page& p, std::int32_t index) {
    xp_block& taken = s.b.blocks[sg_at(index)];
    taken.page = p.number;
    p.cells += taken.cells.size();
    for (const std::int32_t cell : taken.cells) {
        s.plan.page_cells[sg_at(p.number)].push_back(cell);
        meet_neighbours(s, p, s.plan.cells[sg_at(cell)]);
        xp_for_inputs(s.plan.cells[sg_at(cell)], [&](std::int32_t net) {
            for (const std::int32_t driver : s.b.drivers[sg_at(net)]) {
                const std::int32_t feeder = s.b.block_of[sg_at(driver)];
                if (s.b.blocks[sg_at(feeder)].is_feeder && s.b.blocks[sg_at(feeder)].page < 0 &&
                    p.cells < xp_page_most)
                    take_block(s, p, feeder);
            }
        });
    }
}

// The block that shares most with the page for its size and does not lie too deep; -1 for none.
std::int32_t best_neighbour(const sharing& s, page& p, std::size_t most) {
    std::erase_if(p.neighbours, [&](std::int32_t index) { return s.b.blocks[sg_at(index)].page >= 0; });
    std::int32_t best = -1;
    double best_score = 0;
    for (const std::int32_t index : p.neighbours) {
        const xp_block& block = s.b.blocks[sg_at(index)];
        if (p.cells + block.cells.size() > most || block.level > p.lowest + levels_of_page) continue;
        const double score =
            s.block_marks[sg_at(index)].count / (1.0 + static_cast<double>(block.cells.size())) -
            0.01 * block.level;
        if (best >= 0 && score <= best_score) continue;
        best = index;
        best_score = score;
    }
    return best;
}

void start_page(sharing& s, page& p, std::int32_t lowest) {
    p = {p.number + 1, lowest, 0, {}};
    s.plan.page_cells.emplace_back();
}

// What feeds others comes last: by then it stands with them, unless its page had no room.
std::vector<std::int32_t> seeds_of(const xp_blocks& b) {
    std::vector<std::int32_t> seeds(b.blocks.size());
    std::iota(seeds.begin(), seeds.end(), 0);
    const auto key = [&](std::int32_t index) {
        return std::pair(b.blocks[sg_at(index)].is_feeder, b.blocks[sg_at(index)].level);
    };
    std::stable_sort(seeds.begin(), seeds.end(),
                     [&](std::int32_t x, std::int32_t y) { return key(x) < key(y); });
    return seeds;
}

void fill_pages(sharing& s, std::size_t aim) {
    page p{-1, 0, aim, {}};
    for (const std::int32_t next : seeds_of(s.b)) {
        const xp_block& seed = s.b.blocks[sg_at(next)];
        while (p.number >= 0 && p.cells < aim && seed.page < 0) {
            const std::int32_t near = best_neighbour(s, p, xp_page_most);
            if (near < 0) break;
            take_block(s, p, near);
        }
        if (seed.page >= 0) continue;
        const bool has_room = p.cells < aim - aim / 4 && p.cells + seed.cells.size() <= xp_page_most;
        if (!has_room) start_page(s, p, seed.level);
        take_block(s, p, next);
    }
}

void fill_one_page(sharing& s) {
    page p;
    start_page(s, p, 0);
    for (const std::int32_t next : seeds_of(s.b))
        if (s.b.blocks[sg_at(next)].page < 0) take_block(s, p, next);
}

// ---- what stands on the pages

void reach(xp_sheet_plan& plan, std::int32_t index, std::int32_t page) {
    xp_sheet_net& net = plan.nets[sg_at(index)];
    if (net.last_page == page) return;
    if (net.first_page < 0) net.first_page = page;
    net.last_page = page;
    plan.page_nets[sg_at(page)].push_back(index);
}

void add_page(std::vector<std::int32_t>& pages, std::int32_t page) {
    if (pages.empty() || pages.back() != page) pages.push_back(page);
}

void list_cell(xp_sheet_plan& plan, const xp_sheet_cell& cell, std::int32_t page) {
    for (std::size_t pin = 0; pin < cell.nets.size(); ++pin) {
        if (cell.nets[pin] < 0) continue;
        reach(plan, cell.nets[pin], page);
        xp_sheet_net& net = plan.nets[sg_at(cell.nets[pin])];
        add_page(cell.kind.pins[pin].is_right ? net.driven_pages : net.read_pages, page);
    }
}

void list_port(xp_sheet_plan& plan, std::int32_t port) {
    const xp_sheet_port& p = plan.ports[sg_at(port)];
    xp_sheet_net& net = plan.nets[sg_at(p.net)];
    plan.ports_at[sg_at(p.net)].push_back(port);
    if (net.first_page < 0) reach(plan, p.net, 0);
    if (p.direction != xp_direction::output && net.driven_pages.empty()) net.driven_pages = {net.first_page};
    if (p.direction != xp_direction::input && net.read_pages.empty()) net.read_pages = {net.first_page};
}

void list_nets(xp_sheet_plan& plan) {
    plan.page_nets.resize(plan.page_cells.size());
    for (std::int32_t page = 0; page < plan.page_count(); ++page)
        for (const std::int32_t cell : plan.page_cells[sg_at(page)])
            list_cell(plan, plan.cells[sg_at(cell)], page);
    plan.ports_at.resize(plan.nets.size());
    for (std::size_t port = 0; port < plan.ports.size(); ++port)
        list_port(plan, static_cast<std::int32_t>(port));
    for (std::vector<std::int32_t>& nets : plan.page_nets) std::sort(nets.begin(), nets.end());
}

}  // namespace

void xp_share_pages(xp_sheet_plan& plan) {
    const std::size_t cells = plan.cells.size(), pages = (cells + xp_page_cells - 1) / xp_page_cells;
    const std::size_t aim = cells <= xp_page_most ? xp_page_most : (cells + pages - 1) / pages;
    sharing s{plan, {plan, {}, {}, {}, {}, {}}, {}, std::vector<mark>(plan.nets.size()), {}};
    xp_make_blocks(s.b, aim);
    s.block_marks.resize(s.b.blocks.size());
    find_blocks_at_nets(s);
    if (cells <= xp_page_most)
        fill_one_page(s);
    else
        fill_pages(s, aim);
    list_nets(plan);
}

void xp_number_nets(xp_sheet_plan& plan, std::int32_t first_number) {
    for (const std::vector<std::int32_t>& nets : plan.page_nets)
        for (const std::int32_t net : nets)
            if (plan.nets[sg_at(net)].number == 0) plan.nets[sg_at(net)].number = first_number++;
}
