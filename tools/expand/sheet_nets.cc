// The names of bits on the sheets of a module, and its nets and thick wires.
#include "expand/sheet_nets.h"

#include <algorithm>

#include "sheets/place_of.h"

namespace {

std::vector<std::int32_t> bits_of(const xp_module& module, const xp_bits& bits) {
    const auto first = module.bits.begin() + bits.first;
    return {first, first + bits.count};
}

// ---- the name of a bit

struct naming {
    xp_sheet_nets& nets;
    std::vector<bool> is_named, is_seen, is_port;             // seen: has a name that is not hidden
    std::map<std::vector<std::int32_t>, std::uint32_t> uses;  // of words, by pins and ports
};

bool is_bit(const naming& n, std::int32_t bit) { return bit >= 0 && sg_at(bit) < n.is_named.size(); }

void count_uses(naming& n) {
    const xp_module& module = n.nets.module;
    for (const xp_connection& c : module.connections)
        if (c.bits.count > 1) ++n.uses[bits_of(module, c.bits)];
    for (const xp_port& port : module.ports)
        if (port.bits.count > 1) ++n.uses[bits_of(module, port.bits)];
}

void find_seen(naming& n) {
    for (const xp_net_name& name : n.nets.body.names)
        for (const std::int32_t bit : bits_of(n.nets.module, name.bits)) {
            if (name.hidden || !is_bit(n, bit)) continue;
            n.is_seen[sg_at(bit)] = true;
            if (name.is_port) n.is_port[sg_at(bit)] = true;
        }
}

// A vector that is used as a whole names its bits, any other only where no port does, and a hidden one only
// where nothing else does.
struct candidate {
    std::uint32_t name = 0;
    bool is_used = false, is_mixed = false;  // mixed: with constants
};

std::vector<candidate> vectors_by_need(const naming& n) {
    std::vector<candidate> vectors;
    for (const std::uint32_t name : xp_naming_order(n.nets.body))
        if (xp_is_vector(n.nets.body.names[name])) {
            const std::vector<std::int32_t> bits = bits_of(n.nets.module, n.nets.body.names[name].bits);
            const bool is_mixed =
                std::any_of(bits.begin(), bits.end(), [](std::int32_t bit) { return bit < 0; });
            vectors.push_back({name, n.uses.contains(bits), is_mixed});
        }
    std::stable_sort(vectors.begin(), vectors.end(), [&](const candidate& a, const candidate& b) {
        const xp_net_name &left = n.nets.body.names[a.name], &right = n.nets.body.names[b.name];
        if (a.is_used != b.is_used) return a.is_used;
        if (a.is_mixed != b.is_mixed) return b.is_mixed;
        if (left.hidden != right.hidden) return right.hidden;
        return left.bits.count > right.bits.count;
    });
    return vectors;
}

bool can_name(const naming& n, const candidate& vector) {
    const xp_net_name& name = n.nets.body.names[vector.name];
    std::vector<std::int32_t> bits;
    for (const std::int32_t bit : bits_of(n.nets.module, name.bits))
        if (is_bit(n, bit)) bits.push_back(bit);
    const bool is_free = std::none_of(bits.begin(), bits.end(), [&](std::int32_t bit) {
        return n.is_named[sg_at(bit)] || (name.hidden && n.is_seen[sg_at(bit)]) ||
               (!vector.is_used && !name.is_port && n.is_port[sg_at(bit)]);
    });
    std::sort(bits.begin(), bits.end());
    return is_free && std::adjacent_find(bits.begin(), bits.end()) == bits.end();
}

void give_names(naming& n, std::uint32_t name) {
    const xp_bits& bits = n.nets.body.names[name].bits;
    for (std::uint32_t k = 0; k < bits.count; ++k) {
        const std::int32_t bit = n.nets.module.bits[bits.first + k];
        if (!is_bit(n, bit) || n.is_named[sg_at(bit)]) continue;
        n.nets.names[sg_at(bit)] = {0, name, k};
        n.is_named[sg_at(bit)] = true;
    }
}

// What no vector names as a whole: single bits before parts of vectors.
std::vector<std::uint32_t> remaining_names(const naming& n) {
    std::vector<std::uint32_t> names = xp_naming_order(n.nets.body);
    const auto rank = [&](std::uint32_t name) {
        const xp_net_name& own = n.nets.body.names[name];
        return (own.hidden ? 2 : 0) + (xp_is_vector(own) ? 1 : 0);
    };
    std::stable_sort(names.begin(), names.end(),
                     [&](std::uint32_t a, std::uint32_t b) { return rank(a) < rank(b); });
    return names;
}

// ---- words

const xp_net_ref* vector_of(const xp_sheet_nets& nets, std::int32_t bit) {
    if (bit < 0) return nullptr;
    const xp_net_ref& ref = nets.names[sg_at(bit)];
    return xp_is_vector(nets.body.names[ref.name]) ? &ref : nullptr;
}

enum class part_kind : std::uint8_t { constant, open, vector, single };

part_kind kind_of(const xp_sheet_nets& nets, std::int32_t bit) {
    if (bit == xp_open_bit) return part_kind::open;
    if (bit < 0) return part_kind::constant;
    return vector_of(nets, bit) != nullptr ? part_kind::vector : part_kind::single;
}

// Whether the bit above goes on what the bit below belongs to.
bool goes_on(const xp_sheet_nets& nets, std::int32_t below, std::int32_t above) {
    const part_kind kind = kind_of(nets, below);
    if (kind != kind_of(nets, above) || kind == part_kind::single) return false;
    if (kind != part_kind::vector) return true;
    const xp_net_ref &low = *vector_of(nets, below), &high = *vector_of(nets, above);
    return low.name == high.name && high.bit == low.bit + 1;
}

std::string constant_text(std::span<const std::int32_t> bits) {
    constexpr std::string_view signs = "01xz", digits = "0123456789abcdef";
    constexpr std::size_t longest = 64;
    const bool is_known =
        std::all_of(bits.begin(), bits.end(), [](std::int32_t bit) { return bit >= xp_const_1; });
    std::string text;
    for (std::size_t k = 0; k < bits.size(); k += is_known ? 4 : 1) {
        std::size_t value = 0;
        for (std::size_t i = 0; i < (is_known ? 4 : 1) && k + i < bits.size(); ++i)
            value |= sg_at(-1 - bits[k + i]) << i;
        text.insert(0, 1, is_known ? digits[value] : signs[value]);
    }
    if (text.size() > longest)
        text = text.substr(0, longest / 2) + "..." + text.substr(text.size() - longest / 2);
    return std::to_string(bits.size()) + (is_known ? "'h" : "'b") + text;
}

std::string free_name(xp_sheet_nets& nets, const std::string& base, const std::string& suffix) {
    std::string name = base + suffix;
    for (int number = 2; !nets.taken.insert(name).second; ++number)
        name = std::string(base).append("_").append(std::to_string(number)).append(suffix);
    return name;
}

std::int16_t label(const xp_net_name& name, std::uint32_t bit) {
    return static_cast<std::int16_t>(xp_bit_label(name, bit));
}

std::string range(std::int16_t start, std::int16_t end) {
    return "[" + std::to_string(start) + ":" + std::to_string(end) + "]";
}

// A part of a vector; the vector's own bus where it is the whole.
void name_slice(const xp_sheet_nets& nets, const xp_net_ref& low, const xp_net_ref& high, xp_sheet_net& net) {
    const xp_net_name& name = nets.body.names[low.name];
    net.start = label(name, high.bit);
    net.end = label(name, low.bit);
    net.is_hidden = name.hidden;
    if (net.bits.size() == name.bits.count) net.vector = static_cast<std::int32_t>(low.name);
    net.name = std::string(name.name) + range(net.start, net.end);
}

void name_mixture(xp_sheet_nets& nets, const std::string& pin, xp_sheet_net& net) {
    const auto whole = nets.whole.find(net.bits);
    net.is_mixture = true;
    net.start = static_cast<std::int16_t>(net.bits.size() - 1);
    if (whole == nets.whole.end()) {
        net.name = free_name(nets, pin, range(net.start, net.end));
        return;
    }
    const xp_net_name& name = nets.body.names[whole->second];
    net.vector = static_cast<std::int32_t>(whole->second);
    net.is_hidden = name.hidden;
    net.start = label(name, name.bits.count - 1);
    net.end = label(name, 0);
    net.name = free_name(nets, std::string(name.name), range(net.start, net.end));
}

}  // namespace

void xp_name_sheet_bits(xp_sheet_nets& nets) {
    const auto bits = sg_at(nets.module.net_count);
    naming n{nets, std::vector<bool>(bits), std::vector<bool>(bits), std::vector<bool>(bits), {}};
    nets.names.resize(bits);
    count_uses(n);
    find_seen(n);
    for (const candidate& vector : vectors_by_need(n)) {
        nets.whole.try_emplace(bits_of(nets.module, nets.body.names[vector.name].bits), vector.name);
        if (can_name(n, vector)) give_names(n, vector.name);
    }
    for (const std::uint32_t name : remaining_names(n)) give_names(n, name);
}

std::int32_t xp_sheet_scalar(xp_sheet_nets& nets, std::int32_t bit) {
    const auto next = static_cast<std::int32_t>(nets.plan.nets.size());
    const auto [known, is_new] = nets.scalars.try_emplace(bit, next);
    if (!is_new) return known->second;
    xp_sheet_net net;
    net.bits = {bit};
    if (bit < 0) {
        net.name = nets.constant_names[-1 - bit];
    } else {
        const xp_net_ref& ref = nets.names[sg_at(bit)];
        const xp_net_name& name = nets.body.names[ref.name];
        net.name = std::string(name.name) + xp_bit_suffix(name, ref.bit);
        net.is_hidden = name.hidden;
    }
    nets.plan.nets.push_back(std::move(net));
    return next;
}

std::int32_t xp_sheet_word(xp_sheet_nets& nets, const std::vector<std::int32_t>& bits,
                           const std::string& pin) {
    const auto next = static_cast<std::int32_t>(nets.plan.nets.size());
    const auto [known, is_new] = nets.words.try_emplace(bits, next);
    if (!is_new) return known->second;
    const bool is_one_part = xp_parts_of_word(nets, bits).size() == 1;
    xp_sheet_net net;
    net.is_bus = true;
    net.bits = bits;
    if (is_one_part && bits[0] >= 0) {
        name_slice(nets, *vector_of(nets, bits.front()), *vector_of(nets, bits.back()), net);
    } else if (is_one_part) {
        net.start = static_cast<std::int16_t>(bits.size() - 1);
        net.name = free_name(nets, constant_text(bits), "");
    } else {
        name_mixture(nets, pin, net);
    }
    nets.plan.nets.push_back(std::move(net));
    return next;
}

std::vector<xp_word_part> xp_parts_of_word(const xp_sheet_nets& nets, std::span<const std::int32_t> bits) {
    std::vector<xp_word_part> parts;
    for (std::uint32_t k = 0; k < bits.size(); ++k)
        if (k > 0 && goes_on(nets, bits[k - 1], bits[k]))
            ++parts.back().count;
        else
            parts.push_back({k, 1});
    std::reverse(parts.begin(), parts.end());
    return parts;
}

std::int32_t xp_sheet_part(xp_sheet_nets& nets, std::span<const std::int32_t> bits) {
    if (bits[0] == xp_open_bit) return -1;
    if (bits.size() == 1) return xp_sheet_scalar(nets, bits[0]);
    return xp_sheet_word(nets, {bits.begin(), bits.end()}, "");
}
