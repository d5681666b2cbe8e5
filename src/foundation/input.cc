// Ordinary files, and the memory that is left for them.
#include "foundation/input.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cinttypes>
#include <cstdio>
#include <limits>

namespace {

constexpr std::int64_t unknown = std::numeric_limits<std::int64_t>::max();
constexpr std::size_t block_bytes = 1 << 16;

// What can be given to programs without another one being stopped, from the system's own account of it.
std::int64_t available_in_system() {
    const tm_stream file(std::fopen("/proc/meminfo", "r"));
    std::int64_t total = 0, kilobytes = 0;
    char name[64];
    bool is_known = false;
    while (file != nullptr && std::fscanf(file.get(), "%63s %" SCNd64 "%*[^\n]", name, &kilobytes) == 2) {
        const std::string_view row = name;
        if (row != "MemAvailable:" && row != "SwapFree:") continue;
        is_known = true;
        total += kilobytes * 1024;
    }
    return is_known ? total : unknown;
}

std::int64_t left_of_address_space() {
    rlimit limit{};
    if (::getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY) return unknown;
    const tm_stream file(std::fopen("/proc/self/statm", "r"));
    std::int64_t pages = 0;
    if (file == nullptr || std::fscanf(file.get(), "%" SCNd64, &pages) != 1) return unknown;
    return std::max<std::int64_t>(static_cast<std::int64_t>(limit.rlim_cur) - pages * ::sysconf(_SC_PAGESIZE),
                                  0);
}

}  // namespace

int tm_open_input(const std::string& path) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    struct stat info {};
    if (fd < 0 || (::fstat(fd, &info) == 0 && S_ISREG(info.st_mode))) return fd;
    ::close(fd);
    errno = S_ISDIR(info.st_mode) ? EISDIR : ENXIO;
    return -1;
}

bool tm_read_input(const std::string& path, std::string& text) {
    const int fd = tm_open_input(path);
    if (fd < 0) return false;
    struct stat info {};
    const bool fits = ::fstat(fd, &info) == 0 && info.st_size < tm_memory_left();
    if (fits) text.reserve(text.size() + static_cast<std::size_t>(info.st_size) + block_bytes);
    std::size_t used = text.size();
    ssize_t got = fits ? 1 : -1;
    while (got > 0) {
        text.resize(used + block_bytes);
        do got = ::read(fd, text.data() + used, block_bytes);
        while (got < 0 && errno == EINTR);
        used += static_cast<std::size_t>(std::max<ssize_t>(got, 0));
    }
    text.resize(std::min(used, text.size()));
    const int why = fits ? errno : ENOMEM;
    ::close(fd);
    errno = why;
    return got == 0;
}

std::int64_t tm_memory_left() { return std::min(available_in_system(), left_of_address_space()); }
