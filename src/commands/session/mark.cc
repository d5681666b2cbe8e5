// MARK and MARK RECTANGLE: points and areas of the page that is shown.
#include <algorithm>
#include <limits>

#include "commands/observation/move_signal.h"
#include "commands/session/handlers.h"
#include "commands/shared/marks.h"
#include "commands/shared/sheet_points.h"
#include "foundation/context.h"
#include "foundation/numbers.h"

namespace {

constexpr kol_rejection_t corner_invalid{"# !! Error : Invalid corner of rectangle ? "};

constexpr std::int16_t first_coordinate = 3, with_coordinates = 6;

// Pixels are whole numbers, model units decimal ones.
bool read_coordinate(const tm_string_record_t& keyword, std::int32_t& coordinate) {
    bool error_found = false;
    if (tm_vext.numpage == tm_page::results)
        tm_string_to_int32(keyword, coordinate, error_found);
    else
        tm_string_to_real(keyword, coordinate, error_found);
    return !error_found;
}

bool read_corner(std::int16_t k, const kol_line_t& line, tm_point_t& corner) {
    return read_coordinate(line[k], corner.x) &&
           read_coordinate(line[static_cast<std::int16_t>(k + 1)], corner.y);
}

kol_rejection_t mark_rectangle(const kol_line_t& line) {
    if (line.nkeyword < first_coordinate) {
        kol_mark_at_pointer();
        return {};
    }
    tm_point_t first, second;
    if (line.nkeyword != with_coordinates) return kol_count_invalid;
    if (!read_corner(first_coordinate, line, first) || !read_corner(first_coordinate + 2, line, second))
        return corner_invalid;
    kol_mark_area(first, second);
    return {};
}

// As far as 32 bits reach.
std::int32_t way(std::int32_t from, std::int32_t to) {
    constexpr std::int64_t least = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(std::int64_t{to} - from, least, most));
}

}  // namespace

// Shows where the point lies and how far from the base point; two marks make an area.  On the Results page a
// mark picks a signal.
kol_result_t kol_mark_cmd(const kol_line_t& line) {
    if (line.nkeyword == 1 && tm_vext.numpage != tm_page::context) {
        kol_mark_signal();
        return {};
    }
    tm_point_t point;
    kol_rejection_t wrong = kol_read_snapped_point(2, line, point);
    if (!wrong && tm_vext.numpage != tm_page::context) wrong = kol_window_invalid;
    if (wrong) return wrong;
    kol_mark_corner(point);
    return kol_accepted(kol_point_text(point))
        .then({"# from base point : ",
               kol_point_text({way(tm_vext.base_point.x, point.x), way(tm_vext.base_point.y, point.y)})});
}

kol_result_t kol_mark_rectangle_cmd(const kol_line_t& line) { return mark_rectangle(line); }
