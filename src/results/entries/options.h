// rs: what the user has chosen to see on the Results page beside what it always shows.
#pragma once

struct rs_options_t {
    bool bus_values = false;       // values of combined buses in their waveforms
    bool mark_unrecorded = false;  // a grey ground where no history was kept
    bool hints = false;            // an empty page says what to do
};

inline rs_options_t rs_options;
