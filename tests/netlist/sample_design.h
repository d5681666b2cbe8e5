// A small design with every kind of record, and what tests do with its file: write it, spoil it, load it.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "netlist/design_file.h"
#include "netlist/design_image.h"
#include "netlist/layout.h"

// The working directory of a test: a new one that goes with it, in memory where the system has room for it.
class tst_directory {
public:
    tst_directory() {
        EXPECT_NE(mkdtemp(path.data()), nullptr);
        std::filesystem::current_path(path);
    }
    ~tst_directory() {
        std::filesystem::current_path(before_);
        std::filesystem::remove_all(path);
    }
    std::string path = (std::filesystem::is_directory("/dev/shm") ? "/dev/shm/" : testing::TempDir()) +
                       "kolv_netlist_XXXXXX";

private:
    std::filesystem::path before_ = std::filesystem::current_path();
};

inline void tst_add_name(std::vector<yx_prop_type_record_t>& names, const char* name) {
    names.push_back({tm_string(name), tm_string("any")});
}

inline void tst_add_text(yx_design_image_t& d, const char* text) {
    yx_prop_record_t prop;
    prop.valuec = yxw_string(d, text);
    d.props.push_back(prop);
}

inline void tst_add_numbers(yx_design_image_t& d, std::int16_t type, std::int32_t first) {
    yx_prop_record_t prop;
    prop.prop_type = type;
    for (std::int32_t k = 0; k < 3; ++k) {
        prop.valuei[k] = first + k;
        if (type == YX_PREAL) prop.valuer[k] = 0.5F * static_cast<float>(first + k);
    }
    d.props.push_back(prop);
}

inline yx_net_record_t& tst_add_net(yx_design_image_t& d, std::int16_t type, const char* path) {
    yx_net_record_t& net = d.nets.emplace_back();
    net.self = static_cast<std::int32_t>(d.nets.size());
    net.net_type = type;
    net.sim_path = yxw_string(d, path);
    return net;
}

inline void tst_set_chain_in(yx_net_record_t& net, std::int32_t first, std::int16_t count) {
    net.first_pin_in_ind = first;
    net.nb_pin_in = count;
}

template <typename Record>
void tst_set_properties(Record& record, std::int32_t first, std::int8_t count) {
    record.first_prop = first;
    record.nb_of_property = count;
}

inline yx_inst_record_t& tst_add_inst(yx_design_image_t& d, const char* path, std::int16_t pins) {
    yx_inst_record_t& inst = d.insts.emplace_back();
    inst.self = static_cast<std::int32_t>(d.insts.size());
    inst.sim_path = yxw_string(d, path);
    inst.nb_of_pin = pins;
    inst.first_pin_ind = static_cast<std::int32_t>(d.pins.size()) + 1;
    return inst;
}

// A pin of the newest instance.
inline yx_pin_record_t& tst_add_pin(yx_design_image_t& d, const char* path, std::int32_t net) {
    yx_pin_record_t& pin = d.pins.emplace_back();
    pin.self = static_cast<std::int32_t>(d.pins.size());
    pin.io_type = 1;
    pin.sim_path = yxw_string(d, path);
    pin.instance_ind = static_cast<std::int32_t>(d.insts.size());
    pin.net_ind = net;
    return pin;
}

struct tst_net_row {
    std::int16_t type;
    const char* path;
    std::int32_t first_sub, father, next_sub, bus;
    std::int16_t posinbus;
    std::int32_t first_in;
    std::int16_t nb_in;
    std::int32_t first_out;
};

// clang-format off
inline constexpr tst_net_row tst_nets[] = {
    // type        path   first_sub father next_sub bus posinbus first_in nb_in first_out
    {YX_TSTANDARD, "/a",     2,       0,     0,      0,    0,      1,      1,     0},
    {YX_TSUB_NET,  "/u/a",   0,       1,     3,      0,    0,      2,      1,     0},
    {YX_TSUB_NET,  "/v/a",   0,       1,     0,      0,    0,      0,      0,     0},
    {YX_TSTANDARD, "/q[0]",  0,       0,     0,      6,    1,      6,      2,     4},  // its own pin, then the bus's
    {YX_TSTANDARD, "/q[1]",  0,       0,     0,      6,    2,      0,      0,     0},
    {YX_TSTD_BUS,  "/q",     0,       0,     0,      0,    0,      5,      1,     0},
    {YX_TSTANDARD, "/y",     0,       0,     0,      0,    0,      0,      0,     3},
    {YX_TSTANDARD, "/z",     0,       0,     0,      0,    0,      0,      0,     7},
};
// clang-format on

inline void tst_add_nets(yx_design_image_t& d) {
    for (const tst_net_row& row : tst_nets) {
        yx_net_record_t& net = tst_add_net(d, row.type, row.path);
        yx_net_u1_t& u1 = net.UU.U1;
        u1.first_sub_net = row.first_sub, u1.father_net = row.father, u1.next_sub_net = row.next_sub;
        u1.bus = row.bus, u1.posinbus = row.posinbus;
        tst_set_chain_in(net, row.first_in, row.nb_in);
        net.first_pin_out_ind = row.first_out, net.nb_pin_out = row.first_out != 0;
    }
    d.nets[0].name = yxw_string(d, "a"), d.nets[0].nb_of_child = 2, d.nets[0].first_child = 1;
    d.nets[5].UU.U2.net_bus_end = 1, d.nets[5].UU.U2.netind_start = 4;
    d.nets[6].net_kind = yx_kind_initialised, d.nets[6].UU.U1.state_init = 17;
    for (const std::size_t net : {0, 2}) tst_set_properties(d.nets[net], 11, 2);
}

inline void tst_add_gates(yx_design_image_t& d) {
    yx_inst_record_t& first = tst_add_inst(d, "/g1", 4);
    first.timing_index = 3, first.file_path = yxw_string(d, "lib/nand2");
    tst_set_properties(first, 1, 2);
    tst_add_pin(d, "/g1/A", 1), tst_add_pin(d, "/g1/B", 2), tst_add_pin(d, "/g1/Y", 7);
    tst_add_pin(d, "/g1/Z", 4);
    tst_set_properties(tst_add_inst(d, "/g2", 3), 3, 1);
    tst_add_pin(d, "/g2/Q", 6).pin_end = 1;
    tst_add_pin(d, "/g2/A", 4).next_pin_in_ind = 5;
    tst_add_pin(d, "/g2/Y", 8);
    for (yx_pin_record_t& pin : d.pins) tst_set_properties(pin, 4, 3);
    for (const std::size_t output : {2, 3, 6}) {
        d.pins[output].io_type = 2;
        tst_set_properties(d.pins[output], 7, 4);
    }
}

// Two children of net 1, a macro and its two pins.
inline void tst_add_others(yx_design_image_t& d) {
    yx_macro_record_t& macro = d.macros.emplace_back();
    macro.self = 1, macro.nb_of_pin = 2, macro.first_pin_ind = 1;
    tst_set_properties(macro, 1, 1);
    for (std::int32_t k = 1; k <= 2; ++k) {
        yx_net_child_record_t& child = d.net_children.emplace_back();
        child.self = k, child.sim_path = yxw_string(d, k == 1 ? "/u/a" : "/v/a");
        child.name = yxw_string(d, "a"), child.next_child = k == 1 ? 2 : 0;
        yx_pinm_record_t& pinm = d.pinms.emplace_back();
        pinm.self = k, pinm.macro_ind = 1, pinm.net_ind = k;
        tst_set_properties(pinm, 4, 1);
    }
}

inline yx_design_image_t tst_sample_design() {
    yx_design_image_t d;
    d.info.day = 3, d.info.month = 4, d.info.year = 2026;
    d.info.time_step = 0.5F, d.info.software_revision = 1.5F, d.info.num_warnings = 2;
    for (const char* name : {"MODEL", "INST"}) tst_add_name(d.prop_instance, name);
    for (const char* name : {"PIN", "RISE", "FALL", "COUNT"}) tst_add_name(d.prop_pin, name);
    for (const char* name : {"CAP", "NET"}) tst_add_name(d.prop_net, name);
    for (const char* text : {"nand", "g1", "or", "A"}) tst_add_text(d, text);  // 1..4
    tst_add_numbers(d, YX_PTIME, 10), tst_add_numbers(d, YX_PTIME, 20);        // 5, 6
    tst_add_text(d, "Y");                                                      // 7
    tst_add_numbers(d, YX_PTIME, 30), tst_add_numbers(d, YX_PTIME, 40);        // 8, 9
    tst_add_numbers(d, YX_PINTEGER, -1), tst_add_numbers(d, YX_PREAL, 3);      // 10, 11
    tst_add_text(d, "net_of_sheet");                                           // 12
    tst_add_gates(d);
    tst_add_nets(d);
    tst_add_others(d);
    return d;
}

// ---- the file

inline std::string tst_read(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline void tst_write(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

inline std::string tst_file_of(const yx_design_image_t& design) {
    std::string why;
    EXPECT_TRUE(yxw_write(design, "image", why)) << why;
    return tst_read("image");
}

inline std::int32_t tst_load_file(const std::string& directory, const std::string& name) {
    yxi_text_t dir, file;
    yxi_copy_const(directory.c_str(), dir);
    yxi_copy_const(name.c_str(), file);
    STATUS_T status;
    yxi_init_dfi(dir, file, status);
    return status.all;
}

// Loads these bytes as the file "./design_yx"; said is what the reader prints.
inline std::int32_t tst_load(const std::string& bytes, std::string& said) {
    tst_write("design_yx", bytes);
    testing::internal::CaptureStdout();
    const std::int32_t status = tst_load_file(".", "design_yx");
    std::fflush(stdout);
    said = testing::internal::GetCapturedStdout();
    return status;
}

// Calls visit(layout, offset of the section, number of records, record k of the store) for every section
// that has records, in file order.
template <typename Visit>
void tst_each_section(const yx_design_image_t& d, Visit visit) {
    std::size_t at = 0;
    const auto section = [&](const auto& layout, std::size_t count, auto record_of) {
        visit(layout, at, count, record_of);
        at += layout.bytes * count;
    };
    const auto entry_of = [](auto& names) { return [&names](std::size_t k) { return &names[k - 1]; }; };
    const auto by_index = [](auto ptrto) {
        return [ptrto](std::size_t k) { return ptrto(static_cast<std::int32_t>(k)); };
    };
    section(yxl_header, 1, [](std::size_t) { return &yx_sext.general_info; });
    section(yxl_prop_instance_names, d.prop_instance.size(), entry_of(yx_sext.property_instance));
    section(yxl_prop_pin_names, d.prop_pin.size(), entry_of(yx_sext.property_pin));
    section(yxl_prop_net_names, d.prop_net.size(), entry_of(yx_sext.property_net));
    at += d.chars.size();
    section(yxl_strings, d.strings.size(), by_index(yx_ptrto_string_rec));
    section(yxl_props, d.props.size(), by_index(yx_ptrto_prop_rec));
    section(yxl_insts, d.insts.size(), by_index(yx_ptrto_inst_rec));
    section(yxl_pins, d.pins.size(), by_index(yx_ptrto_pin_rec));
    section(yxl_nets, d.nets.size(), by_index(yx_ptrto_net_rec));
    section(yxl_net_children, d.net_children.size(), by_index(yx_ptrto_net_child_rec));
    section(yxl_macros, d.macros.size(), by_index(yx_ptrto_macro_rec));
    section(yxl_pinms, d.pinms.size(), by_index(yx_ptrto_pinm_rec));
}

// Where a field of a record lies in the file.
struct tst_field {
    std::string_view section;
    std::int32_t record = 0;
    std::string_view name;
    std::size_t offset = 0, width = 0;
    yxl_range range;
};

// The fields (no reference slots) of every record of the file, each with the form its record has.
inline std::vector<tst_field> tst_fields(const yx_design_image_t& d, const std::string& bytes) {
    std::vector<tst_field> fields;
    tst_each_section(d, [&](const auto& layout, std::size_t at, std::size_t count, auto record_of) {
        using record_t = std::remove_pointer_t<decltype(record_of(1))>;
        for (std::size_t k = 1; k <= count; ++k, at += layout.bytes) {
            record_t record;
            const auto* image = reinterpret_cast<const std::uint8_t*>(bytes.data()) + at;
            yxl_get(layout, image, record);
            yxl_each_row(layout, record, [&](const yxl_row<record_t>& row) {
                if (row.value != nullptr)
                    fields.push_back({layout.section, static_cast<std::int32_t>(k), row.name, at + row.offset,
                                      row.width, row.range});
                return true;
            });
        }
    });
    return fields;
}

inline void tst_set(std::string& bytes, const tst_field& field, std::int64_t value) {
    for (std::size_t i = 0; i < field.width; ++i)
        bytes[field.offset + i] = static_cast<char>(static_cast<std::uint64_t>(value) >> (8 * i));
}
