// The record of the package, and the stored arguments.
#include "foundation/context.h"

#include <algorithm>

#include "foundation/printable.h"

constinit tm_defref_var_rec_t tm_vext;

namespace {

constexpr std::int32_t argument_positions = 199;

void store_argument(const char* argument, tm_string_record_t& stored) {
    stored = {};
    if (argument == nullptr) return;
    std::int32_t len = 0;  // a byte that no counted string can hold ends it: a stored argument is sound
    while (len < argument_positions && tm_is_printable(argument[len])) ++len;
    if (len < argument_positions) tm_copy_string(argument, len, stored);
}

}  // namespace

void tm_store_arg(std::int32_t argc, char** argv) {
    tm_vext.nb_arg_comline = std::clamp(argc, 0, static_cast<std::int32_t>(tm_max_arguments));
    for (std::int32_t i = 0; i < tm_vext.nb_arg_comline; ++i)
        store_argument(argv[i], tm_vext.argcomline[static_cast<std::size_t>(i)]);
}

void tm_get_arg(std::int32_t position, tm_string_record_t& result, STATUS_T& status) {
    const bool is_stored = position >= 1 && position <= tm_vext.nb_arg_comline;
    result = is_stored ? tm_vext.argcomline[static_cast<std::size_t>(position - 1)] : tm_string_record_t{};
    status.all = is_stored ? all_is_ok : tm_not_found;
}
