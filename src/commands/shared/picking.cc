// The net at a point of the sheet.

#include "commands/shared/picking.h"

#include "commands/shared/sheet_levels.h"
#include "commands/shared/sheet_points.h"
#include "foundation/context.h"
#include "kernel/lookup.h"
#include "kernel/say.h"
#include "schematic/net_number.h"
#include "schematic/object_reader.h"
#include "schematic/pick.h"

namespace {

constexpr kol_rejection_t no_vertex{"# !! Error :  No Vertex Found at point ? "};

// An end of the wire that is nearest within the pick aperture; 0: none is.
std::int16_t vertex_of_wire_near(tm_file_index_t file, const tm_point_t& at) {
    const std::int16_t id = tm_nearest_segment(file, tm_viewport(file), at);
    const auto* const segment = tm_reader_t(file).record<tm_type_segment>(id);
    return segment != nullptr ? segment->vertex1 : std::int16_t{0};
}

}  // namespace

bool kol_net_near(const tm_point_t& at, kol_picked_net_t& picked) {
    picked = {};
    const tm_file_index_t file = kol_level_file();
    if (file == 0 || file != kol_context_file()) return false;
    picked.vertex = vertex_of_wire_near(file, at);
    if (picked.vertex == 0) return false;
    picked.object_id = tm_net_of(file, picked.vertex);
    kol_find_sheet_net(file, picked.object_id, picked.name, picked.net);
    return picked.net != nullptr;
}

tm_string_record_t kol_name_of_net(const yx_net_record_t& net, const tm_string_record_t& otherwise) {
    const tm_string_record_t path = tm_string(kol_path(net.sim_path));
    yx_net_record_t* found = nullptr;
    return path.len > 0 && kol_find_net(path, found) != 0 && found == &net ? path : otherwise;
}

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
    const bool is_typed = line.nkeyword >= k;
    const tm_point_t pointed = point;
    if (const kol_rejection_t wrong = kol_snap_into_page(is_typed, point)) return wrong;
    if (const kol_rejection_t wrong = kol_check_level_sheet(words)) return wrong;
    picked.vertex = tm_vertex_at(kol_level_file(), point);
    if (picked.vertex == 0 && !is_typed) picked.vertex = vertex_of_wire_near(kol_level_file(), pointed);
    if (picked.vertex == 0) return no_vertex;
    picked.object_id = tm_net_of(kol_level_file(), picked.vertex);
    kol_find_sheet_net(kol_level_file(), picked.object_id, picked.name, picked.net);
    return picked.net == nullptr ? kol_not_in_design : kol_rejection_t{};
}
