// kol: the rules that several observation commands share.
#pragma once

#include "commands/keyword.h"

// The list refuses whatever would make it wider than its 1024 columns.
inline constexpr kol_rejection_t kol_list_too_wide{"# !! Error : too many columns in LIST ( max : 1024 ) "};

// A command of either view names neither.
inline constexpr kol_rejection_t kol_view_invalid{
    "# !! Error : Invalid 3rd parameter (should be \"List\",\"Trace\") ? "};

// VIEW ALL and VIEW AREA on the Context page.
kol_result_t kol_view_all_context();
kol_result_t kol_view_area_context();
