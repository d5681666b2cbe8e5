// The rectangle of a sheet.
#include "schematic/page_area.h"

#include "schematic/object_box.h"

namespace {

constexpr tm_bounds_t usual_page = {0, 0, 1'000'000, 1'000'000};
constexpr double margin_share = 0.02;

bool has_area(const tm_box_t& box) { return box.xmax > box.xmin && box.ymax > box.ymin; }

// Bounds are offsets from the object's origin.
tm_box_t box_of(const tm_object_gene_rec_t* object) {
    tm_box_t box;
    if (object == nullptr || !tm_is_shown(*object) || object->bounds.xmin > object->bounds.xmax) return box;
    const tm_spot_t at = tm_spot(object->origin);
    tm_enclose(box, tm_spot_t{at.x + object->bounds.xmin, at.y + object->bounds.ymin});
    tm_enclose(box, tm_spot_t{at.x + object->bounds.xmax, at.y + object->bounds.ymax});
    return box;
}

tm_box_t page_box(tm_file_index_t file_index) {
    const tm_reader_t reader(file_index);
    if (reader.file == nullptr) return {};
    tm_box_t box = box_of(reader.object(reader.file->page_obj_id));
    if (!has_area(box)) box = box_of(reader.object(reader.file->grid_obj_id));
    if (!has_area(box)) box = tm_object_box(reader, reader.file->primary_object);
    return box;
}

}  // namespace

tm_bounds_t tm_page_area(tm_file_index_t file_index) {
    const tm_box_t box = page_box(file_index);
    if (!has_area(box)) return usual_page;
    return {tm_coordinate(box.xmin), tm_coordinate(box.ymin), tm_coordinate(box.xmax),
            tm_coordinate(box.ymax)};
}

tm_bounds_t tm_whole_page(tm_file_index_t file_index) {
    const tm_box_t page = tm_box(tm_page_area(file_index));
    const double across = (page.xmax - page.xmin) * margin_share, up = (page.ymax - page.ymin) * margin_share;
    return {tm_coordinate(page.xmin - across), tm_coordinate(page.ymin - up),
            tm_coordinate(page.xmax + across), tm_coordinate(page.ymax + up)};
}

bool tm_inside_page(tm_file_index_t file_index, const tm_point_t& at) {
    const tm_bounds_t page = tm_page_area(file_index);
    return at.x >= page.xmin && at.x <= page.xmax && at.y >= page.ymin && at.y <= page.ymax;
}
