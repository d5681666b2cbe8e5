// ASSIGN and READLN: the commands that set the variables of the command file they stand in.
#include "commands/language/handlers.h"
#include "foundation/context.h"
#include "foundation/shell.h"

namespace {

constexpr std::int32_t one_digit = 5, two_digits = 6;  // length of "$VAR1" and "$VAR12"

constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }

enum class reference { good, malformed, ignored };

// The 1-based index of a "$VARn" keyword, meaningful when the result is good.
reference read_reference(const tm_string_record_t& keyword, std::size_t& index) {
    if (!tm_const_equal_string("$VAR", keyword) || keyword.len < one_digit || !is_digit(keyword.char_[4]))
        return reference::malformed;
    index = static_cast<std::size_t>(keyword.char_[4] - '0');
    if (keyword.len == two_digits && is_digit(keyword.char_[5]))
        index = index * 10 + static_cast<std::size_t>(keyword.char_[5] - '0');
    else if (keyword.len != one_digit)
        return reference::ignored;
    return index >= 1 && index <= kol_max_parameters ? reference::good : reference::malformed;
}

}  // namespace

kol_result_t kol_assign_cmd(const kol_line_t& line) {
    std::size_t index = 0;
    const reference found = read_reference(line[2], index);
    if (found == reference::ignored) return kol_shown();
    kol_result_t result;
    if (found == reference::malformed) {
        result = kol_second_invalid;
        result.ends_line = true;
    } else {
        line.variables[index - 1] = line.nkeyword == 3 ? line[3] : tm_string_record_t{};
    }
    return result;
}

kol_result_t kol_readln_cmd(const kol_line_t& line) {
    if (!tm_const_equal_string("$VAR", line[2])) return kol_second_invalid;
    if (line.nkeyword == 3) {
        tm_vext.str_cmd = kol_echo_line(line);
        tm_display_cmd(tm_vext.str_cmd);
        return kol_shown();
    }
    std::size_t index = 0;
    if (read_reference(line[2], index) != reference::good) return kol_second_invalid;
    line.variables[index - 1] = line[4];
    return {};
}
