// kol: the ports of a memory.  Owns what its pins are, by name, and their limits, as the set-up finds them.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "models/mem_contents.h"
#include "models/timing_role.h"

struct kol_mem_port_t {
    std::vector<kol_timing_role_t> address, data;      // by bit; data of a write port
    std::map<std::size_t, kol_timing_role_t> enables;  // by the lowest data bit that they are for
    kol_timing_role_t clock, sync_reset, async_reset;
    std::vector<yx_pin_record_t*> outputs;  // by bit; of a read port
    std::vector<std::string> values;        // by bit: at the start, after R, after S
    std::string with_writes;                // by write port: t, x or -
    bool enable_over_reset = false;
    std::vector<std::int8_t> shown;  // by bit; empty: the nets say it
    std::int32_t done = -1;          // time of the last clock change that it has seen

    bool has_clock() const { return clock.pin != nullptr; }
};

struct kol_mem_ports_t {
    std::vector<kol_mem_port_t> reads, writes;
};

// The ports of the current instance; false after an error.  The widths agree, and every bit has its pin.
bool kol_set_up_ports(kol_mem_ports_t& ports, std::size_t& width);
// Takes the limits over from the properties again, silently.
void kol_refresh_ports(kol_mem_ports_t& ports);
// Whether the pin is the port's, and not its clock.
bool kol_is_of_port(const kol_mem_port_t& port, const yx_pin_record_t* pin);
