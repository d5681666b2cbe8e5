// kol: the files that commands write and read: a name is one of the schematic directory.
#pragma once

#include <string_view>

#include "foundation/strings.h"

tm_string_record_t kol_file_path(std::string_view name);
