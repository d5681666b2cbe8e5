// The reader of design files.
#include "netlist/design_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>

#include "foundation/growing_file.h"
#include "foundation/input.h"
#include "foundation/platform.h"
#include "netlist/design_check.h"
#include "netlist/design_limits.h"
#include "netlist/layout.h"

namespace {

constexpr const char* debug_file_name = "debug_yxdfi";
constexpr std::int32_t load_failed = 1;  // the failure status
constexpr std::int32_t longest_path = 198;

std::string design_path;                                  // of the loaded file
std::int32_t expander_errors = 0, expander_warnings = 0;  // as the header tells

// A design file being read.  Reading stops at the first fault: the steps behind it do nothing.
struct reader_t {
    int descriptor = -1;
    yxc_fault_t fault;
    std::string buffer;  // of one block
};

// ---- reading

// Fills the reader's buffer with `count` records of `bytes` bytes; `first` is the place of the first one.
void read_block(reader_t& reader, std::string_view section, std::size_t bytes, std::int32_t first,
                std::int32_t count) {
    reader.buffer.resize(bytes * static_cast<std::size_t>(count));
    std::size_t have = 0;
    std::int64_t got = 1;
    while (have < reader.buffer.size() && got > 0) {
        got = xfread(reader.descriptor, &reader.buffer[have],
                     static_cast<std::int64_t>(reader.buffer.size() - have));
        if (got > 0) have += static_cast<std::size_t>(got);
    }
    if (have == reader.buffer.size()) return;
    yxc_set_fault(reader.fault, section, first + static_cast<std::int32_t>(have / bytes),
                  got < 0 ? std::string("cannot be read: ") + std::strerror(errno) : "the file ends here");
}

// Reads records first..first+count-1 of a section and checks each by itself.
template <typename Record>
void read_records(reader_t& reader, const lay_layout<Record>& layout, std::int32_t first, std::int32_t count,
                  Record* records) {
    read_block(reader, layout.section, layout.bytes, first, count);
    std::size_t at = 0;
    for (std::int32_t i = 0; i < count && yxc_is_sound(reader.fault); ++i) {
        lay_get(layout, reader.buffer, at, records[i]);
        yxc_check_record(layout, records[i], first + i, reader.fault);
    }
}

// Calls read(block, first, count) for every block of 1000 records and the rest of a kind.
template <typename Record, typename Read>
void each_block(reader_t& reader, yx_block_table<Record>& blocks, std::int32_t total, Read read) {
    if (yxc_is_sound(reader.fault))
        blocks.resize((static_cast<std::size_t>(total) + yx_block_records - 1) / yx_block_records);
    for (std::int32_t done = 0; done < total && yxc_is_sound(reader.fault); done += yx_block_records) {
        auto& block = blocks[static_cast<std::size_t>(done / yx_block_records)];
        block = std::make_unique<Record[]>(yx_block_records);
        read(block.get(), done + 1, std::min(total - done, yx_block_records));
    }
}

template <typename Record>
void read_kind(reader_t& reader, const lay_layout<Record>& layout, yx_block_table<Record>& blocks,
               std::int32_t total) {
    each_block(reader, blocks, total, [&](Record* records, std::int32_t first, std::int32_t count) {
        read_records(reader, layout, first, count, records);
    });
}

void read_characters(reader_t& reader) {
    each_block(reader, yx_sext.arrayof_bcharptr, yx_sext.max_char_cur,
               [&](char* characters, std::int32_t first, std::int32_t count) {
                   read_block(reader, "characters", 1, first, count);
                   if (yxc_is_sound(reader.fault))
                       std::copy(reader.buffer.begin(), reader.buffer.end(), characters);
               });
}

void read_names(reader_t& reader, const lay_layout<yx_prop_type_record_t>& layout,
                std::array<yx_prop_type_record_t, yx_max_names>& names, std::int32_t count) {
    if (count == 0 || !yxc_is_sound(reader.fault)) return;
    read_records(reader, layout, 1, count, names.data());
    for (std::int32_t i = 0; i < count && yxc_is_sound(reader.fault); ++i) {
        yx_prop_type_record_t& entry = names[static_cast<std::size_t>(i)];
        yxc_check_names(layout.section, entry, i + 1, reader.fault);
        for (tm_string_record_t* text : {&entry.name, &entry.prop_type})
            if (yxc_is_sound(reader.fault)) text->char_[text->len] = '\0';
    }
}

// ---- the sections, in file order

void read_header(reader_t& reader) {
    yx_general_info_record_t& info = yx_sext.general_info;
    if (yxc_is_sound(reader.fault)) read_block(reader, yxl_header.section, yxl_header.bytes, 1, 1);
    if (!yxc_is_sound(reader.fault)) return;
    std::size_t at = 0;
    lay_get(yxl_header, reader.buffer, at, info);
    yx_sext.max_index = yx_max_index_of(info.software_revision);
    yxc_check_record(yxl_header, info, 1, reader.fault);
    yxc_check_header(info, reader.fault);
    if (yxc_is_sound(reader.fault)) yxc_check_memory(info, reader.fault);
    if (!yxc_is_sound(reader.fault)) return;
    yx_sext.nbof_property_instance = info.nbof_prop_instance;
    yx_sext.nbof_property_pin = info.nbof_prop_pin;
    yx_sext.nbof_property_net = info.nbof_prop_net;
    yx_sext.max_char_cur = info.nbof_char;
    yx_sext.max_string_cur = info.nbof_string;
    yx_sext.max_prop_cur = info.nbof_prop;
    yx_sext.max_inst_cur = info.nbof_instance;
    yx_sext.max_pin_cur = info.nbof_pin;
    yx_sext.max_net_cur = info.nbof_net;
    yx_sext.max_net_child_cur = info.nbof_net_child;
    yx_sext.max_pinm_cur = info.nbof_pinm;
    yx_sext.max_macro_cur = info.nbof_macro;
    yx_sext.time_step = info.time_step;
    expander_errors = info.num_errors;
    expander_warnings = info.num_warnings;
}

void rebuild_character_references() {
    for (std::int32_t i = 1; i <= yx_sext.max_string_cur; ++i) {
        yx_string_record_t& string = *yx_ptrto_string_rec(i);
        string.charp = string.index == 0 ? nullptr : yx_ptrto_chars(i);
    }
}

void read_strings(reader_t& reader) {
    read_kind(reader, yxl_strings, yx_sext.arrayof_bstringptr, yx_sext.max_string_cur);
    if (!yxc_is_sound(reader.fault)) return;
    yxc_check_strings(reader.fault);
    rebuild_character_references();
}

void read_design(reader_t& reader) {
    read_header(reader);
    read_names(reader, yxl_prop_instance_names, yx_sext.property_instance, yx_sext.nbof_property_instance);
    read_names(reader, yxl_prop_pin_names, yx_sext.property_pin, yx_sext.nbof_property_pin);
    read_names(reader, yxl_prop_net_names, yx_sext.property_net, yx_sext.nbof_property_net);
    read_characters(reader);
    read_strings(reader);
    read_kind(reader, yxl_props, yx_sext.arrayof_bpropptr, yx_sext.max_prop_cur);
    read_kind(reader, yxl_insts, yx_sext.arrayof_binstptr, yx_sext.max_inst_cur);
    read_kind(reader, yxl_pins, yx_sext.arrayof_bpinptr, yx_sext.max_pin_cur);
    read_kind(reader, yxl_nets, yx_sext.arrayof_bnetptr, yx_sext.max_net_cur);
    read_kind(reader, yxl_net_children, yx_sext.arrayof_bnetchildptr, yx_sext.max_net_child_cur);
    read_kind(reader, yxl_macros, yx_sext.arrayof_bmacroptr, yx_sext.max_macro_cur);
    read_kind(reader, yxl_pinms, yx_sext.arrayof_bpinmptr, yx_sext.max_pinm_cur);
    if (yxc_is_sound(reader.fault)) yxc_check_references(reader.fault);
    if (yxc_is_sound(reader.fault)) yxc_check_delays(reader.fault);
}

// ---- opening

void create_debug_file() {
    if (yx_debugfile != nullptr) std::fclose(yx_debugfile);
    yx_debugfile = tm_create_log(debug_file_name).release();
    if (yx_debugfile == nullptr) std::exit(1);
    std::int16_t day = 0, month = 0, year = 0, hour = 0, minute = 0;
    yxi_get_date(day, month, year, hour, minute);
    std::fprintf(yx_debugfile, " design file opened : %02d/%02d/%d  %02d:%02d\n", day, month, year, hour,
                 minute);
}

void check_names_length(const yxi_string_record_t& directory, const yxi_string_record_t& file) {
    if (directory.len <= yxi_string_max && file.len <= yxi_string_max &&
        directory.len + file.len <= longest_path)
        return;
    std::printf("!!! error invalid designfile dirname\n");
    std::printf(" dirname  : \"%.*s\"\n", directory.len, directory.charp);
    std::printf(" filetype : \"%.*s\"\n", file.len, file.charp);
    yxi_set_status(invalid_string);
}

void report_fault(const std::string& path, const yxc_fault_t& fault) {
    const auto section_length = static_cast<int>(fault.section.size());
    for (std::FILE* stream : {stdout, yx_debugfile})
        std::fprintf(stream, " !!! invalid design file \"%s\" : section %.*s : record %d : %s\n",
                     path.c_str(), section_length, fault.section.data(), fault.record, fault.what.c_str());
}

void close_design_file() {
    if (yx_sext.designfile >= 0) xfclose(yx_sext.designfile);
    yx_sext.designfile = -1;
}

}  // namespace

void yxi_init_dfi(const yxi_string_record_t& directory, const yxi_string_record_t& file, STATUS_T& status) {
    create_debug_file();
    status.all = load_failed;
    yx_sext.open_file_ok = false;
    if (directory.len <= 0 || file.len <= 0) return;
    check_names_length(directory, file);

    close_design_file();
    yx_store_clear();
    const std::string path = std::string(yxi_view(directory)) + "/" + std::string(yxi_view(file));
    reader_t reader{tm_open_input(path), {}, {}};
    if (reader.descriptor < 0 && (errno == EISDIR || errno == ENXIO))
        yxc_set_fault(reader.fault, yxl_header.section, 1, "it is no ordinary file");
    else if (reader.descriptor < 0)
        yxi_set_status(file_data_invalid);
    read_design(reader);
    yx_sext.designfile = reader.descriptor;
    design_path = path;
    if (!yxc_is_sound(reader.fault)) {
        report_fault(path, reader.fault);
        close_design_file();
        yx_store_clear();
        return;
    }
    yx_sext.tm_graphics_used = false;
    yx_sext.open_file_ok = true;
    status.all = 0;
}

const std::string& yxi_design_path() { return design_path; }

void yxi_close_dfi(std::int32_t& num_errors, std::int32_t& num_warnings) {
    close_design_file();
    if (yx_debugfile != nullptr) {
        std::fprintf(yx_debugfile, " design file closed\n");
        std::fclose(yx_debugfile);
        yx_debugfile = nullptr;
    }
    num_errors = expander_errors;
    num_warnings = expander_warnings;
}
