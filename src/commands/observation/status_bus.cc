// STATUS BUS.
#include <array>

#include "commands/observation/handlers.h"
#include "commands/shared/bus_value.h"
#include "commands/shared/parameters.h"
#include "commands/shared/rejections.h"
#include "commands/shared/report.h"
#include "foundation/shell.h"
#include "kernel/lookup.h"
#include "results/list/layout.h"

namespace {

constexpr kol_rejection_t value_invalid{
    "# !! Error : 4th parameter invalid ( should be : \"Value\",\"Hex\",\"Bin\",\"Dec\" ) "};
constexpr kol_rejection_t no_bus{"# !! Error : NO Bus Exists ? "};

constexpr std::array<std::string_view, 3> radix_texts = {  // by radix code
    " ( HEXADECIMAL ) ", " ( BINARY ) ", " ( DECIMAL ) "};

std::string_view radix_text(const yx_signal_rec_t& entry) {
    return radix_texts.at(static_cast<std::size_t>(entry.base_number));
}

void report_member(const yx_signal_rec_t& member) {
    kol_show({"#**   signal name : \"", tm_view(member.name), "\" ", radix_text(member)});
    if (member.sig_bus)
        kol_report_quoted("#**   bus name    : ", tm_view(member.bus->name));
    else
        kol_report_net(*member.net);
}

// The radix that LIST gave, once for each time that the bus is listed.
void report_listed(const yx_bus_rec_t& bus) {
    for (const yx_signal_rec_t* entry = kol_list_first_entry(); entry != nullptr; entry = entry->next)
        if (entry->bus == &bus) kol_show({"#   in the LIST  ", radix_text(*entry)});
}

void report_bus(const yx_bus_rec_t& bus) {
    kol_report_quoted("#   BUS : ", tm_view(bus.name));
    kol_report_quoted("#   sim_path : ", tm_view(bus.cur_sim_path));
    tm_display(bus.combine ? "#   combine   BUS " : "#   NOcombine BUS ");
    report_listed(bus);
    for (const yx_signal_rec_t* member = bus.signal; member != nullptr; member = member->next)
        report_member(*member);
}

// The radix that the last keyword asks for: its own one, or that of the bus.
bool read_radix(const tm_string_record_t& keyword, const yx_bus_rec_t* bus, std::int16_t& radix) {
    radix =
        kol_begins_with_one_of(keyword, "V") ? kol_listed_radix(bus) : kol_radix_of_letter(keyword.char_[0]);
    return radix >= 0;
}

kol_result_t report_value(const kol_line_t& line) {
    std::vector<yx_net_record_t*> bits;
    yx_bus_rec_t* bus = nullptr;
    std::int16_t radix = 0;
    if (!kol_find_bits(line[3], bits, bus)) return kol_bus_unknown;
    if (!read_radix(line[4], bus, radix)) return value_invalid;
    kol_report_quoted("#   BUS : ", tm_view(line[3]));
    kol_report_quoted("#   value : ", kol_bus_value_text(bits, radix));
    return {};
}

}  // namespace

kol_result_t kol_status_bus_cmd(const kol_line_t& line) {
    if (line.nkeyword == 4) return report_value(line);
    const yx_bus_rec_t* bus = kol_ext.start_sim_bus;
    yx_bus_rec_t* named = nullptr;
    if (bus == nullptr) return no_bus;
    if (line.nkeyword == 3 && kol_find_sim_bus(line[3], named) == 0) return kol_bus_unknown;
    if (named != nullptr) report_bus(*named);
    for (; named == nullptr && bus != nullptr; bus = bus->next) report_bus(*bus);
    return {};
}
