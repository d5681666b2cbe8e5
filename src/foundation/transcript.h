// tm: the session transcript.  DIRECTORY/current_session belongs to the first program that runs on the
// directory; while it runs, others write current_session_2, _3, ...
#pragma once

#include <string>

#include "foundation/strings.h"

// Opens the transcript (tm_vext.cursessfile, cursessname).  False: no such file can be written; cursessname
// tells the last one tried.
bool tm_open_transcript(const tm_string_record_t& directory);
// The same under a name of the user's choice.
bool tm_open_transcript_at(const std::string& path);
