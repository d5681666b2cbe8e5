// kol: texts of rejections that several commands show, each worded once.
#pragma once

#include "commands/language/command.h"

// The list refuses whatever would make it wider than its 1024 columns.
inline constexpr kol_rejection_t kol_list_too_wide{"# !! Error : too many columns in LIST ( max : 1024 ) "};

// A command of either view names neither.
inline constexpr kol_rejection_t kol_view_invalid{
    "# !! Error : Invalid 3rd parameter (should be \"List\",\"Trace\") ? "};

inline constexpr kol_rejection_t kol_no_sheet{"# !! Error :  No sheet in Context window ? "};
inline constexpr kol_rejection_t kol_net_not_found{"# !! Error : NET not found "};
inline constexpr kol_rejection_t kol_state_invalid{"# !! Error : state invalid ( 3rd parameter ) "};
inline constexpr kol_rejection_t kol_period_invalid{"# !! Error : Invalid period_time "};
inline constexpr kol_rejection_t kol_signal_name_invalid{
    "# !! Error : parameter invalid ( should begin with letter or \"/\") "};
inline constexpr kol_rejection_t kol_time_scale_invalid{"# !! Error : Invalid time scale "};
inline constexpr kol_rejection_t kol_bus_unknown{"# !! Error : Bus do not Exists ? "};
inline constexpr kol_rejection_t kol_pin_not_found{"# !! Error : Pin not found on this sheet ? "};
inline constexpr kol_rejection_t kol_no_property_selected{"# !! Error : No property selected ? "};
inline constexpr kol_rejection_t kol_object_invalid{"# !! Error : No object of this number on the sheet ? "};
inline constexpr kol_rejection_t kol_sheet_not_found{"# !! Error : Sheet not found ? : "};
inline constexpr kol_rejection_t kol_sheet_invalid{"# !! Error : Sheet not found or Invalid ? : "};
inline constexpr kol_rejection_t kol_sheet_empty{"# !! Error : No Sheet Available ? : "};
// "# LIST " stands where two other commands would show their own words.
inline constexpr std::string_view kol_list_alone = "# LIST ";
