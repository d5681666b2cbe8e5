// DUMP: a file of all nets below a path that grows while runs go on.
#include "results/files/dump.h"

#include "commands/files/file_path.h"
#include "commands/files/handlers.h"
#include "commands/shared/parameters.h"
#include "foundation/files.h"

namespace {

constexpr kol_rejection_t levels_invalid{"# !! Error : Invalid number of levels "};
constexpr kol_rejection_t no_dump{"# !! Error : NO DUMP is on ? "};
constexpr kol_rejection_t dump_cut{"# !! Error : the DUMP could not be written to its end ? "};
constexpr std::int32_t most_levels = 1000;

kol_result_t end_dump() {
    if (!rs_is_dumping()) return no_dump;
    return rs_end_dump() ? kol_rejection_t{} : dump_cut;
}

std::string path_of(const tm_string_record_t& keyword) {
    std::string path(tm_view(keyword));
    if (!path.starts_with('/')) path.insert(0, tm_view(kol_ext.cur_sim_path));
    if (!path.ends_with('/')) path += '/';
    return path;
}

}  // namespace

kol_result_t kol_dump_cmd(const kol_line_t& line) {
    if (line.nkeyword == 2 && tm_const_equal_string("OFF", line[2]) && line[2].len == 3) return end_dump();
    const tm_string_record_t& last = line[line.nkeyword];
    const bool has_strengths = line.nkeyword > 2 && tm_const_equal_string("STR", last);
    const auto keywords = static_cast<std::int16_t>(line.nkeyword - (has_strengths ? 1 : 0));
    if (keywords > 4) return kol_count_invalid;
    std::int16_t levels = 0;
    if (keywords == 4 && !kol_read_number(line[4], most_levels, levels)) return levels_invalid;
    const std::string path = keywords > 2 ? path_of(line[3]) : "/";
    const tm_string_record_t file = kol_file_path(tm_view(line[2]));
    std::string error;
    if (rs_begin_dump(tm_resolve_path(file), path, levels, has_strengths, error)) return {};
    return kol_result_t(kol_cannot_open).then({" !! \"", tm_view(file), "\" : ", error});
}
