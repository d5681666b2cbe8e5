// yxw: the design file writer.  Owns no state: a design image is a plain value, the sections of a design file
// in file order, that a tool fills and hands to yxw_write.  Indexes inside it are 1-based, 0 for none; record
// k of a section is element k-1.  Strings go through yxw_string, which keeps each string's characters inside
// one block of 1000 characters and gives equal texts the same string.  The revision in the header decides how
// many records a kind may have.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "netlist/store.h"

struct yx_design_image_t {
    yx_general_info_record_t info;  // counts are filled in by yxw_write
    std::vector<yx_prop_type_record_t> prop_instance, prop_pin, prop_net;  // at most 16 each
    std::string chars;
    std::vector<yx_string_record_t> strings;
    std::vector<yx_prop_record_t> props;
    std::vector<yx_inst_record_t> insts;
    std::vector<yx_pin_record_t> pins;
    std::vector<yx_net_record_t> nets;
    std::vector<yx_net_child_record_t> net_children;
    std::vector<yx_macro_record_t> macros;
    std::vector<yx_pinm_record_t> pinms;
    std::unordered_map<std::string, std::int32_t> string_index;  // texts already stored
};

// The index of the text's string, stored on first use.  Texts of 1..127 characters; 0 for an empty text.
std::int32_t yxw_string(yx_design_image_t& image, std::string_view text);
// The same for a text that comes once, such as a path: always a new string, and not kept for later ones.
std::int32_t yxw_new_string(yx_design_image_t& image, std::string_view text);

// Writes the image to a temporary file beside path and renames it.  False: why says what is wrong (a count
// over the store's limits, a text too long, a write failure); nothing is left behind.
bool yxw_write(const yx_design_image_t& image, const std::string& path, std::string& why);
