// Pages of a large sheet.

#include "commands/sheets/sheet_pages.h"

#include <unistd.h>

#include "commands/shared/parameters.h"
#include "commands/shared/sheet_levels.h"
#include "foundation/files.h"
#include "schematic/object.h"
#include "schematic/sheet_file.h"

namespace {

constexpr std::string_view page_folder = "/page_";
constexpr std::int32_t most_pages = 9999;

}  // namespace

kol_page_t kol_page_of(tm_file_index_t file) {
    const std::string directory(tm_view(tm_file_record(file).dirname));
    const std::size_t at = directory.rfind(page_folder);
    std::int16_t number = 0;
    if (at == std::string::npos) return {directory};
    if (!kol_read_number(tm_string(directory.substr(at + page_folder.size())), most_pages, number))
        return {directory};
    return {directory.substr(0, at), number};
}

std::string kol_page_directory(const kol_page_t& page) {
    if (page.number == 1) return page.directory;
    return page.directory + std::string(page_folder) + std::to_string(page.number);
}

bool kol_page_exists(const kol_page_t& page) {
    if (page.number < 1 || page.number > most_pages) return false;
    const std::string link = tm_resolve_path(tm_string(kol_page_directory(page) + "/sheet.tm"));
    return access(link.c_str(), F_OK) == 0;
}

kol_sheet_found kol_turn_page(const kol_page_t& page) {
    tm_file_index_t file = kol_level_file();
    const kol_sheet_found found = kol_read_sheet(tm_string(kol_page_directory(page)), file);
    if (found != kol_sheet_found::yes) return found;
    kol_set_level(kol_ext.file_level_cur, file);
    kol_show_sheet(file);
    return found;
}
