// xp_timed: the cells that become a flip-flop, a latch or a switch.  Owns one table of cell families: name,
// controls, model, what stands in front of the data input, and which controls reach pins of their own.  The
// polarities of a cell are letters of its name ("$_DFF_PN0_") or parameters ("ARST_POLARITY").
//
// A plan says what each input pin of the primitive reads, as a formula over one letter a port:
//     D data   C clock   E enable   R reset   S set   L asynchronous load   A its data   Q the output
// An enable is a multiplexer between the output and the new data, a synchronous reset a gate in front of D.
// Where set and reset of a flip-flop are both asynchronous, set reads S and not R, so that it acts when reset
// is released first; a latch does that by itself.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "expand/cell_table.h"

inline constexpr std::string_view xp_timed_ports = "DCERSLAQ";

struct xp_timed_row {
    std::string_view name;      // of a gate-level family without its polarity letters
    std::string_view controls;  // in the order of the polarity letters; v: the value a reset sets
    xp_model model = nullptr;
    std::string_view data;    // from D outwards: e enable, r reset, s set; "-": no data input
    std::string_view direct;  // controls with an asynchronous effect
};

struct xp_timed_form {  // of one cell and one bit
    const xp_timed_row* row = nullptr;
    std::string low;  // the controls that are active while 0
    bool resets_to_one = false;
};

struct xp_timed_pin {
    std::string_view name;
    std::string formula;
    xp_steps steps;         // none when the formula is a port alone
    std::uint8_t port = 0;  // then: of xp_timed_ports
};

// The row of a cell type, none for any other; polarity letters go into the form.
const xp_timed_row* xp_find_timed(std::string_view type, xp_timed_form& form);
bool xp_is_timed(std::string_view type);

bool xp_is_word(const xp_timed_row& row);
bool xp_has_port(const xp_timed_row& row, char letter);
std::string_view xp_timed_port_name(const xp_timed_row& row, char letter);
// Whether the port has a bit for every bit of the output.
bool xp_is_per_bit(const xp_timed_row& row, char letter);

const std::vector<xp_timed_pin>& xp_plan(const xp_timed_form& form);
