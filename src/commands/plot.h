// kol: plots by command.  PLOT TRACE, PLOT SHEET and HARDCOPY put a picture into the file that their keyword
// names, below the schematic directory unless the name begins with "/" or "$"; without a name they print it.
#pragma once

#include "canvas/plot.h"
#include "commands/command.h"
#include "foundation/context.h"

// The Results page as it is shown, or with the other of its views.
tm_plot_t kol_results_plot(bool list);
// What the Context page shows of a sheet.
tm_plot_t kol_sheet_plot(tm_file_index_t file);
// The first parameter, when there is one, names the file.
kol_result_t kol_plot(const kol_line_t& line, const tm_plot_t& plot);
