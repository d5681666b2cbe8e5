// Parameters of commands that read a table.
#include "commands/values/table_file.h"

#include "commands/files/file_path.h"
#include "commands/files/handlers.h"
#include "commands/shared/parameters.h"
#include "commands/shared/rejections.h"
#include "commands/values/handlers.h"
#include "schematic/whole_file.h"

namespace {

constexpr kol_rejection_t option_invalid{"# !! Error : 4th parameter invalid ( should be : \"Period\" ) "};
constexpr kol_rejection_t first_time_invalid{"# !! Error : Invalid time "};

kol_rejection_t read_times(const kol_line_t& line, kol_table_times_t& times) {
    if (line.nkeyword == 4) return kol_count_invalid;
    if (line.nkeyword == 3) return {};
    if (!kol_begins_with_one_of(line[4], "P")) return option_invalid;
    if (!kol_read_positive_time(line[5], times.period) || times.period == 0) return kol_period_invalid;
    if (line.nkeyword == 6 && !kol_read_positive_time(line[6], times.first)) return first_time_invalid;
    return {};
}

}  // namespace

kol_result_t kol_read_table_file(const kol_line_t& line, kol_table_t& table) {
    kol_table_times_t times;
    if (const kol_rejection_t wrong = read_times(line, times)) return wrong;
    const tm_string_record_t path = kol_file_path(tm_view(line[3]));
    std::string text, error;
    if (!tm_read_whole(path, text, kol_value_file_max))
        return kol_result_t(kol_cannot_open).then({" !! \"", tm_view(path), "\" "});
    if (!kol_read_table(text, times, table, error)) return kol_rejected({"# !! Error : ", error, " "});
    return {};
}
