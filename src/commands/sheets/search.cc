// SEARCH: the objects of the sheet that carry a text.
#include <string>

#include "commands/shared/parameters.h"
#include "commands/shared/rejections.h"
#include "commands/shared/sheet_levels.h"
#include "commands/sheets/found_objects.h"
#include "commands/sheets/handlers.h"
#include "foundation/context.h"
#include "foundation/shell.h"
#include "schematic/object_walk.h"
#include "schematic/select.h"

namespace {

constexpr kol_rejection_t nothing_found{"# !! Error : Nothing found on this sheet ? "};
constexpr kol_rejection_t no_search{"# !! Error : No text searched before ? "};

bool has_value(tm_file_index_t file, std::int16_t object, std::string_view pattern) {
    for (const std::int16_t id : tm_properties(file, object))
        if (kol_name_fits(pattern, tm_view(tm_object_as<tm_type_property_2d>(file, id).nvalue))) return true;
    return false;
}

// An instance has the properties of its symbol, too.
bool instance_has_value(tm_file_index_t file, std::int16_t instance, std::string_view pattern) {
    const std::int16_t symbol = kol_symbol_of(file, instance);
    return has_value(file, instance, pattern) || (symbol != 0 && has_value(file, symbol, pattern));
}

bool tag_has_value(tm_file_index_t file, std::int16_t tag, std::string_view pattern) {
    return kol_name_fits(pattern, tm_view(tm_object_as<tm_type_tag>(file, tag).nvalue));
}

struct searched_t {
    tm_walk (*objects)(tm_file_index_t file);
    bool (*fits)(tm_file_index_t file, std::int16_t object, std::string_view pattern);
};
constexpr searched_t searched[] = {
    {tm_instances, instance_has_value},
    {tm_nets, has_value},
    {tm_tags, tag_has_value},
    {tm_frames, has_value},
};

kol_found_objects_t find(tm_file_index_t file, std::string_view pattern) {
    kol_found_objects_t found;
    for (const searched_t& kind : searched)
        for (const std::int16_t object : kind.objects(file))
            if (kind.fits(file, object, pattern)) found.push_back(object);
    return found;
}

// Where the next SEARCH without a text goes on.
std::size_t next_found = 0;

void select_all_of(tm_file_index_t file, const kol_found_objects_t& found) {
    std::int32_t count = 0;
    tm_unselect_all(file, count);
    kol_select_found(file, found, true);
    next_found = 0;
}

}  // namespace

// With a text: selects what carries it and shows the first.  Without: shows the next.
kol_result_t kol_search_cmd(const kol_line_t& line) {
    const tm_file_index_t file = kol_context_file();
    if (file == 0) return kol_no_sheet;
    if (line.nkeyword == 1 && !tm_vext.search_on) return no_search;
    const tm_string_record_t text = line.nkeyword == 2 ? kol_keyword_text(line[2]) : tm_vext.search_path;
    const kol_found_objects_t found = find(file, tm_view(text));
    if (found.empty()) return nothing_found;
    if (line.nkeyword == 2) select_all_of(file, found);
    tm_vext.search_on = true;
    tm_vext.search_path = text;
    const std::size_t shown = next_found % found.size();
    next_found = shown + 1;
    kol_centre_on(file, {found[shown]});
    tm_shell.redraw_context();
    return kol_result_t().then({"# ", std::to_string(shown + 1), " of ", std::to_string(found.size()),
                                " : object ", std::to_string(found[shown]), " \"",
                                kol_name_of(file, found[shown]), "\" "});
}
