// The registry of procedures that can be called by name.
#include "foundation/procedures.h"

#include <cstdio>
#include <cstring>
#include <map>
#include <string>

#include "foundation/platform.h"

namespace {

constexpr std::size_t file_name_max = 99;

using registry_t = std::map<std::string, x_arg_procedure, std::less<>>;

registry_t& registry() {
    static registry_t procedures;
    return procedures;
}

}  // namespace

void x_register_procedure(std::string_view name, x_arg_procedure proc) {
    registry().insert_or_assign(std::string(name), proc);
}

x_arg_procedure xm_get_extid_offset(const char* file, const char* name) {
    if (strnlen(file, file_name_max + 1) > file_name_max)
        std::printf(" !!! Error in tm_getextid_offset(c) : len= %zu  '%s'  \n", file_name_max, file);
    const std::string_view wanted(name, static_cast<std::size_t>(xstrlen(name)));
    const auto found = registry().find(wanted);
    return found == registry().end() ? nullptr : found->second;
}

void xprocexe(x_procedure proc) { proc(); }

void xprocargexe(x_arg_procedure proc, std::int16_t count, x_arg_array& args) { proc(&count, args); }
