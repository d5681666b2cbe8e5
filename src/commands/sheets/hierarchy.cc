// VIEW DOWN and VIEW UP: through the hierarchy of sheets.
#include <algorithm>

#include "commands/shared/context_sheet.h"
#include "commands/shared/rejections.h"
#include "commands/shared/sheet_levels.h"
#include "commands/sheets/found_objects.h"
#include "commands/sheets/handlers.h"
#include "commands/sheets/hierarchy.h"
#include "foundation/context.h"
#include "foundation/shell.h"
#include "schematic/link_file.h"
#include "schematic/object_walk.h"
#include "schematic/sheet_file.h"

namespace {

constexpr kol_rejection_t no_level{"# !! Error : No design Sheet available "};
constexpr kol_rejection_t no_level_sheet{"# !! Error : No valid design Sheet available "};
constexpr kol_rejection_t not_to_view_down{"# !! Error : No valid design Sheet to view down in Context "};
constexpr kol_rejection_t not_to_view_up{"# !! Error : No valid design Sheet to view up in Context "};
constexpr kol_rejection_t sheet_levels{"# !! Error : Too many sheet levels ? : "};
constexpr kol_rejection_t nothing_there{kol_sheet_empty.error, kol_form::wide};
constexpr kol_rejection_t not_one_named{"# !! Error : No Instance(or more than 1) with \"INST\" "};
constexpr kol_rejection_t not_one_selected{"# !! Error : No Instance (OR More Than 1) Found selected "};
constexpr kol_rejection_t at_top{"# !! Error : impossible to VIEw UP ( already at TOP ) "};
constexpr kol_rejection_t no_sheet_above{"# !! Error : No VIEw UP valid design Sheet available "};

// What is wrong with the sheet to move from.
kol_rejection_t check(const kol_rejection_t& not_in_context) {
    if (!kol_is_level(kol_ext.file_level_cur)) return no_level;
    if (kol_level_file() == 0) return no_level_sheet;
    return kol_level_file() != tm_vext.file_id_context ? not_in_context : kol_rejection_t{};
}

// ---- the instance to enter

struct entered_t {
    tm_string_record_t name, path;
    int count = 0;
};

// The value of the last property INST; wanted: of the one with this value.
bool find_name(tm_file_index_t file, std::int16_t instance, const tm_string_record_t* wanted,
               tm_string_record_t& name) {
    bool found = false;
    for (const std::int16_t id : tm_properties(file, instance)) {
        const auto& property = tm_object_as<tm_type_property_2d>(file, id);
        if (!tm_const_iden_name("INST", property.name)) continue;
        if (wanted != nullptr && !tm_value_iden_string(property.nvalue, *wanted)) continue;
        name = tm_string(tm_view(property.nvalue));
        found = true;
    }
    return found;
}

// wanted: the instance of this name; without it the one that is selected.
void find_entered(tm_file_index_t file, const tm_string_record_t* wanted, entered_t& entered) {
    for (const std::int16_t instance : tm_instances(file)) {
        if (wanted == nullptr && !tm_inq_object_selected(file, instance)) continue;
        const std::int16_t symbol = kol_symbol_of(file, instance);
        tm_string_record_t name;
        const bool is_named = find_name(file, instance, wanted, name);
        if (symbol == 0 || (wanted != nullptr && !is_named)) continue;
        entered.name = name;
        entered.path = tm_object_as<tm_type_symbol>(file, symbol).path;
        if (++entered.count > 1) return;
    }
}

// ---- the sheet below

tm_string_record_t directory_of(const tm_string_record_t& path) {
    tm_string_record_t first, directory;
    std::int32_t pos = 1;
    std::int16_t version = 0;
    tm_rd_string_t(path, tm_char_set(" ,"), first, pos);
    tm_get_path_n0version(first, directory, version);
    return directory;
}

// A level that had a sheet before reads into that file.
kol_result_t failure_of(kol_sheet_found found, bool had_sheet, std::string_view directory) {
    if (found == kol_sheet_found::no_link && had_sheet)
        return kol_result_t(kol_sheet_not_found).then({"# !! \"", directory, "\" "});
    if (found == kol_sheet_found::invalid)
        return kol_result_t(kol_sheet_invalid).then({"# !! : \"", directory, "\" "});
    return kol_result_t(nothing_there).then({"# !! : \"", directory, "\""});
}

kol_result_t commit_down(std::int16_t level, tm_file_index_t file, const tm_string_record_t& name) {
    kol_ext.file_level_cur = level;
    kol_ext.file_level_max = std::max(kol_ext.file_level_max, level);
    kol_set_level(level, file);
    tm_append(tm_view(name), kol_ext.cur_sim_path);  // before the sheet is drawn with the probes of its path
    tm_append("/", kol_ext.cur_sim_path);
    kol_show_sheet(file);
    return kol_accepted(" " + std::string(tm_view(name)) + " ");
}

kol_result_t go_down(const entered_t& entered) {
    const auto level = static_cast<std::int16_t>(kol_ext.file_level_cur + 1);
    if (!kol_is_level(level)) return sheet_levels;
    const tm_string_record_t directory = directory_of(entered.path);
    tm_file_index_t file = kol_level(level).file_index;
    const bool had_sheet = kol_is_file(file);
    const kol_sheet_found found = kol_read_sheet(kol_sheet_directory(tm_view(directory)), file);
    if (found == kol_sheet_found::yes) return commit_down(level, file, entered.name);
    return failure_of(found, had_sheet, tm_view(directory));
}

// ---- the path

// "/U1/U7/" becomes "/U1/".
void cut_last_name(tm_string_record_t& path) {
    const std::string_view text = tm_view(path);
    std::size_t keep = text.size() < 2 ? 0 : text.size() - 2;
    while (keep > 0 && text[keep] != '/') --keep;
    path = tm_string(text.substr(0, keep + 1));
}

// The sheet above, without a word.
bool go_up() {
    const auto level = static_cast<std::int16_t>(kol_ext.file_level_cur - 1);
    if (level < 1 || !kol_is_file(kol_level(level).file_index)) return false;
    kol_ext.file_level_cur = level;
    cut_last_name(kol_ext.cur_sim_path);
    kol_show_sheet(kol_level(level).file_index);
    return true;
}

bool go_down_to(std::string_view name) {
    const tm_string_record_t wanted = tm_string(name);
    entered_t entered;
    find_entered(kol_level_file(), &wanted, entered);
    return entered.count == 1 && !go_down(entered);
}

bool is_below(std::string_view path, std::string_view other) {
    return path.size() >= other.size() &&
           std::ranges::equal(path.substr(0, other.size()), other, {}, tm_upper_case, tm_upper_case);
}

bool go_towards(std::string_view path) {
    while (!is_below(path, tm_view(kol_ext.cur_sim_path)))
        if (!go_up()) return false;
    while (tm_view(kol_ext.cur_sim_path).size() < path.size()) {
        const std::string_view rest = path.substr(tm_view(kol_ext.cur_sim_path).size());
        if (!go_down_to(rest.substr(0, rest.find('/')))) return false;
    }
    return true;
}

}  // namespace

bool kol_go_to_path(std::string_view path) {
    if (check(not_to_view_down)) return false;
    const std::string before(tm_view(kol_ext.cur_sim_path));
    if (go_towards(path)) return true;
    go_towards(before);
    return false;
}

kol_result_t kol_view_down_cmd(const kol_line_t& line) {
    if (const kol_rejection_t wrong = check(not_to_view_down)) return wrong;
    const tm_string_record_t* const wanted = line.nkeyword == 3 ? &line[3] : nullptr;
    entered_t entered;
    find_entered(kol_level_file(), wanted, entered);
    if (entered.count == 1) return go_down(entered);
    return wanted != nullptr ? not_one_named : not_one_selected;
}

kol_result_t kol_view_up_cmd(const kol_line_t& /*line*/) {
    if (const kol_rejection_t wrong = check(not_to_view_up)) return wrong;
    const auto level = static_cast<std::int16_t>(kol_ext.file_level_cur - 1);
    if (level < 1) return at_top;
    const tm_file_index_t file = kol_level(level).file_index;
    if (!kol_is_file(file)) return no_sheet_above;
    if (kol_ext.file_level_max < level) tm_fatal(file_data_invalid);
    kol_ext.file_level_cur = level;
    cut_last_name(kol_ext.cur_sim_path);
    kol_show_sheet(file);
    return kol_accepted("  ");
}
