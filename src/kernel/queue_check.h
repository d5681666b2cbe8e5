// kol: the check of the event queue.  Times never decrease; within one time the handler priorities never
// increase, a FORCE event beginning afresh; queue and free list are the same read forward and backward.  Any
// violation is fatal (file_data_invalid).
#pragma once

#include "kernel/context.h"

// The whole queue and the free list.
void kol_list_all_event();
// One queued event and its neighbours only.
void kol_check_neighbours(const yx_event_rec_t& event);
