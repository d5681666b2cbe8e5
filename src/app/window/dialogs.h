// tm: the small dialogs.  Quick messages, and the prompts that ask for one value and send a command with it.
#pragma once

#include <cstdint>

enum class prompt_dialog : std::uint8_t { run, list_time, trace_time };

void kol_set_quick_message(const char* text);
void dialog_prompt(prompt_dialog which);
