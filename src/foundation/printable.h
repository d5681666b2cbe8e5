// tm: the characters that texts are made of.
#pragma once

// Whether a counted string can hold the character.
constexpr bool tm_is_printable(int c) { return c >= 32 && c <= 126; }
