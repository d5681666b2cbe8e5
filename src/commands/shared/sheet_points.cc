// Points of the sheet, typed or under the cursor.
#include "commands/shared/sheet_points.h"

#include "commands/shared/rejections.h"
#include "commands/shared/sheet_levels.h"
#include "foundation/numbers.h"
#include "schematic/page_area.h"
#include "schematic/pick.h"
#include "schematic/snap.h"

namespace {

constexpr kol_rejection_t point_invalid{"# !! Error : Invalid coordinate ? "};
constexpr kol_rejection_t cursor_outside{"# !! Error :  cursor  outside of page ? "};

bool read_real(const tm_string_record_t& keyword, std::int32_t& real) {
    bool error_found = false;
    tm_string_to_real(keyword, real, error_found);
    return !error_found;
}

}  // namespace

kol_rejection_t kol_check_context_sheet() {
    if (tm_vext.numpage != tm_page::context) return kol_window_invalid;
    return kol_context_file() == 0 ? kol_no_sheet : kol_rejection_t{};
}

kol_rejection_t kol_read_point(std::int16_t k, const kol_line_t& line, tm_point_t& point) {
    const bool is_typed = line.nkeyword >= k;
    if (is_typed && line.nkeyword != k + 1) return kol_count_invalid;
    if (!is_typed && tm_vext.numpage != tm_page::context) return kol_window_invalid;
    if (kol_context_file() == 0) return kol_no_sheet;
    point = tm_vext.obj_pos;
    if (!is_typed) return {};
    const auto next = static_cast<std::int16_t>(k + 1);
    const bool is_point = read_real(line[k], point.x) && read_real(line[next], point.y);
    return is_point ? kol_rejection_t{} : point_invalid;
}

kol_rejection_t kol_snap_into_page(bool is_typed, tm_point_t& point) {
    point = tm_snapped(point);
    if (tm_inside_page(kol_context_file(), point)) return {};
    return is_typed ? kol_outside_page : cursor_outside;
}

std::string kol_point_text(const tm_point_t& point) {
    tm_string_record_t x, y;
    tm_real_to_string(point.x, x);
    tm_real_to_string(point.y, y);
    return std::string(tm_view(x)) + " " + std::string(tm_view(y)) + " ";
}

kol_rejection_t kol_read_snapped_point(std::int16_t k, const kol_line_t& line, tm_point_t& point) {
    const kol_rejection_t wrong = kol_read_point(k, line, point);
    if (!wrong && tm_vext.snap_on) point = tm_snapped(point);
    return wrong;
}
