// Texts of the current instance, and how an error of it is shown.
#include "models/instance_properties.h"

#include "foundation/shell.h"
#include "kernel/say.h"
#include "netlist/property.h"

bool kol_show_instance_error(std::string_view text) {
    tm_count_error();
    kol_say(text);
    kol_say(" !! ", kol_quoted_path(kol_ext.cur_inst->sim_path));
    return false;
}

bool kol_read_instance_text(std::string_view name, std::string_view& text) {
    yx_prop_record_t* value = nullptr;
    bool is_found = false;
    kol_inst_getvalueof_prop_on(kol_ext.cur_inst, tm_string(name), value, is_found);
    if (!is_found)
        return kol_show_instance_error("# !!! Error : NO property " + kol_quoted(name) + " on instance : ");
    if (value->prop_type != YX_PSTRING)
        return kol_show_instance_error("# !!! Error : INVALID  property " + kol_quoted(name) +
                                       " type on instance : ");
    text = kol_path(value->valuec);
    return true;
}
