// tm: reading the objects of an open sheet file without the fatal checks of the accessors: what is not there
// is null.  Used by whatever shows or searches a sheet.
#pragma once

#include <cstddef>

#include "schematic/object_records.h"

struct tm_reader_t {
    explicit tm_reader_t(tm_file_index_t file_index) {
        if (file_index >= 1 && static_cast<std::size_t>(file_index) <= tm_max_open_files)
            file = tm_vext.filear[static_cast<std::size_t>(file_index - 1)].start_buf_ptr.get();
    }

    const tm_object_gene_rec_t* object(std::int16_t id) const {
        if (file == nullptr || id < 1 || static_cast<std::size_t>(id) > file->ar_objindex.size())
            return nullptr;
        return file->ar_objindex[static_cast<std::size_t>(id - 1)];
    }
    // Null also for an object of another type.
    template <std::int16_t Type>
    const tm_record_of<Type>* record(std::int16_t id) const {
        const tm_object_gene_rec_t* const found = object(id);
        return found != nullptr && found->object_type == Type ? static_cast<const tm_record_of<Type>*>(found)
                                                              : nullptr;
    }
    const tm_object_gene_rec_t* first_child(const tm_object_gene_rec_t& father) const {
        return object(father.child1);
    }
    const tm_object_gene_rec_t* next(const tm_object_gene_rec_t& sibling) const {
        return object(sibling.following);
    }

    const tm_file_gene_recf_t* file = nullptr;  // null: no such file is open
};

inline bool tm_is_shown(const tm_object_gene_rec_t& object) {
    return (object.status & (tm_object_is_deleted | tm_object_is_unvisible)) == 0;
}
inline bool tm_is_selected(const tm_object_gene_rec_t& object) {
    return (object.status & tm_object_is_selected) != 0;
}

// Calls visit(child) for the children of an object that are shown.
template <typename Visit>
void tm_for_shown_children(const tm_reader_t& reader, const tm_object_gene_rec_t& father, Visit visit) {
    for (const auto* child = reader.first_child(father); child != nullptr; child = reader.next(*child))
        if (tm_is_shown(*child)) visit(*child);
}

// Calls visit(object) for an object and all below it that are shown, fathers first; an object for which visit
// returns false is not entered, and nothing deeper than tm_max_object_levels is.
template <typename Visit>
void tm_for_shown_tree(const tm_reader_t& reader, const tm_object_gene_rec_t& top, Visit& visit,
                       int depth = 0) {
    if (!tm_is_shown(top) || !visit(top) || depth >= tm_max_object_levels) return;
    for (const auto* child = reader.first_child(top); child != nullptr; child = reader.next(*child))
        tm_for_shown_tree(reader, *child, visit, depth + 1);
}
