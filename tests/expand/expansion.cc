#include "expansion.h"

#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>

#include "kernel/lookup.h"
#include "kernel/queue.h"
#include "kernel/say.h"
#include "netlist/design_file.h"
#include "netlist/text.h"
#include "support/design_build.h"
#include "support/places/places.h"
#include "support/session.h"
#include "support/stimuli.h"

namespace {

using nlohmann::json;

// A net named where it is used, "d" or "d:2" for one of two bits.
json& bits_named(json& module, const std::string& word) {
    const std::size_t colon = word.find(':');
    const int first = 1000 * static_cast<int>(module["netnames"].size() + 1);
    json& bits = module["netnames"][word.substr(0, colon)]["bits"];
    const int width = !bits.is_null() ? 0 : colon == word.npos ? 1 : std::stoi(word.substr(colon + 1));
    for (int k = 0; k < width; ++k) bits.push_back(first + k);
    return bits;
}

json bits_of(json& module, const std::string& text) {
    json bits = json::array();
    std::istringstream words(text);
    for (std::string word; std::getline(words, word, ',');) {
        if (std::string("01xz").find(word) != std::string::npos) {
            bits.push_back(word);
        } else if (std::isalpha(word[0]) != 0) {
            for (const json& bit : bits_named(module, word)) bits.push_back(bit);
        } else {
            const std::size_t dots = word.find("..");
            const int last = std::stoi(dots == word.npos ? word : word.substr(dots + 2));
            for (int bit = std::stoi(word); bit <= last; ++bit) bits.push_back(bit);
        }
    }
    return bits;
}

void add_cell(json& module, std::istringstream& words) {
    std::string type, name, word;
    words >> type >> name;
    json cell = {{"type", type}, {"hide_name", name[0] == '$' ? 1 : 0}, {"connections", json::object()}};
    while (words >> word) {
        const std::size_t at = word.find_first_of("=:");
        const std::string key = word.substr(0, at), text = word.substr(at + 1);
        const json bits = word[at] == '=' ? bits_of(module, text) : json();
        if (word[at] == '=')
            cell["connections"][key] = bits;
        else if (key == "@drive")
            cell["attributes"]["drive"] = text;
        else if (key.ends_with("_VALUE"))
            cell["parameters"][key] = text;
        else
            cell["parameters"][key] = std::stoi(text);
        if (key == "Q" && std::isalpha(text[0]) != 0)
            module["ports"][text.substr(0, text.find(':'))] = {{"direction", "output"}, {"bits", bits}};
    }
    module["cells"][name] = cell;
}

void add_statement(json& modules, std::string& module, const std::string& statement) {
    std::istringstream words(statement);
    std::string verb, name, text;
    if (!(words >> verb)) return;
    if (verb == "cell") return add_cell(modules[module], words);
    words >> name;
    if (verb == "module") {
        module = name;
        json& attributes = modules[module]["attributes"] = json::object();
        while (words >> text) attributes[text] = "00000000000000000000000000000001";
        return;
    }
    words >> text;
    if (verb == "init")
        modules[module]["netnames"][name]["attributes"]["init"] = text;
    else if (verb == "net" || verb == "hide")
        modules[module]["netnames"][name] = {{"hide_name", verb == "hide" ? 1 : 0},
                                             {"bits", bits_of(modules[module], text)}};
    else
        modules[module]["ports"][name] = {{"direction", verb + (verb == "inout" ? "" : "put")},
                                          {"bits", bits_of(modules[module], text)}};
}

}  // namespace

std::string netlist_json(std::string_view text) {
    json modules = json::object();
    std::string module = "top", rest(text);
    for (std::size_t at = 0; (at = rest.find("; ", at)) != rest.npos;) rest[at] = '\n';
    std::istringstream statements(rest);
    for (std::string statement; std::getline(statements, statement);)
        add_statement(modules, module, statement);
    return json{{"modules", modules}}.dump();
}

expansion::expansion() {
    std::string name = testing::TempDir() + "kolv_expand_XXXXXX";
    folder_ = mkdtemp(name.data());
    std::filesystem::current_path(folder_);
}
expansion::~expansion() {
    std::filesystem::current_path(before_);
    std::filesystem::remove_all(folder_);
}

std::string expansion::file(const std::string& name, std::string_view text) {
    std::ofstream(name) << text;
    return name;
}

std::string expansion::text_of(const std::string& name) {
    std::ifstream in(name);
    return {std::istreambuf_iterator<char>(in), {}};
}

std::vector<std::string> expansion::names_of_files() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator("."))
        names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

int expansion::run(const std::string& arguments) {
    return WEXITSTATUS(
        std::system((tst_program_dir() + "/kolv-expand " + arguments + " >said 2>&1").c_str()));
}

std::string expansion::expand_json(std::string_view text, const std::string& option,
                                   const std::string& value) {
    file("netlist.json", text);
    std::vector<const char*> arguments = {"netlist.json", "-o", "design"};
    if (!option.empty()) arguments.insert(arguments.end(), {option.c_str(), value.c_str()});
    xp_options options;
    status = {};
    xp_parse_options(arguments, options, status);
    xp_expand(options, summary, status);
    return xp_ok(status) ? "" : xp_message_text(status);
}

std::string expansion::expand(std::string_view netlist, const std::string& option, const std::string& value) {
    return expand_json(netlist_json(netlist), option, value);
}

void expansion::load() {
    tst_load({});  // drops what was there
    yxi_text_t where, name;
    yxi_copy_const(".", where);
    yxi_copy_const("design", name);
    STATUS_T loaded;
    yxi_init_dfi(where, name, loaded);
    ASSERT_EQ(loaded.all, 0);
    tst_set_up();
    EXPECT_EQ(tst_take_lines(), std::vector<std::string>{});
    kol_ext.spike_on = false;
}

void expansion::start(std::string_view netlist, const std::string& option, const std::string& value) {
    if (const std::string message = expand(netlist, option, value); !message.empty())
        throw std::runtime_error(message);
    load();
}

std::string expansion::found(const std::string& name, const std::string& level) {
    kol_ext.cur_sim_path = tm_string(level);
    yx_net_record_t* net = nullptr;
    const bool is_found = kol_find_net(tm_string(name), net) != 0;
    kol_ext.cur_sim_path = tm_string("/");
    return is_found ? std::string(kol_path(net->sim_path)) : "";
}

yx_net_record_t* expansion::net(const std::string& name) {
    yx_net_record_t* net = nullptr;
    if (kol_find_net(tm_string(name), net) == 0) throw std::runtime_error("no net " + name);
    return net;
}

void expansion::force(const std::map<std::string, char>& states) {
    constexpr std::int32_t long_enough = 200'000;
    for (const auto& [name, state] : states)
        kol_create_force_event(net(name), kol_ext.cur_time, state == '0' ? 17 : state == '1' ? 19 : 18);
    tst_run_until(kol_ext.cur_time + long_enough);
}

char expansion::value(const std::string& name) { return "i0x1"[net(name)->UU.U1.cur_state.state & 3]; }
