// xp_memories: the initial contents of the memories of a design.  Owns the text of the file beside the design
// file that a simulation starts from: for each memory a line "// memory PATH", its words in hexadecimal, 16
// to the line at most, and addresses where unknown words are left out.
#pragma once

#include <string>

#include "expand/paths.h"

// Empty for a design without memories.
std::string xp_memories_text(const xp_flat& flat, const xp_paths& paths, const yx_design_image_t& image);
