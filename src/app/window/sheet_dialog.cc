// The choice of a sheet.
#include "app/window/sheet_dialog.h"

#include <Xm/FileSB.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "app/window/command_line.h"
#include "app/window/dialogs.h"
#include "app/window/window_record.h"
#include "kernel/context.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* sheet_pattern = "*/sheet.tm";
constexpr const char* sheet_name = "sheet.tm";
constexpr std::size_t schematic_directory = 1;  // index of the stored argument

std::string text_of(XmString string) {
    char* raw = static_cast<char*>(
        XmStringUnparse(string, nullptr, XmCHARSET_TEXT, XmCHARSET_TEXT, nullptr, 0, XmOUTPUT_ALL));
    if (raw == nullptr) return {};
    std::string text(raw);
    XtFree(raw);
    return text;
}

template <typename... Parts>
void refuse(const Parts&... parts) {
    kol_set_quick_message((std::string(" !! Error ... ") + ... + parts).c_str());
}

// The sheet of the directory itself and those of the directories in it.
std::vector<std::string> sheets_below(const fs::path& directory) {
    std::vector<std::string> found;
    std::error_code failed;
    if (fs::exists(directory / sheet_name, failed)) found.push_back(directory / sheet_name);
    for (fs::directory_iterator at(directory, failed), end; !failed && at != end; at.increment(failed)) {
        std::error_code unreadable;
        const fs::path sheet = at->path() / sheet_name;
        if (fs::is_regular_file(sheet, unreadable)) found.push_back(sheet);
    }
    std::sort(found.begin(), found.end());
    return found;
}

void search_cb(Widget box, XtPointer call_data) {
    const auto& wanted = *static_cast<XmFileSelectionBoxCallbackStruct*>(call_data);
    std::vector<std::unique_ptr<tm_xm_string>> owners;
    std::vector<XmString> items;
    for (const std::string& sheet : sheets_below(text_of(wanted.dir)))
        items.push_back(owners.emplace_back(std::make_unique<tm_xm_string>(sheet.c_str()))->get());
    XtVaSetValues(box, XmNfileListItems, items.data(), XmNfileListItemCount, static_cast<int>(items.size()),
                  XmNlistUpdated, True, nullptr);
}

bool all_readable(const fs::path& directory) {
    std::error_code failed;
    for (fs::directory_iterator at(directory, failed), end; !failed && at != end; at.increment(failed))
        if (::access(at->path().c_str(), R_OK) != 0) return false;
    return !failed;
}

// False after a message.
bool is_sheet_directory(const std::string& directory, const std::string& chosen) {
    const std::string sheet = directory + "/" + sheet_name;
    if (::access(sheet.c_str(), F_OK) != 0) {
        refuse("'", directory, "' is Not a Sheet '", chosen, "' \n\n");
    } else if (::access(sheet.c_str(), R_OK) != 0) {
        refuse("No Enough Unix Rights  on '", sheet, "'...you can not  edit the Sheet '", directory,
               "' \n\n");
    } else if (!all_readable(directory)) {
        refuse("No Enough Unix Rights  on files under  '", directory,
               "'... Please Unprotec all files + dir \n\n");
    } else {
        return true;
    }
    return false;
}

// Names relative to the schematic directory go on to mean the same files.  False when its whole path is none
// that the program can hold.
bool keep_schematic_directory() {
    for (tm_string_record_t* path : {&tm_vext.argcomline[schematic_directory], &kol_ext.dir_path}) {
        if (path->char_[0] == '/') continue;
        std::error_code failed;
        const std::string whole = fs::absolute(std::string(tm_view(*path)), failed).string();
        if (failed || whole.size() >= tm_string_max || printable_text(whole) != whole) return false;
        *path = tm_string(whole);
    }
    return true;
}

// False after a message.
bool enter(const std::string& directory, const std::string& chosen) {
    if (!keep_schematic_directory()) {
        refuse("the path of the working directory is too long or not printable \n\n");
    } else if (::chdir(directory.c_str()) == 0) {
        return true;
    } else if (errno == EACCES) {
        refuse("No Enough Unix Rights  on '", directory, "'...you can not  edit the Sheet '", directory,
               "' \n\n");
    } else {
        refuse("'", directory, "' is Not a Sheet '", chosen, "' \n\n");
    }
    return false;
}

// In quotes where a command would be split.
std::string as_keyword(const std::string& path) {
    return path.find_first_of(" ,;") == std::string::npos ? path : "\"" + path + "\"";
}

void ok_cb(Widget box, XtPointer, XtPointer call_data) {
    const std::string chosen = text_of(static_cast<XmFileSelectionBoxCallbackStruct*>(call_data)->value);
    const std::string directory = chosen.substr(0, std::min(chosen.rfind('/'), chosen.size()));
    std::error_code failed;
    const fs::path before = fs::current_path(failed);
    if (!enter(directory, chosen)) return;
    if (!is_sheet_directory(directory, chosen)) return fs::current_path(before, failed);
    XtUnmanageChild(box);
    kol_send_command(" VIEw Sheet  " + as_keyword(directory));
}

void cancel_cb(Widget box, XtPointer, XtPointer) { XtUnmanageChild(box); }

Widget create_box() {
    const tm_xm_string pattern(sheet_pattern), title("Open a sheet");
    const tm_xm_string directory(tm_view(kol_ext.dir_path).data());
    Arg args[] = {{const_cast<char*>(XmNpattern), reinterpret_cast<XtArgVal>(pattern.get())},
                  {const_cast<char*>(XmNdirectory), reinterpret_cast<XtArgVal>(directory.get())},
                  {const_cast<char*>(XmNdialogTitle), reinterpret_cast<XtArgVal>(title.get())},
                  {const_cast<char*>(XmNfileSearchProc), reinterpret_cast<XtArgVal>(search_cb)},
                  {const_cast<char*>(XmNautoUnmanage), False}};
    Widget box =
        XmCreateFileSelectionDialog(tm_window.top_window, const_cast<char*>("filesb"), args, XtNumber(args));
    XtUnmanageChild(XtNameToWidget(box, "Help"));
    XtAddCallback(box, XmNokCallback, ok_cb, nullptr);
    XtAddCallback(box, XmNcancelCallback, cancel_cb, nullptr);
    return box;
}

}  // namespace

void dialog_open_sheet() {
    if (tm_vext.numpage != tm_page::context)
        return kol_set_quick_message(
            " !! Error : You may vie a new schemativ ONLY in Context Window  ...\n"
            " --> Please Switch to Page 2 = Context Window\n \n");
    static Widget const box = create_box();
    XmFileSelectionDoSearch(box, nullptr);
    XtManageChild(box);
}
