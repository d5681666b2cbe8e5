// The directories as the build was told them.
#include "support/places/places.h"

std::string tst_source_dir() { return KOLV_SOURCE_DIR; }
std::string tst_program_dir() { return KOLV_BIN_DIR; }
