// tm: the session text area.  Owns the lines on their way to the text widget: they are collected and shown at
// most 20 times a second, since one widget update costs more than a simulator command.  The widget keeps the
// newest lines (session_kept_lines); the transcript file keeps them all.
#pragma once

#include <string_view>

#include "app/window/window_record.h"

inline constexpr std::size_t session_kept_lines = 100'000;

// A click on a path in the text shows it on its sheet.
void session_watch_clicks();
void session_append(std::string_view line);
void session_show_due();  // shows what is collected when the last showing is long enough ago
void session_show();      // shows it now
void session_show_end();  // and moves to the newest line, for whoever has sent a command looks for the answer
