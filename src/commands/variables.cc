// ASSIGN and READLN: the commands that set the variables of the command file they stand in.
#include "commands/handlers.h"
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

void reject(std::string_view echo, std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    kol_echo(echo, 2, nkeyword, keyword);
    tm_display(second_par_incorrect);
}

}  // namespace

bool kol_assign_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword, kol_array_param_t& var_father) {
    std::size_t index = 0;
    const reference found = read_reference(keyword[1], index);
    if (found == reference::malformed) {
        reject("# ASSIgn ", nkeyword, keyword);
        return false;
    }
    if (found == reference::ignored) return true;
    var_father[index - 1] = nkeyword == 3 ? keyword[2] : tm_string_record_t{};
    kol_echo(" ASSIgn ", 2, nkeyword, keyword);
    return true;
}

void kol_readln_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword, kol_array_param_t& var_father) {
    if (!tm_const_equal_string("$VAR", keyword[1])) return reject("# READln ", nkeyword, keyword);
    const tm_string_record_t echo = kol_echo_line(" READln ", 2, nkeyword, keyword);
    if (nkeyword == 3) {
        tm_vext.str_cmd = echo;
        tm_display_cmd(echo);
        return;
    }
    std::size_t index = 0;
    if (read_reference(keyword[1], index) != reference::good) return reject("# READln ", nkeyword, keyword);
    var_father[index - 1] = keyword[3];
    tm_display_list(echo);
}
