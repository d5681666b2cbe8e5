// CHECK SHEET: pins, their bits, and the wires that join them.
#include <algorithm>
#include <cstdlib>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "commands/sheets/found_objects.h"
#include "commands/sheets/sheet_faults.h"
#include "schematic/object_walk.h"
#include "schematic/pick.h"

namespace {

constexpr kol_sheet_fault_t no_pin_name{true, "pin without PIN"};
constexpr kol_sheet_fault_t pin_name_twice{true, "PIN of another pin of the symbol, too"};
constexpr kol_sheet_fault_t pins_differ{true, "instance with other pins than its symbol"};
constexpr kol_sheet_fault_t wide_pin_on_net{true, "pin of several bits on a net that is no bus"};
constexpr kol_sheet_fault_t pin_beyond_bus{true, "pin beyond the bits of its bus"};
constexpr kol_sheet_fault_t end_of_another{true, "segment ends on another net"};
constexpr kol_sheet_fault_t no_length{false, "segment from a vertex to itself"};
constexpr kol_sheet_fault_t vertex_of_another{true, "vertex of another net"};
constexpr kol_sheet_fault_t ends_nowhere{false, "wire ends nowhere"};
constexpr kol_sheet_fault_t vertex_alone{false, "vertex without a wire"};
constexpr kol_sheet_fault_t tag_on_nothing{true, "tag on no net"};
constexpr kol_sheet_fault_t tag_of_another{true, "tag on a net of another name"};
constexpr kol_sheet_fault_t tag_kind{false, "tag of an unknown kind"};

// ---- pins

void check_symbol(kol_sheet_report_t& report, std::int16_t symbol) {
    std::unordered_set<std::string> names;
    for (const std::int16_t pin : tm_pins(report.file, symbol)) {
        const std::string name = kol_property_of(report.file, pin, "PIN");
        if (name.empty())
            kol_report_fault(report, no_pin_name, pin, {});
        else if (!names.insert(kol_upper(name)).second)
            kol_report_fault(report, pin_name_twice, pin, name);
    }
}

bool pins_agree(const std::vector<kol_placed_pin_t>& pins) {
    return std::ranges::all_of(pins,
                               [](const kol_placed_pin_t& pin) { return pin.placed != 0 && pin.pin != 0; });
}

void check_bits(kol_sheet_report_t& report, std::int16_t id) {
    const auto& pin = tm_object_as<tm_type_pinpropfam>(report.file, id);
    if (pin.net == 0) return;
    const auto& net = tm_object_as<tm_type_net>(report.file, pin.net);
    const int width = std::abs(pin.pin_end - pin.pin_start) + 1;
    if (!net.is_bus) {
        if (width > 1) kol_report_fault(report, wide_pin_on_net, id, kol_name_of(report.file, id));
        return;
    }
    const int first = std::min(net.bus_start, net.bus_end), last = std::max(net.bus_start, net.bus_end);
    if (pin.pin_net_start < first || pin.pin_net_start + width - 1 > last)
        kol_report_fault(report, pin_beyond_bus, id, kol_name_of(report.file, id));
}

// ---- wires

constexpr std::string_view tag_kinds[] = {"INPUT", "OUTPUT", "INOUT", "FROM_PAGE", "TO_PAGE"};

std::int64_t place_of(const tm_point_t& at) {
    return (std::int64_t{at.x} << 32) | static_cast<std::uint32_t>(at.y);
}

using places_t = std::unordered_set<std::int64_t>;

bool is_bus(tm_file_index_t file, std::int16_t net) {
    return net != 0 && tm_object_as<tm_type_net>(file, net).is_bus;
}

// Where wires of a bus and of another net meet: a bit leaves the bus there.
void add_taps(tm_file_index_t file, places_t& places) {
    std::unordered_map<std::int64_t, std::int16_t> first_net;
    for (const std::int16_t id : tm_walk::of_file(file, tm_type_vertex_2d)) {
        const auto& vertex = tm_object_as<tm_type_vertex_2d>(file, id);
        const std::int64_t place = place_of(vertex.origin);
        const std::int16_t first = first_net.try_emplace(place, vertex.net).first->second;
        if (first != vertex.net && (is_bus(file, first) || is_bus(file, vertex.net))) places.insert(place);
    }
}

// Where a wire may end: at pins, tags and taps.
places_t ends_of(tm_file_index_t file) {
    places_t places;
    for (const std::int16_t type : {tm_type_pinpropfam, tm_type_tag})
        for (const std::int16_t id : tm_walk::of_file(file, type))
            places.insert(place_of(tm_object(file, id).origin));
    add_taps(file, places);
    return places;
}

using segment_counts_t = std::unordered_map<std::int16_t, int>;  // by vertex

void check_end(kol_sheet_report_t& report, std::int16_t net, std::int16_t segment, std::int16_t vertex) {
    if (tm_net_of(report.file, vertex) != net)
        kol_report_fault(report, end_of_another, segment, kol_name_of(report.file, net));
}

void check_segments(kol_sheet_report_t& report, std::int16_t net, segment_counts_t& counts) {
    for (const std::int16_t id : tm_segments(report.file, net)) {
        const auto& segment = tm_object_as<tm_type_segment>(report.file, id);
        ++counts[segment.vertex1];
        ++counts[segment.vertex2];
        check_end(report, net, id, segment.vertex1);
        check_end(report, net, id, segment.vertex2);
        if (segment.vertex1 == segment.vertex2)
            kol_report_fault(report, no_length, id, kol_name_of(report.file, net));
    }
}

void check_vertices(kol_sheet_report_t& report, std::int16_t net, const segment_counts_t& counts,
                    const places_t& ends) {
    const std::string name = kol_name_of(report.file, net);
    for (const std::int16_t id : tm_vertices(report.file, net)) {
        const auto& vertex = tm_object_as<tm_type_vertex_2d>(report.file, id);
        const auto found = counts.find(id);
        const int segments = found == counts.end() ? 0 : found->second;
        const bool may_end = ends.contains(place_of(vertex.origin));
        if (vertex.net != net) kol_report_fault(report, vertex_of_another, id, name);
        if (segments == 0 && !may_end) kol_report_fault(report, vertex_alone, id, name);
        if (segments == 1 && !may_end) kol_report_fault(report, ends_nowhere, id, name);
    }
}

// ---- tags

using nets_by_place_t = std::unordered_map<std::int64_t, std::int16_t>;

nets_by_place_t nets_by_place(tm_file_index_t file) {
    nets_by_place_t nets;
    for (const std::int16_t type : {tm_type_pinpropfam, tm_type_vertex_2d})
        for (const std::int16_t id : tm_walk::of_file(file, type))
            if (const std::int16_t net = tm_net_of(file, id); net != 0)
                nets[place_of(tm_object(file, id).origin)] = net;
    return nets;
}

void check_tag(kol_sheet_report_t& report, std::int16_t id, const nets_by_place_t& nets) {
    const auto& tag = tm_object_as<tm_type_tag>(report.file, id);
    if (std::ranges::find(tag_kinds, kol_upper(tm_view(tag.name))) == std::end(tag_kinds))
        kol_report_fault(report, tag_kind, id, tm_view(tag.name));
    const auto net = nets.find(place_of(tag.origin));
    if (net == nets.end()) return kol_report_fault(report, tag_on_nothing, id, tm_view(tag.nvalue));
    if (kol_upper(kol_name_of(report.file, net->second)) != kol_upper(tm_view(tag.nvalue)))
        kol_report_fault(report, tag_of_another, id, tm_view(tag.nvalue));
}

}  // namespace

void kol_check_pins(kol_sheet_report_t& report) {
    for (const std::int16_t symbol : tm_symbols(report.file)) check_symbol(report, symbol);
    for (const std::int16_t instance : tm_instances(report.file)) {
        const auto pins = kol_pins_of(report.file, instance);
        if (!pins_agree(pins))
            kol_report_fault(report, pins_differ, instance, kol_name_of(report.file, instance));
        for (const kol_placed_pin_t& pin : pins)
            if (pin.placed != 0) check_bits(report, pin.placed);
    }
}

void kol_check_wires(kol_sheet_report_t& report) {
    const places_t ends = ends_of(report.file);
    for (const std::int16_t net : tm_nets(report.file)) {
        segment_counts_t counts;
        check_segments(report, net, counts);
        check_vertices(report, net, counts, ends);
    }
}

void kol_check_tags(kol_sheet_report_t& report) {
    const nets_by_place_t nets = nets_by_place(report.file);
    for (const std::int16_t id : tm_tags(report.file)) check_tag(report, id, nets);
}
