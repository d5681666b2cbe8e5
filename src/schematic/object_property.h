// yx: property lookup on sheets.  The value of a named property of a schematic object; names compare without
// regard to case, deleted properties do not count, the first of a name does.  value_found false leaves an
// empty value.  Checked in this order: the file index (file_index_invalid, also of a file that is not open),
// the object id (object_id_invalid), a deleted object (file_data_invalid), the type (object_type_invalid); a
// violation writes a trace line and ends the program.
#pragma once

#include "schematic/object.h"

// The symbol's default, from the property family of its body's graphics.
void yx_get_valueof_prop_symb(tm_file_index_t file_index, std::int16_t object_id,
                              const tm_string_record_t& prop_name, tm_string_record_t& value,
                              bool& value_found);
// The instance's own value, else the default of its symbol.
void yx_get_valueof_prop_inst(tm_file_index_t file_index, std::int16_t object_id,
                              const tm_string_record_t& prop_name, tm_string_record_t& value,
                              bool& value_found);
void yx_get_valueof_prop_pin(tm_file_index_t file_index, std::int16_t object_id,
                             const tm_string_record_t& prop_name, tm_string_record_t& value,
                             bool& value_found);
void yx_get_valueof_prop_pinpropfam(tm_file_index_t file_index, std::int16_t object_id,
                                    const tm_string_record_t& prop_name, tm_string_record_t& value,
                                    bool& value_found);
void yx_get_valueof_prop_net(tm_file_index_t file_index, std::int16_t object_id,
                             const tm_string_record_t& prop_name, tm_string_record_t& value,
                             bool& value_found);
void yx_get_valueof_prop_frame(tm_file_index_t file_index, std::int16_t object_id,
                               const tm_string_record_t& prop_name, tm_string_record_t& value,
                               bool& value_found);
