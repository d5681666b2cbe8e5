// tm: the sheet files.  Opens, creates and closes them; at most 32 are open at once, under file indexes
// 1..32, a new file taking the lowest free one.  The file last opened or selected is the current one.
// A file that cannot be read as a sheet comes back as a status and is not open: a damaged sheet does not end
// a session.  The texts and counts are those of the faults:
//   the data file, or a link that is there, cannot be opened
//                                      file_open_invalid, one more in num_errors, trace line
//   wrong software revision            file_open_invalid, "!! Software Revision Error" line on standard
//   output wrong header, short file, a text longer than its record or not printable   file_open_invalid
//   object type outside 1..32          object_type_invalid, " ==> ReadOneObject" line on standard output
//   a deleted object, an id or a link of the tree that is wrong, too deep a tree   file_close_invalid
// What a caller does wrong is fatal: the package not initialised (init_not_done; tm_vext.init_done says it
// is), a 33rd file (too_many_files), an index of no open file (init_or_open_file_not_done).
#pragma once

#include "schematic/object.h"

// Opens DIR/TYPE.tm's current version.  Without a link the file is new and empty, of version 1.
void tm_file_open(const tm_string_record_t& dirname, const tm_string_record_t& filetype,
                  tm_file_index_t& file_index, STATUS_T& status);
// Reads another sheet, or the same again, into an open file; what was there is dropped without saving.  found
// false, status 0: there is no link.  Without success the file is as it was.
void tm_file_reopen(const tm_string_record_t& dirname, const tm_string_record_t& filetype,
                    tm_file_index_t file_index, bool& found, STATUS_T& status);
// A new empty file in memory whatever DIR holds; saving makes the version behind the link's.
void tm_file_create_new(const tm_string_record_t& dirname, const tm_string_record_t& filetype,
                        tm_file_index_t& file_index, STATUS_T& status);
// The file that saving writes to: an empty one for the version behind the source's, or for the source's own
// when it had no link.
void tm_file_create_bye(const tm_file_io_rec_t& source, tm_file_io_rec_t& target);
// Closes a file.  With save its objects go to a new version, without the deleted ones and renumbered, then
// the link is changed; a file that cannot be written gives file_open_invalid, the old version stays and the
// file stays open.
void tm_file_close(tm_file_index_t file_index, bool save, STATUS_T& status);
// Makes an open file the current one.
void tm_file_select(tm_file_index_t file_index, STATUS_T& status);

std::int16_t tm_file_inq_primary_object(tm_file_index_t file_index);  // 0: none
tm_file_io_rec_t& tm_file_record(tm_file_index_t file_index);         // of an open file
