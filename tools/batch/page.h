// The page of a session without a window: as large as the window's on a screen of 1280 by 1024 pixels, so
// that plots are the same; drawing on it leaves nothing.
#pragma once

#include "foundation/context.h"

// The pages take the place of the window's; returns their size.
tm_bounds_t bt_open_pages();
