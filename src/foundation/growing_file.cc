// Files that grow while the program runs.
#include "foundation/growing_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace {

constexpr int file_mode = 0660;
constexpr off_t longest_line = 1024;

}  // namespace

tm_stream tm_create_log(const std::string& path, bool is_locked) {
    constexpr int flags = O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    int fd = ::open(path.c_str(), flags, file_mode);
    if (fd < 0 && errno == ELOOP && ::unlink(path.c_str()) == 0)
        fd = ::open(path.c_str(), flags | O_EXCL, file_mode);
    if (fd < 0) return nullptr;
    struct stat info {};
    const bool is_file = ::fstat(fd, &info) == 0 && S_ISREG(info.st_mode);
    if (!is_file) errno = ENXIO;
    const bool is_ours = is_file && (!is_locked || ::flock(fd, LOCK_EX | LOCK_NB) == 0);
    tm_stream stream(is_ours && ::ftruncate(fd, 0) == 0 ? ::fdopen(fd, "w") : nullptr);
    if (stream == nullptr) {
        const int why = errno;
        ::close(fd);
        errno = why;
    }
    return stream;
}

std::string tm_last_line(std::FILE* log) {
    struct stat info {};
    if (log == nullptr || std::fflush(log) != 0 || ::fstat(::fileno(log), &info) != 0) return "";
    std::string end(static_cast<std::size_t>(std::min(info.st_size, longest_line)), '\0');
    const ssize_t got =
        ::pread(::fileno(log), end.data(), end.size(), info.st_size - static_cast<off_t>(end.size()));
    end.resize(static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
    while (end.ends_with('\n')) end.pop_back();
    return end.substr(end.rfind('\n') + 1);
}
