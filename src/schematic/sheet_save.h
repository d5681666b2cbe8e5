// tm: the image of a sheet that is saved.
#pragma once

#include <string>

#include "schematic/object_records.h"

// The objects that are not deleted, in id order under the next free ids of the target, their ids translated:
// siblings and first child to the next one that is not deleted, anything else that names a deleted object to
// 0.  Flags and scratch ids are cleared.
void tm_copy_undeleted(const tm_file_gene_recf_t& source, tm_file_gene_recf_t& target);
// Header, objects and the two bytes at the end.
std::string tm_sheet_bytes(const tm_file_gene_recf_t& file);
