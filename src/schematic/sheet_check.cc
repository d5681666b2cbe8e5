// The checks of a sheet that was read or is to be written.
#include "schematic/sheet_check.h"

#include "schematic/sheet_layout.h"

namespace {

using object = tm_object_gene_rec_t;

class checker {
public:
    explicit checker(const tm_file_gene_recf_t& file) : file_(file) {}

    const char* header_fault() const {
        const bool is_good = is_none_or(file_.primary_object, tm_type_main) &&
                             is_none_or(file_.page_obj_id, tm_type_page) &&
                             is_none_or(file_.grid_obj_id, tm_type_grid_2d);
        return is_good ? nullptr : "an object of the header";
    }

    const char* fault_of(std::int16_t id) const {
        const object& each = at(id);
        if (each.object_id != id) return "object_id";
        if ((each.status & tm_object_is_deleted) != 0) return "deleted";
        if (fin_of(each) != tm_fin_object) return "fin";
        if (const char* fault = tree_fault(each)) return fault;
        if (const char* fault = reference_fault(each)) return fault;
        return shape_fault(each);
    }

    // The links agree, so that what is left to be wrong is a circle or a tree too deep.
    bool has_circle() const { return walks_in_a_circle() || is_too_deep(); }

private:
    bool is_id(std::int16_t id) const { return id >= 0 && id <= file_.object_id_max; }
    const object& at(std::int16_t id) const { return *file_.ar_objindex[static_cast<std::size_t>(id - 1)]; }
    bool is_none_or(std::int16_t id, std::int16_t type) const {
        return id == 0 || (is_id(id) && at(id).object_type == type);
    }

    static std::int16_t fin_of(const object& each) {
        const lay_row<object>& last = tm_part_layout(each.object_type).forms.back().rows.back();
        return last.name == "fin" ? static_cast<std::int16_t>(last.value(each)) : tm_fin_object;
    }

    const char* tree_fault(const object& each) const {
        if (!is_id(each.father) || !is_id(each.previous) || !is_id(each.following) || !is_id(each.child1))
            return "an id out of range";
        if (each.following != 0 &&
            (at(each.following).previous != each.object_id || at(each.following).father != each.father))
            return "following";
        if (each.previous != 0 && at(each.previous).following != each.object_id) return "previous";
        if (each.child1 != 0 && (at(each.child1).father != each.object_id || at(each.child1).previous != 0))
            return "child1";
        return each.father != 0 && holds_properties_only(at(each.father)) &&
                       each.object_type != tm_type_property_2d
                   ? "not a property"
                   : nullptr;
    }

    static bool holds_properties_only(const object& father) {
        return father.object_type == tm_type_property_family || father.object_type == tm_type_bodpropfam ||
               father.object_type == tm_type_pinpropfam || father.object_type == tm_type_pin;
    }

    const char* reference_fault(const object& each) const {
        for (const tm_sheet_reference& reference : tm_references_of(each.object_type)) {
            const std::int16_t id = reference.at(const_cast<object&>(each));
            if (!is_none_or(id, reference.target_type) && !is_none_or(id, reference.other_type))
                return reference.name.data();
        }
        return nullptr;
    }

    template <typename Polyline>
    static bool counts(const object& each) {
        const auto& polyline = static_cast<const Polyline&>(each);
        return polyline.n_points >= 0 &&
               static_cast<std::size_t>(polyline.n_points) <= polyline.points.size();
    }
    static const char* shape_fault(const object& each) {
        const bool is_good =
            each.object_type == tm_type_polyline5_2d  ? counts<tm_object_polyline5_rec_t>(each)
            : each.object_type == tm_type_polyline_2d ? counts<tm_object_polyline_rec_t>(each)
                                                      : true;
        return is_good ? nullptr : "n_points";
    }

    // Every object is met once on the way from the first of its siblings, unless they close a circle.
    bool walks_in_a_circle() const {
        std::int32_t met = 0;
        for (std::int16_t id = 1; id <= file_.object_id_max; ++id) {
            if (at(id).previous != 0) continue;
            for (std::int16_t next = id; next != 0; next = at(next).following) ++met;
        }
        return met != file_.object_id_max;
    }

    bool is_too_deep() const {
        for (std::int16_t id = 1; id <= file_.object_id_max; ++id) {
            std::int16_t depth = 0;
            for (std::int16_t up = id; up != 0; up = at(up).father)
                if (++depth > tm_max_object_levels) return true;
        }
        return false;
    }

    const tm_file_gene_recf_t& file_;
};

}  // namespace

bool tm_sheet_check(const tm_file_gene_recf_t& file, std::string& why) {
    const checker objects(file);
    why.clear();
    for (std::int16_t id = 1; id <= file.object_id_max; ++id)
        if (const char* fault = objects.fault_of(id)) {
            why = "object " + std::to_string(id) + " : " + fault;
            return false;
        }
    if (const char* fault = objects.header_fault())
        why = fault;
    else if (objects.has_circle())
        why = "the tree";
    return why.empty();
}
