// Start values of all simulation parameters.
#include "commands/start_values.h"

#include "commands/all_commands.h"
#include "commands/language/procedures.h"
#include "foundation/context.h"

namespace {

// What start-up has read from the command line before.
void keep_arguments(kol_defref_var_rec_t& start) {
    start.dir_path = kol_ext.dir_path;
    start.ext_arg = kol_ext.ext_arg;
    start.top_var = kol_ext.top_var;
    start.save_to_do = kol_ext.save_to_do;
    start.file_level_cur = kol_ext.file_level_cur;
    start.file_level_max = kol_ext.file_level_max;
}

}  // namespace

void kol_initparam_before() {
    kol_defref_var_rec_t start;  // its initial values are the start values
    start.cur_sim_path = tm_string("/");
    keep_arguments(start);
    kol_ext = start;
    tm_vext.do_ind = 0;
    tm_vext.file_id_edit = 0;
    tm_vext.file_id_context = 0;
    kol_use_commands(kol_all_commands());
    kol_register_procedures();
}
