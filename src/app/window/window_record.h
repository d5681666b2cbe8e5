// tm: the widgets and the drawing state of the main window, shared by the files of this folder.
#pragma once

#include <Xm/Xm.h>

#include <array>
#include <cstdint>

#include "app/window/palette.h"
#include "foundation/context.h"

struct tm_window_t {
    XtAppContext app = nullptr;
    Display* dpy = nullptr;
    Widget top_window = nullptr;
    Widget rowcol = nullptr;  // paned window: tab stack above session text
    Widget toolbar01a = nullptr, toolbar01b = nullptr;
    Widget label_entry = nullptr, entrycmd = nullptr;
    Widget tabStack = nullptr;
    std::array<Widget, tm_pages> page_form{};
    std::array<Widget, tm_pages> drawarea{};
    Widget curdrawarea = nullptr;
    std::array<Pixmap, tm_pages> drareapixmap{};  // the off-screen picture of each page
    Pixmap curdrareapixmap = 0;
    bool exposed = false;          // a drawing area has been on the screen
    bool picture_changed = false;  // drawn on since it was last copied to the window
    tm_bounds_t curdarea_pixel_bounds;
    Widget textsession = nullptr;
    std::array<XColor, tm_colours> colorrec{};
    GC our_gc = nullptr;
    bool placeholder_shown = false;  // the entry still holds its first text
};

extern tm_window_t tm_window;

// A compound string of any text, lines separated by line feeds; freed with the owner.
class tm_xm_string {
public:
    explicit tm_xm_string(const char* text)
        : string_(XmStringGenerate(const_cast<char*>(text), nullptr, XmCHARSET_TEXT, nullptr)) {}
    ~tm_xm_string() { XmStringFree(string_); }
    tm_xm_string(const tm_xm_string&) = delete;
    tm_xm_string& operator=(const tm_xm_string&) = delete;
    XmString get() const { return string_; }

private:
    XmString string_;
};
