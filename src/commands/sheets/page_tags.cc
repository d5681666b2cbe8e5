// Following tags to other pages.
#include "commands/sheets/page_tags.h"

#include <algorithm>
#include <cstdlib>

#include "commands/shared/sheet_levels.h"
#include "commands/sheets/found_objects.h"
#include "commands/sheets/sheet_pages.h"
#include "foundation/shell.h"
#include "schematic/object_walk.h"
#include "schematic/pick.h"
#include "schematic/select.h"

namespace {

constexpr std::int32_t row_room = 5000;  // a text beside a tag stands at most so far above or below its row

bool leads_elsewhere(const tm_object_tag_rec_t& tag) {
    return tm_const_iden_name("FROM_PAGE", tag.name) || tm_const_iden_name("TO_PAGE", tag.name);
}

// The text beside the tag among those of its net.
std::string pages_beside(tm_file_index_t file, const tm_object_tag_rec_t& tag) {
    std::string nearest;
    std::int64_t least = INT64_MAX;
    for (const std::int16_t net : kol_find_nets(file, tm_string(tm_view(tag.nvalue))))
        for (const std::int16_t id : tm_properties(file, net)) {
            const auto& text = tm_object_as<tm_type_property_2d>(file, id);
            const std::int64_t away = std::abs(std::int64_t{text.origin.x} - tag.origin.x);
            if (!tm_const_iden_name("PAGE", text.name) || away >= least) continue;
            if (std::abs(text.origin.y + text.height / 2 - tag.origin.y) > row_room) continue;
            least = away;
            nearest = tm_view(text.nvalue);
        }
    return nearest;
}

std::int16_t tag_at(tm_file_index_t file, const tm_point_t& at) {
    return tm_nearest(file, tm_family::tag, tm_viewport(file), at);
}

// On the page it leads to a bit may be part of a thick wire alone.
kol_found_objects_t find_net_or_vector(tm_file_index_t file, const std::string& name) {
    const kol_found_objects_t found = kol_find_nets(file, tm_string(name));
    if (!found.empty()) return found;
    return kol_find_nets(file, tm_string(name.substr(0, name.rfind('[')) + "[*"));
}

}  // namespace

std::int16_t kol_page_of_tag(tm_file_index_t file, std::int16_t tag) {
    const auto& record = tm_object_as<tm_type_tag>(file, tag);
    if (!leads_elsewhere(record)) return 0;
    const std::string pages = pages_beside(file, record);
    const std::size_t digit = pages.find_first_of("0123456789");
    return digit == std::string::npos ? std::int16_t{0}
                                      : static_cast<std::int16_t>(std::atoi(pages.c_str() + digit));
}

std::string kol_net_name_at(tm_file_index_t file, const tm_point_t& at) {
    if (const std::int16_t tag = tag_at(file, at); tag != 0)
        return std::string(tm_view(tm_object_as<tm_type_tag>(file, tag).nvalue));
    const std::int16_t net = tm_nearest(file, tm_family::net, tm_viewport(file), at);
    return net == 0 ? std::string() : kol_name_of(file, net);
}

bool kol_follow_tag(const tm_point_t& at) {
    const tm_file_index_t file = kol_context_file();
    if (file == 0 || file != kol_level_file()) return false;
    const std::int16_t tag = tag_at(file, at);
    kol_page_t page = kol_page_of(file);
    page.number = tag == 0 ? std::int16_t{0} : kol_page_of_tag(file, tag);
    if (!kol_page_exists(page)) return false;
    const std::string name(tm_view(tm_object_as<tm_type_tag>(file, tag).nvalue));
    if (kol_turn_page(page) != kol_sheet_found::yes) return false;
    const kol_found_objects_t found = find_net_or_vector(kol_context_file(), name);
    kol_select_found(kol_context_file(), found, true);
    kol_centre_on(kol_context_file(), found);
    tm_shell.redraw_context();
    return true;
}
