// Selection by area.
#include "schematic/select.h"

#include <array>
#include <iterator>

#include "schematic/object.h"

namespace {

constexpr tm_family first_order[] = {tm_family::property, tm_family::instance, tm_family::net,
                                     tm_family::vertex,   tm_family::frame,    tm_family::tag};

// Whether the state has changed.
bool set_selected(tm_file_index_t file_index, std::int16_t id, bool on) {
    if (tm_inq_object_selected(file_index, id) == on) return false;
    tm_set_object_selected(file_index, id, on);
    return true;
}

tm_box_t box_of(const tm_thing_t& thing) {
    tm_box_t box;
    tm_enclose(box, thing.from);
    tm_enclose(box, thing.to);
    return box;
}

template <typename Visit>
void for_things_inside(tm_file_index_t file_index, const tm_bounds_t& area, Visit visit) {
    const tm_box_t outer = tm_box(area);
    tm_for_things(tm_reader_t(file_index), [&](const tm_thing_t& thing) {
        if (tm_lies_inside(box_of(thing), outer)) visit(thing);
    });
}

// The first of each family, of what is selected already when asked so; 0 none.
std::int16_t first_inside(tm_file_index_t file_index, const tm_bounds_t& area, bool selected_only) {
    std::array<std::int16_t, std::size(first_order)> firsts{};
    for_things_inside(file_index, area, [&](const tm_thing_t& thing) {
        if (!tm_family_holds(tm_family::first, thing.family)) return;
        if (selected_only && !tm_inq_object_selected(file_index, thing.id)) return;
        for (std::size_t i = 0; i < firsts.size(); ++i)
            if (first_order[i] == thing.family && firsts[i] == 0) firsts[i] = thing.id;
    });
    for (const std::int16_t id : firsts)
        if (id != 0) return id;
    return 0;
}

}  // namespace

void tm_select_area(tm_file_index_t file_index, tm_family family, const tm_bounds_t& area, bool on,
                    std::int32_t& count) {
    count = 0;
    if (family == tm_family::first) {
        const std::int16_t id = first_inside(file_index, area, !on);
        count = id != 0 && set_selected(file_index, id, on) ? 1 : 0;
        return;
    }
    for_things_inside(file_index, area, [&](const tm_thing_t& thing) {
        if (tm_family_holds(family, thing.family) && set_selected(file_index, thing.id, on)) ++count;
    });
}

void tm_unselect_all(tm_file_index_t file_index, std::int32_t& count) {
    count = 0;
    if (!tm_is_file_open(file_index)) return;
    for (tm_object_gene_rec_t* object : tm_file_header(file_index).ar_objindex) {
        if (object == nullptr || !tm_is_selected(*object)) continue;
        tm_set_object_selected(file_index, object->object_id, false);
        ++count;
    }
}
