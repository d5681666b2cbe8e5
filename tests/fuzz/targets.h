// fz: what can be fed to the readers.  A target takes bytes of any kind, as a file or as lines typed, and
// goes on with what they were accepted as.  It may refuse them; a fatal end, a sanitizer's report or a run
// that does not come back is a fault of the program.  Files lie in the working directory.
#pragma once

#include <string>

struct fz_target {
    const char* name;
    void (*feed)(const std::string& bytes);
    void (*write_seeds)(const std::string& folder);  // files that are sound
};

// designs.cc
void fz_feed_design(const std::string& bytes);
void fz_feed_state(const std::string& bytes);
void fz_feed_words(const std::string& bytes);
void fz_seed_designs(const std::string& folder);
void fz_seed_states(const std::string& folder);
// What a session does with the design in the store: sets it up, runs it, with times that are small and that
// end at the largest.
void fz_use_design();
// sheets.cc
void fz_feed_sheet(const std::string& bytes);
void fz_feed_link(const std::string& bytes);
void fz_seed_sheets(const std::string& folder);
// netlists.cc
void fz_feed_netlist(const std::string& bytes);
void fz_feed_sdf(const std::string& bytes);
void fz_feed_library(const std::string& bytes);
void fz_feed_timing(const std::string& bytes);
void fz_feed_delays(const std::string& bytes);
void fz_seed_netlists(const std::string& folder);
// commands.cc
void fz_feed_commands(const std::string& bytes);
void fz_seed_commands(const std::string& folder);

// The bytes of a file, and a file of bytes.
std::string fz_read(const std::string& path);
void fz_write(const std::string& path, const std::string& bytes);
