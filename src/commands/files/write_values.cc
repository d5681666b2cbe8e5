// WRITE LIST, WRITE VCD and WRITE CSV: what has been observed, from a begin time to an end time.
#include <sys/types.h>

#include "commands/files/file_path.h"
#include "commands/files/handlers.h"
#include "commands/shared/parameters.h"
#include "foundation/replacement.h"
#include "results/files/csv_file.h"
#include "results/files/list_file.h"
#include "results/files/vcd_file.h"
#include "results/list/layout.h"

namespace {

constexpr kol_rejection_t begin_time_invalid{"# !! Error : Invalid begin_time "};
constexpr kol_rejection_t end_time_invalid{"# !! Error : Invalid end_time "};
constexpr kol_rejection_t option_invalid{
    "# !! Error : last parameter invalid ( should be : \"Strengths\" ) "};

constexpr mode_t written_file_mode = 0660;

struct written_t {
    std::string_view default_name;
    void (*write)(std::FILE* file, std::int32_t begin_time, std::int32_t end_time);
};

void write_list(std::FILE* file, std::int32_t begin_time, std::int32_t end_time) {
    kol_update_column_list(nullptr);
    kol_list_wfile_signame(file);
    kol_list_wfile_sigresult(file, begin_time, end_time);
}

constexpr written_t list_file{"kolv_list_result", write_list};
constexpr written_t csv_file{"kolv_list.csv", rs_write_csv};
template <bool has_strengths>
constexpr written_t vcd_file{"kolv_values.vcd",
                             [](std::FILE* file, std::int32_t begin_time, std::int32_t end_time) {
                                 rs_write_vcd(file, begin_time, end_time, has_strengths);
                             }};

kol_rejection_t read_range(const kol_line_t& line, std::int16_t keywords, std::int32_t& begin_time,
                           std::int32_t& end_time) {
    begin_time = 0;
    end_time = kol_ext.end_time;
    if (keywords == 4) return kol_count_invalid;
    if (keywords != 5) return {};
    if (!kol_read_positive_time(line[4], begin_time)) return begin_time_invalid;
    if (!kol_read_positive_time(line[5], end_time)) return end_time_invalid;
    return {};
}

// The parameters are the first keywords.  A file that could not be written whole leaves the older one as it
// was.
kol_result_t write(const kol_line_t& line, std::int16_t keywords, const written_t& written) {
    std::int32_t begin_time = 0, end_time = 0;
    if (const kol_rejection_t wrong = read_range(line, keywords, begin_time, end_time)) return wrong;
    const tm_string_record_t path = kol_file_path(keywords == 2 ? written.default_name : tm_view(line[3]));
    tm_replacement file(path, written_file_mode);
    if (file.is_open()) written.write(file.stream(), begin_time, end_time);
    if (file.is_open() && file.take_place()) return {};
    return kol_result_t(kol_cannot_open).then({" !! \"", tm_view(path), "\" "});
}

}  // namespace

kol_result_t kol_write_list_cmd(const kol_line_t& line) { return write(line, line.nkeyword, list_file); }

kol_result_t kol_write_csv_cmd(const kol_line_t& line) { return write(line, line.nkeyword, csv_file); }

kol_result_t kol_write_vcd_cmd(const kol_line_t& line) {
    if (line.nkeyword != 4 && line.nkeyword != 6) return write(line, line.nkeyword, vcd_file<false>);
    if (!kol_begins_with_one_of(line[line.nkeyword], "S")) return option_invalid;
    return write(line, static_cast<std::int16_t>(line.nkeyword - 1), vcd_file<true>);
}
