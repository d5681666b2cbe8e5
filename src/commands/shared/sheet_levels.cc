// The sheets that are open.
#include "commands/shared/sheet_levels.h"

#include "foundation/context.h"
#include "schematic/net_number.h"
#include "schematic/sheet_file.h"

namespace {

kol_file_record_t& entry_of(std::int16_t level) {
    return kol_ext.arrayof_file[static_cast<std::size_t>(level - 1)];
}

}  // namespace

tm_file_index_t kol_context_file() {
    return kol_is_file(tm_vext.file_id_context) ? static_cast<tm_file_index_t>(tm_vext.file_id_context)
                                                : tm_file_index_t{0};
}

const kol_file_record_t& kol_level(std::int16_t level) { return entry_of(level); }

void kol_set_level(std::int16_t level, tm_file_index_t file) {
    entry_of(level) = {file, tm_file_record(file).file_pathname, tm_highest_net_number(file)};
}

tm_file_index_t kol_level_file() {
    if (!kol_is_level(kol_ext.file_level_cur)) return 0;
    const tm_file_index_t file = kol_level(kol_ext.file_level_cur).file_index;
    return kol_is_file(file) ? file : tm_file_index_t{0};
}
