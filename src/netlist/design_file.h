// yxi: the design file interface.  Opens a design file into the netlist store, closes it, walks its nets,
// instances and pins by index, and copies strings between the store, its own string record and the counted
// strings.  Times are time steps, strings are addressed by their 1-based store index.
#pragma once

#include <cstdint>
#include <string>

#include "foundation/status.h"
#include "netlist/text.h"

// Loads directory + "/" + file into the store.  status 0: loaded.  A name of length 0, a read that fails, a
// short file, counts over the store's limits and references outside their kind give a failure status and a
// line on standard output that names file, section and record.  Names too long or a file that cannot be
// opened end the program.
void yxi_init_dfi(const yxi_string_record_t& directory, const yxi_string_record_t& file, STATUS_T& status);
// The path of the file that was opened last.
const std::string& yxi_design_path();
void yxi_close_dfi(std::int32_t& num_errors, std::int32_t& num_warnings);
