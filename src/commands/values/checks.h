// kol: the tables that are checked, as an archive: their rows, how far they have come, what was counted.
#pragma once

#include "foundation/archive.h"

void kol_archive_checks(tm_archive_t& archive);
