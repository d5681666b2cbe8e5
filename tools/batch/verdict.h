// The verdict on a session: what was rejected or failed, by the lines that it showed and by what has no line.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

// Kinds of lines, and failures without one; those up to fatal always fail a session.
enum class bt_kind : std::uint8_t {
    error,       // a command is rejected, a file operation fails, the design cannot be set up
    broken,      // a run that the limit of warnings or Control-C ended
    child,       // a program of SYSTEM or '!' ended with another status than 0
    difference,  // the transcript is not the expected one
    fatal,       // the session could not go on
    violation,   // of a setup, hold or minimum time
    hazard,
    spike,
    warning,
    none,
};
inline constexpr std::size_t bt_kinds = static_cast<std::size_t>(bt_kind::none);

inline constexpr std::array<std::string_view, bt_kinds> bt_kind_names = {
    "errors",     "broken_runs", "failed_programs", "differences", "fatal_stops",
    "violations", "hazards",     "spikes",          "warnings"};

struct bt_verdict_t {
    std::array<std::int64_t, bt_kinds> count{};

    std::int64_t& operator[](bt_kind kind) { return count[static_cast<std::size_t>(kind)]; }
};

// The kind of a line of the session area; none where it tells nothing bad.
bt_kind bt_kind_of(std::string_view line);
void bt_note(bt_kind kind, bt_verdict_t& verdict);
// Whether a kind fails the session.
bool bt_fails(bt_kind kind, bool warnings_are_errors);
// How much of the verdict does.
std::int64_t bt_failures(const bt_verdict_t& verdict, bool warnings_are_errors);
