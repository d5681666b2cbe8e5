// tm: the choice of a sheet.  A file selection box lists the sheets below a directory; the chosen sheet's
// directory becomes the working directory and VIEW SHEET is sent with it.
#pragma once

// Only while the Context page is current; else a message says so.
void dialog_open_sheet();
