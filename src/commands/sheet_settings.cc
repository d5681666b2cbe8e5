// MARK, BASEPOINT, GRID, SNAP and SMASH.
#include <algorithm>
#include <limits>

#include "commands/handlers.h"
#include "commands/marks.h"
#include "commands/sheet.h"
#include "foundation/context.h"
#include "foundation/numbers.h"
#include "foundation/shell.h"
#include "schematic/page_area.h"
#include "schematic/snap.h"

namespace {

constexpr std::string_view mark_words = " MARK ";
constexpr std::string_view base_words = " BASEpoint ";
constexpr std::string_view grid_words = " GRId ";
constexpr std::string_view step_words = " GRId STep ";

constexpr kol_rejection_t switch_invalid{second_par_incorrect};
constexpr kol_rejection_t step_invalid{"# !! Error : Invalid grid step ( should be above 0 ) "};
constexpr kol_rejection_t no_grid{"# !! Error : No grid on this sheet ? "};
constexpr kol_rejection_t wrong_page{"# !! Error :  Invalid window ? "};

bool read_switch(const tm_string_record_t& keyword, bool& on) {
    on = tm_const_equal_string("ON", keyword);
    return on || tm_const_equal_string("OF", keyword);
}

// False: refused.
bool turn(std::string_view words, bool& state, std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    bool on = false;
    if (!read_switch(kol_kw(keyword, 2), on)) {
        kol_reject(words, 2, nkeyword, keyword, switch_invalid);
        return false;
    }
    state = on;
    kol_show({words, on ? "ON " : "OFF "});
    return true;
}

kol_rejection_t read_snapped(std::int16_t k, std::int16_t nkeyword, kol_array_keyword_t& keyword,
                             tm_point_t& point) {
    const kol_rejection_t wrong = kol_read_point(k, nkeyword, keyword, point);
    if (!wrong && tm_vext.snap_on) point = tm_snapped(point);
    return wrong;
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
void kol_mark_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    if (nkeyword == 1 && tm_vext.numpage != tm_page::context) {
        kol_mark_signal();
        return tm_display(mark_words);
    }
    tm_point_t point;
    kol_rejection_t wrong = read_snapped(2, nkeyword, keyword, point);
    if (!wrong && tm_vext.numpage != tm_page::context) wrong = wrong_page;
    if (wrong) return kol_reject(mark_words, 2, nkeyword, keyword, wrong);
    kol_mark_corner(point);
    kol_show({mark_words, kol_point_text(point)});
    kol_show({"# from base point : ",
              kol_point_text({way(tm_vext.base_point.x, point.x), way(tm_vext.base_point.y, point.y)})});
}

// The command entry offers it with the word Edit before the coordinates.
void kol_base_point_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    const bool with_word = nkeyword > 1 && kol_begins_with_letter(kol_kw(keyword, 2));
    tm_point_t point;
    const kol_rejection_t wrong = read_snapped(with_word ? 3 : 2, nkeyword, keyword, point);
    if (wrong) return kol_reject(base_words, 2, nkeyword, keyword, wrong);
    tm_vext.base_point = point;
    kol_show({base_words, kol_point_text(point)});
}

void kol_grid_state_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    if (!turn(grid_words, tm_vext.grid_on, nkeyword, keyword)) return;
    if (tm_object_grid_rec_t* const grid = kol_sheet_grid()) grid->grid_on = tm_vext.grid_on;
    tm_shell.redraw_context();
}

void kol_grid_step_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    std::int32_t step = 0;
    bool error_found = false;
    tm_string_to_real(kol_kw(keyword, 3), step, error_found);
    if (error_found || step <= 0) return kol_reject(step_words, 3, nkeyword, keyword, step_invalid);
    tm_object_grid_rec_t* const grid = kol_sheet_grid();
    if (grid == nullptr) return kol_reject(step_words, 3, nkeyword, keyword, no_grid);
    grid->step_point = step;
    tm_shell.redraw_context();
    tm_string_record_t text;
    tm_real_to_string(step, text);
    kol_show({step_words, tm_view(text), " "});
}

void kol_snap_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    turn(" SNAp ", tm_vext.snap_on, nkeyword, keyword);
}

void kol_smash_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    turn(" SMAsh ", tm_vext.smash_on, nkeyword, keyword);
}
