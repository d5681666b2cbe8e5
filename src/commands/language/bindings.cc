// DEFINE KEY, STATUS KEY, and the texts bound to keys.

#include "commands/language/bindings.h"

#include <algorithm>
#include <array>
#include <string>

#include "commands/language/command_line.h"
#include "commands/language/handlers.h"
#include "foundation/context.h"
#include "foundation/shell.h"

namespace {

constexpr kol_rejection_t key_invalid{"# !! Error :  Invalid DEFine KEY "};
constexpr kol_rejection_t key_name_invalid{"# !! Error :  Invalid  KEY name "};

constexpr std::size_t buttons = 3, function_keys = 12;
constexpr char first_control_letter = 'N', last_control_letter = 'Z';

struct function_key_kind {
    std::string_view suffix;  // of the key name
    std::string_view shown;   // the suffix in the listing, with what follows it
    tm_actions_12 tm_defref_var_rec_t::*actions;
};
constexpr function_key_kind function_key_kinds[] = {
    // in the order of the listing
    {"", "\"  : '", &tm_defref_var_rec_t::action_f},   {"U", "u\"  : '", &tm_defref_var_rec_t::action_fup},
    {"S", "s\" : '", &tm_defref_var_rec_t::action_fs}, {"US", "su\" : '", &tm_defref_var_rec_t::action_fsup},
    {"C", "c\" : '", &tm_defref_var_rec_t::action_fc}, {"UC", "cu\" : '", &tm_defref_var_rec_t::action_fcup},
    {"A", "a\" : '", &tm_defref_var_rec_t::action_fa}, {"UA", "au\" : '", &tm_defref_var_rec_t::action_faup},
};

struct arrow_kind {
    std::string_view suffix;
    tm_actions_4 tm_defref_var_rec_t::*actions;
};
constexpr arrow_kind arrow_kinds[] = {
    {"", &tm_defref_var_rec_t::action_a},
    {"S", &tm_defref_var_rec_t::action_as},
    {"C", &tm_defref_var_rec_t::action_ac},
    {"A", &tm_defref_var_rec_t::action_aa},
};
constexpr std::string_view arrow_letters = "ULDR";

std::size_t button_entry(std::size_t button, bool released) { return 2 * (button - 1) + (released ? 1 : 0); }

tm_string_record_t* find_button(std::string_view name) {  // "1", "1U"
    if (name.empty() || name[0] < '1' || name[0] > '3') return nullptr;
    const bool released = name.substr(1) == "U";
    if (!released && name.size() > 1) return nullptr;
    return &tm_vext.action_but[button_entry(static_cast<std::size_t>(name[0] - '0'), released)];
}

tm_string_record_t* find_function_key(std::string_view name) {  // "12UA"
    const std::size_t digits = std::min(name.find_first_not_of("0123456789"), name.size());
    if (digits < 1 || digits > 2 || name[0] == '0') return nullptr;
    const std::size_t number = static_cast<std::size_t>(std::stoi(std::string(name.substr(0, digits))));
    if (number > function_keys) return nullptr;
    for (const function_key_kind& kind : function_key_kinds)
        if (kind.suffix == name.substr(digits)) return &(tm_vext.*kind.actions)[number - 1];
    return nullptr;
}

tm_string_record_t* find_arrow(std::string_view name) {  // "US"
    const std::size_t direction = name.empty() ? std::string_view::npos : arrow_letters.find(name[0]);
    if (direction == std::string_view::npos) return nullptr;
    for (const arrow_kind& kind : arrow_kinds)
        if (kind.suffix == name.substr(1)) return &(tm_vext.*kind.actions)[direction];
    return nullptr;
}

tm_string_record_t* find_control_key(std::string_view name) {  // "N"
    if (name.size() != 1 || name[0] < first_control_letter || name[0] > last_control_letter) return nullptr;
    return &tm_vext.action_ck[static_cast<std::size_t>(name[0] - first_control_letter)];
}

// The wheel has no entry at first.
constexpr std::string_view wheel_modifiers[] = {"", "S", "C", "A"};
std::array<std::array<tm_string_record_t, std::size(wheel_modifiers)>, 4> wheel;

tm_string_record_t* find_wheel(std::string_view name) {  // "US"
    const std::size_t direction = name.empty() ? std::string_view::npos : arrow_letters.find(name[0]);
    const auto* const modifier = std::ranges::find(wheel_modifiers, name.empty() ? name : name.substr(1));
    if (direction == std::string_view::npos || modifier == std::end(wheel_modifiers)) return nullptr;
    return &wheel[direction][static_cast<std::size_t>(modifier - std::begin(wheel_modifiers))];
}

struct key_family {
    std::string_view prefix;
    tm_string_record_t* (*find)(std::string_view rest_of_name);
};
constexpr key_family key_families[] = {
    {"B", find_button}, {"F", find_function_key},    {"A", find_arrow},
    {"W", find_wheel},  {"CNTL_", find_control_key},
};

tm_string_record_t* find_action(const tm_string_record_t& key) {
    std::string name;
    for (const char c : tm_view(key)) name += tm_upper_case(c);
    for (const key_family& family : key_families)
        if (name.starts_with(family.prefix))
            return family.find(std::string_view(name).substr(family.prefix.size()));
    return nullptr;
}

void show_text(const std::string& label, const tm_string_record_t& text) {
    kol_show({label, tm_view(text), "' "});
}

void list_button(std::size_t button) {
    const std::string number = std::to_string(button);
    tm_display("# button " + number + " : ");
    show_text("#   \"b" + number + "\"  (down) : '", tm_vext.action_but[button_entry(button, false)]);
    show_text("#   \"b" + number + "u\" (up)   : '", tm_vext.action_but[button_entry(button, true)]);
}

void list_function_key(std::size_t number) {
    const std::string name = "f" + std::to_string(number);
    tm_display("# key " + name + " : ");
    for (const function_key_kind& kind : function_key_kinds)
        show_text("#  \"" + name + std::string(kind.shown), (tm_vext.*kind.actions)[number - 1]);
}

void list_control_key(char letter) {
    const auto entry = static_cast<std::size_t>(letter - first_control_letter);
    show_text(std::string("# \"cntl_") + letter + " : '", tm_vext.action_ck[entry]);
}

void list_wheel() {
    for (std::size_t direction = 0; direction < wheel.size(); ++direction)
        for (std::size_t modifier = 0; modifier < std::size(wheel_modifiers); ++modifier) {
            const tm_string_record_t& text = wheel[direction][modifier];
            const std::string name = {'w', arrow_letters[direction]};
            if (text.len > 0)
                show_text("#   \"" + name + std::string(wheel_modifiers[modifier]) + "\" : '", text);
        }
}

}  // namespace

void tm_set_key_action(const tm_string_record_t& key, const tm_string_record_t& text, bool& ok) {
    tm_string_record_t* const action = find_action(key);
    ok = action != nullptr;
    if (ok) tm_copy_line(text, *action);
}

void tm_get_key_action(const tm_string_record_t& key, tm_string_record_t& text, bool& ok) {
    const tm_string_record_t* const action = find_action(key);
    ok = action != nullptr;
    text = ok ? *action : tm_string_record_t{};
}

void tm_status_key_all() {
    for (std::size_t button = 1; button <= buttons; ++button) list_button(button);
    tm_display("# ");
    for (std::size_t number = 1; number <= function_keys; ++number) list_function_key(number);
    tm_display("# ");
    for (char letter = first_control_letter; letter <= last_control_letter; ++letter)
        list_control_key(letter);
    list_wheel();
}

kol_result_t kol_define_key_cmd(const kol_line_t& line) {
    bool known = false;
    tm_set_key_action(line[3], kol_unquoted(line[4]), known);
    return known ? kol_result_t() : key_invalid;
}

kol_result_t kol_status_key_cmd(const kol_line_t& line) {
    tm_string_record_t text;
    bool known = true;
    if (line.nkeyword == 2)
        tm_status_key_all();
    else
        tm_get_key_action(line[3], text, known);
    if (!known) return key_name_invalid;
    if (line.nkeyword == 3) kol_show({"# KEY : ", tm_view(line[3]), " ", tm_view(text)});
    return {};
}
