// The report on a session for other programs, JSON: exit status, end time, events, counts of messages by
// kind, seconds, memory.
#pragma once

#include <string>

#include "batch/verdict.h"

// False: the file cannot be written; an older one is as it was.
bool bt_write_report(const std::string& path, int status, const bt_verdict_t& verdict);
