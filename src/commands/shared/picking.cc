// The net at a point of the sheet.

#include "commands/shared/picking.h"

#include "commands/shared/sheet_levels.h"
#include "commands/shared/sheet_points.h"
#include "foundation/context.h"
#include "kernel/lookup.h"
#include "schematic/net_number.h"
#include "schematic/pick.h"

namespace {

constexpr kol_rejection_t no_vertex{"# !! Error :  No Vertex Found at point ? "};

}  // namespace

kol_rejection_t kol_check_level_sheet(const kol_pick_words_t& words) {
    if (!kol_is_level(kol_ext.file_level_cur)) return words.no_level;
    const tm_file_index_t file = kol_level_file();
    return file == 0 || file != tm_vext.file_id_context ? words.no_sheet : kol_rejection_t{};
}

void kol_find_sheet_net(tm_file_index_t file, std::int16_t object_id, tm_string_record_t& name,
                        yx_net_record_t*& net) {
    name = kol_ext.cur_sim_path;
    tm_append("N_", name);
    tm_append(std::to_string(tm_net_number(file, object_id)), name);
    kol_find_net(name, net);
}

kol_rejection_t kol_pick_net(const kol_pick_words_t& words, std::int16_t k, const kol_line_t& line,
                             kol_picked_net_t& picked) {
    picked = {};
    tm_point_t point;
    if (const kol_rejection_t wrong = kol_check_context_sheet()) return wrong;
    if (const kol_rejection_t wrong = kol_read_point(k, line, point)) return wrong;
    if (const kol_rejection_t wrong = kol_snap_into_page(line.nkeyword >= k, point)) return wrong;
    if (const kol_rejection_t wrong = kol_check_level_sheet(words)) return wrong;
    picked.vertex = tm_vertex_at(kol_level_file(), point);
    if (picked.vertex == 0) return no_vertex;
    picked.object_id = tm_net_of(kol_level_file(), picked.vertex);
    kol_find_sheet_net(kol_level_file(), picked.object_id, picked.name, picked.net);
    return picked.net == nullptr ? kol_not_in_design : kol_rejection_t{};
}
