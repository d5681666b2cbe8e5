// The sheets of expanded designs, opened through the database and walked with the commands.
#include <fstream>
#include <functional>
#include <nlohmann/json.hpp>
#include <numeric>

#include "commands/command_session.h"
#include "commands/shared/context_sheet.h"
#include "commands/sheets/sheet_pages.h"
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
        const std::string names = (folder / "names").string();
        const char* arguments[] = {netlist.c_str(), "-o",      output.c_str(),
                                   "--sheets",      "--names", names.c_str()};
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
        tm_vext.pick_aperture = {10, 10};
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

// "x[3:0]" and "4'h3" as their bits, from the left; anything else as itself.
std::vector<std::string> bits_of(const std::string& name) {
    int from = 0, to = 0, width = 0, used = 0;
    std::vector<std::string> bits;
    if (std::sscanf(name.c_str(), "%d'%*1[hb]%n", &width, &used) == 1 && used > 0) {
        for (int bit = width - 1; bit >= 0; --bit) {
            const bool is_hex = name[static_cast<std::size_t>(used) - 1] == 'h';
            const char digit = name[name.size() - 1 - static_cast<std::size_t>(is_hex ? bit / 4 : bit)];
            const int value = std::stoi(std::string(1, digit), nullptr, 16) >> (is_hex ? bit % 4 : 0);
            bits.push_back((value & 1) != 0 ? "logic1" : "logic0");
        }
        return bits;
    }
    const std::size_t open = name.rfind('[');
    if (open == name.npos || std::sscanf(name.c_str() + open, "[%d:%d]", &from, &to) != 2) return {name};
    for (int bit = from;; bit += from > to ? -1 : 1) {
        bits.push_back(name.substr(0, open) + "[" + std::to_string(bit) + "]");
        if (bit == to) return bits;
    }
}

struct by_name {
    std::map<std::string, std::set<std::string>> pins;  // by net or bit
    std::map<std::string, int> pieces, loose;           // of a net or bit, and those without a tag
};

// What wires of one net join, or one place without any.
struct piece {
    std::set<std::int32_t> nets;
    std::vector<placed_text> pins, tags;
};

class page_pieces {
public:
    explicit page_pieces(const drawn_page& page) : page_(page) {
        for (const net_wire& w : page.wires) {
            joined_[w.net].join(w.wire.from, w.wire.to);
            nets_at_[w.wire.from].insert(w.net);
            nets_at_[w.wire.to].insert(w.net);
        }
        for (const auto& [net, at] : page.vertices) nets_at_[at].insert(net);
        for (const auto& [at, nets] : nets_at_)
            for (const std::int32_t net : nets) pieces[{net, joined_[net].root(at)}].nets.insert(net);
        for (const placed_text& pin : page.pins) piece_at(pin.at, "").pins.push_back(pin);
        for (const placed_text& tag : page.tags) piece_at(tag.at, tag.text).tags.push_back(tag);
    }
    std::map<std::pair<std::int32_t, sg_point>, piece> pieces;

private:
    // Where a bus and its part meet, what has a name belongs to the net of the name.
    piece& piece_at(const sg_point& at, const std::string& name) {
        for (const std::int32_t net : nets_at_[at])
            if (nets_at_[at].size() == 1 || page_.nets.at(net).name == name)
                return pieces[{net, joined_[net].root(at)}];
        EXPECT_TRUE(nets_at_[at].empty()) << "two nets at the place of " << name;
        return pieces[{0, at}];
    }
    const drawn_page& page_;
    std::map<std::int32_t, joined_points> joined_;
    std::map<sg_point, std::set<std::int32_t>> nets_at_;
};

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
    for (const auto& [at, p] : page_pieces(page).pieces)
        if (p.nets.empty() && p.tags.empty()) {
            EXPECT_EQ(p.pins.size(), 1U);
            for (const std::string& bit : bits_of(p.pins[0].text)) found.insert({p.pins[0].of + "/" + bit});
        }
}

// Bits that are the same by the joints: what is joined has one name, the root.
class joined_names {
public:
    void join(const std::string& a, const std::string& b) { root_[root(a)] = root(b); }
    std::string root(const std::string& name) {
        const auto at = root_.try_emplace(name, name).first;
        return at->second == name ? name : at->second = root(std::string(at->second));
    }

private:
    std::map<std::string, std::string> root_;
};

void join_taps(const drawn_page& page, joined_names& joined) {
    for (const drawn_tap& tap : page.taps) {
        const std::string& word = page.nets.at(tap.bus).name;
        const auto of_word = bits_of(word.substr(0, word.rfind('[')) + tap.bits);
        const auto of_part = bits_of(page.nets.at(tap.part).name);
        ASSERT_EQ(of_word.size(), of_part.size()) << word << tap.bits;
        for (std::size_t k = 0; k < of_word.size(); ++k) joined.join(of_word[k], of_part[k]);
    }
}

groups groups_of(const std::vector<drawn_page>& pages, const std::string& where) {
    by_name all;
    groups found;
    joined_names joined;
    for (const drawn_page& page : pages) {
        for (const auto& [at, p] : page_pieces(page).pieces) add_piece(page, p, where, all);
        add_single_pins(page, found);
        join_taps(page, joined);
    }
    for (const auto& [bit, count] : all.pieces)
        EXPECT_TRUE(count == 1 || all.loose[bit] == 0) << where << bit << " is in pieces that no tag joins";
    std::map<std::string, std::set<std::string>> by_root;
    for (const auto& [bit, pins] : all.pins) by_root[joined.root(bit)].insert(pins.begin(), pins.end());
    for (const auto& [bit, pins] : by_root) found.insert(pins);
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

// A thick wire may have no bus in the design, and a part of a bus leads to the bus.
void expect_numbers_found(const drawn_page& page, const std::string& path) {
    for (const auto& [id, net] : page.nets) {
        const std::string by_number = "N_" + std::to_string(net.number);
        const yx_net_record_t* const found = net_named(by_number);
        if (net.is_bus && found == nullptr) continue;
        ASSERT_NE(found, nullptr) << path << by_number << " " << net.name;
        EXPECT_EQ(found, net_named(path + by_number)) << path << by_number;
        EXPECT_EQ(found->net_type == YX_TSTD_BUS, net.is_bus) << path << net.name;
        const int width = std::abs(net.start - net.end);
        if (net.is_bus && found->UU.U2.net_bus_end > width) continue;
        EXPECT_EQ(found, net_named(net.name)) << path << by_number << " " << net.name;
        const bool is_own_name = kol_path(found->sim_path) == path + net.name;
        EXPECT_TRUE(!is_own_name || found->object_id == net.number) << path << net.name;
    }
}

class walked_sheets : public sheets {
protected:
    std::string netlist;
    json design;
    std::map<std::string, std::string> changed_;  // names of instances by path

    void walk(const std::string& name) {
        netlist = name;
        design = json::parse(std::ifstream(name));
        draw(name);
        changed_ = changed_names();
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
            expect_numbers_found(pages.back(), path);
            if (type("view sheet page next").size() > 1) break;
        }
        if (pages.size() > 1) type("view sheet page 1");
        return pages;
    }

    // The netlist's names of the instances whose names were changed, by path.
    std::map<std::string, std::string> changed_names() const {
        std::map<std::string, std::string> names;
        std::ifstream file(folder / "names");
        for (std::string line; std::getline(file, line);) {
            const std::size_t first = line.find('\t'), second = line.rfind('\t');
            const std::string raw = line.substr(first + 1, second - first - 1);
            if (line.substr(second + 1) == "instance")
                names[line.substr(0, first)] = raw.substr(raw.rfind('/') + 1);
        }
        return names;
    }

    std::string netlist_name(const std::string& path, const std::string& name) const {
        const auto changed = changed_.find(path + name);
        return changed == changed_.end() ? name : changed->second;
    }

    void visit(const std::string& module, const std::string& path) {
        EXPECT_EQ(tm_view(kol_ext.cur_sim_path), path);
        std::vector<drawn_page> pages = pages_here(path);
        for (drawn_page& page : pages)
            for (placed_text& pin : page.pins) pin.of = netlist_name(path, pin.of);
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
            ASSERT_TRUE(text["cells"].contains(netlist_name(path, name))) << name;
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

// Words over the nets 10..17 (d), 20..27 (q), 30..37 (no name), 40..43 (low), 50, 51 (e) and 65, 64 (t), clk
// 2, sel 3; parts of them, constants, open bits and bits in another order.
json words() {
    const std::vector<int> d = {10, 11, 12, 13, 14, 15, 16, 17}, q = {20, 21, 22, 23, 24, 25, 26, 27},
                           n = {30, 31, 32, 33, 34, 35, 36, 37}, low = {40, 41, 42, 43};
    const std::vector<std::string> zeros(8, "0");
    json cells;
    cells["r"] = word_cell("$dff", 8, {{"CLK", {2}}, {"D", n}, {"Q", q}});
    cells["r"]["parameters"]["CLK_POLARITY"] = 0;
    cells["m"] = word_cell("$mux", 8, {{"A", d}, {"B", q}, {"S", {3}}, {"Y", n}});
    cells["inv"] = word_cell("$not", 4, {{"A", {20, 21, 22, 23}}, {"Y", low}});
    cells["page_2"] = word_cell("$_AND_", 0, {{"A", {20}}, {"B", {"1"}}, {"Y", {50}}});
    cells["u1"] = word_cell("$paramod\\page 2", 0,
                            {{"x", {24, 25, 26, "0"}}, {"w", q}, {"y", {51}}, {"z", {60, 61, "x", 62}}});
    cells["u2"] =
        word_cell("$paramod\\page 2", 0, {{"x", low}, {"w", zeros}, {"y", {52}}, {"z", {64, 65, 66, 67}}});
    cells["parts"] = word_cell("$_AND_", 0, {{"A", {60}}, {"B", {62}}, {"Y", {63}}});
    cells["turned"] = word_cell("$reduce_or", 2, {{"A", {64, 65}}, {"Y", {68}}});
    cells["turned"]["parameters"]["Y_WIDTH"] = 1;
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
                {"netnames",
                 {{"$hidden", {{"hide_name", 1}, {"bits", n}}},
                  {"e", {{"bits", {50, 51}}}},
                  {"t", {{"bits", {65, 64}}}}}}}},
              {"$paramod\\page 2",
               {{"ports",
                 {{"x", port("input", {2, 3, 4, 9})},
                  {"w", port("input", {10, 11, 12, 13, 14, 15, 16, 17})},
                  {"y", port("output", {20})},
                  {"z", {{"direction", "output"}, {"bits", {3, "1", 20, 2}}}}}},
                {"cells", inner},
                {"netnames", json::object()}}}}}};
}

TEST_F(walked_sheets, draw_every_word_as_a_thick_wire_joined_to_its_parts) {
    walk(file("words.json", words().dump()));
    type("view sheet");
    const drawn_page page = read_page(sheet());
    std::set<std::string> pins, buses;
    for (const placed_text& pin : page.pins) pins.insert(pin.of + "/" + pin.text);
    for (const auto& [id, net] : page.nets)
        if (net.is_bus) buses.insert(net.name);
    for (const char* pin :
         {"r/D[7:0]", "r/CLK", "inv/A[3:0]", "u1/w[7:0]", "u1/x[3:0]", "u1/z[3:0]", "turned/A[1:0]"})
        EXPECT_TRUE(pins.contains(pin)) << pin;
    EXPECT_EQ(buses,
              (std::set<std::string>{"8'h00", "d[7:0]", "e[1:0]", "low[3:0]", "n1[7:0]", "q[3:0]", "q[6:4]",
                                     "q[7:0]", "turned.A[1:0]", "u1.x[3:0]", "u1.z[3:0]", "u2.z[3:0]"}));
    EXPECT_EQ(page.taps.size(), 2U + 2U + 2U + 2U)
        << "of u1.x, u1.z without what nothing reads, u2.z and turned";
    EXPECT_EQ(page.cells.at("u1"), "xpage_2_2/sheet.tm_1");
    EXPECT_TRUE(std::filesystem::exists(folder / "xpage_2_2/symbol.tm"));
    type("view down u2");
    EXPECT_NE(net_named("N_5"), net_named("/N_5")) << "the number is that of the sheet in the window";
}

// ---- what stands together

json flip_flop(json d, json q) { return word_cell("$_DFF_P_", 0, {{"C", {2}}, {"D", {d}}, {"Q", {q}}}); }

// A register of 8 bits that counts oddly, its cells in no order; a shift register of 6; 60 inverters, each
// with three readers on two further levels.
json mixed_registers() {
    json cells = json::object();
    const auto gate = [&](const std::string& name, const char* type, json connections) {
        cells[name] = word_cell(type, 0, std::move(connections));
    };
    for (int bit = 0; bit < 8; ++bit) {
        cells["f" + std::to_string(bit * 5 % 8)] = flip_flop(40 + bit, 20 + bit);
        gate("x" + std::to_string(bit), "$_XOR_",
             {{"A", {20 + bit}}, {"B", {20 + (bit + 3) % 8}}, {"Y", {40 + bit}}});
    }
    for (int bit = 0; bit < 6; ++bit)
        cells["s" + std::to_string(bit)] = flip_flop(bit == 0 ? 3 : 59 + bit, 60 + bit);
    for (int i = 0; i < 60; ++i) {
        gate("i" + std::to_string(i), "$_NOT_", {{"A", {100 + i}}, {"Y", {200 + i}}});
        gate("a" + std::to_string(i), "$_AND_",
             {{"A", {200 + i}}, {"B", {200 + (i + 1) % 60}}, {"Y", {300 + i}}});
        gate("o" + std::to_string(i), "$_OR_", {{"A", {200 + i}}, {"B", {300 + i}}, {"Y", {400 + i}}});
    }
    const auto range = [](int first, int count) {
        std::vector<int> bits(static_cast<std::size_t>(count));
        std::iota(bits.begin(), bits.end(), first);
        return bits;
    };
    const json ports = {{"clk", port("input", {2})},          {"d", port("input", {3})},
                        {"a", port("input", range(100, 60))}, {"y", port("output", range(400, 60))},
                        {"out", port("output", {65})},        {"q", port("output", range(20, 8))}};
    return {{"modules",
             {{"mixed",
               {{"attributes", {{"top", "1"}}},
                {"ports", ports},
                {"cells", cells},
                {"netnames", {{"shift", {{"bits", range(60, 6)}}}}}}}}}};
}

// The page with the instance, and where it stands.
std::pair<std::size_t, sg_point> place_of(const std::vector<drawn_page>& pages, const std::string& name) {
    for (std::size_t page = 0; page < pages.size(); ++page)
        if (const auto at = pages[page].origins.find(name); at != pages[page].origins.end())
            return {page, at->second};
    ADD_FAILURE() << name << " is nowhere";
    return {};
}

TEST_F(walked_sheets, keep_together_what_belongs_together) {
    walk(file("mixed.json", mixed_registers().dump()));
    std::vector<drawn_page> pages;
    type("view sheet");
    do pages.push_back(read_page(sheet()));
    while (type("view sheet page next").size() == 1);
    EXPECT_GT(pages.size(), 3U);
    for (int bit = 7; bit > 0; --bit) {
        const auto upper = place_of(pages, "f" + std::to_string(bit * 5 % 8));
        const auto lower = place_of(pages, "f" + std::to_string((bit - 1) * 5 % 8));
        EXPECT_EQ(upper.first, lower.first) << bit;
        EXPECT_EQ(upper.second.x, lower.second.x) << bit;
        EXPECT_GT(upper.second.y, lower.second.y) << bit;
        EXPECT_EQ(upper.first, place_of(pages, "x" + std::to_string(bit)).first) << "its logic";
        if (bit < 2 || bit > 6) continue;
        const auto from = place_of(pages, "s" + std::to_string(bit - 2)),
                   to = place_of(pages, "s" + std::to_string(bit - 1));
        EXPECT_EQ(from.first, to.first) << bit;
        EXPECT_LT(from.second.x, to.second.x) << bit;
    }
    for (const drawn_page& page : pages)
        EXPECT_TRUE(std::any_of(page.cells.begin(), page.cells.end(),
                                [](const auto& cell) { return !cell.first.starts_with('i'); }));
}

// ---- from page to page

class turned_pages : public walked_sheets {
protected:
    static int shown_page() { return kol_page_of(sheet()).number; }
    static bool shows(const std::string& name) {
        for (const std::int16_t id : tm_nets(sheet()))
            if (kol_name_of(sheet(), id) == name) return true;
        return false;
    }
    void click(const sg_point& at) {
        const std::string x = std::to_string(at.x / 100000.0), y = std::to_string(at.y / 100000.0);
        type("mark rectangle " + x + " " + y + " " + x + " " + y);
        EXPECT_EQ(type("view area"), lines{" VIEw ARea "});
    }
};

TEST_F(turned_pages, follow_a_tag_to_the_page_that_it_names_and_a_net_through_its_pages) {
    draw(tst_source_dir() + "/designs/iscas85/c432.json");
    type("view sheet");
    int followed = 0;
    for (int page = 1; shown_page() == page; ++page, type("view sheet page " + std::to_string(page))) {
        const drawn_page drawn = read_page(sheet());
        for (const placed_text& tag : drawn.tags) {
            if (!tag.of.ends_with("PAGE")) continue;
            click(tag.at);
            followed += shown_page() != page ? 1 : 0;
            EXPECT_TRUE(shows(tag.text)) << tag.text << " from page " << page << " to " << shown_page();
            type("view sheet page " + std::to_string(page));
        }
    }
    EXPECT_GT(followed, 50);
    EXPECT_EQ(type("view sheet page 1"), lines{" VIEw SHEet page 1 "});
    const drawn_page first = read_page(sheet());
    std::string name;
    for (const placed_text& tag : first.tags)
        if (tag.of == "TO_PAGE") name = tag.text;
    std::set<int> pages;
    for (int step = 0; step < 20; ++step) {
        EXPECT_EQ(type("view net " + name), lines{" VIEw NET " + name + " "});
        EXPECT_TRUE(shows(name));
        pages.insert(shown_page());
    }
    EXPECT_GT(pages.size(), 1U) << name;
    EXPECT_TRUE(pages.contains(1)) << "from the last page to the first";
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
