// The image of a sheet that is saved.
#include "schematic/sheet_save.h"

#include "schematic/object_pool.h"
#include "schematic/sheet_stream.h"

namespace {

class renumbering {
public:
    renumbering(const tm_file_gene_recf_t& source, tm_file_gene_recf_t& target)
        : source_(source), target_(target), new_id_(static_cast<std::size_t>(source.object_id_max) + 1, 0) {}

    void copy_objects() {
        for (std::int16_t id = 1; id <= source_.object_id_max; ++id) {
            if (is_deleted(id)) continue;
            tm_pool_grow(target_);
            tm_object_gene_rec_t& copy = tm_pool_copy(target_, old(id));
            copy.object_id = ++target_.object_id_max;
            copy.status = 0;
            copy.id_tmp = 0;
            target_.ar_objindex[static_cast<std::size_t>(copy.object_id - 1)] = &copy;
            new_id_[static_cast<std::size_t>(id)] = copy.object_id;
        }
    }

    void translate() {
        for (std::int16_t id = 1; id <= source_.object_id_max; ++id)
            if (!is_deleted(id)) translate_object(copy_of(id));
        for (std::int16_t id = 1; id <= source_.object_id_max; ++id)
            if (!is_deleted(id)) link_back(copy_of(id));
        target_.primary_object = translated(source_.primary_object);
        target_.page_obj_id = translated(source_.page_obj_id);
        target_.grid_obj_id = translated(source_.grid_obj_id);
    }

private:
    const tm_object_gene_rec_t& old(std::int16_t id) const {
        return *source_.ar_objindex[static_cast<std::size_t>(id - 1)];
    }
    tm_object_gene_rec_t& copy_of(std::int16_t id) const {
        return *target_.ar_objindex[static_cast<std::size_t>(translated(id) - 1)];
    }
    bool is_deleted(std::int16_t id) const { return (old(id).status & tm_object_is_deleted) != 0; }
    std::int16_t translated(std::int16_t id) const {
        return id > 0 && id <= source_.object_id_max ? new_id_[static_cast<std::size_t>(id)]
                                                     : std::int16_t{0};
    }
    // Each deleted object is passed over once from the sibling before it, so a row costs its length.
    std::int16_t next_kept(std::int16_t id) const {
        while (id != 0 && is_deleted(id)) id = old(id).following;
        return translated(id);
    }

    void translate_object(tm_object_gene_rec_t& copy) const {
        copy.father = translated(copy.father);
        copy.following = next_kept(copy.following);
        copy.child1 = next_kept(copy.child1);
        copy.previous = 0;
        for (const tm_sheet_reference& reference : tm_references_of(copy.object_type))
            reference.at(copy) = translated(reference.at(copy));
    }
    void link_back(tm_object_gene_rec_t& copy) const {
        if (copy.following == 0) return;
        target_.ar_objindex[static_cast<std::size_t>(copy.following - 1)]->previous = copy.object_id;
    }

    const tm_file_gene_recf_t& source_;
    tm_file_gene_recf_t& target_;
    std::vector<std::int16_t> new_id_;  // by old id; 0: deleted
};

}  // namespace

void tm_copy_undeleted(const tm_file_gene_recf_t& source, tm_file_gene_recf_t& target) {
    renumbering objects(source, target);
    objects.copy_objects();
    objects.translate();
}

std::string tm_sheet_bytes(const tm_file_gene_recf_t& file) {
    std::string bytes;
    writerectype(bytes, &file, tm_rec_header);
    for (std::int16_t id = 1; id <= file.object_id_max; ++id)
        writeOneObject(bytes, *file.ar_objindex[static_cast<std::size_t>(id - 1)]);
    bytes.append(2, '\0');
    return bytes;
}
