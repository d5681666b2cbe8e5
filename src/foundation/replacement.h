// tm: files that take the place of older ones.  Owns the way by which a file appears under its name only when
// it has been written whole; until then an older file stays as it was.
#pragma once

#include <string>
#include <string_view>

#include "foundation/files.h"

class tm_replacement {
public:
    // The path as the opening procedures use it (tm_resolve_path); links in it are followed.
    explicit tm_replacement(const tm_string_record_t& path);
    ~tm_replacement();  // a file that was not written whole is removed
    tm_replacement(const tm_replacement&) = delete;
    tm_replacement& operator=(const tm_replacement&) = delete;

    // False where there is something else than a regular file that may be written, or no directory.
    bool is_open() const { return stream_ != nullptr; }
    // Writes the whole file, once; false: the older file is as it was.
    bool write(std::string_view bytes);

private:
    std::string target_, written_;
    tm_stream stream_;
};
