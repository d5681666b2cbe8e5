// From Liberty's groups and attributes to pins, functions and registers.
#include "expand/liberty.h"

#include <algorithm>
#include <functional>

#include "expand/library_planner.h"
#include "expand/programs.h"

namespace {

// What the program leaves out, "-" in front: nothing of it makes a model.
constexpr std::string_view rules =
    "- timing\n- internal_power\n- leakage_power\n- lu_table_template\n- power_lut_template\n- table\n"
    "- test_cell\n- operating_conditions\n- wire_load\n";

// ---- groups

struct attribute {
    std::string name, value;
};

struct group {
    std::string name;
    std::vector<std::string> arguments;
    std::vector<attribute> attributes;
    std::vector<group> groups;
};

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == ';')) text.remove_suffix(1);
    return text;
}

std::vector<std::string> arguments_of(std::string_view text) {
    std::vector<std::string> arguments;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find_first_of(", ", at), text.size());
        if (end > at) arguments.emplace_back(text.substr(at, end - at));
        at = end + 1;
    }
    return arguments;
}

// "name(arguments)" or "name".
group group_of(std::string_view head) {
    const std::size_t open = std::min(head.find('('), head.size());
    const std::size_t close = std::max(std::min(head.rfind(')'), head.size()), open);
    group g;
    g.name = trimmed(head.substr(0, open));
    if (open < close) g.arguments = arguments_of(head.substr(open + 1, close - open - 1));
    return g;
}

struct line_reader {
    std::string_view text;
    std::size_t at = 0;

    // A statement ends with ";", "{" or "}" at the end of a line; texts of several lines become one.
    bool next(std::string& statement) {
        statement.clear();
        while (at < text.size()) {
            const std::size_t end = std::min(text.find('\n', at), text.size());
            statement += text.substr(at, end - at);
            at = end + 1;
            if (statement.ends_with(';') || statement.ends_with('{') || statement.ends_with('}')) return true;
            statement += ' ';
        }
        return false;
    }
};

void read_group(line_reader& lines, group& into) {
    std::string statement;
    while (lines.next(statement)) {
        const std::string_view text = trimmed(statement);
        if (text == "}") return;
        if (text.ends_with('{')) {
            into.groups.push_back(group_of(trimmed(text.substr(0, text.size() - 1))));
            read_group(lines, into.groups.back());
        } else if (const std::size_t colon = text.find(" : "); colon != std::string_view::npos) {
            into.attributes.push_back(
                {std::string(text.substr(0, colon)), std::string(trimmed(text.substr(colon + 3)))});
        }
    }
}

const std::string* value_of(const group& g, std::string_view name) {
    for (const attribute& a : g.attributes)
        if (a.name == name) return &a.value;
    return nullptr;
}

// ---- cells

struct cell_reader {
    const group& source;
    xp_library_cell& cell;
    std::vector<std::pair<std::string_view, const group*>> internal_pins;
    int depth = 0;  // of internal pins that read each other
};

void refuse(cell_reader& r, std::string why) {
    if (r.cell.fault.empty()) r.cell.fault = std::move(why);
}

xp_function function_of(cell_reader& r, std::string_view text, const std::string& place);

bool find_register(cell_reader& r, std::string_view name, xp_function& meaning) {
    std::int32_t number = xp_first_state;
    for (const group& g : r.source.groups) {
        if (g.name != "ff" && g.name != "latch") continue;
        for (std::size_t k = 0; k < g.arguments.size() && k < 2; ++k)
            if (g.arguments[k] == name) {
                meaning = xp_function_of_input(number);
                if (k == 1) meaning = xp_function_not(meaning);
                return true;
            }
        ++number;
    }
    return false;
}

bool find_internal(cell_reader& r, std::string_view name, xp_function& meaning) {
    constexpr int depth_max = 50;
    for (const auto& [pin, g] : r.internal_pins)
        if (const std::string* text = value_of(*g, "function"); pin == name && text != nullptr) {
            if (++r.depth > depth_max) return false;
            meaning = function_of(r, *text, std::string(name));
            --r.depth;
            return true;
        }
    return false;
}

bool find_name(cell_reader& r, std::string_view name, xp_function& meaning) {
    for (std::size_t i = 0; i < r.cell.pins.size(); ++i)
        if (r.cell.pins[i].name == name) {
            meaning = xp_function_of_input(static_cast<std::int32_t>(i));
            return true;
        }
    return find_register(r, name, meaning) || find_internal(r, name, meaning);
}

xp_function function_of(cell_reader& r, std::string_view text, const std::string& place) {
    xp_function function;
    std::string why;
    const auto lookup = [&](std::string_view name, xp_function& meaning) {
        return find_name(r, name, meaning);
    };
    if (!xp_parse_function(text, lookup, function, why))
        refuse(r, "its " + place + " " + xp_quoted(text) + ": " + why);
    return function;
}

// The function of an attribute; false for one that is not there.
bool read_function(cell_reader& r, const group& g, std::string_view name, xp_function& function) {
    const std::string* text = value_of(g, name);
    if (text == nullptr) return false;
    function = function_of(r, *text, std::string(name));
    return true;
}

struct direction_row {
    std::string_view name;
    xp_direction direction;
};
constexpr direction_row directions[] = {{"input", xp_direction::input},
                                        {"output", xp_direction::output},
                                        {"inout", xp_direction::inout},
                                        {"internal", xp_direction::none}};

void add_pin(cell_reader& r, const group& g, const std::string& name) {
    const std::string* direction = value_of(g, "direction");
    const auto row = std::find_if(std::begin(directions), std::end(directions), [&](const direction_row& x) {
        return direction != nullptr && x.name == *direction;
    });
    if (row == std::end(directions)) return refuse(r, "pin " + xp_quoted(name) + " has no direction");
    if (row->direction == xp_direction::none)
        r.internal_pins.emplace_back(name, &g);
    else
        r.cell.pins.push_back({name, row->direction, false, false, {}, {}});
}

void read_output(cell_reader& r, const group& g, xp_library_pin& pin) {
    pin.has_function = read_function(r, g, "function", pin.function);
    if (read_function(r, g, "three_state", pin.enable)) {
        pin.is_tristate = true;
        pin.enable = xp_function_not(pin.enable);
    }
    if (pin.direction == xp_direction::output && !pin.has_function)
        refuse(r, "output " + xp_quoted(pin.name) + " has no function");
}

void read_register(cell_reader& r, const group& g) {
    xp_library_register reg;
    reg.name = g.arguments.empty() ? "state" : g.arguments[0];
    reg.is_latch = g.name == "latch";
    reg.has_clear = read_function(r, g, "clear", reg.clear);
    reg.has_preset = read_function(r, g, "preset", reg.preset);
    const std::string* both = value_of(g, "clear_preset_var1");
    reg.is_set_dominant = both != nullptr && *both == "H";
    reg.has_data = read_function(r, g, reg.is_latch ? "data_in" : "next_state", reg.data);
    const bool has_control = read_function(r, g, reg.is_latch ? "enable" : "clocked_on", reg.control);
    if (reg.has_data != has_control || (!reg.has_data && !(reg.is_latch && reg.has_clear && reg.has_preset)))
        refuse(r, "register " + xp_quoted(reg.name) + " lacks data or a clock");
    r.cell.registers.push_back(std::move(reg));
}

constexpr std::string_view unknown_groups[] = {"statetable", "ff_bank", "latch_bank",
                                               "bus",        "bundle",  "memory"};

void read_cell(const group& source, xp_library_cell& cell) {
    cell_reader r{source, cell, {}};
    std::vector<const group*> groups;  // of the pins, in their order
    for (const group& g : source.groups) {
        if (std::ranges::count(unknown_groups, g.name) > 0) refuse(r, "it has a " + g.name);
        if (g.name != "pin") continue;
        for (const std::string& name : g.arguments) {
            add_pin(r, g, name);
            groups.resize(cell.pins.size(), &g);
        }
    }
    for (std::size_t i = 0; i < cell.pins.size(); ++i)
        if (cell.pins[i].direction != xp_direction::input) read_output(r, *groups[i], cell.pins[i]);
    for (const group& g : source.groups)
        if (g.name == "ff" || g.name == "latch") read_register(r, g);
}

void add_cell(const group& g, xp_library& library) {
    auto cell = std::make_unique<xp_library_cell>();
    cell->name = g.arguments[0];
    read_cell(g, *cell);
    if (cell->fault.empty()) xp_plan_library_cell(*cell);
    const auto [known, is_new] = library.index.try_emplace(cell->name, library.cells.size());
    if (is_new) {
        library.cells.push_back(std::move(cell));
    } else {
        const std::size_t place = known->second;
        library.index.erase(known);
        library.index.emplace(cell->name, place);
        library.cells[place] = std::move(cell);
    }
}

}  // namespace

std::size_t xp_parse_library(std::string_view text, xp_library& library) {
    line_reader lines{text};
    group root;
    read_group(lines, root);
    std::size_t count = 0;
    for (const group& file : root.groups)
        for (const group& g : file.groups)
            if (g.name == "cell" && !g.arguments.empty()) {
                add_cell(g, library);
                ++count;
            }
    return count;
}

void xp_read_library(const std::string& path, xp_library& library, xp_status& status) {
    xp_check_input(path, status);
    if (!xp_ok(status)) return;
    const xp_exchange_folder folder(status);
    if (!xp_ok(status)) return;
    xp_run_program({{"yosys-filterlib", folder.write("rules", rules, status), xp_plain_path(path)},
                    "Liberty is read by",
                    folder.file("library"),
                    folder.file("errors")},
                   status);
    if (status.fault == xp_fault::yosys_failed) {
        status.fault = xp_fault::bad_library;
        status.where = path;
    }
    std::string text;
    xp_read_file(folder.file("library"), text, status);
    if (xp_ok(status) && xp_parse_library(text, library) == 0)
        xp_fail(status, xp_fault::bad_library, path, "it has no cells");
}

const xp_library_cell* xp_find_library_cell(const xp_library* library, std::string_view name) {
    if (library == nullptr) return nullptr;
    const auto found = library->index.find(name);
    return found == library->index.end() ? nullptr : library->cells[found->second].get();
}

std::string xp_library_stubs(const xp_library& library) {
    std::string text;
    for (const auto& cell : library.cells) {
        text += "(* blackbox, keep *) module \\" + cell->name + " (";
        for (const xp_library_pin& pin : cell->pins) {
            const bool is_input = pin.direction == xp_direction::input;
            text += std::string(&pin == cell->pins.data() ? "" : ", ") +
                    (is_input                               ? "input"
                     : pin.direction == xp_direction::inout ? "inout"
                                                            : "output") +
                    " \\" + pin.name + " ";
        }
        text += ");\nendmodule\n";
    }
    return text;
}
