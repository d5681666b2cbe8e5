// The session of kolv-batch: from the options to the exit status.
#pragma once

#include "batch/options.h"

inline constexpr int bt_good = 0, bt_failed = 1, bt_unusable = 2;

[[noreturn]] void bt_run_session(const bt_options_t& options);
