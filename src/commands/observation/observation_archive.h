// kol: what observes nets as an archive: user buses, list, trace, breaks and probes.
#pragma once

#include "foundation/archive.h"

// Reading drops what there is; the histories of the nets begin anew.
void kol_archive_observation(tm_archive_t& archive);
