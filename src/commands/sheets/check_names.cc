// CHECK SHEET: instances and nets, their names and what these lead to.
#include <unistd.h>

#include <algorithm>
#include <string>
#include <unordered_map>

#include "commands/shared/context_sheet.h"
#include "commands/sheets/found_objects.h"
#include "commands/sheets/sheet_faults.h"
#include "foundation/files.h"
#include "foundation/numbers.h"
#include "kernel/model.h"
#include "schematic/link_file.h"
#include "schematic/object_property.h"
#include "schematic/object_walk.h"

namespace {

constexpr kol_sheet_fault_t no_inst{true, "instance without INST"};
constexpr kol_sheet_fault_t several_inst{true, "instance with several INST"};
constexpr kol_sheet_fault_t inst_twice{true, "INST of another instance, too"};
constexpr kol_sheet_fault_t no_symbol{true, "instance without a symbol"};
constexpr kol_sheet_fault_t no_model{true, "instance without MODEL and without a sheet below"};
constexpr kol_sheet_fault_t unknown_model{false, "MODEL that the simulator does not know"};
constexpr kol_sheet_fault_t no_sheet_below{true, "sheet below not found"};
constexpr kol_sheet_fault_t several_net{true, "net with several names"};
constexpr kol_sheet_fault_t net_twice{true, "NET of another net, too"};
constexpr kol_sheet_fault_t bus_without_name{true, "bus without NET"};
constexpr kol_sheet_fault_t range_of_bus{true, "range in the name of a bus is not its own"};
constexpr kol_sheet_fault_t range_of_net{true, "range in the name of a net that is no bus"};
constexpr kol_sheet_fault_t range_invalid{true, "invalid range in the name of a net"};

// Each name with the object that had it first.
class names_t {
public:
    bool is_taken(std::string_view name, std::int16_t object) {
        return !first_.try_emplace(kol_upper(name), object).second;
    }

private:
    std::unordered_map<std::string, std::int16_t> first_;
};

// How many properties of that name an object has; the values of all but the first may differ.
int count_of(tm_file_index_t file, std::int16_t object, const char* name) {
    int count = 0;
    for (const std::int16_t id : tm_properties(file, object))
        if (tm_const_iden_name(name, tm_object_as<tm_type_property_2d>(file, id).name)) ++count;
    return count;
}

// ---- instances

bool has_sheet_below(const tm_string_record_t& path, tm_string_record_t& directory) {
    std::int16_t version = 0;
    tm_get_path_n0version(path, directory, version);
    const std::string_view file = tm_view(path).substr(directory.len == 0 ? 0 : directory.len + 1);
    return kol_upper(file).starts_with("SHEET");
}

bool is_sheet_there(const tm_string_record_t& directory) {
    const std::string link = tm_resolve_path(
        tm_string(std::string(tm_view(kol_sheet_directory(tm_view(directory)))) + "/sheet.tm"));
    return access(link.c_str(), R_OK) == 0;
}

void check_model(kol_sheet_report_t& report, std::int16_t instance, const std::string& name) {
    tm_string_record_t model;
    bool found = false;
    yx_get_valueof_prop_inst(report.file, instance, tm_string("MODEL"), model, found);
    if (!found || model.len == 0) return kol_report_fault(report, no_model, instance, name);
    if (kol_find_model(tm_view(model)) == nullptr)
        kol_report_fault(report, unknown_model, instance, tm_view(model));
}

void check_below(kol_sheet_report_t& report, std::int16_t instance, const std::string& name) {
    const std::int16_t symbol = kol_symbol_of(report.file, instance);
    tm_string_record_t directory;
    if (symbol == 0) return kol_report_fault(report, no_symbol, instance, name);
    if (!has_sheet_below(tm_object_as<tm_type_symbol>(report.file, symbol).path, directory))
        return check_model(report, instance, name);
    if (!is_sheet_there(directory)) kol_report_fault(report, no_sheet_below, instance, tm_view(directory));
}

// ---- nets

struct range_t {
    bool is_given = false, is_valid = false;
    std::int32_t from = 0, to = 0;  // "[from:to]", or from = to for "[bit]"
    bool is_one_bit = false;
};

bool read_bit(std::string_view text, std::int32_t& bit) {
    bool error_found = false;
    tm_string_to_int32(tm_string(text), bit, error_found);
    return !text.empty() && !error_found && bit >= 0;
}

range_t range_of(std::string_view name) {
    const std::size_t open = name.rfind('[');
    if (open == std::string_view::npos) return {};
    if (!name.ends_with(']')) return {};  // "row[0].full"
    range_t range{true};
    const std::string_view inner = name.substr(open + 1, name.size() - open - 2);
    const std::size_t colon = inner.find(':');
    range.is_one_bit = colon == std::string_view::npos;
    range.is_valid = read_bit(inner.substr(0, colon), range.from);
    range.to = range.from;
    if (!range.is_one_bit) range.is_valid = read_bit(inner.substr(colon + 1), range.to) && range.is_valid;
    return range;
}

void check_range(kol_sheet_report_t& report, std::int16_t id, const std::string& name) {
    const auto& net = tm_object_as<tm_type_net>(report.file, id);
    const range_t range = range_of(name);
    if (!range.is_given) return;
    if (!range.is_valid) return kol_report_fault(report, range_invalid, id, name);
    if (!net.is_bus && !range.is_one_bit) return kol_report_fault(report, range_of_net, id, name);
    if (!net.is_bus) return;
    const bool agrees = range.from == net.bus_start ? range.to == net.bus_end
                                                    : range.from == net.bus_end && range.to == net.bus_start;
    if (!agrees) kol_report_fault(report, range_of_bus, id, name);
}

void check_net(kol_sheet_report_t& report, std::int16_t id, names_t& names) {
    const std::string name = kol_name_of(report.file, id);
    if (name.empty()) {
        if (tm_object_as<tm_type_net>(report.file, id).is_bus)
            kol_report_fault(report, bus_without_name, id, {});
        return;
    }
    if (count_of(report.file, id, "NET") > 1) kol_report_fault(report, several_net, id, name);
    if (names.is_taken(name, id)) kol_report_fault(report, net_twice, id, name);
    check_range(report, id, name);
}

}  // namespace

void kol_check_instances(kol_sheet_report_t& report) {
    names_t names;
    for (const std::int16_t id : tm_instances(report.file)) {
        const std::string name = kol_name_of(report.file, id);
        if (name.empty()) kol_report_fault(report, no_inst, id, {});
        if (count_of(report.file, id, "INST") > 1) kol_report_fault(report, several_inst, id, name);
        if (!name.empty() && names.is_taken(name, id)) kol_report_fault(report, inst_twice, id, name);
        check_below(report, id, name);
    }
}

void kol_check_nets(kol_sheet_report_t& report) {
    names_t names;
    for (const std::int16_t id : tm_nets(report.file)) check_net(report, id, names);
}
