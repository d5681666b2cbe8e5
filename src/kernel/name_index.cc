// Strings to nets and pins through a folded hash.
#include "kernel/name_index.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <set>
#include <vector>

#include "kernel/network.h"
#include "kernel/say.h"
#include "netlist/text.h"

namespace {

struct name_entry_t {
    std::uint32_t hash;
    std::int32_t string_index;
};

struct name_index_t {
    bool is_made = false;
    std::vector<kol_named_t> named;     // by string index
    std::vector<name_entry_t> by_hash;  // strings that name something
};
name_index_t idx;

std::uint32_t folded_hash(std::string_view text) {
    std::uint64_t hash = 14695981039346656037U;
    for (const char c : text) hash = (hash ^ static_cast<unsigned char>(tm_upper_case(c))) * 1099511628211U;
    return static_cast<std::uint32_t>(hash >> 32);
}

using target_t = std::int32_t kol_named_t::*;

// Nets and pins come in no stated order, so the lowest index is kept.
void name_target(std::int32_t string_index, std::int32_t target, target_t which) {
    if (string_index == 0) return;
    std::int32_t& first = idx.named[static_cast<std::size_t>(string_index)].*which;
    if (first == 0 || target < first) first = target;
}

void name_net(std::int32_t string_index, std::int32_t net, bool also_alone) {
    name_target(string_index, net, &kol_named_t::net);
    if (also_alone) name_target(string_index, net, &kol_named_t::net_alone);
}

void add_net(const yx_net_record_t& net) {
    name_net(net.sim_path, net.self, true);
    name_net(net.name, net.self, true);
    for (const auto* child = net.first_child_ptr; child != nullptr; child = child->next_child_ptr) {
        name_net(child->name, net.self, false);
        name_net(child->sim_path, net.self, true);
    }
    if (net.net_type != YX_TSTANDARD) return;
    for (const kol_pin_link_t& fed : kol_fan_out_of(net)) name_net(fed.pin->sim_path, fed.net->self, false);
    for (const kol_pin_link_t& driver : kol_drivers_of(net))
        name_net(driver.pin->sim_path, driver.net->self, false);
}

bool names_something(const kol_named_t& named) { return named.net != 0 || named.pin != 0; }

void make_index() {
    idx.named.assign(static_cast<std::size_t>(yx_sext.max_string_cur) + 1, {});
    for (std::int32_t i = 1; i <= yx_sext.max_net_cur; ++i) add_net(*yx_ptrto_net_rec(i));
    for (std::int32_t i = 1; i <= yx_sext.max_pin_cur; ++i)
        name_target(yx_ptrto_pin_rec(i)->sim_path, i, &kol_named_t::pin);
    idx.by_hash.clear();
    idx.by_hash.reserve(static_cast<std::size_t>(std::ranges::count_if(idx.named, names_something)));
    for (std::int32_t i = 1; i <= yx_sext.max_string_cur; ++i)
        if (names_something(idx.named[static_cast<std::size_t>(i)]))
            idx.by_hash.push_back({folded_hash(kol_path(i)), i});
    std::ranges::sort(idx.by_hash, {}, &name_entry_t::hash);
    idx.is_made = true;
}

void keep_lower(std::int32_t& first, std::int32_t other) {
    if (first == 0 || (other != 0 && other < first)) first = other;
}

template <typename Visit>
void visit_named(const tm_string_record_t& name, Visit visit) {
    if (!idx.is_made) make_index();
    const std::uint32_t hash = folded_hash(tm_view(name));
    for (const name_entry_t& entry : std::ranges::equal_range(idx.by_hash, hash, {}, &name_entry_t::hash))
        if (yxistring_iden_tmstring(entry.string_index, name))
            visit(idx.named[static_cast<std::size_t>(entry.string_index)]);
}

}  // namespace

kol_named_t kol_find_named(const tm_string_record_t& name) {
    kol_named_t found;
    visit_named(name, [&](const kol_named_t& named) {
        keep_lower(found.net, named.net);
        keep_lower(found.net_alone, named.net_alone);
        keep_lower(found.pin, named.pin);
    });
    return found;
}

bool kol_names_several_nets(const tm_string_record_t& name) {
    const yx_net_record_t* first = nullptr;
    bool differs = false;
    visit_named(name, [&](const kol_named_t& named) {
        if (named.net == 0) return;
        const yx_net_record_t* net = yx_ptrto_net_rec(named.net);
        while (net->UU.U1.father_net_ptr != nullptr) net = net->UU.U1.father_net_ptr;
        differs = differs || (first != nullptr && net != first);
        first = net;
    });
    return differs;
}

std::vector<std::string> kol_names_beginning(std::string_view text, std::size_t most) {
    if (!idx.is_made) make_index();
    std::set<std::string, std::less<>> names;
    for (const name_entry_t& entry : idx.by_hash) {
        const std::string_view name = kol_path(entry.string_index);
        if (name.size() < text.size() ||
            !std::ranges::equal(name.substr(0, text.size()), text, {}, tm_upper_case, tm_upper_case))
            continue;
        const std::size_t slash = name.find('/', text.size());
        const std::string_view shown = slash == std::string_view::npos ? name : name.substr(0, slash + 1);
        if (!names.contains(shown)) names.emplace(shown);
        if (names.size() > most) names.erase(std::prev(names.end()));
    }
    return {names.begin(), names.end()};
}

void kol_forget_names() { idx = {}; }
