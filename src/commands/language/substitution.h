// kol: substitution of $ARGn and $VARn, n 1..30, by the texts of a parameter or variable set.
#pragma once

#include "commands/language/command.h"

// Replaces the references of one prefix ("$ARG" or "$VAR", any case) in the text of one command, which never
// grows beyond 199 characters.  The places that are looked at are those of the command as it came, so an
// inserted text is looked at too and what it pushes beyond them is not.  An index outside 1..30 shows two
// lines and leaves that reference and all behind it in place.
void kol_substitute(tm_string_record_t& command, std::string_view prefix, const kol_array_param_t& values);
