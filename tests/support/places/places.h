// tst: where the tests find the project's files and the programs that were built.  Known to one object file,
// so that no other one depends on where the project lies.
#pragma once

#include <string>

std::string tst_source_dir();
std::string tst_program_dir();
