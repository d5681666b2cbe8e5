// xp_buses: the command file beside the design file.  One DEFINE BUS for every vector port of the top module
// and for its other public vectors that registers drive, most significant bit first; a vector with more
// members than a command takes goes on with DEFINE BUS A lines.
#pragma once

#include <string>

#include "expand/flatten.h"

inline constexpr std::size_t xp_command_words = 30, xp_command_characters = 198;

std::string xp_buses_text(const xp_flat& flat);
