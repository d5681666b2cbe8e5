// STATUS NET: the nets of the sheet that are selected.
#include <string>

#include "commands/shared/picking.h"
#include "commands/shared/rejections.h"
#include "commands/shared/sheet_levels.h"
#include "commands/sheets/handlers.h"
#include "foundation/context.h"
#include "foundation/shell.h"
#include "kernel/say.h"
#include "schematic/object_reader.h"
#include "schematic/object_walk.h"

namespace {

constexpr kol_rejection_t no_context_sheet{"# !! No Sheet available in Context Window ?  "};
constexpr kol_rejection_t none_selected{"# !! Error : No NET selected ? "};
constexpr kol_rejection_t not_in_design{"# !! Error : NET not Found in expand file ? "};
constexpr kol_pick_words_t level_words{
    {"# !! Error :  No level sheet VALID for STAtus NET ? "},
    {"# !! Error :  No sheet VALID for STAtus NET ? ", kol_form::usual, kol_list_alone}};

// A pin property family is the place of a pin.
std::string vertex_text(const tm_reader_t& sheet, std::int16_t vertex) {
    const bool is_pin = sheet.record<tm_type_pinpropfam>(vertex) != nullptr;
    return std::to_string(vertex) + (is_pin ? "_P: " : "  : ");
}

void report_segment(tm_file_index_t file, std::int16_t id) {
    const auto& segment = tm_object_as<tm_type_segment>(file, id);
    const tm_reader_t sheet(file);
    kol_show({"# SEGMENT: ", std::to_string(id), " ; ", " VERTEX1", vertex_text(sheet, segment.vertex1),
              " ; ", " VERTEX2", vertex_text(sheet, segment.vertex2)});
}

// A net that is selected as a whole has all its segments selected.
bool is_reported(tm_file_index_t file, std::int16_t net, std::int16_t segment) {
    return tm_inq_object_selected(file, net) || tm_inq_object_selected(file, segment);
}

bool has_selected_segment(tm_file_index_t file, std::int16_t net) {
    for (const std::int16_t segment : tm_segments(file, net))
        if (is_reported(file, net, segment)) return true;
    return false;
}

void report_net(tm_file_index_t file, std::int16_t id, const kol_line_t& line) {
    kol_show({"#  OBJect : Handle = ", std::to_string(id), " ;  type = NET  "});
    for (const std::int16_t segment : tm_segments(file, id))
        if (is_reported(file, id, segment)) report_segment(file, segment);
    tm_string_record_t name;
    yx_net_record_t* net = nullptr;
    kol_find_sheet_net(file, id, name, net);
    if (net != nullptr) return kol_show({"# Net_sim_path: \"", kol_path(net->sim_path), "\" "});
    kol_show_result(line, kol_result_t(not_in_design).then({"# !! net_name : \"", tm_view(name), "\" "}));
}

// A sheet that is not the level's is refused with the words of LIST.
kol_rejection_t check() {
    return kol_context_file() == 0 ? no_context_sheet : kol_check_level_sheet(level_words);
}

}  // namespace

kol_result_t kol_status_net_cmd(const kol_line_t& line) {
    if (const kol_rejection_t wrong = check()) return wrong;
    const tm_file_index_t file = kol_level_file();
    bool any = false;
    for (const std::int16_t net : tm_nets(file)) {
        if (!has_selected_segment(file, net)) continue;
        any = true;
        report_net(file, net, line);
    }
    if (!any) return none_selected;
    return {};
}
