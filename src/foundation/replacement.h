// tm: files that take the place of older ones.  Owns the way by which a file appears under its name only when
// it has been written whole and is on the disk; until then an older file stays as it was.  What is written
// lies beside it under a name that cannot be guessed and that no link can lead away; what a killed program
// left there is removed by the next one that writes that name.  The new file has the old one's mode and, as
// far as the system allows, its owner.
#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>

#include "foundation/files.h"

// Whether each file goes to the disk before it takes its place.  A program that writes many, and puts them
// into their place as a whole, does without and flushes once.
inline bool tm_flushes_files = true;

class tm_replacement {
public:
    // The path as the opening procedures use it (tm_resolve_path); links in it are followed.  The mode, cut
    // by the umask, is that of a file that is new.
    explicit tm_replacement(const tm_string_record_t& path, mode_t mode = 0666);
    explicit tm_replacement(const std::string& path, mode_t mode = 0666);  // as it is
    ~tm_replacement();  // a file that did not take its place is removed
    tm_replacement(const tm_replacement&) = delete;
    tm_replacement& operator=(const tm_replacement&) = delete;

    // False where there is something else than a regular file that may be written, or no directory.
    bool is_open() const { return stream_ != nullptr; }
    // Where the file is written; an error there is found by take_place.
    std::FILE* stream() const { return stream_.get(); }
    // Puts what was written at the path, once; false: the older file is as it was, or, when only the
    // directory cannot be flushed, the new one stands there and might not outlast a loss of power.
    bool take_place();
    // The whole file in one call.
    bool write(std::string_view bytes);
    // Why it is not open or did not take its place: an error number of the system.
    int error() const { return error_; }

private:
    void open(const std::string& path, mode_t mode);
    bool create_beside(mode_t mode);

    std::string target_, written_;
    tm_stream stream_;
    int error_ = 0;
};
