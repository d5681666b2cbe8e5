// tm: leaving.  Before something ends or resets the session on a gesture, asks when signals, probes, buses or
// stimuli would be lost that were defined since the start or the last save (resource confirmLoss).
#pragma once

#include <functional>
#include <string_view>

// From here on what is defined now is not lost: at the start, and when a command has saved the state.
void leaving_mark_saved();
void leaving_watch_saves();
// Does it, or asks and does it when the user says so.
void leaving_ask(std::function<void()> act);
// Whether a command text ends or resets the session.
bool leaving_is_meant(std::string_view text);
