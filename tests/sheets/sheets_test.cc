// The sheets of expanded designs, opened through the database and walked with the commands.
#include <fstream>
#include <functional>
#include <nlohmann/json.hpp>
#include <numeric>

#include "commands/command_session.h"
#include "commands/sheet.h"
#include "drawn_page.h"
#include "expand/expand.h"
#include "kernel/lookup.h"
#include "kernel/network.h"
#include "kernel/say.h"
#include "support/design_build.h"
#include "support/places/places.h"

namespace {

using nlohmann::json;
using groups = std::multiset<std::set<std::string>>;  // pins that are connected, "instance/pin" or "port"

class sheets : public command_session {
protected:
    // Expands a netlist with sheets into the case's folder and loads it.
    void draw(const std::string& netlist) {
        const std::string output = (folder / "design_yx").string();
        const char* arguments[] = {netlist.c_str(), "-o", output.c_str(), "--sheets"};
        xp_options options;
        std::filesystem::create_directories(folder);
        status = {};
        xp_parse_options(arguments, options, status);
        xp_expand(options, summary, status);
        ASSERT_TRUE(xp_ok(status)) << xp_message_text(status);
        load();
    }
    void draw_text(const std::string& text) { draw(file("netlist.json", text)); }
    void load() {
        tst_read(folder);
        tst_set_up();
        kol_ext.dir_path = tm_string(folder.string());
        tm_vext.init_done = true;
        tm_vext.numpage = tm_page::context;
        tm_vext.bitmap_size = {0, 0, 1000, 600};
    }
    static tm_file_index_t sheet() { return static_cast<tm_file_index_t>(tm_vext.file_id_context); }

    xp_status status;
    xp_summary summary;
};

// ---- what the netlist says

std::string bit_name(const std::string& base, std::size_t count, std::size_t k, int offset) {
    return count == 1 ? base : base + "[" + std::to_string(static_cast<int>(k) + offset) + "]";
}

// The port's lowest index where the cell is a module.
int offset_of(const json& design, const std::string& type, const std::string& port) {
    const json& modules = design["modules"];
    return modules.contains(type) ? modules[type]["ports"][port].value("offset", 0) : 0;
}

groups groups_of(const json& design, const json& module) {
    std::map<std::string, std::set<std::string>> by_bit;
    for (const auto& [name, cell] : module["cells"].items())
        for (const auto& [port, bits] : cell["connections"].items())
            for (std::size_t k = 0; k < bits.size(); ++k)
                by_bit[bits[k].dump()].insert(
                    name + "/" + bit_name(port, bits.size(), k, offset_of(design, cell["type"], port)));
    for (const auto& [name, port] : module["ports"].items())
        for (std::size_t k = 0; k < port["bits"].size(); ++k)
            by_bit[port["bits"][k].dump()].insert(
                bit_name(name, port["bits"].size(), k, port.value("offset", 0)));
    groups result;
    for (const auto& [bit, pins] : by_bit) result.insert(pins);
    return result;
}

// ---- what the sheets show

// "x[3:0]" as its bits, from the left; anything else as itself.
std::vector<std::string> bits_of(const std::string& name) {
    int from = 0, to = 0;
    const std::size_t open = name.rfind('[');
    if (open == name.npos || std::sscanf(name.c_str() + open, "[%d:%d]", &from, &to) != 2) return {name};
    std::vector<std::string> bits;
    for (int bit = from;; bit += from > to ? -1 : 1) {
        bits.push_back(name.substr(0, open) + "[" + std::to_string(bit) + "]");
        if (bit == to) return bits;
    }
}

struct by_name {
    std::map<std::string, std::set<std::string>> pins;  // by net or bit
    std::map<std::string, int> pieces, loose;           // of a net or bit, and those without a tag
};

// What is joined at one place of a page.
struct piece {
    std::set<std::int32_t> nets;
    std::vector<placed_text> pins, tags;
};

std::map<sg_point, piece> pieces_of(const drawn_page& page) {
    joined_points joined;
    std::map<sg_point, piece> pieces;
    for (const net_wire& w : page.wires) joined.join(w.wire.from, w.wire.to);
    for (const net_wire& w : page.wires) pieces[joined.root(w.wire.from)].nets.insert(w.net);
    for (const placed_text& pin : page.pins) pieces[joined.root(pin.at)].pins.push_back(pin);
    for (const placed_text& tag : page.tags) pieces[joined.root(tag.at)].tags.push_back(tag);
    return pieces;
}

void add_piece(const drawn_page& page, const piece& p, const std::string& where, by_name& all) {
    ASSERT_LE(p.nets.size(), 1U) << where << "wires of several nets meet";
    if (p.nets.empty() && p.tags.empty()) return;  // a pin by itself
    const std::string name = p.nets.empty() ? p.tags[0].text : page.nets.at(*p.nets.begin()).name;
    const std::vector<std::string> bits = bits_of(name);
    for (const std::string& bit : bits) {
        ++all.pieces[bit];
        all.loose[bit] += p.tags.empty() ? 1 : 0;
    }
    for (const placed_text& tag : p.tags) {
        EXPECT_EQ(tag.text, name) << where;
        if (tag.of.ends_with("PAGE")) continue;
        for (const std::string& bit : bits) all.pins[bit].insert(bit);
    }
    const std::string port = p.nets.empty() ? "" : page.nets.at(*p.nets.begin()).port;
    if (!port.empty()) all.pins[name].insert(port);
    for (const placed_text& pin : p.pins) {
        const std::vector<std::string> pin_bits = bits_of(pin.text);
        ASSERT_EQ(pin_bits.size(), bits.size()) << where << pin.of << "/" << pin.text;
        for (std::size_t k = 0; k < bits.size(); ++k) all.pins[bits[k]].insert(pin.of + "/" + pin_bits[k]);
    }
}

void add_single_pins(const drawn_page& page, groups& found) {
    for (const auto& [at, p] : pieces_of(page))
        if (p.nets.empty() && p.tags.empty()) {
            EXPECT_EQ(p.pins.size(), 1U);
            for (const std::string& bit : bits_of(p.pins[0].text)) found.insert({p.pins[0].of + "/" + bit});
        }
}

groups groups_of(const std::vector<drawn_page>& pages, const std::string& where) {
    by_name all;
    groups found;
    for (const drawn_page& page : pages) {
        for (const auto& [at, p] : pieces_of(page)) add_piece(page, p, where, all);
        add_single_pins(page, found);
    }
    for (const auto& [bit, count] : all.pieces)
        EXPECT_TRUE(count == 1 || all.loose[bit] == 0) << where << bit << " is in pieces that no tag joins";
    for (const auto& [bit, pins] : all.pins) found.insert(pins);
    return found;
}

void expect_texts_apart(const drawn_page& page, const std::string& where) {
    for (std::size_t i = 0; i < page.texts.size(); ++i) {
        const auto& [text, a] = page.texts[i];
        for (std::size_t k = i + 1; k < page.texts.size(); ++k) {
            const auto& [other, b] = page.texts[k];
            EXPECT_FALSE(a.xmin < b.xmax && b.xmin < a.xmax && a.ymin < b.ymax && b.ymin < a.ymax)
                << where << text << " covers " << other;
        }
        for (const net_wire& w : page.wires)
            EXPECT_FALSE(touches(span_of(w.wire), {a.xmin + 1, a.ymin + 1, a.xmax - 1, a.ymax - 1}))
                << where << "a wire at " << text_of(w.wire) << " runs through " << text;
    }
}

// ---- the walk

yx_net_record_t* net_named(const std::string& name) {
    yx_net_record_t* net = nullptr;
    kol_find_net(tm_string(name), net);
    return net;
}

void expect_ids_found(const drawn_page& page, const std::string& path) {
    for (const auto& [id, net] : page.nets) {
        const std::string by_id = "N_" + std::to_string(net.number);
        yx_net_record_t* const found = net_named(by_id);
        ASSERT_NE(found, nullptr) << path << by_id << " " << net.name;
        EXPECT_EQ(found, net_named(net.name)) << path << by_id << " " << net.name;
        EXPECT_EQ(found, net_named(path + by_id)) << path << by_id;
        EXPECT_EQ(found->net_type == YX_TSTD_BUS, net.is_bus) << path << net.name;
        const bool is_own_name = kol_path(found->sim_path) == path + net.name;
        EXPECT_TRUE(!is_own_name || found->object_id == net.number) << path << net.name;
    }
}

class walked_sheets : public sheets {
protected:
    std::string netlist;
    json design;

    void walk(const std::string& name) {
        netlist = name;
        design = json::parse(std::ifstream(name));
        draw(name);
        std::string top;
        for (const auto& [module, text] : design["modules"].items())
            if (text["attributes"].contains("top")) top = module;
        EXPECT_EQ(type("view sheet"), lines{" VIEw SHEet "});
        visit(top, "/");
    }

private:
    std::vector<drawn_page> pages_here(const std::string& path) {
        std::vector<drawn_page> pages;
        for (;;) {
            EXPECT_EQ(type("check sheet").back(), "# CHECK SHEET : 0 errors, 0 warnings ")
                << path << pages.size() + 1;
            pages.push_back(read_page(sheet()));
            expect_ids_found(pages.back(), path);
            if (type("view sheet page next").size() > 1) break;
        }
        if (pages.size() > 1) type("view sheet page 1");
        return pages;
    }

    void visit(const std::string& module, const std::string& path) {
        EXPECT_EQ(tm_view(kol_ext.cur_sim_path), path);
        const std::vector<drawn_page> pages = pages_here(path);
        const json& text = design["modules"][module];
        std::map<std::string, std::string> cells;
        for (const drawn_page& page : pages) {
            const std::string where = netlist + " " + path + ": ";
            expect_only_crossings(page.wires, where);
            expect_clear(page.wires, page.bodies, where);
            expect_texts_apart(page, where);
            for (const auto& cell : page.cells)
                EXPECT_TRUE(cells.insert(cell).second) << cell.first << " twice";
        }
        EXPECT_EQ(cells.size(), text["cells"].size()) << module;
        EXPECT_EQ(groups_of(pages, path), groups_of(design, text)) << netlist << " " << path;
        for (const auto& [name, symbol] : cells) {
            ASSERT_TRUE(text["cells"].contains(name)) << name;
            if (!symbol.ends_with("sheet.tm_1")) continue;
            EXPECT_EQ(type("view down " + name), lines{" VIEw DOWn  " + name + " "});
            visit(text["cells"][name]["type"], path + name + "/");
            EXPECT_EQ(type("view up"), lines{" VIEw UP   "});
            EXPECT_EQ(tm_view(kol_ext.cur_sim_path), path);
        }
    }
};

TEST_F(walked_sheets, show_what_the_netlist_says) {
    for (const char* name :
         {"designs/iscas85/c17", "designs/iscas85/c432", "designs/iscas89/s27", "designs/iscas89/s298",
          "examples/uart/uart", "examples/counter/counter", "examples/arbiter/arbiter"}) {
        SCOPED_TRACE(name);
        SetUp();
        std::filesystem::remove_all(folder);
        walk(tst_source_dir() + "/" + name + ".json");
    }
}

// ---- words, names, limits

json port(const char* direction, std::vector<int> bits) { return {{"direction", direction}, {"bits", bits}}; }

json word_cell(const std::string& kind, int width, json connections) {
    json cell = {{"type", kind}, {"connections", std::move(connections)}, {"parameters", json::object()}};
    if (width == 0) return cell;
    for (const char* name : {"WIDTH", "A_WIDTH", "Y_WIDTH"}) cell["parameters"][name] = width;
    return cell;
}

// Words over the nets 10..17 (d), 20..27 (q), 30..37 (no name), 40..43 (low) and 50, 51 (e), clk 2, sel 3.
json words() {
    const std::vector<int> d = {10, 11, 12, 13, 14, 15, 16, 17}, q = {20, 21, 22, 23, 24, 25, 26, 27},
                           n = {30, 31, 32, 33, 34, 35, 36, 37}, low = {40, 41, 42, 43};
    json cells;
    cells["r"] = word_cell("$dff", 8, {{"CLK", {2}}, {"D", n}, {"Q", q}});
    cells["r"]["parameters"]["CLK_POLARITY"] = 0;
    cells["m"] = word_cell("$mux", 8, {{"A", d}, {"B", q}, {"S", {3}}, {"Y", n}});
    cells["inv"] = word_cell("$not", 4, {{"A", {20, 21, 22, 23}}, {"Y", low}});
    cells["page_2"] = word_cell("$_AND_", 0, {{"A", {20}}, {"B", {"1"}}, {"Y", {50}}});
    cells["u1"] = word_cell("$paramod\\page 2", 0, {{"x", {24, 25, 26, "0"}}, {"w", q}, {"y", {51}}});
    cells["u2"] = word_cell("$paramod\\page 2", 0, {{"x", low}, {"w", d}, {"y", {52}}});
    cells["or"] = word_cell("$reduce_or", 2, {{"A", {50, 51}}, {"Y", {53}}});
    cells["or"]["parameters"]["Y_WIDTH"] = 1;
    json inner = {{"g", word_cell("$_NAND_", 0, {{"A", {2}}, {"B", {9}}, {"Y", {20}}})},
                  {"v", word_cell("$reduce_or", 8, {{"A", {10, 11, 12, 13, 14, 15, 16, 17}}, {"Y", {21}}})}};
    inner["v"]["parameters"]["Y_WIDTH"] = 1;
    return {{"modules",
             {{"words",
               {{"attributes", {{"top", "1"}}},
                {"ports",
                 {{"clk", port("input", {2})},
                  {"sel", port("input", {3})},
                  {"d", port("input", d)},
                  {"q", port("output", q)},
                  {"low", port("output", low)},
                  {"twice", port("output", {3})}}},
                {"cells", cells},
                {"netnames", {{"$hidden", {{"hide_name", 1}, {"bits", n}}}, {"e", {{"bits", {50, 51}}}}}}}},
              {"$paramod\\page 2",
               {{"ports",
                 {{"x", port("input", {2, 3, 4, 9})},
                  {"w", port("input", {10, 11, 12, 13, 14, 15, 16, 17})},
                  {"y", port("output", {20})}}},
                {"cells", inner},
                {"netnames", json::object()}}}}}};
}

TEST_F(walked_sheets, draw_whole_vectors_as_buses_and_parts_of_them_as_bits) {
    walk(file("words.json", words().dump()));
    type("view sheet");
    const drawn_page page = read_page(sheet());
    std::set<std::string> pins, buses;
    for (const placed_text& pin : page.pins) pins.insert(pin.of + "/" + pin.text);
    for (const auto& [id, net] : page.nets)
        if (net.is_bus) buses.insert(net.name);
    for (const char* pin : {"r/D[7:0]", "r/Q[7:0]", "r/CLK", "m/A[7:0]", "inv/A[3]", "u1/w[7:0]", "u1/x[0]"})
        EXPECT_TRUE(pins.contains(pin)) << pin;
    EXPECT_EQ(buses, (std::set<std::string>{"d[7:0]", "e[1:0]", "low[3:0]", "n1[7:0]", "q[7:0]"}));
    EXPECT_EQ(page.cells.at("u1"), "x_paramod_page_2/sheet.tm_1");
    EXPECT_TRUE(std::filesystem::exists(folder / "x_paramod_page_2/symbol.tm"));
    type("view down u2");
    EXPECT_NE(net_named("N_5"), net_named("/N_5")) << "the number is that of the sheet in the window";
}

std::string inverters(const std::string& name, int count, const std::string& below) {
    json cells = json::object(), module;
    for (int i = 0; i < count; ++i)
        cells["i" + std::to_string(i)] = word_cell("$_NOT_", 0, {{"A", {2}}, {"Y", {i + 3}}});
    if (!below.empty()) cells["u"] = word_cell(below, 0, {{"a", {2}}});
    module = {{"ports", {{"a", port("input", {2})}}}, {"cells", cells}, {"netnames", json::object()}};
    return "\"" + name + "\":" + module.dump();
}

TEST_F(sheets, of_what_is_too_large_are_refused_and_the_design_is_written) {
    std::string deep = inverters("m30", 1, "");
    for (int level = 29; level >= 0; --level)
        deep += "," + inverters("m" + std::to_string(level), 1, "m" + std::to_string(level + 1));
    draw_text("{\"modules\":{" + deep + "}}");
    EXPECT_EQ(status.warnings.size(), 3U);
    EXPECT_TRUE(std::filesystem::exists(folder / "m27/sheet.tm"));
    EXPECT_FALSE(std::filesystem::exists(folder / "m28/sheet.tm"));
    EXPECT_TRUE(std::filesystem::exists(folder / "m28/symbol.tm"));
    std::filesystem::remove_all(folder);
    std::vector<int> inputs(30'000);
    std::iota(inputs.begin(), inputs.end(), 2);
    json wide =
        word_cell("$reduce_or", 30'000, {{"A", std::vector(inputs.rbegin(), inputs.rend())}, {"Y", {1}}});
    wide["parameters"]["Y_WIDTH"] = 1;
    wide = {
        {"ports", {{"a", port("input", inputs)}}}, {"cells", {{"g", wide}}}, {"netnames", json::object()}};
    draw_text("{\"modules\":{\"wide\":" + wide.dump() + "}}");
    EXPECT_EQ(status.warnings, lines{"module \"wide\": no sheet: more than 30000 objects in a file"});
    EXPECT_EQ(summary.instances, 1U);
    EXPECT_FALSE(std::filesystem::exists(folder / "sheet.tm"));
}

TEST_F(sheets, take_the_place_of_older_ones_in_the_folder) {
    draw(tst_source_dir() + "/designs/iscas85/c432.json");
    EXPECT_TRUE(std::filesystem::exists(folder / "page_5/sheet.tm_1"));
    SetUp();
    draw(tst_source_dir() + "/designs/iscas85/c17.json");
    EXPECT_FALSE(std::filesystem::exists(folder / "page_2"));
    EXPECT_TRUE(std::filesystem::exists(folder / "sheet.tm_1"));
    EXPECT_FALSE(std::filesystem::exists(folder / "sheets.new"));
}

}  // namespace
