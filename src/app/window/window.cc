// The main window.
#include "app/window/window.h"

#include <X11/Shell.h>
#include <Xm/DrawingA.h>
#include <Xm/Form.h>
#include <Xm/MainW.h>
#include <Xm/PanedW.h>
#include <Xm/Protocols.h>
#include <Xm/PushB.h>
#include <Xm/RowColumn.h>
#include <Xm/TabStack.h>
#include <Xm/Text.h>

#include <langinfo.h>
#include <algorithm>
#include <chrono>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>

#include "app/window/dialogs.h"
#include "app/window/entry.h"
#include "app/window/fonts.h"
#include "app/window/input.h"
#include "app/window/leaving.h"
#include "app/window/menu_table.h"
#include "app/window/options.h"
#include "app/window/pages.h"
#include "app/window/pauses.h"
#include "app/window/scroll_bars.h"
#include "app/window/session_text.h"
#include "app/window/sheet_dialog.h"
#include "app/window/status_line.h"
#include "app/window/window_record.h"
#include "app/window/window_resources.h"
#include "app/window/x_canvas.h"
#include "commands/shared/net_looks.h"
#include "foundation/files.h"
#include "foundation/platform.h"
#include "foundation/shell.h"

tm_window_t tm_window;

namespace {

using steady = std::chrono::steady_clock;

// Pixels at the usual text size; the user may push a pane together to the least height.
constexpr int window_width = 1008, window_height = 728, session_height = 128;
constexpr Dimension least_pane = 60, most_pane = 32767;

// Texts need UTF-8; numbers keep their point whatever the user's language.
String set_language(Display*, String, XtPointer) {
    setlocale(LC_CTYPE, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) setlocale(LC_CTYPE, "C.UTF-8");
    return setlocale(LC_CTYPE, nullptr);
}

bool open_display() {
    XtSetLanguageProc(nullptr, set_language, nullptr);
    XtToolkitInitialize();
    tm_window.app = XtCreateApplicationContext();
    static char program[] = "kolv";
    static char* arguments[] = {program, nullptr};
    int argc = 1;  // the command line holds no toolkit options
    tm_window.dpy = XtOpenDisplay(tm_window.app, nullptr, program, "Kolv", nullptr, 0, &argc, arguments);
    return tm_window.dpy != nullptr;
}

// The built-in resources rank below the user's; the installation's file ranks between them.
void load_resources() {
    XrmDatabase database = XtScreenDatabase(DefaultScreenOfDisplay(tm_window.dpy));
    const std::string installed = tm_installation_root() + "/kolv/Kolv";
    XrmCombineFileDatabase(installed.c_str(), &database, False);
    XrmCombineDatabase(XrmGetStringDatabase(window_resources), &database, False);
}

int scaled(int at_usual_size) { return static_cast<int>(at_usual_size * window_text_scale()); }

// The larger of the usual length and most of the screen, with room for a title bar.
Dimension window_length(int usual, int on_screen, int frame) {
    return static_cast<Dimension>(std::min(std::max(scaled(usual), on_screen * 4 / 5), on_screen - frame));
}

void quit_cb(Widget, XtPointer, XtPointer) { leaving_ask(motif_main_quit); }
void open_cb(Widget, XtPointer, XtPointer) { dialog_open_sheet(); }
void run_cb(Widget, XtPointer, XtPointer) { dialog_prompt(prompt_dialog::run); }

void create_shell(const char* name) {
    const int screen = DefaultScreen(tm_window.dpy);
    const Dimension width = window_length(window_width, DisplayWidth(tm_window.dpy, screen), 16);
    const Dimension height = window_length(window_height, DisplayHeight(tm_window.dpy, screen), 40);
    tm_window.top_window = XtVaAppCreateShell("kolv", "Kolv", applicationShellWidgetClass, tm_window.dpy,
                                              XmNtitle, name, XmNiconName, "kolv", XmNwidth, width, XmNheight,
                                              height, XmNdeleteResponse, XmDO_NOTHING, nullptr);
    const Atom delete_window = XInternAtom(tm_window.dpy, "WM_DELETE_WINDOW", False);
    XmAddWMProtocolCallback(tm_window.top_window, delete_window, quit_cb, nullptr);
}

Widget create_row(Widget parent, const char* name, Widget above) {
    return XtVaCreateManagedWidget(
        name, xmFormWidgetClass, parent, XmNtopAttachment, above != nullptr ? XmATTACH_WIDGET : XmATTACH_FORM,
        XmNtopWidget, above, XmNleftAttachment, XmATTACH_FORM, XmNrightAttachment, XmATTACH_FORM, nullptr);
}

Widget create_menu_bar(Widget parent) {
    Widget bar = XmCreateMenuBar(parent, const_cast<char*>("menuBar"), nullptr, 0);
    XtVaSetValues(bar, XmNtopAttachment, XmATTACH_FORM, XmNleftAttachment, XmATTACH_FORM, XmNrightAttachment,
                  XmATTACH_FORM, nullptr);
    menu_create(bar);
    XtManageChild(bar);
    return bar;
}

struct button_row {
    const char* name;
    const char* tool_tip;  // null: none
    XtCallbackProc action;
};

void create_buttons(Widget bar, std::span<const button_row> buttons) {
    for (const button_row& row : buttons) {
        Widget button =
            XtVaCreateManagedWidget(row.name, xmPushButtonWidgetClass, bar, XmNtraversalOn, False, nullptr);
        XtAddCallback(button, XmNactivateCallback, row.action, nullptr);
        if (row.tool_tip == nullptr) continue;
        const tm_xm_string tip(row.tool_tip);
        XtVaSetValues(button, XmNtoolTipString, tip.get(), nullptr);
    }
}

Widget create_tool_bar(Widget row, const char* name, int side) {
    return XtVaCreateManagedWidget(name, xmRowColumnWidgetClass, row, XmNorientation, XmHORIZONTAL,
                                   XmNtopAttachment, XmATTACH_FORM, XmNbottomAttachment, XmATTACH_FORM,
                                   side < 0 ? XmNleftAttachment : XmNrightAttachment, XmATTACH_FORM, nullptr);
}

Widget create_tool_bars(Widget parent, Widget above) {
    static constexpr button_row left[] = {{"Open", " Open to Edit", open_cb}, {"RUN", nullptr, run_cb}};
    static constexpr button_row right[] = {{"Quit", " Quit Without Saving ", quit_cb}};
    Widget row = create_row(parent, "toolBars", above);
    tm_window.toolbar01a = create_tool_bar(row, "ToolBar01a", -1);
    tm_window.toolbar01b = create_tool_bar(row, "ToolBar01b", 1);
    create_buttons(tm_window.toolbar01a, left);
    create_buttons(tm_window.toolbar01b, right);
    return row;
}

void create_page(std::size_t page, const char* name) {
    static const XtTranslations translations = XtParseTranslationTable(
        "<KeyDown>: DrawingAreaInput()\n<KeyUp>: DrawingAreaInput()\n<BtnDown>: DrawingAreaInput()\n"
        "<BtnUp>: DrawingAreaInput()\n<Motion>: DrawingAreaInput()\n");
    tm_window.page_form[page] = XtVaCreateManagedWidget(name, xmFormWidgetClass, tm_window.tabStack, nullptr);
    Widget area = XtVaCreateManagedWidget(
        "drawarea", xmDrawingAreaWidgetClass, tm_window.page_form[page], XmNtopAttachment, XmATTACH_FORM,
        XmNbottomAttachment, XmATTACH_FORM, XmNleftAttachment, XmATTACH_FORM, XmNrightAttachment,
        XmATTACH_FORM, XmNbackground, BlackPixel(tm_window.dpy, DefaultScreen(tm_window.dpy)), XmNtraversalOn,
        False, XmNtranslations, translations, nullptr);
    tm_window.drawarea[page] = area;
    XtAddCallback(area, XmNexposeCallback, kol_drawing_area_callback_expose, nullptr);
    XtAddCallback(area, XmNresizeCallback, kol_drawing_area_callback_resize, nullptr);
    XtAddCallback(area, XmNinputCallback, kol_drawing_area_callback_input, nullptr);
}

void create_session_text(Widget parent) {
    tm_window.textsession = XmCreateScrolledText(parent, const_cast<char*>("textsession"), nullptr, 0);
    XtVaSetValues(tm_window.textsession, XmNeditMode, XmMULTI_LINE_EDIT, XmNeditable, False,
                  XmNcursorPositionVisible, False, XmNtraversalOn, False, nullptr);
    XtManageChild(tm_window.textsession);
    session_watch_clicks();
    XtVaSetValues(XtParent(tm_window.textsession), XmNskipAdjust, True, XmNpaneMinimum,
                  scaled(session_height), XmNpaneMaximum, most_pane, nullptr);
}

void create_panes(Widget parent, Widget above, Widget below) {
    tm_window.rowcol = XtVaCreateManagedWidget(
        "rowcol", xmPanedWindowWidgetClass, parent, XmNtopAttachment, XmATTACH_WIDGET, XmNtopWidget, above,
        XmNbottomAttachment, below != nullptr ? XmATTACH_WIDGET : XmATTACH_FORM, XmNbottomWidget, below,
        XmNleftAttachment, XmATTACH_FORM, XmNrightAttachment, XmATTACH_FORM, nullptr);
    tm_window.tabStack =
        XtVaCreateManagedWidget("tabStack", xmTabStackWidgetClass, tm_window.rowcol, XmNpaneMinimum,
                                least_pane, XmNpaneMaximum, most_pane, XmNtraversalOn, False, nullptr);
    create_page(0, "resultsPage");
    create_page(1, "contextPage");
    if (window_options().scroll_bars) scroll_bars_create(tm_window.page_form[0], tm_window.drawarea[0]);
    tm_window.curdrawarea = tm_window.drawarea[0];
    XtAddCallback(tm_window.tabStack, XmNtabSelectedCallback, cb_tabstack_page_change, nullptr);
    create_session_text(tm_window.rowcol);
}

void create_widgets(const char* name) {
    create_shell(name);
    status_name_window(name);
    window_options_read();
    Widget form = XtVaCreateManagedWidget("form", xmFormWidgetClass, tm_window.top_window, nullptr);
    Widget menu_bar = create_menu_bar(form);
    Widget tool_bars = create_tool_bars(form, menu_bar);
    Widget entry_row = create_row(form, "entryRow", tool_bars);
    entry_create(entry_row);
    input_watch_keys(tm_window.entrycmd);
    create_panes(form, entry_row, window_options().status_line ? status_create(form) : nullptr);
    if (window_options().wheel_scrolls) input_use_wheel();
    kol_show_states_on_sheets(window_options().sheet_shows_states != False);
    pages_set_labels();
    pages_watch_tabs();
    XtVaSetValues(form, XmNinitialFocus, entry_row, nullptr);
}

// What the user does waits for the event loop: there is no design yet.
Bool is_no_input(Display*, XEvent* event, XPointer) {
    return event->type != ClientMessage && (event->type < KeyPress || event->type > MotionNotify);
}

bool serve_events() {
    bool served = false;
    XEvent event;
    for (; XCheckIfEvent(tm_window.dpy, &event, is_no_input, nullptr) != 0; served = true)
        XtDispatchEvent(&event);
    return served;
}

// Serves the window's first events, until it has been shown and nothing more comes: from then on the drawing
// area has its size.
void settle() {
    constexpr auto quiet = std::chrono::milliseconds(60), limit = std::chrono::milliseconds(1000);
    const auto start = steady::now();
    auto last_event = start;
    while (steady::now() - start < limit && (!tm_window.exposed || steady::now() - last_event < quiet)) {
        XSync(tm_window.dpy, False);
        if (serve_events()) last_event = steady::now();
        xdelayms(pause_of_settling);
    }
}

// A resize keeps what the pages show until it has been drawn anew.
void keep_pictures() {
    XSetWindowAttributes attributes{};
    attributes.bit_gravity = NorthWestGravity;
    for (Widget area : tm_window.drawarea)
        XChangeWindowAttributes(tm_window.dpy, XtWindow(area), CWBitGravity, &attributes);
}

void show_window() {
    XtRealizeWidget(tm_window.top_window);
    keep_pictures();
    x_canvas_open();
    for (Widget area : tm_window.drawarea)
        XtVaSetValues(area, XmNbackground, x_canvas_pixel(tm_colour::black), nullptr);
    pages_create_pixmaps();
    settle();
    XtVaSetValues(XtParent(tm_window.textsession), XmNpaneMinimum, least_pane, nullptr);
    entry_focus();
}

}  // namespace

void tm_init(const tm_string_record_t& window_name, tm_bounds_t& bitmap_size, std::int16_t& planes,
             STATUS_T& status, std::string& trouble) {
    status.all = tm_status_base + init_or_open_file_not_done;
    trouble = open_display() ? "" : "the display cannot be opened : " + std::string(XDisplayName(nullptr));
    if (!trouble.empty()) return;
    load_resources();
    trouble = font_trouble(tm_window.dpy);
    if (!trouble.empty()) return;
    create_widgets(window_name.char_);
    show_window();
    tm_vext.init_done = true;
    bitmap_size = tm_vext.bitmap_size;
    planes = static_cast<std::int16_t>(DefaultDepth(tm_window.dpy, DefaultScreen(tm_window.dpy)));
    status.all = all_is_ok;
}

void tm_win_flush() {
    if (tm_window.dpy == nullptr) return;
    session_show();
    XFlush(tm_window.dpy);
}

void tm_win_main_loop() {
    session_show();
    XtAppMainLoop(tm_window.app);
}

void tm_win_close() {
    Display* dpy = std::exchange(tm_window.dpy, nullptr);
    if (dpy == nullptr) return;
    XSetCloseDownMode(dpy, DestroyAll);
    XSync(dpy, False);
    xdelayms(pause_at_close);
    XCloseDisplay(dpy);
}
