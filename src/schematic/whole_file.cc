// Sheets and links as whole files.
#include "schematic/whole_file.h"

#include <unistd.h>

#include <cstdio>

#include "foundation/input.h"

namespace {

constexpr std::size_t path_cut = 192;  // where the opening procedures cut a path
constexpr std::size_t read_step = 1 << 16;

bool is_usable(const tm_string_record_t& pathname) {
    return static_cast<std::size_t>(pathname.len) < path_cut && tm_resolve_path(pathname).size() < path_cut;
}

}  // namespace

tm_stream tm_open_to_read(const tm_string_record_t& pathname) {
    const int fd = is_usable(pathname) ? tm_open_input(tm_resolve_path(pathname)) : -1;
    tm_stream file(fd < 0 ? nullptr : ::fdopen(fd, "r"));
    if (fd >= 0 && file == nullptr) ::close(fd);
    return file;
}

bool tm_read_whole(const tm_string_record_t& pathname, std::string& bytes, std::size_t most) {
    bytes.clear();
    const tm_stream file = tm_open_to_read(pathname);
    if (file == nullptr) return false;
    for (std::size_t got = read_step; got == read_step && bytes.size() <= most;) {
        const std::size_t had = bytes.size();
        bytes.resize(had + read_step);
        got = std::fread(bytes.data() + had, 1, read_step, file.get());
        bytes.resize(had + got);
    }
    return bytes.size() <= most && std::ferror(file.get()) == 0;
}

bool tm_write_whole(const tm_string_record_t& pathname, const std::string& bytes) {
    return is_usable(pathname) && tm_replacement(pathname).write(bytes);
}
