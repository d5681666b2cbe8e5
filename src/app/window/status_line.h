// tm: the status line below the pages: what stands under the pointer, with its value and last change, and
// where the simulation is; a run shows how far it is.
#pragma once

#include <string_view>

#include "app/window/window_record.h"

// At the foot of the window's form; the line.
Widget status_create(Widget form);
// Shows soon what there is to show; many calls show it once.
void status_soon();
// While a run goes on: shows it now, but not more often than a reader can follow.
void status_show_run();
// The title of the window, behind which the place and time of the simulation stand.
void status_name_window(std::string_view name);
