// CHECK SHEET.
#include <algorithm>
#include <string>

#include "commands/shared/rejections.h"
#include "commands/shared/sheet_levels.h"
#include "commands/sheets/found_objects.h"
#include "commands/sheets/handlers.h"
#include "commands/sheets/sheet_faults.h"

namespace {

constexpr kol_sheet_fault_t nearly_full{false, "nearly too many objects"};
constexpr kol_sheet_fault_t full{true, "too many objects"};
constexpr std::int16_t roomy = 29000;

constexpr void (*groups[])(kol_sheet_report_t&) = {
    kol_check_room, kol_check_instances, kol_check_nets, kol_check_pins, kol_check_wires, kol_check_tags,
};

std::string counted(std::int32_t count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

}  // namespace

void kol_report_fault(kol_sheet_report_t& report, const kol_sheet_fault_t& fault, std::int16_t object,
                      std::string_view detail) {
    ++(fault.is_error ? report.errors : report.warnings);
    const std::string_view quote = detail.empty() ? "" : "\"";
    kol_show({fault.is_error ? "# !! Error : " : "# !! Warning : ", fault.text, " : object ",
              std::to_string(object), " ", quote, detail, quote, detail.empty() ? "" : " "});
}

std::string kol_upper(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), tm_upper_case);
    return result;
}

void kol_check_room(kol_sheet_report_t& report) {
    const std::int16_t count = tm_file_header(report.file).object_id_max;
    if (count > roomy) kol_report_fault(report, count >= tm_max_objects ? full : nearly_full, count, {});
}

kol_result_t kol_check_sheet_cmd(const kol_line_t& line) {
    kol_sheet_report_t report{kol_context_file()};
    if (report.file == 0) return kol_no_sheet;
    kol_echo(line);
    for (const auto group : groups) group(report);
    kol_show({"# CHECK SHEET : ", counted(report.errors, "error"), ", ", counted(report.warnings, "warning"),
              " "});
    return kol_shown();
}
