// WRITE LIST.
#include <sys/types.h>

#include "commands/files/file_path.h"
#include "commands/files/handlers.h"
#include "commands/shared/parameters.h"
#include "foundation/context.h"
#include "foundation/replacement.h"
#include "foundation/shell.h"
#include "results/files/list_file.h"
#include "results/list/layout.h"

namespace {

constexpr std::string_view default_list_file = "kolv_list_result";
constexpr kol_rejection_t begin_time_invalid{"# !! Error : Invalid begin_time "};
constexpr kol_rejection_t end_time_invalid{"# !! Error : Invalid end_time "};

constexpr mode_t list_file_mode = 0660;

kol_rejection_t read_range(const kol_line_t& line, std::int32_t& begin_time, std::int32_t& end_time) {
    begin_time = 0;
    end_time = kol_ext.end_time;
    if (line.nkeyword == 4) return kol_count_invalid;
    if (line.nkeyword != 5) return {};
    if (!kol_read_positive_time(line[4], begin_time)) return begin_time_invalid;
    if (!kol_read_positive_time(line[5], end_time)) return end_time_invalid;
    return {};
}

// False when the file could not be written whole: the older one is as it was.
bool write_list(const tm_string_record_t& path, std::int32_t begin_time, std::int32_t end_time) {
    tm_replacement file(path, list_file_mode);
    if (!file.is_open()) return false;
    kol_update_column_list(nullptr);
    kol_list_wfile_signame(file.stream());
    kol_list_wfile_sigresult(file.stream(), begin_time, end_time);
    return file.take_place();
}

}  // namespace

kol_result_t kol_write_list_cmd(const kol_line_t& line) {
    std::int32_t begin_time = 0, end_time = 0;
    if (const kol_rejection_t wrong = read_range(line, begin_time, end_time)) return wrong;
    const tm_string_record_t path = kol_file_path(line.nkeyword == 2 ? default_list_file : tm_view(line[3]));
    if (!write_list(path, begin_time, end_time))
        return kol_result_t(kol_cannot_open).then({" !! \"", tm_view(path), "\" "});
    return {};
}
