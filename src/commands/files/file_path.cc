// Paths of files in the schematic directory.
#include "commands/files/file_path.h"

#include "foundation/context.h"

tm_string_record_t kol_file_path(std::string_view name) {
    constexpr std::int32_t schematic_directory = 2;  // position of the stored argument
    tm_string_record_t path;
    STATUS_T status;
    tm_get_arg(schematic_directory, path, status);
    tm_append("/", path);
    tm_append(name, path);
    return path;
}
