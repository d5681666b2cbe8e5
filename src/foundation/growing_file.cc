// Files that grow while the program runs.
#include "foundation/growing_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace {

constexpr int file_mode = 0660;

}  // namespace

tm_stream tm_create_log(const std::string& path, bool is_locked) {
    constexpr int flags = O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
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
