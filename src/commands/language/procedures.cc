// DOBIN and DODIRECTBIN: procedures of the program called by name; and the procedures it has.
#include "commands/language/procedures.h"

#include <string>

#include "commands/language/handlers.h"
#include "foundation/context.h"
#include "foundation/procedures.h"
#include "foundation/shell.h"
#include "foundation/status.h"

namespace {

constexpr std::string_view dobin_prefix = "kolp_";
constexpr std::int16_t first_argument = 3;  // keyword behind the procedure's name

x_arg_procedure find_procedure(std::string_view prefix, const tm_string_record_t& name) {
    tm_string_record_t program;
    STATUS_T status;
    tm_get_arg(1, program, status);
    tm_string_record_t full_name = tm_string(prefix);
    tm_append(tm_view(name), full_name);
    return xm_get_extid_offset(program.char_, full_name.char_);
}

kol_result_t call_procedure(std::string_view prefix, const kol_line_t& line) {
    const tm_string_record_t& name = line[2];
    const x_arg_procedure procedure = find_procedure(prefix, name);
    if (procedure == nullptr) {
        tm_count_error();
        tm_trace("!!!%sEntry not found : \"%.*s\" \n", line.words().c_str(), name.len, name.char_);
        return kol_rejected({"# !!! Error : Procedure Entry not found : \"", tm_view(name), "\" "});
    }
    kol_echo(line);
    x_arg_array args;
    for (std::int16_t k = first_argument; k <= line.nkeyword; ++k)
        args[static_cast<std::size_t>(k - first_argument)] = line[k];
    xprocargexe(procedure, static_cast<std::int16_t>(line.nkeyword - first_argument + 1), args);
    return kol_shown().then({"# End of", line.words()});
}

void show_count(std::string_view what, std::int64_t count) {
    kol_show({"# ", what, " : ", std::to_string(count), " "});
}

void kolp_statistics(std::int16_t* /*count*/, x_arg_array& /*args*/) {
    std::int64_t events = 0;
    for (const yx_event_rec_t* e = kol_ext.cur_event; e != nullptr; e = e->next) ++events;
    show_count("nets", yx_sext.max_net_cur);
    show_count("pins", yx_sext.max_pin_cur);
    show_count("instances", yx_sext.max_inst_cur);
    show_count("queued events", events);
}

// The texts it is called with, one a line: what a command file's parameters have become.
void kolp_arguments(std::int16_t* count, x_arg_array& args) {
    for (std::int16_t i = 0; i < *count; ++i)
        kol_show({"# ", std::to_string(i + 1), " : \"", tm_view(args[static_cast<std::size_t>(i)]), "\" "});
}

}  // namespace

void kol_register_procedures() {
    x_register_procedure("kolp_statistics", kolp_statistics);
    x_register_procedure("kolp_arguments", kolp_arguments);
}

kol_result_t kol_dobin_cmd(const kol_line_t& line) { return call_procedure(dobin_prefix, line); }

kol_result_t kol_dodirbin_cmd(const kol_line_t& line) { return call_procedure("", line); }
