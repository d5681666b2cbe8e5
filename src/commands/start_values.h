// kol: what holds before the first command: the table of commands is in use, the procedures that DOBIN calls
// are known, all simulation parameters have their start values.
#pragma once

void kol_initparam_before();
