// yxl: the binary layout of the design file, in the rows of foundation/layout.h.  Records are little-endian
// images of a 32-bit machine, aligned on 4 bytes.  Reference slots mean nothing in the file.
#pragma once

#include "foundation/layout.h"
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

extern const lay_layout<yx_general_info_record_t> yxl_header;
extern const lay_layout<yx_prop_type_record_t> yxl_prop_instance_names, yxl_prop_pin_names,
    yxl_prop_net_names;
extern const lay_layout<yx_string_record_t> yxl_strings;
extern const lay_layout<yx_prop_record_t> yxl_props;
extern const lay_layout<yx_inst_record_t> yxl_insts;
extern const lay_layout<yx_pin_record_t> yxl_pins;
extern const lay_layout<yx_net_record_t> yxl_nets;
extern const lay_layout<yx_net_child_record_t> yxl_net_children;
extern const lay_layout<yx_macro_record_t> yxl_macros;
extern const lay_layout<yx_pinm_record_t> yxl_pinms;
