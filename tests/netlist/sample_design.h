// A small design with every kind of record, and what tests do with its file: write it, spoil it, load it.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

#include "foundation/layout_fields.h"
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

// A new record at the end of its section.
template <typename Record>
Record& tst_add(yx_design_image_t& d, std::vector<Record>& section, const std::string& path) {
    Record& record = section.emplace_back();
    record.self = static_cast<std::int32_t>(section.size());
    record.sim_path = yxw_string(d, path);
    return record;
}

template <typename Record>
Record& tst_set_properties(Record& record, std::int32_t first, std::int8_t count) {
    record.first_prop = first, record.nb_of_property = count;
    return record;
}

// A property, numbered on from 1: a text, or three numbers from `first` on, reals being half of them.
inline void tst_add_prop(yx_design_image_t& d, const char* text, std::int16_t type = YX_PSTRING,
                         int first = 0) {
    yx_prop_record_t& prop = d.props.emplace_back();
    prop.prop_type = type;
    for (int k = 0; k < 3 && type != YX_PSTRING; ++k) prop.valuei[k] = first + k;
    for (int k = 0; k < 3 && type == YX_PREAL; ++k) prop.valuer[k] = 0.5F * static_cast<float>(first + k);
    if (type == YX_PSTRING) prop.valuec = yxw_string(d, text);
}

// The next pin of the newest instance.
inline yx_pin_record_t& tst_add_pin(yx_design_image_t& d, const std::string& path, std::int32_t net) {
    yx_pin_record_t& pin = tst_add(d, d.pins, path);
    yx_inst_record_t& inst = d.insts.back();
    if (inst.nb_of_pin++ == 0) inst.first_pin_ind = pin.self;
    pin.io_type = 1, pin.instance_ind = inst.self, pin.net_ind = net;
    tst_set_properties(pin, 4, 3);
    return pin;
}

inline void tst_add_nets(yx_design_image_t& d) {
    // clang-format off
    const struct { std::int16_t type; const char* path; std::int32_t sub, father, next, bus, in, out; std::int16_t place, ins; } rows[] = {
        // type        path       sub  father   next    bus    in       out    place     ins
        {YX_TSTANDARD, "/a",      2,      0,      0,     0,    1,       0,        0,      1},
        {YX_TSUB_NET,  "/u/a",    0,      1,      3,     0,    2,       0,        0,      1},
        {YX_TSUB_NET,  "/v/a",    0,      1,      0,     0,    0,       0,        0,      0},
        {YX_TSTANDARD, "/q[0]",   0,      0,      0,     6,    6,       4,        1,      2},  // its own pin, then the bus's
        {YX_TSTANDARD, "/q[1]",   0,      0,      0,     6,    0,       0,        2,      0},
        {YX_TSTD_BUS,  "/q",      0,      0,      0,     0,    5,       0,        0,      1},
        {YX_TSTANDARD, "/y",      0,      0,      0,     0,    0,       3,        0,      0},
        {YX_TSTANDARD, "/z",      0,      0,      0,     0,    0,       7,        0,      0},
    };
    // clang-format on
    for (const auto& row : rows) {
        yx_net_record_t& net = tst_add(d, d.nets, row.path);
        yx_net_u1_t& u1 = net.UU.U1;
        net.net_type = row.type;
        u1.first_sub_net = row.sub, u1.father_net = row.father, u1.next_sub_net = row.next;
        u1.bus = row.bus, u1.posinbus = row.place;
        net.first_pin_in_ind = row.in, net.nb_pin_in = row.ins;
        net.first_pin_out_ind = row.out, net.nb_pin_out = row.out != 0;
    }
    d.nets[0].name = yxw_string(d, "a"), d.nets[0].nb_of_child = 2, d.nets[0].first_child = 1;
    d.nets[5].UU.U2.net_bus_end = 1, d.nets[5].UU.U2.netind_start = 4;
    d.nets[6].net_kind = yx_kind_initialised, d.nets[6].UU.U1.state_init = 17;
    for (const std::size_t net : {0, 2}) tst_set_properties(d.nets[net], 11, 2);
}

inline void tst_add_gates(yx_design_image_t& d) {
    yx_inst_record_t& first = tst_add(d, d.insts, "/g1");
    first.timing_index = 3, first.file_path = yxw_string(d, "lib/nand2");
    tst_set_properties(first, 1, 2);
    tst_add_pin(d, "/g1/A", 1), tst_add_pin(d, "/g1/B", 2);
    tst_add_pin(d, "/g1/Y", 7), tst_add_pin(d, "/g1/Z", 4);
    tst_set_properties(tst_add(d, d.insts, "/g2"), 3, 1);
    tst_add_pin(d, "/g2/Q", 6).pin_end = 1;
    tst_add_pin(d, "/g2/A", 4).next_pin_in_ind = 5;
    tst_add_pin(d, "/g2/Y", 8);
    for (const std::size_t output : {2, 3, 6})
        d.pins[output].io_type = 2, tst_set_properties(d.pins[output], 7, 4);
}

inline yx_design_image_t tst_sample_design() {
    yx_design_image_t d;
    d.info.day = 3, d.info.month = 4, d.info.year = 2026;
    d.info.time_step = 0.5F, d.info.software_revision = 1.5F, d.info.num_warnings = 2;
    const auto name = [](auto& names, auto... texts) {
        (names.push_back({tm_string(texts), tm_string("any")}), ...);
    };
    name(d.prop_instance, "MODEL", "INST");
    name(d.prop_pin, "PIN", "RISE", "FALL", "COUNT");
    name(d.prop_net, "CAP", "NET");
    for (const char* text : {"nand", "g1", "or", "A"}) tst_add_prop(d, text);  // 1..4
    for (const int time : {10, 20}) tst_add_prop(d, "", YX_PTIME, time);       // 5, 6
    tst_add_prop(d, "Y");                                                      // 7
    for (const int time : {30, 40}) tst_add_prop(d, "", YX_PTIME, time);       // 8, 9
    tst_add_prop(d, "", YX_PINTEGER, -1), tst_add_prop(d, "", YX_PREAL, 3);    // 10, 11
    tst_add_prop(d, "net_of_sheet");                                           // 12
    tst_add_gates(d);
    tst_add_nets(d);
    yx_macro_record_t& macro = tst_add(d, d.macros, "");
    macro.nb_of_pin = 2, macro.first_pin_ind = 1;
    tst_set_properties(macro, 1, 1);
    for (const char* const path : {"/u/a", "/v/a"}) {
        yx_net_child_record_t& child = tst_add(d, d.net_children, path);
        child.name = yxw_string(d, "a"), child.next_child = child.self == 1 ? 2 : 0;
        yx_pinm_record_t& pinm = tst_add(d, d.pinms, "");
        pinm.macro_ind = 1, pinm.net_ind = pinm.self;
        tst_set_properties(pinm, 4, 1);
    }
    return d;
}

// ---- the file

inline void tst_write(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

inline std::string tst_file_of(const yx_design_image_t& design) {
    std::string why;
    EXPECT_TRUE(yxw_write(design, "image", why)) << why;
    std::ifstream file("image", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline std::int32_t tst_load_file(std::string directory, std::string name) {
    STATUS_T status;
    yxi_init_dfi({static_cast<std::int32_t>(directory.size()), directory.data()},
                 {static_cast<std::int32_t>(name.size()), name.data()}, status);
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
    const auto names = [&](const auto& layout, std::size_t count, auto& entries) {
        section(layout, count, [&](std::size_t k) { return &entries[k - 1]; });
    };
    const auto kind = [&](const auto& layout, std::size_t count, auto ptrto) {
        section(layout, count, [=](std::size_t k) { return ptrto(static_cast<std::int32_t>(k)); });
    };
    kind(yxl_header, 1, [](std::int32_t) { return &yx_sext.general_info; });
    names(yxl_prop_instance_names, d.prop_instance.size(), yx_sext.property_instance);
    names(yxl_prop_pin_names, d.prop_pin.size(), yx_sext.property_pin);
    names(yxl_prop_net_names, d.prop_net.size(), yx_sext.property_net);
    at += d.chars.size();
    kind(yxl_strings, d.strings.size(), yx_ptrto_string_rec);
    kind(yxl_props, d.props.size(), yx_ptrto_prop_rec);
    kind(yxl_insts, d.insts.size(), yx_ptrto_inst_rec);
    kind(yxl_pins, d.pins.size(), yx_ptrto_pin_rec);
    kind(yxl_nets, d.nets.size(), yx_ptrto_net_rec);
    kind(yxl_net_children, d.net_children.size(), yx_ptrto_net_child_rec);
    kind(yxl_macros, d.macros.size(), yx_ptrto_macro_rec);
    kind(yxl_pinms, d.pinms.size(), yx_ptrto_pinm_rec);
}

// The fields of every record of the file.
inline std::vector<tst_field> tst_fields(const yx_design_image_t& d, const std::string& bytes) {
    std::vector<tst_field> fields;
    tst_each_section(d,
                     [&]<typename T>(const lay_layout<T>& layout, std::size_t at, std::size_t count, auto) {
                         for (std::size_t k = 1; k <= count; ++k) {
                             T record;
                             tst_add_fields(layout, static_cast<std::int32_t>(k), bytes, at, record, fields);
                         }
                     });
    return fields;
}
