// kol: what every command shares.  A command is one row of the command table: its words, where it is tried,
// how many keywords it takes, its echo, its expansion and who serves it.  A handler gets the line as it was
// typed, does its own work and says how it ended; the dispatcher has counted the keywords before and writes
// the echo behind it: the canonical command words, then the keywords as typed.  A rejection shows the same
// line with
// "# " in front, then a line that begins "# !! Error", and leaves the simulation state unchanged; it is not
// counted.
#pragma once

#include <array>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/strings.h"
#include "kernel/context.h"

inline constexpr std::int16_t kol_max_keywords = 30;

// The keywords of one command, keyword 1 being the command word.
struct kol_keywords_t {
    std::int16_t nkeyword = 0;
    std::array<tm_string_record_t, kol_max_keywords> keyword;

    const tm_string_record_t& operator[](std::int16_t k) const {  // 1-based
        return keyword[static_cast<std::size_t>(k - 1)];
    }
};

struct kol_command_row_t;
struct kol_line_t;
struct kol_result_t;
using kol_handler_t = kol_result_t (*)(const kol_line_t& line);

enum class kol_when : std::uint8_t {
    any,              // the prefixes alone select the row
    whole,            // keyword 1 is the first prefix, complete and no longer
    second_is_o,      // keyword 2 begins with 'o': ON or OFF follow in the handler
    two_keywords,     // exactly 2 keywords
    four_keywords,    // exactly 4, keyword 1 complete and no longer
    second_is_whole,  // keyword 2 is the second prefix, complete and no longer
    cursor_step,      // "$C", a direction, 1 or 4
    viewport_step,    // "$VPT", a direction, 5, 20 or 80
};

// What is unusual about a command's echo or its keywords.
enum class kol_manner : std::uint8_t {
    usual,
    marked,           // "# " stands in front of the echo, too
    quoted,           // a rejection shows the keywords between quotes, three blanks behind each
    silent,           // no echo
    keeps_variables,  // "$VARn" are names here, not replaced by their values
};

// What the entry becomes when "?" is typed behind the command: its words and its current values.
struct kol_expansion_t {
    void (*add_values)(tm_string_record_t& entry) = nullptr;  // null: not expanded
    std::string_view words = {};                              // empty: the canonical ones
    const char* first_word = nullptr;                         // null: the row's first prefix
};

struct kol_command_row_t {
    std::string_view group;             // first letters of keyword 1
    std::array<const char*, 3> prefix;  // of keywords 1..3, in capitals; null: none
    kol_when when;
    std::string_view canonical;                       // the command words, capitals for the shortest form
    std::int16_t least = 1, most = kol_max_keywords;  // keywords, the command words included
    kol_handler_t handler = nullptr;
    kol_manner manner = kol_manner::usual;
    kol_expansion_t expansion = {};
};
// The number of command words in front of a row's parameters.
std::int16_t kol_command_words(const kol_command_row_t& row);
// The name of the row's help text: the first command word in capitals.
std::string kol_help_topic(const kol_command_row_t& row);

// One view of the command that a handler serves.
struct kol_line_t {
    const kol_command_row_t& row;
    const kol_keywords_t& typed;
    kol_array_param_t& variables;  // of the command file that the line stands in
    std::int16_t nkeyword = typed.nkeyword;

    const tm_string_record_t& operator[](std::int16_t k) const { return typed[k]; }
    std::string words() const;             // " CLOck PERiod "
    std::int16_t first_parameter() const;  // the keyword behind the command words
};

// How the echo of a rejection differs from the usual one.
enum class kol_form : std::uint8_t {
    usual,
    quoted,  // each keyword between double quotes
    wide,    // one more blank behind the command words
};

// Why a command is refused; an empty error: it is not.
struct kol_rejection_t {
    std::string_view error;
    kol_form form = kol_form::usual;
    std::string_view instead = {};  // of the echo, when it is another line
    explicit operator bool() const { return !error.empty(); }
};

// How a handler ended: accepted (the initial value) or rejected.
struct kol_result_t {
    enum class echo_t : std::uint8_t { keywords, values, none };

    std::string error;  // empty: accepted
    kol_form form = kol_form::usual;
    std::string instead;
    echo_t echo = echo_t::keywords;
    std::string values;               // what the echo shows in place of the keywords
    std::vector<std::string> behind;  // lines below the echo or the error line
    bool ends_line = false;           // the commands behind this one are given up

    kol_result_t() = default;
    kol_result_t(const kol_rejection_t& why) : error(why.error), form(why.form), instead(why.instead) {}
    explicit operator bool() const { return !error.empty(); }

    // One more line, put together from parts.
    kol_result_t&& then(std::initializer_list<std::string_view> parts) &&;
    // Values in place of the keywords.
    kol_result_t&& showing(std::string_view text) &&;
};
// Rejected for a reason put together from parts.
kol_result_t kol_rejected(std::initializer_list<std::string_view> parts);
// Accepted, the echo showing values in place of the keywords.
kol_result_t kol_accepted(std::string_view values);
// Accepted, and the handler has shown what there is to show.
kol_result_t kol_shown();

// The echo line at once, for a handler whose own lines stand below it; it ends with kol_shown.
void kol_echo(const kol_line_t& line);
// " READln $VAR1 time ", cut at 199 characters.
tm_string_record_t kol_echo_line(const kol_line_t& line);
// Shows how a command ended: its echo or its rejection, and the lines behind.
void kol_show_result(const kol_line_t& line, const kol_result_t& result);
// Shows one line put together from parts.
void kol_show(std::initializer_list<std::string_view> parts);

inline constexpr kol_rejection_t kol_count_invalid{"# !! Error : parameter number invalid ? "};
inline constexpr kol_rejection_t kol_second_invalid{"# !! Error :  2nd parameter incorrect ? "};
