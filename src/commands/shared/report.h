// kol: the lines that the STATUS reports of breaks, probes and buses share.
#pragma once

#include <string_view>

#include "netlist/store.h"

// The label, then the text between double quotes.
void kol_report_quoted(std::string_view label, std::string_view text);
// Index, path and object number of a net.
void kol_report_net(const yx_net_record_t& net);
// The line behind an entry.
void kol_report_end();
