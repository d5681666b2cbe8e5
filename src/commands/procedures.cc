// DOBIN and DODIRECTBIN: procedures of the program called by name; and the procedures it has.
#include "commands/procedures.h"

#include <string>

#include "commands/handlers.h"
#include "foundation/context.h"
#include "foundation/platform.h"
#include "foundation/shell.h"
#include "foundation/status.h"

namespace {

struct call_form {
    std::string_view name_prefix, word;
};
constexpr call_form dobin = {"kolp_", "DOBin"};
constexpr call_form dodirectbin = {"", "DODIRectbin"};

constexpr std::int16_t first_argument = 3;  // keyword behind the procedure's name

x_arg_procedure find_procedure(const call_form& form, const tm_string_record_t& name) {
    tm_string_record_t program;
    STATUS_T status;
    tm_get_arg(1, program, status);
    tm_string_record_t full_name = tm_string(form.name_prefix);
    tm_append(tm_view(name), full_name);
    return xm_get_extid_offset(program.char_, full_name.char_);
}

void call_procedure(const call_form& form, std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    const std::string echo = "# " + std::string(form.word) + " ";
    const tm_string_record_t& name = keyword[1];
    const x_arg_procedure procedure = find_procedure(form, name);
    if (procedure == nullptr) {
        tm_count_error();
        tm_trace("!!! %s Entry not found : \"%.*s\" \n", form.word.data(), name.len, name.char_);
        kol_echo(echo, 2, nkeyword, keyword);
        kol_show({"# !!! Error : Procedure Entry not found : \"", tm_view(name), "\" "});
        return;
    }
    kol_echo(echo, 2, nkeyword, keyword);
    x_arg_array args;
    for (std::int16_t k = first_argument; k <= nkeyword; ++k)
        args[static_cast<std::size_t>(k - first_argument)] = kol_kw(keyword, k);
    xprocargexe(procedure, static_cast<std::int16_t>(nkeyword - first_argument + 1), args);
    kol_show({"# End of ", form.word, " "});
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

void kol_dobin_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    call_procedure(dobin, nkeyword, keyword);
}

void kol_dodirbin_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    call_procedure(dodirectbin, nkeyword, keyword);
}
