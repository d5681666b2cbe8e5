// kol: the signal state algebra.  A state is one byte, value + 4 x drive: values 0 "i", 1 "0", 2 "x", 3 "1",
// drives 0 "U", 1 "Z", 2 "R", 3 "W", 4 "S".  Out-of-range input gives state 0, value and drive 0, or "iu";
// nothing here fails.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

enum kol_values : std::int16_t { kol_vi = 0, kol_v0 = 1, kol_vx = 2, kol_v1 = 3 };
inline constexpr std::int16_t kol_drive_strong = 4;
inline constexpr std::int8_t kol_state_count = 20;

void kol_valdrive_to_state(std::int16_t svalue, std::int16_t drive, std::int8_t& state);
void kol_state_to_valdrive(std::int8_t state, std::int16_t& svalue, std::int16_t& drive);
void kol_state_to_statechar(std::int8_t state, char (&two)[2]);
// The resolved state of two drivers of one net.
std::int8_t kol_net_state(std::int8_t state1, std::int8_t state2);

std::int16_t kol_and_value(std::int16_t svalue1, std::int16_t svalue2);
std::int16_t kol_or_value(std::int16_t svalue1, std::int16_t svalue2);
std::int16_t kol_nand_value(std::int16_t svalue1, std::int16_t svalue2);
std::int16_t kol_nor_value(std::int16_t svalue1, std::int16_t svalue2);
std::int16_t kol_xor_value(std::int16_t svalue1, std::int16_t svalue2);

// A state keyword of one or two characters ("1", "0z"); false when a character is not acceptable.
bool kol_keyword_to_state(std::string_view keyword, std::int8_t& state);
// The code of a drive letter in either case, -1 for any other character.
std::int16_t kol_drive_of_letter(char letter);

constexpr bool kol_state_is_valid(std::int8_t state) { return state >= 0 && state < kol_state_count; }
// The value part alone, for code that reads many states.
constexpr std::int16_t kol_value_of(std::int8_t state) {
    return kol_state_is_valid(state) ? static_cast<std::int16_t>(state & 3) : std::int16_t{kol_vi};
}
// The same value, indeterminate, at the drive of the state.
constexpr std::int8_t kol_indeterminate_of(std::int8_t state) {
    return kol_state_is_valid(state) ? static_cast<std::int8_t>(state & ~3) : std::int8_t{0};
}
