// tm: the menus.  One table says what every entry does; menu_create builds the menu bar from it.  An entry
// sends a command line, shows a message, opens a dialog or quits.
#pragma once

#include <cstdint>
#include <span>

#include "app/window/window_record.h"

enum class menu_kind : std::uint8_t {
    command,       // text is the command line; message, when there is one, is shown behind it
    message,       // message is shown
    open_sheet,    // the choice of a sheet
    run_prompt,    // asks for the time to run
    list_prompt,   // asks for the first time of the list
    trace_prompt,  // asks for the first time of the trace
    quit,
};

struct menu_row {
    const char* path;  // "/Menu/Entry"
    menu_kind kind;
    const char* text = "";
    const char* message = nullptr;
};

std::span<const menu_row> menu_table();
void menu_create(Widget menu_bar);
void menu_act(const menu_row& row);
