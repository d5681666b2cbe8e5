// The writer of design files.
#include "netlist/design_image.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <span>

#include "foundation/printable.h"
#include "foundation/replacement.h"
#include "netlist/layout.h"

namespace {

constexpr std::size_t longest_text = INT8_MAX;
constexpr std::int8_t too_long = -1;  // length of a string whose text cannot be stored

// ---- what cannot be written

template <typename Record>
bool within_limit(const std::vector<Record>& records, const char* what, std::size_t limit, std::string& why) {
    if (records.size() <= limit) return true;
    why = std::string(what) + ": " + std::to_string(records.size()) + ", at most " + std::to_string(limit);
    return false;
}

bool counts_within_limits(const yx_design_image_t& image, std::string& why) {
    const auto limit = static_cast<std::size_t>(yx_max_index_of(image.info.software_revision));
    if (image.chars.size() > limit) {
        why = "characters of names: " + std::to_string(image.chars.size()) + ", at most " +
              std::to_string(limit);
        return false;
    }
    return within_limit(image.prop_instance, "instance property names", yx_max_names, why) &&
           within_limit(image.prop_pin, "pin property names", yx_max_names, why) &&
           within_limit(image.prop_net, "net property names", yx_max_names, why) &&
           within_limit(image.strings, "strings", limit, why) &&
           within_limit(image.props, "property values", limit, why) &&
           within_limit(image.insts, "instances", limit, why) &&
           within_limit(image.pins, "pins", limit, why) && within_limit(image.nets, "nets", limit, why) &&
           within_limit(image.net_children, "net children", limit, why) &&
           within_limit(image.macros, "macros", limit, why) &&
           within_limit(image.pinms, "macro pins", limit, why);
}

bool texts_fit(const yx_design_image_t& image, std::string& why) {
    const bool sound = std::none_of(image.strings.begin(), image.strings.end(),
                                    [](const yx_string_record_t& string) { return string.len == too_long; });
    if (sound) return true;
    why = "a string of negative length";
    for (const auto& [text, index] : image.string_index) {
        if (image.strings[static_cast<std::size_t>(index - 1)].len != too_long) continue;
        why = "a text of " + std::to_string(text.size()) + " characters, at most " +
              std::to_string(longest_text) + ": \"" + text + "\"";
    }
    return false;
}

bool texts_are_printable(const yx_design_image_t& image, std::string& why) {
    const auto bad = std::find_if_not(image.chars.begin(), image.chars.end(), tm_is_printable);
    if (bad == image.chars.end()) return true;
    why = "a character of code " + std::to_string(static_cast<unsigned char>(*bad)) + " in a text";
    return false;
}

// ---- the file

yx_general_info_record_t header_of(const yx_design_image_t& image) {
    const auto count = [](const auto& records) { return static_cast<std::int32_t>(records.size()); };
    yx_general_info_record_t info = image.info;
    info.nbof_prop_instance = count(image.prop_instance);
    info.nbof_prop_pin = count(image.prop_pin);
    info.nbof_prop_net = count(image.prop_net);
    info.nbof_char = count(image.chars);
    info.nbof_string = count(image.strings);
    info.nbof_prop = count(image.props);
    info.nbof_instance = count(image.insts);
    info.nbof_pin = count(image.pins);
    info.nbof_net = count(image.nets);
    info.nbof_net_child = count(image.net_children);
    info.nbof_pinm = count(image.pinms);
    info.nbof_macro = count(image.macros);
    return info;
}

template <typename Record>
void write_section(const lay_layout<Record>& layout, std::span<const Record> records, std::FILE* file) {
    std::string block;
    for (std::size_t at = 0; at < records.size(); at += yx_block_records) {
        const auto part = records.subspan(at, std::min<std::size_t>(yx_block_records, records.size() - at));
        block.clear();
        for (const Record& record : part) lay_put(layout, record, block);
        std::fwrite(block.data(), 1, block.size(), file);
    }
}

template <typename Record>
void write_section(const lay_layout<Record>& layout, const std::vector<Record>& records, std::FILE* file) {
    write_section(layout, std::span<const Record>(records), file);
}

void write_sections(const yx_design_image_t& image, std::FILE* file) {
    const yx_general_info_record_t info = header_of(image);
    write_section(yxl_header, std::span<const yx_general_info_record_t>(&info, 1), file);
    write_section(yxl_prop_instance_names, image.prop_instance, file);
    write_section(yxl_prop_pin_names, image.prop_pin, file);
    write_section(yxl_prop_net_names, image.prop_net, file);
    std::fwrite(image.chars.data(), 1, image.chars.size(), file);
    write_section(yxl_strings, image.strings, file);
    write_section(yxl_props, image.props, file);
    write_section(yxl_insts, image.insts, file);
    write_section(yxl_pins, image.pins, file);
    write_section(yxl_nets, image.nets, file);
    write_section(yxl_net_children, image.net_children, file);
    write_section(yxl_macros, image.macros, file);
    write_section(yxl_pinms, image.pinms, file);
}

}  // namespace

std::int32_t yxw_string(yx_design_image_t& image, std::string_view text) {
    if (text.empty()) return 0;
    const auto next = static_cast<std::int32_t>(image.strings.size() + 1);
    const auto [known, is_new] = image.string_index.try_emplace(std::string(text), next);
    return is_new ? yxw_new_string(image, text) : known->second;
}

std::int32_t yxw_new_string(yx_design_image_t& image, std::string_view text) {
    yx_string_record_t string;
    if (text.size() > longest_text) {
        string.len = too_long;
    } else {
        const std::size_t used = image.chars.size() % yx_block_records;
        if (used + text.size() > yx_block_records) image.chars.append(yx_block_records - used, ' ');
        string.index = static_cast<std::int32_t>(image.chars.size() + 1);
        string.len = static_cast<std::int8_t>(text.size());
        image.chars += text;
    }
    image.strings.push_back(string);
    return static_cast<std::int32_t>(image.strings.size());
}

bool yxw_write(const yx_design_image_t& image, const std::string& path, std::string& why) {
    if (!texts_fit(image, why) || !texts_are_printable(image, why) || !counts_within_limits(image, why))
        return false;
    tm_replacement file(path);
    if (file.is_open()) write_sections(image, file.stream());
    if (file.take_place()) return true;
    why = "cannot write \"" + path + "\": " + std::strerror(file.error());
    return false;
}
