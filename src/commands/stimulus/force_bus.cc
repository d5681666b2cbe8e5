// FORCE BUS: a value for all bits of a bus.
#include "commands/shared/bus_value.h"
#include "commands/shared/parameters.h"
#include "commands/shared/rejections.h"
#include "commands/stimulus/force.h"
#include "commands/stimulus/handlers.h"
#include "kernel/stimuli.h"

namespace {

constexpr kol_rejection_t mode_invalid{
    "# !! Error : 3rd parameter invalid ( should be : \"Abs\" or \"Current\" ) "};
constexpr kol_force_words_t words{
    3,
    6,
    {"# !! Error : Invalid time  ( 6th parameter ) ", kol_form::quoted},
    {"# !! Error : Invalid stop_time  ( 8th parameter ) ", kol_form::quoted},
    {"# !! Error : 7th parameter Invalid ( should be : \"Once\" or \"Repeat\" ) ", kol_form::quoted}};

}  // namespace

kol_result_t kol_force_bus_cmd(const kol_line_t& line) {
    if (!kol_begins_with_one_of(line[words.mode], "AC")) return mode_invalid;
    kol_bus_value_t bus;
    if (const kol_rejection_t wrong = kol_read_bus_value(line[4], line[5], bus)) return wrong;
    kol_read_force_t force;
    if (const kol_rejection_t wrong = kol_read_force_times(line, words, force)) return wrong;
    if (force.repeat && kol_stimuli.clocks.empty()) return kol_no_clock_period;
    for (std::size_t k = 0; k < bus.bits.size(); ++k) {
        force.net = bus.bits[k];
        force.state = kol_state_of_bit(bus.value[k]);
        kol_append_force(force);
    }
    return {};
}
