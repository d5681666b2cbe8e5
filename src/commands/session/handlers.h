// kol: the handlers of the session and its pages, file by file; each checks and acts as command.h says.
#pragma once

#include "commands/language/command.h"

// cursor.cc
kol_result_t kol_cursor_cmd(const kol_line_t& line);

// cursor_steps.cc
kol_result_t kol_cursor_step_cmd(const kol_line_t& line);
kol_result_t kol_viewport_step_cmd(const kol_line_t& line);

// mark.cc
kol_result_t kol_mark_cmd(const kol_line_t& line);
kol_result_t kol_mark_rectangle_cmd(const kol_line_t& line);

// session.cc
kol_result_t kol_command_cmd(const kol_line_t& line);
kol_result_t kol_display_cmd(const kol_line_t& line);
kol_result_t kol_transcript_cmd(const kol_line_t& line);
kol_result_t kol_help_cmd(const kol_line_t& line);
kol_result_t kol_bye_cmd(const kol_line_t& line);
kol_result_t kol_quit_cmd(const kol_line_t& line);

// views.cc
kol_result_t kol_pop_cmd(const kol_line_t& line);
kol_result_t kol_view_all_cmd(const kol_line_t& line);
kol_result_t kol_view_area_cmd(const kol_line_t& line);
kol_result_t kol_view_time_cmd(const kol_line_t& line);
kol_result_t kol_view_window_cmd(const kol_line_t& line);

// zoom.cc
kol_result_t kol_zoom_cmd(const kol_line_t& line);
