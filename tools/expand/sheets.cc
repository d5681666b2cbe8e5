// Draws the sheets of a design into a folder aside, and puts them into their place.
#include "expand/sheets.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>
#include <set>

#include "expand/sheet_page.h"
#include "expand/sheet_planner.h"
#include "schematic/object_records.h"
#include "schematic/whole_file.h"
#include "sheets/place_of.h"
#include "sheets/write.h"

namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t levels_most = 28;  // of sheets that can be entered
constexpr std::string_view constant_texts[xp_constants] = {"logic0", "logic1", "logicx", "logicz"};
constexpr std::string_view symbol_folder = "symbols", page_folder = "page_";

// Saving a sheet announces it on standard output, which is the expander's; and sheets go to the disk
// together.
class quiet_output {
public:
    quiet_output() : kept_((std::fflush(stdout), dup(STDOUT_FILENO))) {
        tm_flushes_files = false;
        const int nowhere = open("/dev/null", O_WRONLY);
        if (nowhere < 0) return;
        dup2(nowhere, STDOUT_FILENO);
        close(nowhere);
    }
    quiet_output(const quiet_output&) = delete;
    quiet_output& operator=(const quiet_output&) = delete;
    ~quiet_output() {
        tm_flushes_files = true;
        std::fflush(stdout);
        if (kept_ >= 0) dup2(kept_, STDOUT_FILENO);
        if (kept_ >= 0) close(kept_);
    }

private:
    int kept_;
};

struct module_sheets {
    bool is_reached = false, is_drawn = false, has_symbol = false;
    std::uint32_t depth = UINT32_MAX;  // of its highest instance
    std::string folder;                // below the design's, empty for the top
    xp_sheet_plan plan;
};

struct draughtsman {
    xp_netlist& netlist;
    xp_flat& flat;
    xp_hierarchy& hierarchy;
    xp_status& status;
    const std::string& aside;
    std::vector<module_sheets> modules;
    std::map<std::string, std::string> primitives;  // path by key
    std::set<std::string> folders;                  // in small letters
    std::size_t pages = 0;
};

// ---- folders

std::string small_letters(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return text;
}

// Letters, digits, "_" and "-" of the name, with a number where another folder has it.
std::string free_folder(draughtsman& d, std::string_view name, const std::string& above) {
    constexpr std::size_t longest = 60;
    std::string base;
    for (const char c : name.substr(0, longest))
        base += std::isalnum(static_cast<unsigned char>(c)) || c == '-' ? c : '_';
    std::string folder = base;
    for (int number = 2;
         folder.starts_with(page_folder) || !d.folders.insert(small_letters(above + folder)).second; ++number)
        folder = (base.starts_with(page_folder) ? "x" + base : base) + "_" + std::to_string(number);
    return above + folder;
}

bool make_folder(draughtsman& d, const std::string& path) {
    std::error_code error;
    fs::create_directories(path, error);
    if (error) xp_fail(d.status, xp_fault::cannot_write, path, error.message());
    return !error;
}

// ---- plans

void find_modules(draughtsman& d) {
    d.modules.resize(d.hierarchy.bodies.size());
    d.folders.insert(std::string(symbol_folder));
    for (const xp_scope& scope : d.flat.scopes) {
        module_sheets& m = d.modules[scope.module];
        if (!m.is_reached && scope.parent >= 0)
            m.folder = free_folder(d, xp_clean_name(xp_readable_name(xp_module_of(d.flat, scope).name)), "");
        m.is_reached = true;
        m.depth = std::min(m.depth, scope.depth);
    }
}

void name_constants(draughtsman& d, std::uint32_t module, std::string (&names)[xp_constants]) {
    for (std::size_t i = 0; i < xp_constants; ++i) {
        const std::int32_t net = d.flat.constant_net[i];
        names[i] = module == d.hierarchy.top && net >= 0
                       ? std::string(xp_name_of(d.flat, d.flat.nets[sg_at(net)].name).name)
                       : xp_take_name(d.hierarchy.bodies[module].taken, constant_texts[i]);
    }
}

void refuse(draughtsman& d, module_sheets& m, const std::string& why) {
    m.is_drawn = false;
    xp_warn(d.status, "module " + xp_quoted(m.plan.title), "no sheet: " + why);
}

void plan_modules(draughtsman& d) {
    for (std::uint32_t module = 0; module < d.modules.size(); ++module) {
        module_sheets& m = d.modules[module];
        if (!m.is_reached) continue;
        std::string names[xp_constants];
        name_constants(d, module, names);
        xp_plan_sheet(d.flat, module, names, m.plan);
        xp_share_pages(m.plan);
        m.is_drawn = true;
        if (m.depth >= levels_most) refuse(d, m, "more than " + std::to_string(levels_most) + " levels");
        xp_number_nets(m.plan, sg_first_net_id);
    }
}

// ---- symbols

bool write_symbol(draughtsman& d, const sg_symbol_kind& kind, const std::string& folder) {
    sg_drawn_symbol symbol{kind, {}, folder + "/symbol.tm_1"};
    sg_draw_symbol(kind, symbol.shape);
    if (sg_count_objects(symbol) > static_cast<std::size_t>(tm_max_objects)) return false;  // as its page
    const std::string path = d.aside + "/" + folder;
    std::string why;
    if (!make_folder(d, path)) return false;
    if (!sg_write_symbol(symbol, path, why)) xp_fail(d.status, xp_fault::cannot_write, path, why);
    return xp_ok(d.status);
}

std::string symbol_path(draughtsman& d, const xp_sheet_cell& cell) {
    if (cell.module >= 0) {
        module_sheets& m = d.modules[sg_at(cell.module)];
        if (!m.has_symbol) m.has_symbol = write_symbol(d, cell.kind, m.folder);
        return m.folder + (m.is_drawn ? "/sheet.tm_1" : "/symbol.tm_1");
    }
    const auto [known, is_new] = d.primitives.try_emplace(sg_key(cell.kind));
    if (is_new) {
        known->second = free_folder(d, cell.kind.type.empty() ? cell.kind.model : cell.kind.type,
                                    std::string(symbol_folder) + "/");
        write_symbol(d, cell.kind, known->second);
        known->second += "/symbol.tm_1";
    }
    return known->second;
}

// ---- pages

std::string page_path(const draughtsman& d, const module_sheets& m, std::int32_t page) {
    std::string path = d.aside + (m.folder.empty() ? "" : "/" + m.folder);
    if (page > 0) path += "/" + std::string(page_folder) + std::to_string(page + 1);
    return path;
}

void keep_ids(draughtsman& d, std::uint32_t module, std::int32_t page, const std::vector<std::int16_t>& ids) {
    std::vector<std::int16_t>& of_cells = d.flat.cell_ids[module];
    std::size_t next = 0;
    const xp_sheet_plan& plan = d.modules[module].plan;
    for (const std::int32_t cell : plan.page_cells[sg_at(page)])
        if (!xp_is_joint(plan.cells[sg_at(cell)])) of_cells[plan.cells[sg_at(cell)].cell] = ids[next++];
}

// False: the page does not fit into a file.
bool draw_page(draughtsman& d, std::uint32_t module, std::int32_t page,
               const std::vector<std::string>& paths) {
    module_sheets& m = d.modules[module];
    sg_drawing drawing;
    xp_draw_page(m.plan, page, paths, drawing);
    if (sg_count_objects(drawing) > static_cast<std::size_t>(tm_max_objects)) return false;
    std::string why;
    std::vector<std::int16_t> ids;
    const std::string path = page_path(d, m, page);
    if (!make_folder(d, path)) return true;
    if (sg_write_sheet(drawing, path, ids, why))
        keep_ids(d, module, page, ids);
    else
        xp_fail(d.status, xp_fault::cannot_write, path, why);
    return true;
}

void remove_sheets(draughtsman& d, const module_sheets& m) {
    std::error_code error;
    const fs::path folder = page_path(d, m, 0);
    for (const char* file : {"sheet.tm", "sheet.tm_1"}) fs::remove(folder / file, error);
    for (std::int32_t page = 1; page < m.plan.page_count(); ++page)
        fs::remove_all(page_path(d, m, page), error);
}

void draw_module(draughtsman& d, std::uint32_t module) {
    module_sheets& m = d.modules[module];
    std::vector<std::string> paths;
    for (const xp_sheet_cell& cell : m.plan.cells)
        paths.push_back(xp_is_joint(cell) ? "" : symbol_path(d, cell));
    for (std::int32_t page = 0; page < m.plan.page_count() && xp_ok(d.status); ++page)
        if (!draw_page(d, module, page, paths)) {
            refuse(d, m, "more than " + std::to_string(tm_max_objects) + " objects in a file");
            return remove_sheets(d, m);
        }
    d.pages += sg_at(m.plan.page_count());
}

// ---- numbers

// The bus of the design that has these bits in their order, -1 for none.
std::int32_t bus_with(const xp_flat& flat, const xp_scope& scope, const std::vector<std::int32_t>& bits) {
    const std::int32_t first = xp_net_at(flat, scope, bits[0]);
    if (first < 0 || bits[0] < 0) return -1;
    const std::int32_t bus = flat.nets[sg_at(first)].bus;
    for (std::size_t k = 0; k < bits.size(); ++k) {
        const std::int32_t net = bits[k] < 0 ? -1 : xp_net_at(flat, scope, bits[k]);
        if (net != first + static_cast<std::int32_t>(k) || flat.nets[sg_at(net)].bus != bus) return -1;
    }
    return bus;
}

// The net of the design that a wire is; a thick one is the bus that has its bits, or none.
xp_object_id find_net(const xp_flat& flat, std::uint32_t scope, const xp_sheet_net& net) {
    const xp_scope& s = flat.scopes[scope];
    xp_object_id id{scope, -1, -1, net.number, {}};
    if (net.is_bus) id.bus = bus_with(flat, s, net.bits);
    if (!net.is_bus || id.bus >= 0) id.net = xp_net_at(flat, s, net.bits[0]);
    return id;
}

bool is_part_of_bus(const xp_flat& flat, const xp_sheet_net& net, const xp_object_id& id) {
    if (id.bus < 0) return false;
    const xp_bus& bus = flat.buses[sg_at(id.bus)];
    return xp_name_of(flat, {bus.scope, bus.name, 0}).bits.count != net.bits.size();
}

// Whether the design does not know the net by its name on the sheet yet.
bool wants_name(const xp_flat& flat, const xp_sheet_net& net, const xp_object_id& id) {
    if (!net.is_bus) return net.bits[0] < 0 && id.scope != 0;
    const xp_bus& bus = flat.buses[sg_at(id.bus)];
    return bus.scope != id.scope || static_cast<std::int32_t>(bus.name) != net.vector;
}

// A bus has the number of the whole first, then those of its parts.
void add_numbers_of(draughtsman& d, std::uint32_t scope, const xp_sheet_plan& plan) {
    std::vector<xp_object_id> parts;
    for (const xp_sheet_net& net : plan.nets) {
        xp_object_id id = find_net(d.flat, scope, net);
        if (id.net < 0) continue;
        const bool is_part = is_part_of_bus(d.flat, net, id);
        if (!is_part && wants_name(d.flat, net, id)) id.name = xp_keep_once(d.netlist.texts, net.name);
        (is_part ? parts : d.flat.object_ids).push_back(id);
    }
    d.flat.object_ids.insert(d.flat.object_ids.end(), parts.begin(), parts.end());
}

void add_numbers(draughtsman& d) {
    for (std::uint32_t scope = 0; scope < d.flat.scopes.size(); ++scope) {
        const module_sheets& m = d.modules[d.flat.scopes[scope].module];
        if (m.is_drawn && d.flat.scopes[scope].depth < levels_most) add_numbers_of(d, scope, m.plan);
    }
}

}  // namespace

xp_sheets::xp_sheets(std::string folder)
    : folder_(folder.empty() ? "." : std::move(folder)), aside_(folder_ + "/sheets.new") {}

xp_sheets::~xp_sheets() {
    std::error_code error;
    fs::remove_all(aside_, error);
}

void xp_sheets::draw(xp_netlist& netlist, xp_hierarchy& hierarchy, xp_flat& flat, xp_status& status) {
    if (!xp_ok(status)) return;
    std::error_code error;
    fs::remove_all(aside_, error);
    const quiet_output quiet;
    draughtsman d{netlist, flat, hierarchy, status, aside_, {}, {}, {}, 0};
    flat.cell_ids.resize(hierarchy.bodies.size());
    find_modules(d);
    plan_modules(d);
    for (std::uint32_t module = 0; module < d.modules.size() && xp_ok(status); ++module) {
        if (!d.modules[module].is_drawn) continue;
        flat.cell_ids[module].resize(flat.netlist->modules[module].cells.size());
        draw_module(d, module);
    }
    if (xp_ok(status)) add_numbers(d);
    pages = d.pages;
}

namespace {

// What an earlier run left in a folder that has got new sheets.
void remove_older(const fs::path& folder, const std::set<std::string>& newer, std::error_code& error) {
    std::vector<fs::path> older;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
        const std::string name = entry.path().filename();
        if (!newer.contains(name) &&
            (name.starts_with("sheet.tm") || name.starts_with("symbol.tm") || name.starts_with(page_folder)))
            older.push_back(entry.path());
    }
    for (const fs::path& path : older)
        if (!error) fs::remove_all(path, error);
}

bool flush_disk(const std::string& folder) {
    const int file = open(folder.c_str(), O_RDONLY | O_DIRECTORY);
    const bool ok = file >= 0 && syncfs(file) == 0;
    if (file >= 0) close(file);
    return ok;
}

// A sheet is there at any time: the new files take the places of the old ones, each link behind its file.
void move_folder(const fs::path& from, const fs::path& to, std::error_code& error) {
    fs::create_directories(to, error);
    std::set<std::string> names;
    if (!error)
        for (const fs::directory_entry& entry : fs::directory_iterator(from, error))
            names.insert(entry.path().filename());
    for (auto name = names.rbegin(); name != names.rend() && !error; ++name) {
        if (fs::is_directory(from / *name, error))
            move_folder(from / *name, to / *name, error);
        else if (!error)
            fs::rename(from / *name, to / *name, error);
    }
    if (!error) remove_older(to, names, error);
}

}  // namespace

void xp_sheets::install(xp_status& status) {
    if (!xp_ok(status) || !fs::exists(aside_)) return;
    std::error_code error;
    if (!flush_disk(aside_)) error.assign(errno, std::generic_category());
    if (!error) move_folder(aside_, folder_, error);
    if (error) xp_fail(status, xp_fault::cannot_write, folder_, error.message());
}
