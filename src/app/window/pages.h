// tm: the drawing pages.  Owns the two drawing areas' off-screen pictures: makes them at the area's size,
// remakes them when it changes, redraws and copies them to the window.  While a command runs nothing is
// redrawn from inside its work: the last picture is copied, and the page is drawn anew when the command ends.
#pragma once

#include "app/window/window_record.h"

void pages_create_pixmaps();  // at the current page's size, which becomes bitmap_size
void pages_set_labels();      // the tabs' labels, the current one marked
void pages_watch_tabs();      // draws the tabs whole wherever a part of them was covered
void pages_redraw_results();
void pages_redraw_context();
// The Results page, and the Context page while there are probes.
void pages_redraw_states();
void pages_show_other();                                  // the page that is not current becomes so
void pages_copy_to_window();                              // when it has been drawn on
void pages_show_picture();                                // in any case
void pages_pointer_position();                            // pixel_pos and obj_pos from the pointer
void pages_move_pointer(std::int32_t x, std::int32_t y);  // to a pixel of the current drawing area

void kol_drawing_area_callback_expose(Widget area, XtPointer, XtPointer call_data);
void kol_drawing_area_callback_resize(Widget area, XtPointer, XtPointer call_data);
void cb_tabstack_page_change(Widget tab_stack, XtPointer, XtPointer call_data);
