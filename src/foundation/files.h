// tm: files, shell commands and the date.  Opens streams and descriptors by path, where a leading "$QUILLARN"
// (any case) stands for the installation root; runs shell commands; reads the calendar date in UTC.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include "foundation/strings.h"

struct tm_stream_closer {
    void operator()(std::FILE* f) const { std::fclose(f); }
};
using tm_stream = std::unique_ptr<std::FILE, tm_stream_closer>;  // the owner of a stream inside one procedure

inline constexpr const char* tm_default_root = "/users/quillarn";

// The installation root: the environment variable QUILLARN, or the default when it is unset or empty.
std::string tm_installation_root();
// The path as the opening procedures use it: the prefix replaced, cut to 192 characters.
std::string tm_resolve_path(const tm_string_record_t& pathin);

// Lets command files be a FIFO, or "-" for standard input: for a program that its user means to feed.
extern bool tm_streams_are_read;

// What is read is a regular file, or with tm_streams_are_read a FIFO.  rorw: 'W' writes (truncating), 'R'
// reads, in either case; any other is fatal.  rdoly: the file must exist already, else it is created. open_ok
// false: the path cannot be opened, nothing is said.  A path that exists but cannot be opened that way ends
// the program with status 0.
void tm_popen_file(const tm_string_record_t& pathin, char rorw, bool rdoly, std::FILE*& fid, bool& open_ok);
// The same as a descriptor: read-only with rdoly, else write-only, created and truncated; rorw plays no part.
// A failure leaves a trace line and fid -1.
void tm_popen_filei(const tm_string_record_t& pathin, char rorw, bool rdoly, int& fid, bool& open_ok);

// Runs the text as a shell command, without its enclosing quotes, and returns its status as waitpid() tells
// it; 199 characters or more: ignored.
int tm_system(const tm_string_record_t& cmd);
// False makes SYSTEM and the '!' escape run nothing; true at start.
extern bool tm_shell_commands_allowed;

void tm_get_date(std::int16_t& day, std::int16_t& month, std::int16_t& year, std::int16_t& hour,
                 std::int16_t& minute);
// The same from seconds since 1970-01-01.
void tm_date_of(std::int64_t seconds, std::int16_t& day, std::int16_t& month, std::int16_t& year,
                std::int16_t& hour, std::int16_t& minute);

// Reads one line, at most 198 characters; other bytes than 32..126 become blanks; pos becomes 1.  cut tells
// that the line was longer: its rest has been skipped.  False: it does not end within tm_line_limit
// characters, so it is no text, and nothing behind it should be read.
bool tm_read_one_line(std::FILE* file, tm_string_record_t& buf, std::int32_t& pos, bool& cut);
inline constexpr std::int64_t tm_line_limit = 1 << 20;
// True at the end of the file and when the stream cannot be read.  It waits for the first character of a line
// that is still to come; "while (!tm_no_more_lines(file)) tm_read_one_line(...)" meets each line once.
bool tm_no_more_lines(std::FILE* file);
