// The record of the simulator and its trace stream.
#include "kernel/context.h"

#include <cstdarg>

kol_defref_var_rec_t kol_ext;
std::FILE* kol_dbf = nullptr;
std::int32_t kol_max_delay = 0;
tm_string_record_t kol_init_do_file;

void kol_trace(const char* format, ...) {
    if (kol_dbf == nullptr) return;
    std::va_list arguments;
    va_start(arguments, format);
    std::vfprintf(kol_dbf, format, arguments);
    va_end(arguments);
    std::fputc('\n', kol_dbf);
}
