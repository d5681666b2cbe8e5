// yxi: the design file interface.  Opens a design file into the netlist store, closes it, walks its nets,
// instances and pins by index, and copies strings between the store, its own string record and the counted
// strings.  Times are time steps, strings are addressed by their 1-based store index.
#pragma once

#include <cstdint>

#include "foundation/status.h"
#include "netlist/store.h"

struct yxi_string_record_t {
    std::int32_t len = 0;
    char* charp = nullptr;  // 208 bytes, owned by the view
};

// Loads directory + "/" + file into the store.  status 0: loaded.  A name of length 0, a read that fails, a
// short file, counts over the store's limits and references outside their kind give a failure status and a
// line on standard output that names file, section and record.  Names too long or a file that cannot be
// opened end the program.
void yxi_init_dfi(const yxi_string_record_t& directory, const yxi_string_record_t& file, STATUS_T& status);
void yxi_close_dfi(std::int32_t& num_errors, std::int32_t& num_warnings);

// Store string (index) into a counted string; a bad index is fatal (invalid_string).
void yxi_copy_string_yx_tm(std::int32_t string_index, tm_string_record_t& dst);
// Case-insensitive: equality, and "s is a prefix of the store string".
bool yxistring_iden_tmstring(std::int32_t string_index, const tm_string_record_t& s);
bool tmstring_equal_yxistring(const tm_string_record_t& s, std::int32_t string_index);
