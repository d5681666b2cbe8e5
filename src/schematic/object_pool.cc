// Storage of objects.
#include "schematic/object_pool.h"

#include <utility>

namespace {

template <std::int16_t Type>
tm_object_gene_rec_t& make(tm_file_gene_recf_t& file, const tm_object_gene_rec_t* pattern) {
    using record = tm_record_of<Type>;
    auto& pool = std::get<std::deque<record>>(file.objects);
    return pattern == nullptr ? pool.emplace_back() : pool.emplace_back(static_cast<const record&>(*pattern));
}

using maker = tm_object_gene_rec_t& (*)(tm_file_gene_recf_t&, const tm_object_gene_rec_t*);

template <std::int16_t... Types>
constexpr std::array<maker, tm_type_count> make_makers(std::integer_sequence<std::int16_t, Types...>) {
    return {make<Types>...};
}
constexpr std::array<maker, tm_type_count> makers =
    make_makers(std::make_integer_sequence<std::int16_t, tm_type_count>());

}  // namespace

tm_object_gene_rec_t& tm_pool_make(tm_file_gene_recf_t& file, std::int16_t object_type) {
    return makers[static_cast<std::size_t>(object_type)](file, nullptr);
}

tm_object_gene_rec_t& tm_pool_copy(tm_file_gene_recf_t& file, const tm_object_gene_rec_t& object) {
    return makers[static_cast<std::size_t>(object.object_type)](file, &object);
}

void tm_pool_resize(tm_file_gene_recf_t& file, std::size_t entries) {
    file.ar_objindex.resize(entries, nullptr);
    file.last_child.resize(entries + 1, 0);
}

void tm_pool_grow(tm_file_gene_recf_t& file) {
    const std::int16_t used = file.object_id_max;
    if (used % tm_pool_step != 0) return;
    const std::size_t entries = static_cast<std::size_t>(used / tm_pool_step + 1) * tm_pool_step;
    if (file.ar_objindex.size() < entries) tm_pool_resize(file, entries);
}
