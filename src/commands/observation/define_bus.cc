// DEFINE BUS.
#include <vector>

#include "commands/observation/handlers.h"
#include "commands/observation/observed_signal.h"
#include "commands/shared/parameters.h"
#include "commands/shared/rejections.h"
#include "foundation/list.h"
#include "foundation/shell.h"
#include "kernel/lookup.h"
#include "results/list/layout.h"

namespace {

constexpr kol_rejection_t kind_invalid{
    "# !! Error : 3rd parameter invalid ( should be : \"Comb\" or \"Nocomb\" ) "};
constexpr kol_rejection_t name_invalid{"# !! Error : 4th parameter invalid ( should begin with letter ) "};
constexpr kol_rejection_t name_exists{"# !! Error :  Name Already Exists ? "};
constexpr kol_rejection_t bus_exists{"# !! Error : Bus Name Already Exists ? "};
constexpr kol_rejection_t bus_in_itself{"# !! Error : Bus can not contain itself ? "};
constexpr kol_rejection_t bus_too_large{"# !! Error : too many signals in BUS ( max : 1024 ) "};

constexpr std::int16_t first_member_keyword = 5;

// A bus with the buses inside it has at most as many members as the list has columns.  Nested buses count
// too, so buses never nest deeper than this.
constexpr std::int32_t max_members = kol_list_max_column;

using found_members = std::vector<kol_found_signal_t>;

// Counts no further than just beyond the most there may be.
std::int32_t count_members(const yx_bus_rec_t& bus) {
    std::int32_t count = 0;
    for (const yx_signal_rec_t* member = bus.signal; member != nullptr; member = member->next) {
        count += 1 + (member->sig_bus ? count_members(*member->bus) : 0);
        if (count > max_members) break;
    }
    return count;
}

bool every_bus_fits(const yx_bus_rec_t* first) {
    for (const yx_bus_rec_t* bus = first; bus != nullptr; bus = bus->next)
        if (count_members(*bus) > max_members) return false;
    return true;
}

bool everything_fits() {
    return every_bus_fits(kol_ext.start_sim_bus) && every_bus_fits(kol_ext.start_forgotten_bus) &&
           kol_list_fits() && kol_trace_fits();
}

bool contains(const yx_bus_rec_t& bus, const yx_bus_rec_t& other) {
    if (&bus == &other) return true;
    for (const yx_signal_rec_t* member = bus.signal; member != nullptr; member = member->next)
        if (member->sig_bus && contains(*member->bus, other)) return true;
    return false;
}

// Checks keywords 3 and 4; existing: the bus to append to, none for a new bus.
kol_rejection_t read_bus(const kol_line_t& line, yx_bus_rec_t*& existing) {
    const tm_string_record_t& kind = line[3];
    const tm_string_record_t& name = line[4];
    if (!kol_begins_with_one_of(kind, "CNA")) return kind_invalid;
    if (!kol_begins_with_letter(name)) return name_invalid;
    yx_net_record_t* net = nullptr;
    if (kol_find_net(name, net) != 0) return name_exists;
    existing = nullptr;
    const bool exists = kol_find_sim_bus(name, existing) != 0;
    const bool append = kol_begins_with_one_of(kind, "A");
    if (append && !exists) return kol_bus_unknown;
    if (!append && exists) return bus_exists;
    return {};
}

kol_rejection_t find_members(const kol_line_t& line, const yx_bus_rec_t* existing, found_members& members) {
    for (std::int16_t k = first_member_keyword; k <= line.nkeyword; ++k) {
        if (!kol_find_signal(line[k], members.emplace_back())) return kol_net_not_found;
        const yx_bus_rec_t* bus = members.back().bus;
        if (bus != nullptr && existing != nullptr && contains(*bus, *existing)) return bus_in_itself;
    }
    return {};
}

yx_signal_rec_t* last_member(const yx_bus_rec_t& bus) {
    yx_signal_rec_t* member = bus.signal;
    while (member != nullptr && member->next != nullptr) member = member->next;
    return member;
}

void append_members(yx_bus_rec_t& bus, yx_signal_rec_t* last, const found_members& members) {
    for (const kol_found_signal_t& found : members)
        tm_list_append(kol_make_signal(found, kol_binary), bus.signal, last);
}

// Takes back what stands behind the member, or everything when there is none.
void drop_members_behind(yx_bus_rec_t& bus, yx_signal_rec_t* member) {
    yx_signal_rec_t*& link = member == nullptr ? bus.signal : member->next;
    while (link != nullptr) kol_drop_signal(tm_list_take_next(link));
}

// Members that nest too many others, or make a shown bus outgrow its view, are taken back.
bool add_members(yx_bus_rec_t& bus, const found_members& members) {
    yx_signal_rec_t* last = last_member(bus);
    append_members(bus, last, members);
    if (count_members(bus) <= max_members && everything_fits()) return true;
    drop_members_behind(bus, last);
    return false;
}

bool make_bus(const kol_line_t& line, const found_members& members) {
    auto bus = std::make_unique<yx_bus_rec_t>();
    bus->name = line[4];
    bus->cur_sim_path = kol_ext.cur_sim_path;
    bus->combine = kol_begins_with_one_of(line[3], "C");
    if (!add_members(*bus, members)) return false;
    tm_list_append(std::move(bus), kol_ext.start_sim_bus, kol_ext.last_sim_bus);
    return true;
}

bool extend_bus(yx_bus_rec_t& bus, const found_members& members) {
    if (!add_members(bus, members)) return false;
    tm_shell.redraw_results();  // the bus may be listed
    return true;
}

}  // namespace

kol_result_t kol_define_bus_cmd(const kol_line_t& line) {
    yx_bus_rec_t* existing = nullptr;
    found_members members;
    if (const kol_rejection_t wrong = read_bus(line, existing)) return wrong;
    if (kol_result_t wrong = find_members(line, existing, members)) {
        wrong.form = kol_form::wide;
        return wrong;
    }
    const bool fits = existing != nullptr ? extend_bus(*existing, members) : make_bus(line, members);
    return fits ? kol_rejection_t{} : bus_too_large;
}
