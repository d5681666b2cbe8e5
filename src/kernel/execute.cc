// The two kinds of events, hazards, spikes, histories and the fan-out.
#include "kernel/execute.h"

#include "foundation/status.h"
#include "kernel/history.h"
#include "kernel/net_events.h"
#include "kernel/network.h"
#include "kernel/run_messages.h"
#include "kernel/spikes.h"
#include "kernel/state.h"

namespace {

[[noreturn]] void stop(const char* what) {
    kol_trace(" KOL_EXEC_CUR_EVENT: %s", what);
    tm_fatal(file_data_invalid);
}

// The change that an event brings to its net; it outlives changes of the event's own record.
struct change_t {
    yx_net_record_t& net;
    yx_pin_record_t* driver;  // none for a FORCE event
    std::int32_t time;
    std::int8_t state;
    std::int32_t dif = -1;  // to the next change of the net, -1: none near
};

// ---- spikes

// Sets spiked; the result is the delay that the next change undercuts.
std::int32_t check_spike(const yx_pin_record_t& pin, const change_t& change, bool& is_reported) {
    kol_ext.spiked = false;
    is_reported = false;
    if (change.dif < 0) return 0;
    const std::int32_t delay = kol_spike_delay(pin, change.net, change.state);
    kol_ext.spiked = change.dif < delay;
    is_reported = kol_ext.spiked && change.dif > kol_ext.spike_min;
    return delay;
}

std::int32_t check_driver_spike(const change_t& change) {
    bool is_reported = false;
    const std::int32_t delay = check_spike(*change.driver, change, is_reported);
    if (is_reported)
        kol_say_driver_spike({change.driver, &change.net, nullptr, change.time, change.dif, delay});
    return delay;
}

void check_fan_out_spike(const yx_pin_record_t& pin, const change_t& change) {
    bool is_reported = false;
    const std::int32_t delay = check_spike(pin, change, is_reported);
    if (is_reported)
        kol_say_fan_out_spike({&pin, &change.net, change.driver, change.time, change.dif, delay});
}

// ---- history and net

void take_state(yx_net_record_t& net, std::int32_t time, std::int8_t state) {
    net.UU.U1.old_state.state = net.UU.U1.cur_state.state;
    net.UU.U1.cur_state.state = state;
    net.UU.U1.cur_state.time = time;
}

// A change without spike: a second change at one time is merged with the state before the first.
void settle(change_t& change) {
    yx_net_u1_t& net = change.net.UU.U1;
    if (net.history != nullptr && net.history->newest().time == change.time)
        net.history->newest().state = change.state = kol_net_state(change.state, net.old_state.state);
    else if (net.history != nullptr)
        net.history->append(change.time, change.state);
    take_state(change.net, change.time, change.state);
}

void settle_unsuppressed(change_t& change) {
    yx_net_u1_t& net = change.net.UU.U1;
    if (net.history != nullptr && net.history->newest().time >= change.time)
        net.history->newest().state = change.state = kol_net_state(change.state, net.cur_state.state);
    else if (net.history != nullptr)
        net.history->append(change.time, change.state);
    take_state(change.net, change.time, change.state);
}

// The net becomes indeterminate, while the pins that it feeds are shown the resolved state.
void settle_indeterminate(const change_t& change) {
    yx_net_u1_t& net = change.net.UU.U1;
    const std::int8_t state = kol_indeterminate_of(change.state);
    if (net.history != nullptr && net.history->newest().time >= change.time)
        net.history->newest().state = state;
    else if (net.history != nullptr)
        net.history->append(change.time, state);
    take_state(change.net, change.time, state);
}

void settle_spike(change_t& change, std::int32_t delay) {
    switch (kol_ext.spike_model) {
        case kol_nosuppress:
            settle_unsuppressed(change);
            return;
        case kol_suppress:
            return;
        case kol_indgene:
            settle_indeterminate(change);
            return;
        case kol_pessimistic:
            change.time = change.time < delay ? 0 : change.time - delay;
            settle_indeterminate(change);
            return;
        default:
            stop("spike model");
    }
}

// ---- fan-out

void fan_out(const change_t& change, bool checks_spikes) {
    for (const kol_pin_link_t& fed : kol_fan_out_of(change.net)) {
        yx_pin_record_t& pin = *fed.pin;
        if (checks_spikes) check_fan_out_spike(pin, change);
        if (kol_ext.spiked && kol_ext.spike_model == kol_suppress) continue;
        kol_ext.cur_inst = pin.instance_ptr;
        kol_ext.cur_pin = &pin;
        kol_ext.cur_net = fed.net;
        yx_signal_state_rec& seen = kol_pin_state(pin, *fed.net);
        seen.state = change.state;
        seen.time = change.time;
        kol_exec_hdler(pin.pin_hdler);
    }
}

// ---- the two kinds of events

// The state of the one driver, or of all.
std::int8_t resolved_state(const yx_net_record_t& net, std::int8_t state_of_driver) {
    if (net.UU.U1.nb_of_driver == 1) return kol_net_state(0, state_of_driver);
    std::int8_t state = 0;
    for (const kol_pin_link_t& driver : kol_drivers_of(net))
        state = kol_net_state(state, kol_pin_state(*driver.pin, *driver.net).state);
    return state;
}

void exec_pin_event(const yx_event_rec_t& event) {
    change_t change{*event.net, event.pin, event.time, event.state};
    yx_net_u1_t& net = change.net.UU.U1;
    yx_signal_state_rec& seen = kol_pin_state(*event.pin, *event.net);
    if (seen.time == event.time && seen.state != event.state) {
        kol_say_pin_hazard(*event.pin, *event.net, event.time);
        return;
    }
    seen.state = event.state;
    seen.time = event.time;
    if (net.cur_state.fixed) return;

    if (kol_ext.spike_on) change.dif = kol_next_change(event);
    change.state = resolved_state(change.net, event.state);
    if (change.state == net.cur_state.state) return;
    const std::int32_t delay = kol_ext.spike_on ? check_driver_spike(change) : 0;
    if (kol_ext.spike_on && kol_ext.spiked)
        settle_spike(change, delay);
    else
        settle(change);
    if (net.cur_state.state != net.old_state.state) fan_out(change, kol_ext.spike_on);
}

void warn_of_force(const yx_event_rec_t& event) {
    const yx_signal_state_rec& cur = event.net->UU.U1.cur_state;
    if (event.time == 0) return;
    if (cur.fixed)
        kol_say_fixed_net(*event.net, event.time);
    else if (cur.time == event.time && cur.state != event.state)
        kol_say_net_hazard(*event.net, event.time);
}

void exec_force_event(const yx_event_rec_t& event) {
    change_t change{*event.net, nullptr, event.time, event.state};
    yx_net_u1_t& net = change.net.UU.U1;
    warn_of_force(event);
    if (net.cur_state.state == event.state) return;
    take_state(change.net, change.time, change.state);
    if (net.history != nullptr && net.history->newest().time == change.time)
        net.history->newest().state = change.state;
    else if (net.history != nullptr)
        net.history->append(change.time, change.state);

    const bool checks_spikes = kol_ext.spike_on && !net.cur_state.fixed;
    if (checks_spikes) change.dif = kol_next_change(event);
    fan_out(change, checks_spikes);
}

}  // namespace

void kol_exec_hdler(yx_procedure_t handler) {
    if (handler != nullptr) handler();
}

void kol_exec_cur_event() {
    const yx_event_rec_t* event = kol_ext.cur_event;
    if (event == nullptr) stop(" NIL ptrto_cur_ev:er_8_06: ");
    if (event->pin != nullptr)
        exec_pin_event(*event);
    else
        exec_force_event(*event);
}
