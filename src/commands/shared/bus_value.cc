// Names and values of whole buses.
#include "commands/shared/bus_value.h"

#include "commands/shared/parameters.h"
#include "commands/shared/rejections.h"
#include "results/entries/entry.h"
#include "results/entries/observed.h"

namespace {

constexpr kol_rejection_t value_invalid{"# !! Error : value invalid or too large for the BUS ? "};

}  // namespace

std::int16_t kol_listed_radix(const yx_bus_rec_t* bus) {
    if (bus == nullptr) return kol_hexadecimal;
    for (const yx_signal_rec_t* entry = kol_list_first_entry(); entry != nullptr; entry = entry->next)
        if (entry->bus == bus) return entry->base_number;
    return kol_hexadecimal;
}

kol_rejection_t kol_read_bus_value(const tm_string_record_t& name, const tm_string_record_t& value,
                                   kol_bus_value_t& bus) {
    yx_bus_rec_t* user_bus = nullptr;
    if (!kol_begins_like_signal(name)) return kol_signal_name_invalid;
    if (!kol_find_bits(name, bus.bits, user_bus)) return kol_bus_unknown;
    const std::int16_t radix = kol_listed_radix(user_bus);
    return kol_read_bits(tm_view(value), radix, bus.bits.size(), bus.value) ? kol_rejection_t{}
                                                                            : value_invalid;
}

std::string kol_bus_value_text(const std::vector<yx_net_record_t*>& bits, std::int16_t radix) {
    std::string values;
    for (const yx_net_record_t* net : bits) values += kol_bit_of_state(net->UU.U1.cur_state.state);
    return rs_value_text(values, radix);
}
