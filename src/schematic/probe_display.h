// tm: probes on the sheet.  A net object's ptrto_probe leads to the first of its probe displays, each to the
// next; whoever sets probes owns the records and hangs them up again when the sheet has been read anew.  The
// drawing asks each for what it shows, at every redraw, and writes it beside the probe's place.
#pragma once

#include <cstdint>
#include <string_view>

#include "foundation/strings.h"

struct tm_probe_display_t {
    std::int16_t vertex = 0;  // id of the vertex_2d or pinpropfam it stands at
    tm_string_record_t name;
    void* owner = nullptr;  // of the commands
    // What it shows now, for example "clk 1S", valid until the next call; null: its name.
    std::string_view (*text)(const tm_probe_display_t& probe) = nullptr;
    tm_probe_display_t* next = nullptr;
};
