// tm: files that are read as a whole.  Owns the rule that such a file is an ordinary one: a directory, a
// device or a FIFO, which may never end, is refused at once, without waiting for a writer.
#pragma once

#include <cstdint>
#include <string>

#include "foundation/files.h"

// Opens an ordinary file for reading; -1 and errno (EISDIR of a directory, ENXIO of a device or FIFO).
int tm_open_input(const std::string& path);
// The whole file behind what text holds; false and errno, ENOMEM where it is larger than the memory left.
bool tm_read_input(const std::string& path, std::string& text);

// Bytes of memory that this program may still take: what the system has free or can free, within the limit
// of its address space.  INT64_MAX where nothing is known.
std::int64_t tm_memory_left();
