// kol: what the reports of a sheet's objects say of one object.
#pragma once

#include <string>
#include <vector>

#include "schematic/object.h"

// The name of its type in capitals: "INSTANCE", "PROPERTY_2D".
std::string kol_type_text(const tm_object_gene_rec_t& object);
// " selected deleted": each flag that is set behind a blank; empty when none is.
std::string kol_flags_text(const tm_object_gene_rec_t& object);
// What its type adds, line by line.
std::vector<std::string> kol_object_details(tm_file_index_t file, std::int16_t object);
// A property: its name, value and how it is shown.
std::string kol_property_text(const tm_object_property_rec_t& property);
