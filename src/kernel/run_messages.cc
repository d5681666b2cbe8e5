// The lines of hazards, spikes, breaks, requests and the limit.
#include "kernel/run_messages.h"

#include "foundation/shell.h"
#include "kernel/say.h"

namespace {

std::string quoted_with_blank(std::int32_t string_index) { return kol_quoted_path(string_index) + ' '; }

// A spike line names the time of the event and the time of the change that follows it.
std::string spike_times(std::int32_t from, std::int32_t to, const kol_spike_t& spike) {
    return kol_time_text(from) + " -->" + kol_time_text(to) + " <-> spike:" + kol_time_text(spike.dif) +
           " (<" + kol_time_text(spike.delay) + ") ";
}

void say_spiked_pin(const kol_spike_t& spike) {
    tm_count_warning();
    kol_say("# !! SPIKE on pin : ", quoted_with_blank(spike.pin->sim_path));
}

}  // namespace

void kol_say_pin_hazard(const yx_pin_record_t& pin, const yx_net_record_t& net, std::int32_t time) {
    tm_count_warning();
    const std::string bit =
        pin.pin_end != 0 ? "  [" + std::to_string(net.UU.U1.posinbus) + "] " : std::string(" ");
    kol_say("# !! WARNING : HAZARD Condition  on pin : time = ", kol_time_text(time));
    kol_say("#   pin : ", kol_quoted_path(pin.sim_path), bit);
    kol_say("#   more than 1 event(not equal) at this time ");
}

void kol_say_net_hazard(const yx_net_record_t& net, std::int32_t time) {
    tm_count_warning();
    kol_say("# !! WARNING : HAZARD Condition on net : time = ", kol_time_text(time));
    kol_say("#   net : ", quoted_with_blank(net.sim_path));
    kol_say("#   You FORCE a state incompatible to existing events ");
}

void kol_say_fixed_net(const yx_net_record_t& net, std::int32_t time) {
    tm_count_warning();
    kol_say("# !! WARNING : You FORCE a FIXED net : time = ", kol_time_text(time));
    kol_say("#   net : ", quoted_with_blank(net.sim_path));
}

void kol_say_driver_spike(const kol_spike_t& spike) {
    say_spiked_pin(spike);
    kol_say("#   To net : ", quoted_with_blank(spike.net->sim_path));
    kol_say("#   time:", spike_times(spike.time, spike.time + spike.dif, spike));
}

void kol_say_fan_out_spike(const kol_spike_t& spike) {
    say_spiked_pin(spike);
    if (spike.driver != nullptr) {
        kol_say("#    From pin : ", quoted_with_blank(spike.driver->sim_path));
        kol_say("#    time:", spike_times(spike.time + spike.dif, spike.time, spike));
    } else {
        kol_say("#   From net : ", quoted_with_blank(spike.net->sim_path));
        kol_say("#   time:", spike_times(spike.time, spike.time + spike.dif, spike));
    }
}

void kol_say_break(const yx_net_record_t& net, std::int32_t time) {
    kol_say("# !! BREAK on net : ", quoted_with_blank(net.sim_path));
    kol_say("#    Name : ", kol_quoted(tm_view(net.UU.U1.break_signal->break_name)), " ");
    kol_say("#    time: ", kol_time_text(time));
}

void kol_say_bus_break(const tm_string_record_t& name, std::string_view value, std::int32_t time) {
    kol_say("# !! BREAK on bus : ", kol_quoted(tm_view(name)), " ");
    kol_say("#    Value : ", kol_quoted(value), " ");
    kol_say("#    time: ", kol_time_text(time));
}

void kol_say_break_request(std::int32_t time) {
    kol_say("# !! Simulation BREAKED Request ");
    kol_say("#    time : ", kol_time_text(time));
}

void kol_say_status(std::int32_t time) { kol_say("# !! Simulation STATUS : time = ", kol_time_text(time)); }

void kol_say_limit(std::int32_t time, std::int64_t limit) {
    kol_say("# !! More than ", std::to_string(limit), " errors or warnings : so simulation is BREAKED  . ");
    kol_say("#    time: ", kol_time_text(time));
    kol_say("# !! to avoid too many spike warnings use ", kol_quoted("SPIKE MIN"), " ... ? ");
}
