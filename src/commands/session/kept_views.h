// kol: the views that were shown.  Before a command changes what a page shows, what it shows is kept, the
// last kol_most_kept_views of both pages together; ZOOM BACK returns to them.
#pragma once

#include <cstddef>

inline constexpr std::size_t kol_most_kept_views = 20;

void kol_keep_view();
// Returns to what was shown last on the page, which is then kept no more; false: nothing is kept of it.
bool kol_return_to_kept_view();
