// The look-up table: its set-up, and the value that its inputs choose.
#include "models/lut.h"

#include <array>
#include <charconv>
#include <vector>

#include "kernel/say.h"
#include "kernel/state.h"
#include "models/instance_properties.h"
#include "models/pin_outputs.h"
#include "models/pin_setup.h"
#include "models/timing_role.h"
#include "models/user_data.h"

namespace {

constexpr std::string_view bus_error = "# !!! Error : Pin Bus Not Allowed on pin : ";
constexpr std::string_view count_error = "# !!! Error : LUT has more than 6 inputs, on pin : ";
constexpr std::string_view digits_error = "# !!! Error : INVALID  property \"TABLE\" Value on instance : ";

struct kol_lut_userdata_rec_t {
    std::uint64_t table = 0;
    std::array<const yx_net_record_t*, kol_lut_max_inputs> inputs{};
    std::size_t nb_of_input = 0;
    std::vector<yx_pin_record_t*> outputs;
};

kol_user_data<kol_lut_userdata_rec_t> user_data;

bool add_pin(kol_lut_userdata_rec_t& lut, yx_pin_record_t& pin) {
    if (pin.pin_end != 0) return kol_show_pin_error(bus_error, pin);
    if (!kol_check_pin_type(pin) || !kol_read_pin_delays(pin)) return false;
    if (pin.io_type == YX_IO_OUTPUT) {
        lut.outputs.push_back(&pin);
        return kol_read_pin_drive(pin);
    }
    if (lut.nb_of_input == kol_lut_max_inputs) return kol_show_pin_error(count_error, pin);
    lut.inputs[lut.nb_of_input++] = kol_input_net(&pin);
    return true;
}

bool read_table(std::string_view digits, std::uint64_t& table) {
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), table, 16);
    return error == std::errc{} && end == digits.data() + digits.size();
}

std::int16_t value_of(const kol_lut_userdata_rec_t& lut) {
    unsigned known = 0, unknown = 0;
    for (std::size_t k = 0; k < lut.nb_of_input; ++k) {
        const std::int16_t value = kol_value_of(lut.inputs[k]->UU.U1.cur_state.state);
        if (value == kol_v1) known |= 1U << k;
        if (value == kol_vi || value == kol_vx) unknown |= 1U << k;
    }
    const std::uint64_t first = lut.table >> known & 1U;
    for (unsigned rest = unknown; rest != 0; rest = (rest - 1) & unknown)
        if ((lut.table >> (known | rest) & 1U) != first) return kol_vi;
    return first != 0 ? kol_v1 : kol_v0;
}

}  // namespace

void kol_lut_init() {
    kol_lut_userdata_rec_t& lut = user_data.create();
    yx_pin_record_t* pin = kol_ext.cur_inst->first_pin_ptr;
    for (; pin != nullptr; pin = pin->next_pin_inst_ptr)
        if (!add_pin(lut, *pin)) return;
    std::string_view digits;
    if (kol_read_instance_text("TABLE", digits) && !read_table(digits, lut.table))
        kol_show_instance_error(digits_error);
}

void kol_lut_clear() { user_data.all().clear(); }

void kol_lut_refresh() { kol_refresh_pin_delays(*kol_ext.cur_inst); }

void kol_lut_hdler() {
    const kol_lut_userdata_rec_t& lut = user_data.current();
    const std::int16_t value = value_of(lut);
    for (yx_pin_record_t* pin : lut.outputs)
        kol_schedule_output(pin, value, kol_input_delay(kol_ext.cur_pin, value));
}
