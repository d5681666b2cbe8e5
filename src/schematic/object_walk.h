// tm: walks over the objects of a sheet.  Deleted objects are left out.  An id that no object has, and a file
// that is not open, are internal faults as in object.h.  Walks cost their own length, whatever the sheet's.
//   for (std::int16_t pin : tm_pins(file, instance)) ...
#pragma once

#include "schematic/object.h"

// The objects of one type, or of all types (tm_type_nil): of the whole file in id order, or the children of
// one object in sibling order.  Objects created meanwhile may or may not be met.
class tm_walk {
public:
    class iterator {
    public:
        iterator(const tm_walk& walk, std::int16_t id) : walk_(&walk), id_(id) {}
        std::int16_t operator*() const { return id_; }
        iterator& operator++() {
            id_ = walk_->next(id_);
            return *this;
        }
        bool operator==(const iterator& other) const { return id_ == other.id_; }

    private:
        const tm_walk* walk_;
        std::int16_t id_;
    };

    static tm_walk of_file(tm_file_index_t file_index, std::int16_t object_type) {
        return {file_index, object_type, 0, true};
    }
    // Father 0 has no children here.
    static tm_walk of_father(tm_file_index_t file_index, std::int16_t father, std::int16_t object_type) {
        return {file_index, object_type, father, false};
    }
    iterator begin() const { return {*this, first()}; }
    iterator end() const { return {*this, 0}; }
    std::int16_t first() const;                   // 0: none
    std::int16_t next(std::int16_t after) const;  // 0: no more
    bool empty() const { return first() == 0; }

private:
    tm_walk(tm_file_index_t file_index, std::int16_t object_type, std::int16_t father, bool whole_file)
        : file_index_(file_index), object_type_(object_type), father_(father), whole_file_(whole_file) {}
    std::int16_t accept(std::int16_t candidate) const;
    std::int16_t follower(std::int16_t object_id) const;

    tm_file_index_t file_index_;
    std::int16_t object_type_;
    std::int16_t father_;
    bool whole_file_;
};

tm_walk tm_symbols(tm_file_index_t file_index);
tm_walk tm_instances(tm_file_index_t file_index);
tm_walk tm_nets(tm_file_index_t file_index);
tm_walk tm_frames(tm_file_index_t file_index);
tm_walk tm_tags(tm_file_index_t file_index);
tm_walk tm_children(tm_file_index_t file_index, std::int16_t father, std::int16_t object_type = tm_type_nil);
tm_walk tm_pins(tm_file_index_t file_index, std::int16_t symbol_or_instance);  // pin or pinpropfam
tm_walk tm_vertices(tm_file_index_t file_index, std::int16_t net);
tm_walk tm_segments(tm_file_index_t file_index, std::int16_t net);
// The shapes (all children but the property family) of a symbol's body, a frame or a net; of other objects
// none.
std::int16_t tm_graphics_of(tm_file_index_t file_index, std::int16_t object_id);  // 0: none
// The object whose children are the properties of a symbol, instance, pin, pinpropfam, net or frame: a
// property_family, a bodpropfam or the pin itself.  0: none, also for other types.
std::int16_t tm_property_holder(tm_file_index_t file_index, std::int16_t object_id);
tm_walk tm_properties(tm_file_index_t file_index, std::int16_t object_id);
// The first child of that type that is not deleted; 0: none.
std::int16_t tm_child_of_type(tm_file_index_t file_index, std::int16_t father, std::int16_t object_type);
// The nearest object above of that type, or the object itself; 0: none.
std::int16_t tm_ancestor_of_type(tm_file_index_t file_index, std::int16_t object_id,
                                 std::int16_t object_type);
