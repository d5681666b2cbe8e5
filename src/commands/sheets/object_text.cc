// Objects in words.

#include "commands/sheets/object_text.h"

#include <algorithm>

#include "commands/sheets/found_objects.h"
#include "schematic/object_walk.h"

namespace {

using details = std::vector<std::string>;

struct flag_t {
    std::int16_t bit;
    const char* name;
};
constexpr flag_t flags[] = {
    {tm_object_is_selected, " selected"},   {tm_object_is_temporary, " temporary"},
    {tm_object_is_create, " create"},       {tm_object_is_open, " open"},
    {tm_object_is_picked, " picked"},       {tm_object_is_deleted, " deleted"},
    {tm_object_is_unvisible, " unvisible"}, {tm_object_is_fixed, " fixed"},
};

std::string number(std::int32_t value) { return std::to_string(value); }
std::string in_quotes(std::string_view text) { return "\"" + std::string(text) + "\""; }
std::string yes_no(bool value) { return value ? "yes" : "no"; }

template <std::int16_t Type>
const tm_record_of<Type>& record_of(tm_file_index_t file, std::int16_t id) {
    return tm_object_as<Type>(file, id);
}

details of_instance(tm_file_index_t file, std::int16_t id) {
    const auto& instance = record_of<tm_type_instance>(file, id);
    return {"INST = " + in_quotes(kol_name_of(file, id)), "symbol = " + number(instance.symbol) +
                                                              " ;  rotate = " + number(instance.rotate) +
                                                              " ;  fliph = " + yes_no(instance.fliph)};
}

details of_symbol(tm_file_index_t file, std::int16_t id) {
    return {"path = " + in_quotes(tm_view(record_of<tm_type_symbol>(file, id).path))};
}

details of_placed_pin(tm_file_index_t file, std::int16_t id) {
    const auto& pin = record_of<tm_type_pinpropfam>(file, id);
    return {"pin = " + in_quotes(kol_name_of(file, id)),
            "net = " + number(pin.net) + " ;  bits = " + number(pin.pin_start) + ":" + number(pin.pin_end) +
                " ;  first bit of the net = " + number(pin.pin_net_start)};
}

details of_net(tm_file_index_t file, std::int16_t id) {
    const auto& net = record_of<tm_type_net>(file, id);
    std::string line = "NET = " + in_quotes(kol_name_of(file, id));
    if (net.is_bus) line += " ;  bus " + number(net.bus_start) + ":" + number(net.bus_end);
    return {line};
}

details of_segment(tm_file_index_t file, std::int16_t id) {
    const auto& segment = record_of<tm_type_segment>(file, id);
    return {"vertices = " + number(segment.vertex1) + " " + number(segment.vertex2) +
            " ;  width = " + number(segment.line_width)};
}

details of_vertex(tm_file_index_t file, std::int16_t id) {
    const auto& vertex = record_of<tm_type_vertex_2d>(file, id);
    return {"net = " + number(vertex.net) + " ;  dotted = " + yes_no(vertex.dotted)};
}

details of_tag(tm_file_index_t file, std::int16_t id) {
    const auto& tag = record_of<tm_type_tag>(file, id);
    return {"kind = " + in_quotes(tm_view(tag.name)) + " ;  net = " + in_quotes(tm_view(tag.nvalue))};
}

details of_property(tm_file_index_t file, std::int16_t id) {
    return {kol_property_text(record_of<tm_type_property_2d>(file, id))};
}

details of_grid(tm_file_index_t file, std::int16_t id) {
    const auto& grid = record_of<tm_type_grid_2d>(file, id);
    return {"step = " + number(grid.step_point) + " ;  pin step = " + number(grid.step_pin)};
}

struct detail_row_t {
    std::int16_t type;
    details (*tell)(tm_file_index_t file, std::int16_t id);
};
constexpr detail_row_t detail_rows[] = {
    {tm_type_instance, of_instance}, {tm_type_symbol, of_symbol},   {tm_type_pinpropfam, of_placed_pin},
    {tm_type_net, of_net},           {tm_type_segment, of_segment}, {tm_type_vertex_2d, of_vertex},
    {tm_type_tag, of_tag},           {tm_type_grid_2d, of_grid},    {tm_type_property_2d, of_property},
};

}  // namespace

std::string kol_type_text(const tm_object_gene_rec_t& object) {
    std::string text(type_array[static_cast<std::size_t>(object.object_type)]);
    std::ranges::transform(text, text.begin(), tm_upper_case);
    return text;
}

std::string kol_flags_text(const tm_object_gene_rec_t& object) {
    std::string text;
    for (const flag_t& flag : flags)
        if ((object.status & flag.bit) != 0) text += flag.name;
    return text;
}

std::vector<std::string> kol_object_details(tm_file_index_t file, std::int16_t object) {
    const std::int16_t type = tm_object(file, object).object_type;
    for (const detail_row_t& row : detail_rows)
        if (row.type == type) return row.tell(file, object);
    return {};
}

std::string kol_property_text(const tm_object_property_rec_t& property) {
    return "name = " + in_quotes(tm_view(property.name)) +
           " ;  value = " + in_quotes(tm_view(property.nvalue)) +
           (property.visible ? " ;  VISIBLE" : " ;  NOVISIBLE");
}
