// Files that take the place of older ones.
#include "foundation/replacement.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <filesystem>

namespace {

namespace fs = std::filesystem;

constexpr std::string_view mark = ".new-";  // between the name and the digits of a file being written
constexpr std::size_t digits = 16;
constexpr std::size_t name_max = 255 - mark.size() - digits;  // of a name's characters that are kept
constexpr int attempts = 100;

// 0, or why a file cannot be put there.
int refusal_of(const fs::path& target) {
    struct stat old {};
    if (::stat(target.c_str(), &old) != 0) return errno == ENOENT ? 0 : errno;
    if (S_ISDIR(old.st_mode)) return EISDIR;
    if (!S_ISREG(old.st_mode)) return ENXIO;
    return ::access(target.c_str(), W_OK) == 0 ? 0 : errno;
}

std::string prefix_of(const std::string& target) {
    const std::size_t slash = target.rfind('/') + 1;
    return target.substr(0, std::min(target.size(), slash + name_max)) + std::string(mark);
}

bool random_digits(std::string& text) {
    std::uint64_t bits = 0;
    if (::getrandom(&bits, sizeof bits, 0) != sizeof bits) return false;
    for (std::size_t i = 0; i < digits; ++i, bits >>= 4) text += "0123456789abcdef"[bits & 15];
    return true;
}

bool is_digits(std::string_view text) {
    return text.size() == digits && text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

// Whoever writes a file holds its lock: one that can be locked was left by a program that is no more.
bool lock(int descriptor) { return ::flock(descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK; }

void remove_if_left(const std::string& path) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) return;
    struct stat found {};
    if (::fstat(descriptor, &found) == 0 && S_ISREG(found.st_mode) && found.st_uid == ::geteuid() &&
        ::flock(descriptor, LOCK_EX | LOCK_NB) == 0)
        ::unlink(path.c_str());
    ::close(descriptor);
}

void remove_left_overs(const fs::path& target) {
    const std::string prefix = fs::path(prefix_of(target)).filename();
    std::error_code failed;
    for (fs::directory_iterator each(target.parent_path(), failed), end; !failed && each != end;
         each.increment(failed)) {
        const std::string name = each->path().filename();
        if (name.starts_with(prefix) && is_digits(std::string_view(name).substr(prefix.size())))
            remove_if_left(each->path());
    }
}

void take_owner_and_mode(int descriptor, const std::string& target) {
    struct stat old {};
    if (::stat(target.c_str(), &old) != 0) return;
    [[maybe_unused]] const int owner = ::fchown(descriptor, old.st_uid, old.st_gid);
    ::fchmod(descriptor, old.st_mode & 0777);
}

// The name in its directory, too, is on the disk.
bool flush_directory_of(const std::string& target) {
    const int descriptor = ::open(fs::path(target).parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return errno == EACCES;                           // it may be written, not read
    const bool is_flushed = ::fsync(descriptor) == 0 || errno == EINVAL;  // not of this file system
    const int why = errno;
    ::close(descriptor);
    errno = why;
    return is_flushed;
}

}  // namespace

tm_replacement::tm_replacement(const tm_string_record_t& path, mode_t mode) {
    open(tm_resolve_path(path), mode);
}

tm_replacement::tm_replacement(const std::string& path, mode_t mode) { open(path, mode); }

tm_replacement::~tm_replacement() {
    if (!written_.empty()) ::unlink(written_.c_str());
}

void tm_replacement::open(const std::string& path, mode_t mode) {
    std::error_code failed;
    const fs::path absolute = fs::absolute(path, failed);
    const fs::path target = failed ? fs::path() : fs::weakly_canonical(absolute, failed);
    error_ = failed ? failed.value() : refusal_of(target);
    if (error_ != 0) return;
    target_ = target;
    remove_left_overs(target);
    if (!create_beside(mode)) {
        error_ = errno;
        return;
    }
    take_owner_and_mode(::fileno(stream_.get()), target_);
    errno = 0;  // what it says when the stream has failed is why
}

// A name is tried again when it is taken, or when the file was removed before it could be locked.
bool tm_replacement::create_beside(mode_t mode) {
    errno = EEXIST;
    for (int attempt = 0; attempt < attempts && errno == EEXIST; ++attempt) {
        std::string name = prefix_of(target_);
        if (!random_digits(name)) return false;
        const int descriptor =
            ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
        if (descriptor < 0) continue;
        struct stat made {};
        if (!lock(descriptor) || ::fstat(descriptor, &made) != 0 || made.st_nlink == 0) {
            ::close(descriptor);
            errno = EEXIST;
            continue;
        }
        written_ = name;
        stream_.reset(::fdopen(descriptor, "wb"));
        if (stream_ == nullptr) ::close(descriptor);
        return stream_ != nullptr;
    }
    return false;
}

// The lock is held until the file has its name.
bool tm_replacement::take_place() {
    if (!is_open()) return false;
    const bool is_written = std::ferror(stream()) == 0 && std::fflush(stream()) == 0 &&
                            (!tm_flushes_files || ::fsync(::fileno(stream())) == 0) &&
                            std::rename(written_.c_str(), target_.c_str()) == 0;
    error_ = is_written ? 0 : errno != 0 ? errno : EIO;
    stream_.reset();
    if (!is_written) return false;
    written_.clear();
    if (tm_flushes_files && !flush_directory_of(target_)) error_ = errno;
    return error_ == 0;
}

bool tm_replacement::write(std::string_view bytes) {
    if (!is_open()) return false;
    std::fwrite(bytes.data(), 1, bytes.size(), stream());
    return take_place();
}
