// VIEW SHEET: the top sheet, a sheet outside the hierarchy, another page of the current sheet.
#include <sys/stat.h>

#include "commands/shared/context_sheet.h"
#include "commands/shared/parameters.h"
#include "commands/shared/rejections.h"
#include "commands/shared/sheet_levels.h"
#include "commands/sheets/handlers.h"
#include "commands/sheets/sheet_pages.h"
#include "foundation/context.h"
#include "foundation/files.h"
#include "foundation/shell.h"
#include "schematic/sheet_file.h"

namespace {

constexpr kol_rejection_t page_not_found{"# !! Error : Page not found ? : "};
constexpr kol_rejection_t page_invalid{
    "# !! Error : Invalid page (should be a number, \"Next\" or \"Previous\") ? "};
constexpr kol_rejection_t no_level_sheet{"# !! Error :  No level sheet VALID for VIEw SHEet PAGE ? "};

constexpr kol_rejection_t errors[] = {
    {}, kol_sheet_not_found, kol_sheet_invalid, kol_sheet_empty};  // by kol_sheet_found

kol_result_t no_sheet_at(std::string_view directory, const kol_rejection_t& why) {
    return kol_result_t(why).then({"# !! : \"", directory, "\" "});
}

bool is_schematic_directory(const tm_string_record_t& directory) {
    struct stat this_one {
    }, that_one{};
    if (stat(tm_resolve_path(directory).c_str(), &this_one) != 0) return false;
    if (stat(tm_resolve_path(kol_ext.dir_path).c_str(), &that_one) != 0) return false;
    return this_one.st_dev == that_one.st_dev && this_one.st_ino == that_one.st_ino;
}

void show_top(tm_file_index_t file) {
    kol_ext.file_level_cur = kol_ext.file_level_max = 1;
    kol_ext.view_sheet_done = true;
    kol_ext.cur_sim_path = tm_string("/");
    kol_set_level(1, file);
    kol_show_sheet(file);
}

void show_aside(tm_file_index_t file) {
    tm_vext.file_id_views = file;
    kol_ext.view_sheetaux_done = true;
    kol_show_sheet(file);
}

void bring_page_forward() {
    if (tm_vext.numpage != tm_page::context) tm_shell.show_other_page();
}

kol_result_t view_directory(const tm_string_record_t& directory, const kol_line_t& line) {
    const bool is_top = line.nkeyword == 2 || is_schematic_directory(directory);
    auto file = is_top ? kol_level(1).file_index : static_cast<tm_file_index_t>(tm_vext.file_id_views);
    const kol_sheet_found found = kol_read_sheet(is_top ? kol_ext.dir_path : directory, file);
    if (found != kol_sheet_found::yes)
        return no_sheet_at(tm_view(directory), errors[static_cast<std::size_t>(found)]);
    (is_top ? show_top : show_aside)(file);
    bring_page_forward();
    return {};
}

bool read_page(const tm_string_record_t& keyword, kol_page_t& page) {
    if (kol_begins_with_one_of(keyword, "NP")) {
        page.number =
            static_cast<std::int16_t>(page.number + (kol_begins_with_one_of(keyword, "N") ? 1 : -1));
        return true;
    }
    return kol_read_number(keyword, 9999, page.number);
}

kol_result_t view_page(const kol_line_t& line) {
    const tm_file_index_t file = kol_level_file();
    if (file == 0 || file != tm_vext.file_id_context) return no_level_sheet;
    kol_page_t page = kol_page_of(file);
    if (!read_page(line[4], page)) return page_invalid;
    if (!kol_page_exists(page)) return no_sheet_at(kol_page_directory(page), page_not_found);
    const kol_sheet_found found = kol_turn_page(page);
    if (found != kol_sheet_found::yes)
        return no_sheet_at(kol_page_directory(page), errors[static_cast<std::size_t>(found)]);
    bring_page_forward();
    return {};
}

}  // namespace

kol_result_t kol_view_sheet_cmd(const kol_line_t& line) {
    const bool is_page = line.nkeyword > 2 && tm_const_iden_string("PAGE", line[3]);
    if (is_page && line.nkeyword == 4) return view_page(line);
    if (line.nkeyword > 3) return kol_count_invalid;
    if (line.nkeyword == 2) return view_directory(kol_ext.dir_path, line);
    return view_directory(kol_sheet_directory(tm_view(kol_keyword_text(line[3]))), line);
}
