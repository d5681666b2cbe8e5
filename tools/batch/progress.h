// How far a run has come, once a second, where standard error is a terminal.
#pragma once

void bt_watch_progress();
// Takes the line away, so that another text can stand there.
void bt_clear_progress();
