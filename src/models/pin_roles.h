// kol: pin roles.  What the set-ups of flip-flop, latch, checker and switch share: a model states its roles
// as rows (name, polarity letters, error lines, use of the timing properties) and what its other pins are;
// the set-up walks the pins of the current instance in order, fills the roles and outputs, and stops at the
// first user error, which is shown and counted.
#pragma once

#include <array>
#include <span>
#include <string_view>

#include "models/timing_role.h"

inline constexpr std::size_t kol_max_outputs = 8;

enum class kol_limit_use : std::uint8_t { stored, warned, ignored };

struct kol_role_rule_t {
    char letter;                // first character of the PIN values of this role
    std::string_view rest;      // what follows it; then one of the letters P, N, X may end the name
    bool has_polarity;          // false: no such letter
    char edge_of_p, edge_of_n;  // the edges that P and N stand for
    std::string_view name_error;
    std::string_view polarity_error;
    kol_limit_use pulse, window;  // the minimum times; setup and hold
    bool has_edge = true;         // false: EDGE is not read where the name has no letter
};

enum class kol_other_pin : std::uint8_t { output, terminal, refused };

struct kol_pin_plan_t {
    std::span<const kol_role_rule_t> roles;
    kol_other_pin other;
    bool has_delays;  // RISE and FALL are required
    bool has_limits;  // the four timing properties are read
};

struct kol_outputs_t {
    std::array<yx_pin_record_t*, kol_max_outputs> q_pin{}, qb_pin{};  // true and inverted outputs
    std::int32_t nb_q = 0, nb_qb = 0;
};

// The data row, the same for every model that has one, and the texts that rows share.
inline constexpr kol_role_rule_t kol_data_rule = {'D',
                                                  "",
                                                  false,
                                                  'X',
                                                  'X',
                                                  "# !!! Error : Invalid Data Name (D) on pin : ",
                                                  "",
                                                  kol_limit_use::warned,
                                                  kol_limit_use::stored};
inline constexpr std::string_view kol_enable_name_error =
    "# !!! Error : Invalid Enable Name (E,EN,EP,EX) on pin : ";
inline constexpr std::string_view kol_enable_polarity_error =
    "# !!! Error : INVALID Pin Name(EN,EP,EX)  on pin : ";
inline constexpr std::string_view kol_clock_polarity_error =
    "# !!! Error : INVALID Pin Name(CLKN,CLKP,CLKX)  on pin : ";

// Sets up the pins of the current instance; role k of the plan goes to roles[k].  outputs may be none.
void kol_set_up_pins(const kol_pin_plan_t& plan, std::span<kol_timing_role_t* const> roles,
                     kol_outputs_t* outputs);
// Takes delays and limits over from the properties again, silently, after these have been rescaled.
void kol_refresh_pins(const kol_pin_plan_t& plan, std::span<kol_timing_role_t* const> roles);
