// One line of input: cleaning, commands, dispatch.
#include "commands/language/interpreter.h"

#include <string>

#include "commands/language/command_line.h"
#include "commands/language/command_table.h"
#include "commands/language/substitution.h"
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

void report_unknown(const tm_string_record_t& command) {
    tm_display("#  !!! Unknown Command  ?? ");
    kol_show({"# \"", tm_view(command), "\" "});
}

kol_result_t serve(const kol_line_t& line) {
    if (line.nkeyword < line.row.least || line.nkeyword > line.row.most) return kol_count_invalid;
    return line.row.handler(line);
}

// The result: whether the line goes on behind this command.
bool dispatch(const tm_string_record_t& command, const kol_keywords_t& keywords,
              kol_array_param_t& var_father) {
    const kol_command_row_t* const row = kol_find_command(keywords);
    if (row == nullptr) {
        report_unknown(command);
        return true;
    }
    const kol_line_t line{*row, keywords, var_father};
    const kol_result_t result = serve(line);
    kol_show_result(line, result);
    return !result.ends_line;
}

struct values_t {
    kol_array_param_t& arg;
    kol_array_param_t& var;
};

// A file is the second keyword, whatever stands there.
bool interpret(tm_string_record_t& command, const values_t& values, const tm_string_record_t* file) {
    if (command.char_[0] == '#') return false;
    if (command.char_[0] == '!') {
        kol_exec_cmd(command.char_ + 1);
        return true;
    }
    kol_substitute(command, "$ARG", values.arg);
    tm_string_record_t word;
    kol_first_word(command, word);
    if (!kol_keeps_variables(word)) kol_substitute(command, "$VAR", values.var);
    kol_keywords_t keywords = kol_split_keywords(command);
    if (keywords.nkeyword == 0) return false;
    if (file != nullptr) keywords.keyword[1] = *file;
    const bool line_goes_on = dispatch(command, keywords, values.var);
    end_command();
    return line_goes_on;
}

// A file is the name in the first command.
void process(tm_string_record_t text, const values_t& values, const tm_string_record_t* file) {
    tm_rest_string(text);
    clean(values.arg);
    clean(values.var);
    if (text.len == 0) return end_line();
    begin_line(text);
    tm_string_record_t command;
    std::int32_t pos = 1;
    for (std::int16_t n = 0; n < max_commands && !tm_vext.end_flag; ++n)
        if (!kol_next_command(text, pos, command) || !interpret(command, values, n == 0 ? file : nullptr))
            break;
    end_line();
}

}  // namespace

void kol_process_command(const tm_string_record_t& line, kol_array_param_t& arg_father,
                         kol_array_param_t& var_father) {
    process(line, {arg_father, var_father}, nullptr);
}

void kol_process_command_file(const tm_string_record_t& name, std::int16_t parameters,
                              kol_array_param_t& arg_father, kol_array_param_t& var_father) {
    tm_string_record_t line = tm_string(" DO " + std::string(static_cast<std::size_t>(name.len), 'x') + " ");
    for (std::int16_t i = 0; i < parameters; ++i) {
        tm_concat_line(arg_father[static_cast<std::size_t>(i)], line);
        tm_append(" ", line);
    }
    process(line, {arg_father, var_father}, &name);
}
