// The menus.
#include "app/window/menu_table.h"

#include <Xm/CascadeB.h>
#include <Xm/PushB.h>
#include <Xm/RowColumn.h>

#include <array>
#include <string>
#include <string_view>

#include "app/window/command_line.h"
#include "app/window/dialogs.h"
#include "app/window/leaving.h"
#include "app/window/sheet_dialog.h"
#include "foundation/shell.h"

namespace {

constexpr const char* help_simulation =
    "Simulating an expanded schematic\n\n"
    "1. Give the inputs values:      FORCE name value time, CLOCK PERIOD time\n"
    "2. Choose what is shown:        LIST B name ..., TRACE name ..., DEFINE BUS C bus name ...\n"
    "3. Let time pass:               RUN time\n"
    "4. Read the Results page, or write the table to a file:  WRITE LIST\n\n"
    "Commands are typed in the command entry or read from a file:  DO file\n"
    "HELP lists the commands. QUIT ends the session.\n";
constexpr const char* help_results =
    "Viewing simulation results\n\n"
    "LIST B name ...      adds signals to the table of values\n"
    "TRACE name ...       adds signals to the waveforms\n"
    "VIEW WINDOW LIST     shows the table          (F5)\n"
    "VIEW WINDOW TRACE    shows the waveforms      (F4)\n\n"
    "Zoom in    draw a rectangle over the waveforms with the left button, or <Cntl>wheel;  ZOOM IN\n"
    "Zoom out   VIEW ALL  (<Shift>F12),  SCALE TRACE TIME time  (<Shift>F4),  ZOOM OUT,  ZOOM BACK\n"
    "Move       arrow keys over the page, the wheel, the scroll bars\n"
    "           VIEW TIME TRACE time  (F6),  VIEW TIME LIST time  (F7)\n"
    "Cursor     the middle button (<Shift>: the second one);  CURSOR time,  CURSOR NEXT name\n"
    "Plot       PLOT TRACE file,  HARDCOPY file   (.png, .svg, .pdf, HP-GL)\n\n"
    "POP goes from the Results page to the Context page and back.\n\n"
    "Colours of wires on sheets\n"
    "0  green      1  yellow      x  magenta      i  red, dashed\n"
    "Z  cyan, dashed              buses and selected wires keep their own\n";

// clang-format off
constexpr menu_row rows[] = {
    {"/File/Open New Schematic", menu_kind::open_sheet},
    {"/File/Quit", menu_kind::quit},
    {"/Options/Check Sheet", menu_kind::command, " CHECK SHEET "},
    {"/Help/About", menu_kind::message, "", " QUILLARN 3.0\n Symbol Editor \n\n"},
    {"/Help/Doing_Logic_Simulation", menu_kind::message, "", help_simulation},
    {"/Help/Viewing SimulationResults", menu_kind::message, "", help_results},
    {"/Help/All QUILLARN Help", menu_kind::command, " ! ta "},
    {"/Do/Check The Schematic   (<Cntl>F7)", menu_kind::command, " CHECK SHEET "},
    {"/Do/Displays All F Keys Actions  (Home Key)", menu_kind::command, " ! kolvKeysDB "},
    {"/View/View All  the Page             (<Shift>F12)", menu_kind::command, " View ALL "},
    {"/View/Zoom Into the Page  [B1]       (F12)", menu_kind::command, "def key b1 'MARK RECTANGLE ';def key b1u 'view area'"},
    {"/View/View Down (Instance Selected)  (F8)", menu_kind::command, " View Down "},
    {"/View/View Up)                       (F9)", menu_kind::command, " View Up "},
    {"/Select/Select Area ALL    [B3]    (F1>)", menu_kind::command, "SMASH OFF;DEF KEY b3 'MARK RECTANGLE ';DEF KEY b3u 'SEL AREA All '"},
    {"/Select/Select Area INST   [B2]    (F1<Shift)", menu_kind::command, "SMASH OFF;DEF KEY b2 'MARK RECTANGLE ';DEF KEY b2u 'SEL AREA Inst '"},
    {"/Select/Select Area NET    [B2]", menu_kind::command, "SMASH OFF;DEF KEY b2 'MARK RECTANGLE ';DEF KEY b2u 'SEL AREA Net '"},
    {"/Select/Select Area VERtex [B2]    (F1<Cntl>)", menu_kind::command, "SMASH OFF;DEF KEY b2 'MARK RECTANGLE ';DEF KEY b2u 'SEL AREA Vertex '"},
    {"/Select/Select Area Prop   [B2]", menu_kind::command, "SMASH ON;DEF KEY b2 'MARK RECTANGLE ';DEF KEY b2u 'SEL AREA Prop '"},
    {"/Select/Select Area First  [B2]", menu_kind::command, "SMASH OFF;DEF KEY b2 'MARK RECTANGLE ';DEF KEY b2u 'SEL AREA First '"},
    {"/UnSelect/UnSelect ALL         [B2]   (F2)", menu_kind::command, " UNSEL ALL "},
    {"/UnSelect/UnSelect Area ALL    [B2]   (F2<Shift>)", menu_kind::command, "SMASH OFF;DEF KEY b2 'MARK RECTANGLE ';DEF KEY b2u 'UNSEL AREA All '"},
    {"/UnSelect/UnSelect Area INST   [B2]   (F2<Cntl>)", menu_kind::command, "SMASH OFF;DEF KEY b2 'MARK RECTANGLE ';DEF KEY b2u 'UNSEL AREA Inst '"},
    {"/UnSelect/UnSelect Area VERtex [B2]   (F2<Alt>)", menu_kind::command, "SMASH OFF;DEF KEY b2 'MARK RECTANGLE ';DEF KEY b2u 'UNSEL AREA Vertex '"},
    {"/UnSelect/UnSelect Area Prop   [B2]", menu_kind::command, "SMASH ON;DEF KEY b2 'MARK RECTANGLE ';DEF KEY b2u 'UNSEL AREA Prop '"},
    {"/UnSelect/UnSelect Area First  [B2]", menu_kind::command, "SMASH ON;DEF KEY b2 'MARK RECTANGLE ';DEF KEY b2u 'UNSEL AREA First '"},
    {"/EDit/Set the BasePoint (for Move    Etc)       [B2]     (<Cntl>F6)", menu_kind::command, " def key b2 BASEPOINT ; def key b2u '' "},
    {"/Get Comp/Get Schematic (View Sheet IN Edit OR Context Window)", menu_kind::open_sheet},
    {"/Logic Simulation/Run 1000 ns", menu_kind::run_prompt},
    {"/Logic Simulation/POP Windows (Results    OR Context)", menu_kind::command, " POP ", "  !! Pop Results  Window ?? \n"},
    {"/View Results In LIST or TRACE/LIST  Results", menu_kind::command, " View  Windows LIST "},
    {"/View Results In LIST or TRACE/TRACE Results", menu_kind::command, " View  Windows TRACE "},
    {"/Set Start Time In LIST or TRACE/LIST  Time Results", menu_kind::list_prompt},
    {"/Set Start Time In LIST or TRACE/TRACE Time Results", menu_kind::trace_prompt},
};
// clang-format on

constexpr std::string_view menu_of(const menu_row& row) {
    const std::string_view path = row.path;
    return path.substr(1, path.find('/', 1) - 1);
}

constexpr const char* label_of(const menu_row& row) {
    const std::string_view path = row.path;
    return row.path + path.find('/', 1) + 1;
}

using letter_set = std::array<bool, 26>;

constexpr bool is_letter(char c) { return tm_upper_case(c) >= 'A' && tm_upper_case(c) <= 'Z'; }

// The letter that chooses an entry from the keyboard: the first letter of a word of its label that its
// neighbours left free, or else any other letter; 0 when there is none.
constexpr char free_mnemonic(std::string_view label, letter_set& taken) {
    for (const bool of_words : {true, false})
        for (std::size_t i = 0; i < label.size(); ++i) {
            if (!is_letter(label[i]) || (of_words && i > 0 && is_letter(label[i - 1]))) continue;
            bool& is_taken = taken[static_cast<std::size_t>(tm_upper_case(label[i]) - 'A')];
            if (is_taken) continue;
            is_taken = true;
            return label[i];
        }
    return 0;
}

constexpr bool begins_menu(std::size_t i) { return i == 0 || menu_of(rows[i]) != menu_of(rows[i - 1]); }

struct mnemonic_pair {
    char menu = 0, entry = 0;  // menu: of the menu that begins with this row
};
constexpr auto mnemonics = [] {
    std::array<mnemonic_pair, std::size(rows)> chosen;
    letter_set menus_taken{}, entries_taken{};
    for (std::size_t i = 0; i < chosen.size(); ++i) {
        if (begins_menu(i)) {
            entries_taken = {};
            chosen[i].menu = free_mnemonic(menu_of(rows[i]), menus_taken);
        }
        chosen[i].entry = free_mnemonic(label_of(rows[i]), entries_taken);
    }
    return chosen;
}();

// Every menu and every entry can be chosen from the keyboard.
constexpr bool all_have_mnemonics() {
    for (std::size_t i = 0; i < mnemonics.size(); ++i)
        if (mnemonics[i].entry == 0 || (begins_menu(i) && mnemonics[i].menu == 0)) return false;
    return true;
}
static_assert(all_have_mnemonics());

void menu_cb(Widget, XtPointer client_data, XtPointer) {
    menu_act(*static_cast<const menu_row*>(client_data));
}

Widget create_pulldown(Widget menu_bar, const std::string& name, char mnemonic) {
    Widget pulldown = XmCreatePulldownMenu(menu_bar, const_cast<char*>("pulldown"), nullptr, 0);
    const tm_xm_string label(name.c_str());
    XtVaCreateManagedWidget(name.c_str(), xmCascadeButtonWidgetClass, menu_bar, XmNsubMenuId, pulldown,
                            XmNlabelString, label.get(), XmNmnemonic, KeySym(mnemonic), nullptr);
    return pulldown;
}

void create_entry(Widget pulldown, const menu_row& row, char mnemonic) {
    const tm_xm_string label(label_of(row));
    Widget entry = XtVaCreateManagedWidget("entry", xmPushButtonWidgetClass, pulldown, XmNlabelString,
                                           label.get(), XmNmnemonic, KeySym(mnemonic), nullptr);
    XtAddCallback(entry, XmNactivateCallback, menu_cb, const_cast<menu_row*>(&row));
}

}  // namespace

std::span<const menu_row> menu_table() { return rows; }

void menu_create(Widget menu_bar) {
    Widget pulldown = nullptr;
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        if (begins_menu(i))
            pulldown = create_pulldown(menu_bar, std::string(menu_of(rows[i])), mnemonics[i].menu);
        create_entry(pulldown, rows[i], mnemonics[i].entry);
    }
}

void menu_act(const menu_row& row) {
    switch (row.kind) {
        case menu_kind::command:
            kol_send_command(row.text);
            break;
        case menu_kind::message:
            break;
        case menu_kind::open_sheet:
            return dialog_open_sheet();
        case menu_kind::run_prompt:
            return dialog_prompt(prompt_dialog::run);
        case menu_kind::list_prompt:
            return dialog_prompt(prompt_dialog::list_time);
        case menu_kind::trace_prompt:
            return dialog_prompt(prompt_dialog::trace_time);
        case menu_kind::quit:
            return leaving_ask(motif_main_quit);
    }
    if (row.message != nullptr) kol_set_quick_message(row.message);
}
