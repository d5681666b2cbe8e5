// tm: where the records of a file are kept.  Gives new records by type number and keeps the object table
// large enough; ids and the tree are the caller's.
#pragma once

#include "schematic/object_records.h"

inline constexpr std::int16_t tm_pool_step = 2000;             // entries the object table grows by
inline constexpr std::int16_t tm_pool_room_after_read = 2010;  // free entries behind the objects of a file

// An empty record of a type 1..32; it is not yet in the object table.
tm_object_gene_rec_t& tm_pool_make(tm_file_gene_recf_t& file, std::int16_t object_type);
// A copy of a record of any file.
tm_object_gene_rec_t& tm_pool_copy(tm_file_gene_recf_t& file, const tm_object_gene_rec_t& object);
// Sets the size of the object table.
void tm_pool_resize(tm_file_gene_recf_t& file, std::size_t entries);
// Makes room for the object behind object_id_max: a full multiple of 2000 ids takes the table to the next.
void tm_pool_grow(tm_file_gene_recf_t& file);
