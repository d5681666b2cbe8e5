// Properties of objects.
#include "schematic/object_property.h"

#include "schematic/object_walk.h"

namespace {

struct lookup {
    const char* name;
    tm_file_index_t file_index;
    std::int16_t object_id;
};

[[noreturn]] void stop(const lookup& asked, std::int32_t code, const char* type = "") {
    tm_trace(" ## error in %s ( file : %d object : %d %s )", asked.name, asked.file_index, asked.object_id,
             type);
    tm_fatal(code);
}

void check_id(const lookup& asked) {
    if (asked.object_id < 1 || asked.object_id > tm_file_header(asked.file_index).object_id_max)
        stop(asked, object_id_invalid);
}

void check(const lookup& asked, std::int16_t type) {
    if (!tm_is_file_open(asked.file_index)) stop(asked, file_index_invalid);
    check_id(asked);
    const tm_object_gene_rec_t& object = tm_object(asked.file_index, asked.object_id);
    if ((object.status & tm_object_is_deleted) != 0) stop(asked, file_data_invalid);
    if (object.object_type != type)
        stop(asked, object_type_invalid, type_array[static_cast<std::size_t>(object.object_type)].data());
}

// Among the children of the object's property holder.
bool search(const lookup& asked, std::int16_t object_id, const tm_string_record_t& prop_name,
            tm_string_record_t& value) {
    for (const std::int16_t child :
         tm_children(asked.file_index, tm_property_holder(asked.file_index, object_id))) {
        if (tm_object(asked.file_index, child).object_type != tm_type_property_2d)
            stop({asked.name, asked.file_index, child}, object_type_invalid);
        const auto& property = tm_object_as<tm_type_property_2d>(asked.file_index, child);
        if (!tm_name_iden_string(property.name, prop_name)) continue;
        tm_copy_string(property.nvalue.char_, property.nvalue.len, value);
        return true;
    }
    return false;
}

void clear(tm_string_record_t& value, bool& value_found) {
    value = {};
    value.char_[0] = ' ';
    value_found = false;
}

void look_up(const lookup& asked, std::int16_t type, const tm_string_record_t& prop_name,
             tm_string_record_t& value, bool& value_found) {
    clear(value, value_found);
    check(asked, type);
    value_found = search(asked, asked.object_id, prop_name, value);
}

}  // namespace

void yx_get_valueof_prop_symb(tm_file_index_t file_index, std::int16_t object_id,
                              const tm_string_record_t& prop_name, tm_string_record_t& value,
                              bool& value_found) {
    look_up({"yx_get_valueof_prop_symb", file_index, object_id}, tm_type_symbol, prop_name, value,
            value_found);
}

void yx_get_valueof_prop_inst(tm_file_index_t file_index, std::int16_t object_id,
                              const tm_string_record_t& prop_name, tm_string_record_t& value,
                              bool& value_found) {
    const lookup asked = {"yx_get_valueof_prop_inst", file_index, object_id};
    look_up(asked, tm_type_instance, prop_name, value, value_found);
    if (value_found) return;
    const lookup symbol = {asked.name, file_index,
                           tm_object_as<tm_type_instance>(file_index, object_id).symbol};
    if (symbol.object_id == 0) return;
    check_id(symbol);
    value_found = search(symbol, symbol.object_id, prop_name, value);
}

void yx_get_valueof_prop_pin(tm_file_index_t file_index, std::int16_t object_id,
                             const tm_string_record_t& prop_name, tm_string_record_t& value,
                             bool& value_found) {
    look_up({"yx_get_valueof_prop_pin", file_index, object_id}, tm_type_pin, prop_name, value, value_found);
}

void yx_get_valueof_prop_pinpropfam(tm_file_index_t file_index, std::int16_t object_id,
                                    const tm_string_record_t& prop_name, tm_string_record_t& value,
                                    bool& value_found) {
    look_up({"yx_get_valueof_prop_pinpropfam", file_index, object_id}, tm_type_pinpropfam, prop_name, value,
            value_found);
}

void yx_get_valueof_prop_net(tm_file_index_t file_index, std::int16_t object_id,
                             const tm_string_record_t& prop_name, tm_string_record_t& value,
                             bool& value_found) {
    look_up({"yx_get_valueof_prop_net", file_index, object_id}, tm_type_net, prop_name, value, value_found);
}

void yx_get_valueof_prop_frame(tm_file_index_t file_index, std::int16_t object_id,
                               const tm_string_record_t& prop_name, tm_string_record_t& value,
                               bool& value_found) {
    look_up({"yx_get_valueof_prop_frame", file_index, object_id}, tm_type_frame, prop_name, value,
            value_found);
}
