// xp_message: what the expander has to say.  Owns the wording of every refusal and the list of warnings.  A
// status is sticky: a step that finds it failed does nothing, so a run is straight-line code with one check
// at its end.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

enum class xp_fault : std::uint8_t {
    none,
    bad_usage,
    no_yosys,
    yosys_failed,
    cannot_read,
    cannot_write,
    bad_json,
    bad_value,
    missing_value,
    no_top,
    unknown_cell,
    missing_module,
    black_box,
    recursive_module,
    too_deep,
    unknown_port,
    bad_width,
    driven_constant,
    joined_constants,
    two_drivers,
    bad_drive,
    bad_timing,
    bad_delay,
    bad_library,
    bad_sdf,
    too_large,
    count,
};

struct xp_status {
    xp_fault fault = xp_fault::none;
    std::string where;   // file, place in it, or path of a cell
    std::string detail;  // what was found
    std::vector<std::string> warnings, notes;
};

inline bool xp_ok(const xp_status& status) { return status.fault == xp_fault::none; }

// Keeps the first fault; later ones are dropped.
void xp_fail(xp_status& status, xp_fault fault, std::string_view where, std::string_view detail = {});
void xp_warn(xp_status& status, std::string_view where, std::string_view text);

// One line for the user that is no warning.
void xp_note(xp_status& status, std::string_view text);

// "where: text: detail", for a failed status.
std::string xp_message_text(const xp_status& status);
std::string xp_quoted(std::string_view text);
