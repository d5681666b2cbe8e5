// kol: picking a net on the sheet.  The sheet in the window must be that of the current level; the vertex or
// pin on the pin grid at the cursor or at a given point, or else the wire within the pick aperture of the
// cursor, leads to the net of the sheet, and its name, the
// simulation path followed by "N_" and the net's number, to the net of the design.
#pragma once

#include "commands/language/command.h"
#include "foundation/context.h"
#include "netlist/store.h"

struct kol_picked_net_t {
    std::int16_t vertex = 0;  // a vertex or a pin property family
    std::int16_t object_id = 0;
    tm_string_record_t name;  // also when the design has no such net
    yx_net_record_t* net = nullptr;
};

// What a command says when the sheet is none to pick on.
struct kol_pick_words_t {
    kol_rejection_t no_level, no_sheet;
};
inline constexpr kol_rejection_t kol_not_in_design{"# !! Error :  No NET Found in expand file ? "};

// The coordinates are keywords k and k + 1, if there are any.
kol_rejection_t kol_pick_net(const kol_pick_words_t& words, std::int16_t k, const kol_line_t& line,
                             kol_picked_net_t& picked);
// The net of the wire within the pick aperture of a point; false: there is none, or the design has it not.
bool kol_net_near(const tm_point_t& at, kol_picked_net_t& picked);
// Whether LIST and TRACE call a picked net by its path, else by the number that it has on the sheet.
inline bool kol_picked_by_path = false;
// The path by which the net is known, or the other name when it has none.
tm_string_record_t kol_name_of_net(const yx_net_record_t& net, const tm_string_record_t& otherwise);
// The level and its sheet alone.
kol_rejection_t kol_check_level_sheet(const kol_pick_words_t& words);
// The name and the net of the design, null when it has none, of a net of the sheet.
void kol_find_sheet_net(tm_file_index_t file, std::int16_t object_id, tm_string_record_t& name,
                        yx_net_record_t*& net);
