// tm: status codes and the fatal ends.  Owns the status word of the package operations, the names of its 85
// codes, the fatal exit tm_set_status and the out-of-memory exit.  0 is success; an error is 100990976 plus
// its code; a query that finds nothing answers with another small value.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

union STATUS_T {
    std::int32_t all = 0;
    struct {
        std::int16_t code;
        std::uint8_t modc;
        std::uint8_t subsys;
    } part;
};
static_assert(sizeof(STATUS_T) == 4);

inline constexpr std::int32_t tm_status_base = 100990976;  // subsystem 6, module 5
inline constexpr std::int32_t tm_not_found = -1;

// The codes that the code names; tm_error_array has all 85 names.
enum tm_code : std::int32_t {
    all_is_ok = 0,
    init_not_done = 1,
    init_or_open_file_not_done = 8,
    file_open_invalid = 11,
    file_close_invalid = 12,
    too_many_files = 14,
    file_id_invalid = 16,
    file_index_invalid = 18,
    file_data_invalid = 19,
    viewport_id_invalid = 24,
    too_many_objects = 41,
    invalid_level = 42,
    object_id_invalid = 43,
    object_structure_invalid = 46,
    object_type_invalid = 48,
    object_already_open = 50,
    object_create_invalid = 51,
    object_open_invalid = 52,
    object_close_invalid = 53,
    invalid_arc3p_2d = 60,
    invalid_circle_2d = 61,
    invalid_grid_2d = 62,
    invalid_line_2d = 63,
    invalid_polyline_2d = 64,
    invalid_polyline5_2d = 65,
    invalid_rectangle_2d = 66,
    invalid_tag = 67,
    invalid_property_2d = 68,
    invalid_string = 69,
};

inline constexpr std::size_t tm_error_count = 85;
extern const std::array<std::string_view, tm_error_count> tm_error_array;

// The fatal exit: prints code and name, hands the run to the save hook when start-up had finished, closes the
// trace file, the open sheet files and the display, and aborts.
[[noreturn]] void tm_set_status(std::int32_t error_code, STATUS_T& status);
[[noreturn]] void tm_fatal(std::int32_t error_code);  // the same for callers without a status word
[[noreturn]] void _OutMem();                          // NOLINT(bugprone-reserved-identifier): its old name

// Writes one line to the trace file when it is open; printf-style, a missing line feed at the end is added.
// The wording of trace lines is free.
[[gnu::format(printf, 1, 2)]] void tm_trace(const char* format, ...);
