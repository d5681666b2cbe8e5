// The tables of the state algebra, and its letters.
#include "kernel/state.h"

#include "foundation/strings.h"

namespace {

constexpr std::string_view value_letters = "i0x1";
constexpr std::string_view drive_letters = "UZRWS";
constexpr std::int16_t value_count = 4;
constexpr std::int16_t drive_count = 5;

constexpr bool is_value(std::int16_t svalue) { return svalue >= 0 && svalue < value_count; }
constexpr bool is_drive(std::int16_t drive) { return drive >= 0 && drive < drive_count; }

using value_table = std::array<std::array<std::int16_t, 4>, 4>;
constexpr auto vi = kol_vi, v0 = kol_v0, vx = kol_vx, v1 = kol_v1;

// clang-format off
//                                  i   0   x   1
constexpr value_table and_table{{{vi, v0, vi, vi},     // i
                                 {v0, v0, v0, v0},     // 0
                                 {vi, v0, vx, vx},     // x
                                 {vi, v0, vx, v1}}};   // 1
constexpr value_table or_table{{{vi, vi, vi, v1},      // i
                                {vi, v0, vx, v1},      // 0
                                {vi, vx, vx, v1},      // x
                                {v1, v1, v1, v1}}};    // 1
constexpr value_table xor_table{{{vi, vi, vi, vi},     // i
                                 {vi, v0, vx, v1},     // 0
                                 {vi, vx, vx, vx},     // x
                                 {vi, v1, vx, v0}}};   // 1
// clang-format on
constexpr std::array<std::int16_t, 4> inverse{vi, v1, vx, v0};

std::int16_t look_up(const value_table& table, std::int16_t svalue1, std::int16_t svalue2) {
    if (!is_value(svalue1) || !is_value(svalue2)) return kol_vi;
    return table[static_cast<std::size_t>(svalue1)][static_cast<std::size_t>(svalue2)];
}

std::int16_t look_up_inverted(const value_table& table, std::int16_t svalue1, std::int16_t svalue2) {
    return inverse[static_cast<std::size_t>(look_up(table, svalue1, svalue2))];
}

constexpr std::int16_t position_in(std::string_view letters, char letter) {
    for (std::size_t k = 0; k < letters.size(); ++k)
        if (tm_upper_case(letters[k]) == tm_upper_case(letter)) return static_cast<std::int16_t>(k);
    return -1;
}

constexpr std::int8_t resolve(std::int8_t state1, std::int8_t state2) {
    const int drive1 = state1 / value_count;
    const int drive2 = state2 / value_count;
    if (drive1 != drive2) return drive1 > drive2 ? state1 : state2;
    const int value = state1 % value_count;
    const bool agree = state1 == state2 && (value == kol_v0 || value == kol_v1);
    return agree ? state1 : kol_indeterminate_of(state1);
}

using state_table = std::array<std::array<std::int8_t, kol_state_count>, kol_state_count>;
constexpr state_table resolved = [] {
    state_table table{};
    for (std::int8_t a = 0; a < kol_state_count; ++a)
        for (std::int8_t b = 0; b < kol_state_count; ++b)
            table[static_cast<std::size_t>(a)][static_cast<std::size_t>(b)] = resolve(a, b);
    return table;
}();

std::size_t known_state(std::int8_t state) {
    return kol_state_is_valid(state) ? static_cast<std::size_t>(state) : 0;
}

}  // namespace

void kol_valdrive_to_state(std::int16_t svalue, std::int16_t drive, std::int8_t& state) {
    state = is_value(svalue) && is_drive(drive) ? static_cast<std::int8_t>(svalue + value_count * drive)
                                                : std::int8_t{0};
}

void kol_state_to_valdrive(std::int8_t state, std::int16_t& svalue, std::int16_t& drive) {
    svalue = static_cast<std::int16_t>(known_state(state) % value_count);
    drive = static_cast<std::int16_t>(known_state(state) / value_count);
}

void kol_state_to_statechar(std::int8_t state, char (&two)[2]) {
    two[0] = value_letters[known_state(state) % value_count];
    two[1] = kol_state_is_valid(state) ? drive_letters[known_state(state) / value_count] : 'u';
}

std::int8_t kol_net_state(std::int8_t state1, std::int8_t state2) {
    return resolved[known_state(state1)][known_state(state2)];
}

std::int16_t kol_and_value(std::int16_t svalue1, std::int16_t svalue2) {
    return look_up(and_table, svalue1, svalue2);
}
std::int16_t kol_or_value(std::int16_t svalue1, std::int16_t svalue2) {
    return look_up(or_table, svalue1, svalue2);
}
std::int16_t kol_nand_value(std::int16_t svalue1, std::int16_t svalue2) {
    return look_up_inverted(and_table, svalue1, svalue2);
}
std::int16_t kol_nor_value(std::int16_t svalue1, std::int16_t svalue2) {
    return look_up_inverted(or_table, svalue1, svalue2);
}
std::int16_t kol_xor_value(std::int16_t svalue1, std::int16_t svalue2) {
    return look_up(xor_table, svalue1, svalue2);
}

std::int16_t kol_drive_of_letter(char letter) { return position_in(drive_letters, letter); }

bool kol_keyword_to_state(std::string_view keyword, std::int8_t& state) {
    if (keyword.empty() || keyword.size() > 2) return false;
    const std::int16_t svalue = position_in(value_letters, keyword[0]);
    const std::int16_t drive = keyword.size() == 1 ? kol_drive_strong : kol_drive_of_letter(keyword[1]);
    if (svalue < 0 || drive < 0) return false;
    kol_valdrive_to_state(svalue, drive, state);
    return true;
}
