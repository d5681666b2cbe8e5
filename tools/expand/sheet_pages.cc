// The pages of a module: cones of logic, gathered by the nets that they share.
#include <algorithm>
#include <numeric>

#include "expand/sheet_plan.h"

namespace {

constexpr std::size_t wide_net = 16;         // nets with more pins say nothing about nearness
constexpr std::int32_t levels_of_page = 10;  // logic levels that a page goes over, about

std::size_t at(std::int32_t index) { return static_cast<std::size_t>(index); }

// A cell with the cells that only it reads, and those that only they read: a fan-in cone.
struct cone {
    std::vector<std::int32_t> cells;
    std::int32_t level = 0;  // of its deepest cell
    std::int32_t page = -1;
};

struct sharing {
    xp_sheet_plan& plan;
    std::vector<std::vector<std::int32_t>> drivers, readers;  // cells by net
    std::vector<std::int32_t> level;                          // by cell
    std::vector<std::int32_t> cone_of;                        // by cell
    std::vector<cone> cones;
    std::vector<std::vector<std::int32_t>> cones_at;  // by net
};

void find_ends(sharing& s) {
    s.drivers.resize(s.plan.nets.size());
    s.readers.resize(s.plan.nets.size());
    for (std::size_t cell = 0; cell < s.plan.cells.size(); ++cell)
        for (std::size_t pin = 0; pin < s.plan.cells[cell].nets.size(); ++pin)
            if (const std::int32_t net = s.plan.cells[cell].nets[pin]; net >= 0)
                (s.plan.cells[cell].kind.pins[pin].is_right ? s.drivers : s.readers)[at(net)].push_back(
                    static_cast<std::int32_t>(cell));
}

template <typename Visit>
void for_inputs(const sharing& s, std::int32_t cell, Visit visit) {
    const xp_sheet_cell& c = s.plan.cells[at(cell)];
    for (std::size_t pin = 0; pin < c.nets.size(); ++pin)
        if (c.nets[pin] >= 0 && !c.kind.pins[pin].is_right) visit(c.nets[pin]);
}

bool starts_anew(const sharing& s, std::int32_t cell) {
    return s.plan.cells[at(cell)].is_register || s.plan.cells[at(cell)].module >= 0;
}

// Logic levels from inputs and registers, in an order in which a cell stands behind its drivers.
std::vector<std::int32_t> find_levels(sharing& s) {
    const auto count = static_cast<std::int32_t>(s.plan.cells.size());
    std::vector<std::int32_t> order, waiting(at(count));
    s.level.assign(at(count), 0);
    const auto drivers_of = [&](std::int32_t cell, auto visit) {
        for_inputs(s, cell, [&](std::int32_t net) {
            for (const std::int32_t driver : s.drivers[at(net)])
                if (!starts_anew(s, driver)) visit(driver);
        });
    };
    for (std::int32_t cell = 0; cell < count; ++cell) {
        drivers_of(cell, [&](std::int32_t) { ++waiting[at(cell)]; });
        if (waiting[at(cell)] == 0) order.push_back(cell);
    }
    for (std::size_t i = 0; i < order.size(); ++i) {
        const xp_sheet_cell& c = s.plan.cells[at(order[i])];
        for (std::size_t pin = 0; pin < c.nets.size(); ++pin) {
            if (c.nets[pin] < 0 || !c.kind.pins[pin].is_right || starts_anew(s, order[i])) continue;
            for (const std::int32_t reader : s.readers[at(c.nets[pin])]) {
                s.level[at(reader)] = std::max(s.level[at(reader)], s.level[at(order[i])] + 1);
                if (--waiting[at(reader)] == 0) order.push_back(reader);
            }
        }
    }
    for (std::int32_t cell = 0; cell < count; ++cell)
        if (waiting[at(cell)] > 0) order.push_back(cell);  // in a loop of gates
    return order;
}

// The only reader of all that a cell drives, -1 when there is none or a port reads it.
std::int32_t only_reader(const sharing& s, std::int32_t cell, const std::vector<bool>& is_at_port) {
    std::int32_t reader = -1;
    const xp_sheet_cell& c = s.plan.cells[at(cell)];
    for (std::size_t pin = 0; pin < c.nets.size(); ++pin) {
        if (c.nets[pin] < 0 || !c.kind.pins[pin].is_right) continue;
        if (is_at_port[at(c.nets[pin])]) return -1;
        for (const std::int32_t other : s.readers[at(c.nets[pin])]) {
            if (reader >= 0 && reader != other) return -1;
            reader = other;
        }
    }
    return reader == cell ? -1 : reader;
}

void make_cones(sharing& s, std::size_t most) {
    const std::vector<std::int32_t> order = find_levels(s);
    std::vector<bool> is_at_port(s.plan.nets.size());
    for (const xp_sheet_port& port : s.plan.ports) is_at_port[at(port.net)] = true;
    s.cone_of.assign(s.plan.cells.size(), -1);
    for (auto cell = order.rbegin(); cell != order.rend(); ++cell) {
        const std::int32_t reader = only_reader(s, *cell, is_at_port);
        std::int32_t mine = reader < 0 ? -1 : s.cone_of[at(reader)];
        if (mine < 0 || s.cones[at(mine)].cells.size() >= most) {
            mine = static_cast<std::int32_t>(s.cones.size());
            s.cones.emplace_back();
        }
        s.cone_of[at(*cell)] = mine;
        s.cones[at(mine)].cells.push_back(*cell);
        s.cones[at(mine)].level = std::max(s.cones[at(mine)].level, s.level[at(*cell)]);
    }
}

void find_cones_at_nets(sharing& s) {
    s.cones_at.resize(s.plan.nets.size());
    for (std::size_t net = 0; net < s.cones_at.size(); ++net) {
        if (s.drivers[net].size() + s.readers[net].size() > wide_net) continue;
        for (const auto* cells : {&s.drivers[net], &s.readers[net]})
            for (const std::int32_t cell : *cells) s.cones_at[net].push_back(s.cone_of[at(cell)]);
        std::sort(s.cones_at[net].begin(), s.cones_at[net].end());
        s.cones_at[net].erase(std::unique(s.cones_at[net].begin(), s.cones_at[net].end()),
                              s.cones_at[net].end());
    }
}

// ---- filling a page

struct page {
    std::int32_t number = -1;
    std::int32_t lowest = 0;
    std::size_t cells = 0;
    std::vector<std::int32_t> neighbours;  // cones that share nets
};

// What a page has in common with nets and cones; an entry counts for the page that it names.
struct mark {
    std::int32_t page = -1, count = 0;
};
struct marks {
    std::vector<mark> nets, cones;
};

// The number of marks before this one.
std::int32_t put_mark(mark& m, std::int32_t page) {
    if (m.page != page) m = {page, 0};
    return m.count++;
}

void take_cone(sharing& s, page& p, marks& m, std::int32_t index) {
    cone& taken = s.cones[at(index)];
    taken.page = p.number;
    p.cells += taken.cells.size();
    for (const std::int32_t cell : taken.cells) {
        s.plan.cells[at(cell)].page = p.number;
        for (const std::int32_t net : s.plan.cells[at(cell)].nets) {
            if (net < 0 || put_mark(m.nets[at(net)], p.number) > 0) continue;
            for (const std::int32_t other : s.cones_at[at(net)])
                if (s.cones[at(other)].page < 0 && put_mark(m.cones[at(other)], p.number) == 0)
                    p.neighbours.push_back(other);
        }
    }
}

// The cone that shares most with the page for its size and does not lie too deep; -1 for none.
std::int32_t best_neighbour(const sharing& s, page& p, const marks& m, std::size_t most) {
    std::erase_if(p.neighbours, [&](std::int32_t index) { return s.cones[at(index)].page >= 0; });
    std::int32_t best = -1;
    double best_score = 0;
    for (const std::int32_t index : p.neighbours) {
        const cone& c = s.cones[at(index)];
        if (p.cells + c.cells.size() > most || c.level > p.lowest + levels_of_page) continue;
        const double score =
            m.cones[at(index)].count / (1.0 + static_cast<double>(c.cells.size())) - 0.01 * c.level;
        if (best >= 0 && score <= best_score) continue;
        best = index;
        best_score = score;
    }
    return best;
}

// The number of pages.
std::int32_t fill_pages(sharing& s, std::size_t aim) {
    std::vector<std::int32_t> seeds(s.cones.size());
    std::iota(seeds.begin(), seeds.end(), 0);
    std::stable_sort(seeds.begin(), seeds.end(), [&](std::int32_t a, std::int32_t b) {
        return s.cones[at(a)].level < s.cones[at(b)].level;
    });
    page p{-1, 0, aim, {}};
    marks m{std::vector<mark>(s.plan.nets.size()), std::vector<mark>(s.cones.size())};
    for (const std::int32_t next : seeds) {
        const cone& seed = s.cones[at(next)];
        while (p.number >= 0 && p.cells < aim && seed.page < 0) {
            const std::int32_t near = best_neighbour(s, p, m, xp_page_most);
            if (near < 0) break;
            take_cone(s, p, m, near);
        }
        if (seed.page >= 0) continue;
        const bool has_room = p.cells < aim - aim / 4 && p.cells + seed.cells.size() <= xp_page_most;
        if (!has_room) p = {p.number + 1, seed.level, 0, {}};
        take_cone(s, p, m, next);
    }
    return p.number + 1;
}

// ---- what stands on the pages

void reach(xp_sheet_plan& plan, std::int32_t index, std::int32_t page) {
    xp_sheet_net& net = plan.nets[at(index)];
    if (net.last_page == page) return;
    if (net.first_page < 0) net.first_page = page;
    net.last_page = page;
    plan.page_nets[at(page)].push_back(index);
}

void add_page(std::vector<std::int32_t>& pages, std::int32_t page) {
    if (pages.empty() || pages.back() != page) pages.push_back(page);
}

void list_cell(xp_sheet_plan& plan, const xp_sheet_cell& cell, std::int32_t page) {
    for (std::size_t pin = 0; pin < cell.nets.size(); ++pin) {
        if (cell.nets[pin] < 0) continue;
        reach(plan, cell.nets[pin], page);
        xp_sheet_net& net = plan.nets[at(cell.nets[pin])];
        add_page(cell.kind.pins[pin].is_right ? net.driven_pages : net.read_pages, page);
    }
}

void list_port(xp_sheet_plan& plan, std::int32_t port) {
    const xp_sheet_port& p = plan.ports[at(port)];
    xp_sheet_net& net = plan.nets[at(p.net)];
    plan.ports_at[at(p.net)].push_back(port);
    if (net.first_page < 0) reach(plan, p.net, 0);
    if (p.direction != xp_direction::output && net.driven_pages.empty()) net.driven_pages = {net.first_page};
    if (p.direction != xp_direction::input && net.read_pages.empty()) net.read_pages = {net.first_page};
}

void list_pages(xp_sheet_plan& plan, std::int32_t count) {
    plan.page_cells.resize(at(count));
    plan.page_nets.resize(at(count));
    for (std::size_t cell = 0; cell < plan.cells.size(); ++cell)
        plan.page_cells[at(plan.cells[cell].page)].push_back(static_cast<std::int32_t>(cell));
    for (std::int32_t page = 0; page < count; ++page)
        for (const std::int32_t cell : plan.page_cells[at(page)]) list_cell(plan, plan.cells[at(cell)], page);
    plan.ports_at.resize(plan.nets.size());
    for (std::size_t port = 0; port < plan.ports.size(); ++port)
        list_port(plan, static_cast<std::int32_t>(port));
    for (std::vector<std::int32_t>& nets : plan.page_nets) std::sort(nets.begin(), nets.end());
}

}  // namespace

void xp_share_pages(xp_sheet_plan& plan) {
    std::int32_t count = 1;
    if (plan.cells.size() > xp_page_most) {
        const std::size_t pages = (plan.cells.size() + xp_page_cells - 1) / xp_page_cells;
        const std::size_t aim = (plan.cells.size() + pages - 1) / pages;
        sharing s{plan, {}, {}, {}, {}, {}, {}};
        find_ends(s);
        make_cones(s, aim);
        find_cones_at_nets(s);
        count = fill_pages(s, aim);
    }
    list_pages(plan, count);
}

void xp_number_nets(xp_sheet_plan& plan, std::int32_t first_number) {
    for (const std::vector<std::int32_t>& nets : plan.page_nets)
        for (const std::int32_t net : nets)
            if (plan.nets[at(net)].number == 0) plan.nets[at(net)].number = first_number++;
}
