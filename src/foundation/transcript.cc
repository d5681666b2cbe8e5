// The session transcript: one file for each program that runs on a directory.
#include "foundation/transcript.h"

#include <cerrno>
#include <string>

#include "foundation/context.h"
#include "foundation/files.h"
#include "foundation/growing_file.h"

namespace {

constexpr int most_sessions = 99;

}  // namespace

bool tm_open_transcript(const tm_string_record_t& directory) {
    for (int number = 1; number <= most_sessions; ++number) {
        tm_copy_line(directory, tm_vext.cursessname);
        tm_append("/current_session", tm_vext.cursessname);
        if (number > 1) tm_append("_" + std::to_string(number), tm_vext.cursessname);
        tm_vext.cursessfile = tm_create_log(tm_resolve_path(tm_vext.cursessname), true).release();
        if (tm_vext.cursessfile != nullptr) return true;
        if (errno != EWOULDBLOCK) return false;
    }
    return false;
}

bool tm_open_transcript_at(const std::string& path) {
    tm_vext.cursessname = tm_string(path);
    tm_vext.cursessfile = tm_create_log(path, true).release();
    return tm_vext.cursessfile != nullptr;
}
