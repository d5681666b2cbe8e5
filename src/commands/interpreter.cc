#include "commands/interpreter.h"

#include "commands/command_line.h"
#include "commands/command_table.h"
#include "commands/substitution.h"
#include "foundation/context.h"
#include "foundation/shell.h"
#include "foundation/status.h"

namespace {

constexpr std::int16_t max_commands = 30;  // of one line

void clean(kol_array_param_t& set) {
    for (tm_string_record_t& text : set) tm_rest_string(text);
}

void begin_line(const tm_string_record_t& line) {
    tm_trace("command : \"%.*s\"\n", line.len, line.char_);
    tm_vext.cmd_executing = true;
    tm_shell.busy(true);
}

void end_line() {
    tm_vext.cmd_executing = false;
    tm_shell.busy(false);
}

void end_command() {
    end_line();
    tm_shell.copy_to_window();
}

bool keeps_variables(const tm_string_record_t& command) {
    tm_string_record_t word;
    kol_first_word(command, word);
    return tm_const_equal_string("ASSI", word) || tm_const_equal_string("READ", word);
}

void reject(const kol_command_row_t& row, std::int16_t nkeyword, kol_array_keyword_t& keyword,
            std::string_view reason) {
    kol_rejection_echo(row, nkeyword, keyword);
    tm_display(reason);
}

void report_unknown(const tm_string_record_t& command) {
    tm_display("#  !!! Unknown Command  ?? ");
    kol_show({"# \"", tm_view(command), "\" "});
}

// The result: whether the line goes on behind this command.
bool dispatch(const tm_string_record_t& command, std::int16_t nkeyword, kol_array_keyword_t& keyword,
              kol_array_param_t& var_father) {
    const kol_command_row_t* const row = kol_find_command(nkeyword, keyword);
    if (row == nullptr) {
        report_unknown(command);
    } else if (nkeyword < row->least || nkeyword > row->most) {
        reject(*row, nkeyword, keyword, nb_par_invalid);
    } else if (row->handler != nullptr) {
        row->handler(nkeyword, keyword);
    } else {
        return row->variable_handler(nkeyword, keyword, var_father);
    }
    return true;
}

bool interpret(tm_string_record_t& command, kol_array_param_t& arg_father, kol_array_param_t& var_father) {
    if (command.char_[0] == '#') return false;
    if (command.char_[0] == '!') {
        kol_exec_cmd(command.char_ + 1);
        return true;
    }
    kol_substitute(command, "$ARG", arg_father);
    if (!keeps_variables(command)) kol_substitute(command, "$VAR", var_father);
    kol_array_keyword_t keyword;
    const std::int16_t nkeyword = kol_split_keywords(command, keyword);
    if (nkeyword == 0) return false;
    const bool line_goes_on = dispatch(command, nkeyword, keyword, var_father);
    end_command();
    return line_goes_on;
}

}  // namespace

void kol_process_command(const tm_string_record_t& line, kol_array_param_t& arg_father,
                         kol_array_param_t& var_father) {
    tm_string_record_t text = line;
    tm_rest_string(text);
    clean(arg_father);
    clean(var_father);
    if (text.len == 0) return end_line();
    begin_line(text);
    tm_string_record_t command;
    std::int32_t pos = 1;
    for (std::int16_t n = 0; n < max_commands && !tm_vext.end_flag; ++n)
        if (!kol_next_command(text, pos, command) || !interpret(command, arg_father, var_father)) break;
    end_line();
}
