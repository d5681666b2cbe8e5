// yxl: the binary layout of the design file.  One table of (field, offset, width) rows per record kind, all
// little-endian images of a 32-bit machine; reader, writer and tests walk the same rows.  Reference slots are
// written as zero and skipped on reading.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "netlist/store.h"

inline constexpr std::size_t yxl_header_bytes = 68;
inline constexpr std::size_t yxl_name_entry_bytes = 416;
inline constexpr std::size_t yxl_string_bytes = 12;
inline constexpr std::size_t yxl_prop_bytes = 16;
inline constexpr std::size_t yxl_inst_bytes = 44;
inline constexpr std::size_t yxl_pin_bytes = 120;
inline constexpr std::size_t yxl_net_bytes = 160;
inline constexpr std::size_t yxl_net_child_bytes = 28;
inline constexpr std::size_t yxl_macro_bytes = 40;
inline constexpr std::size_t yxl_pinm_bytes = 40;
