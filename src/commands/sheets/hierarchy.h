// kol: the way through the hierarchy of sheets.
#pragma once

#include <string_view>

// Goes up and down until the current simulation path is this one ("/", "/u1/u2/"); false when that cannot be,
// then everything is as it was.
bool kol_go_to_path(std::string_view path);
