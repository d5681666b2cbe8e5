// Walks over the tree of objects.
#include "schematic/object_walk.h"

std::int16_t tm_walk::follower(std::int16_t object_id) const {
    if (!whole_file_) return tm_object(file_index_, object_id).following;
    const bool is_last = object_id >= tm_file_header(file_index_).object_id_max;
    return is_last ? std::int16_t{0} : static_cast<std::int16_t>(object_id + 1);
}

std::int16_t tm_walk::accept(std::int16_t candidate) const {
    for (; candidate != 0; candidate = follower(candidate)) {
        const tm_object_gene_rec_t& object = tm_object(file_index_, candidate);
        const bool is_wanted = object_type_ == tm_type_nil || object.object_type == object_type_;
        if (is_wanted && (object.status & tm_object_is_deleted) == 0) break;
    }
    return candidate;
}

std::int16_t tm_walk::first() const {
    if (whole_file_) return accept(follower(0));
    return father_ == 0 ? std::int16_t{0} : accept(tm_object(file_index_, father_).child1);
}

std::int16_t tm_walk::next(std::int16_t after) const { return accept(follower(after)); }

tm_walk tm_symbols(tm_file_index_t file_index) { return tm_walk::of_file(file_index, tm_type_symbol); }
tm_walk tm_instances(tm_file_index_t file_index) { return tm_walk::of_file(file_index, tm_type_instance); }
tm_walk tm_nets(tm_file_index_t file_index) { return tm_walk::of_file(file_index, tm_type_net); }
tm_walk tm_frames(tm_file_index_t file_index) { return tm_walk::of_file(file_index, tm_type_frame); }
tm_walk tm_tags(tm_file_index_t file_index) { return tm_walk::of_file(file_index, tm_type_tag); }

tm_walk tm_children(tm_file_index_t file_index, std::int16_t father, std::int16_t object_type) {
    return tm_walk::of_father(file_index, father, object_type);
}

tm_walk tm_pins(tm_file_index_t file_index, std::int16_t symbol_or_instance) {
    if (tm_object(file_index, symbol_or_instance).object_type == tm_type_instance)
        return tm_children(file_index, symbol_or_instance, tm_type_pinpropfam);
    return tm_children(file_index, tm_child_of_type(file_index, symbol_or_instance, tm_type_pin_family),
                       tm_type_pin);
}

tm_walk tm_vertices(tm_file_index_t file_index, std::int16_t net) {
    return tm_children(file_index, tm_child_of_type(file_index, net, tm_type_vertex_family),
                       tm_type_vertex_2d);
}

tm_walk tm_segments(tm_file_index_t file_index, std::int16_t net) {
    return tm_children(file_index, tm_graphics_of(file_index, net), tm_type_segment);
}

std::int16_t tm_child_of_type(tm_file_index_t file_index, std::int16_t father, std::int16_t object_type) {
    return tm_children(file_index, father, object_type).first();
}

std::int16_t tm_graphics_of(tm_file_index_t file_index, std::int16_t object_id) {
    switch (tm_object(file_index, object_id).object_type) {
        case tm_type_symbol:
            object_id = tm_child_of_type(file_index, object_id, tm_type_body);
            [[fallthrough]];
        case tm_type_frame:
        case tm_type_net:
            return tm_child_of_type(file_index, object_id, tm_type_graphics);
        default:
            return 0;
    }
}

std::int16_t tm_property_holder(tm_file_index_t file_index, std::int16_t object_id) {
    switch (tm_object(file_index, object_id).object_type) {
        case tm_type_pin:
        case tm_type_pinpropfam:
            return object_id;
        case tm_type_instance:
            return tm_child_of_type(file_index, object_id, tm_type_bodpropfam);
        default:
            return tm_child_of_type(file_index, tm_graphics_of(file_index, object_id),
                                    tm_type_property_family);
    }
}

tm_walk tm_properties(tm_file_index_t file_index, std::int16_t object_id) {
    return tm_children(file_index, tm_property_holder(file_index, object_id), tm_type_property_2d);
}

std::int16_t tm_ancestor_of_type(tm_file_index_t file_index, std::int16_t object_id,
                                 std::int16_t object_type) {
    while (object_id != 0) {
        const tm_object_gene_rec_t& object = tm_object(file_index, object_id);
        if (object.object_type == object_type) break;
        object_id = object.father;
    }
    return object_id;
}
