// Names of nets below a path, gathered into vectors.
#include "results/files/dump_names.h"

#include <algorithm>
#include <charconv>
#include <map>

#include "foundation/strings.h"
#include "kernel/network.h"
#include "kernel/say.h"

namespace {

struct name_t {
    std::string_view base;  // "/u1/sum" of "/u1/sum[3]"
    std::int32_t bit = -1;  // -1: no bit
    std::uint32_t root = 0;
    auto operator<=>(const name_t&) const = default;
};

name_t name_of(std::string_view path, std::uint32_t root) {
    const std::size_t bracket = path.rfind('[');
    if (bracket == path.npos || !path.ends_with(']')) return {path, -1, root};
    std::int32_t bit = -1;
    const char* const end = path.data() + path.size() - 1;
    const auto [stop, error] = std::from_chars(path.data() + bracket + 1, end, bit);
    const bool is_number = error == std::errc() && stop == end && bit >= 0;
    return is_number ? name_t{path.substr(0, bracket), bit, root} : name_t{path, -1, root};
}

bool is_below(std::string_view path, std::string_view above, std::int32_t levels) {
    if (path.size() <= above.size()) return false;
    for (std::size_t k = 0; k < above.size(); ++k)
        if (tm_upper_case(path[k]) != tm_upper_case(above[k])) return false;
    return levels == 0 || std::ranges::count(path.substr(above.size()), '/') < levels;
}

class names_t {
public:
    names_t(std::string_view path, std::int32_t levels) : path_(path), levels_(levels) {}

    void add_net(std::int32_t index) {
        yx_net_record_t* const net = yx_ptrto_net_rec(index);
        if (net->net_type == YX_TSTD_BUS) return;
        const auto root = static_cast<std::uint32_t>(kol_root_net(net)->self);
        add(net->sim_path, root);
        for (const auto* child = net->first_child_ptr; child != nullptr; child = child->next_child_ptr)
            add(child->sim_path, root);
    }

    rs_dumped_t dumped() {
        std::ranges::sort(names_);
        const auto repeated = std::ranges::unique(
            names_, [](const name_t& a, const name_t& b) { return a.base == b.base && a.bit == b.bit; });
        names_.erase(repeated.begin(), repeated.end());
        for (auto first = names_.begin(); first != names_.end();) {
            auto last = first;
            for (auto next = first + 1; next != names_.end() && follows(*last, *next); ++next) last = next;
            add_variable(first, last + 1);
            first = last + 1;
        }
        return std::move(dumped_);
    }

private:
    using place_t = std::vector<name_t>::const_iterator;

    void add(std::int32_t string_index, std::uint32_t root) {
        const std::string_view path = kol_path(string_index);
        if (path.starts_with('/') && is_below(path, path_, levels_)) names_.push_back(name_of(path, root));
    }

    static bool follows(const name_t& name, const name_t& next) {
        return name.bit >= 0 && next.base == name.base && next.bit == name.bit + 1;
    }

    void add_variable(place_t first, place_t end) {
        std::vector<std::uint32_t> bits;
        for (place_t name = end; name != first;) bits.push_back((--name)->root);
        const auto width = static_cast<std::uint32_t>(bits.size());
        const auto [known, is_new] =
            codes_.try_emplace(bits, static_cast<std::uint32_t>(dumped_.bits.size()));
        if (is_new) dumped_.bits.push_back(std::move(bits));
        std::string path(first->base), range;
        if (first->bit >= 0) {
            const std::string low = std::to_string(first->bit), high = std::to_string(std::prev(end)->bit);
            (width > 1 ? range : path) += width > 1 ? "[" + high + ":" + low + "]" : "[" + low + "]";
        }
        dumped_.variables.push_back({path, range, width, known->second});
    }

    std::string_view path_;
    std::int32_t levels_;
    std::vector<name_t> names_;
    std::map<std::vector<std::uint32_t>, std::uint32_t> codes_;
    rs_dumped_t dumped_;
};

}  // namespace

rs_dumped_t rs_dumped_below(std::string_view path, std::int32_t levels) {
    names_t names(path, levels);
    for (std::int32_t i = 1; i <= yx_sext.max_net_cur; ++i) names.add_net(i);
    return names.dumped();
}
