// What names mean.
#include "kernel/lookup.h"

#include <gtest/gtest.h>

#include <sstream>

#include "kernel/say.h"
#include "support/design_build.h"
#include "support/rows.h"

namespace {

// At a level: names, each with its result and the path of its net.
void expect(const char* level, const std::string& text) {
    std::istringstream in(text);
    for (std::string name, result, path; in >> name >> result >> path;) {
        kol_ext.cur_sim_path = tm_string(level);
        yx_net_record_t* net = &tst_net("a");
        EXPECT_EQ(kol_find_net(tm_string(name), net), std::stoi(result)) << name << " at " << level;
        EXPECT_EQ(net == nullptr ? "-" : kol_path(net->sim_path), path) << name << " at " << level;
    }
}

// clang-format off
TEST(lookup, knows_every_form_of_a_name) {
    tst_build(
        "net a b; net t; sub s of t; sub r of s; bus d 4; and g y = a r; and h d.1-2 = d.3;"
        "net n path /x/n name /u/n; child n name /u/kid path /x/kid; child n name /u/son path /x/son");
    expect("/", "a 2 /a  A 2 /a  /A 3 /a  aa 0 -  / 0 -  s 2 /t  r 2 /t  d 2 /d  D[2] 2 /d[2]");
    expect("/", "NI_1 1 /a  NI_4 1 /t  Ni_5 1 /t  NI_12 1 /x/n  NI_0 0 -  NI_x 0 -  NI_13 0 -  NI_4294967297 0 -  NI_-1 0 -  NI_ 0 -");
    expect("/", "/u/n 3 /x/n  /x/kid 3 /x/n  g/I1 2 /a  h/O 2 /d[1]  h/I1 2 /d[3]  h/I2 0 -");
    expect("/x/", "/a 3 /a  a 0 -  ni_2 1 /b  n 2 /x/n  Son 2 /x/n  /g/O 3 /y");
    expect("/u/", "n 2 /x/n  kid 2 /x/n");
    expect("/g/", "i2 2 /t");
    yx_net_record_t* net = &tst_net("a");
    EXPECT_EQ(kol_find_net(tm_string(""), net), 0);
    for (const auto& [design, first] : tst_rows<tst_cstr, std::string>{
             {"net a p; net n path /g/I1; and g z = p", "/p"},
             {"net a; net n path /g/I1; net p; and g z = p", "/g/I1"},
             {"net a t; net n path /g/I1; sub s of t; and g z = s", "/g/I1"},
             {"net a p q; child q name /g/i1 path /q/c; child p path /G/I1", "/p"},
             {"net a; net n name /g/I1 path /first; net m path /g/I1", "/first"}}) {
        tst_build(design);
        expect("/", "/g/I1 3 " + first);
    }
}

// A name that nothing has but that ends in an object means, among nets of the level, those with that object
// as a child there, and among the others those that are it.
TEST(lookup, reads_objects_of_the_current_sheet) {
    tst_build(
        "net a; net w path /x/N_7 object 9; sub v of w path /x/N_6; net c path /c; child c path /x/N_8;"
        "net e path /e; child e name /x/N_4 path /e/c; and x/N_3 z = a; net m name /u/m object 11;"
        "child m path /u/k object 12; child m path /z/k object 13; net o object 11; net q object 12 name /v/q");
    kol_ext.file_level_cur = 1;
    kol_ext.arrayof_file[0].highest_net = 50;
    expect("/x/", "n_7 4 /x/N_7  N_6 4 /x/N_7  N_8 4 /c  N_4 0 -  N_0 0 -  N_51 0 -  N_x 0 -  /x/N_7 3 /x/N_7");
    expect("/", "N_7 0 -");
    expect("/u/", "/p/N_11 3 /o  /n_12 3 /m  /p/N_13 0 -");
    expect("/w/", "/p/N_11 3 /m  /p/N_12 3 /q  /p/N_51 0 -  /p/N_13 0 -  N_4294967307 0 -  /p/11 0 -");
    kol_ext.file_level_cur = 2;  // a level without a sheet
    expect("/x/", "N_7 0 -");
    expect("/w/", "/p/N_11 0 -  /x/N_7 3 /x/N_7");
}

TEST(lookup, prefers_a_probe_of_its_level_to_a_relative_name) {
    tst_build("net a b");
    auto* probe = kol_ext.start_probe_signal = kol_ext.last_probe_signal = new kol_probe_signal_rec_t;
    probe->net = &tst_net("b");
    probe->probe_name = tm_string("a");
    probe->cur_sim_path = tm_string("/");
    expect("/", "a 5 /b  /a 3 /a  NI_1 1 /a");
    probe->cur_sim_path = tm_string("/x/");
    expect("/", "a 2 /a");
    expect("/x/", "a 5 /b");
}

// Two records named "y", made at /b/ and then at /a/, and "/a/x" and "NI_3" made at /a/.
template <typename Record>
void expect_records(std::int16_t (*find)(const tm_string_record_t&, Record*&), Record*& newest,
                    tm_string_record_t Record::*record_name) {
    std::vector<Record*> made;
    for (const auto& [name, level] :
         tst_rows<tst_cstr, tst_cstr>{{"y", "/b/"}, {"/a/x", "/a/"}, {"NI_3", "/a/"}, {"y", "/a/"}}) {
        made.push_back(new Record);
        made.back()->*record_name = tm_string(name);
        made.back()->cur_sim_path = tm_string(level);
        made.back()->previous = newest;
        newest = made.back();
    }
    for (const auto& [level, name, result, found] : tst_rows<tst_cstr, tst_cstr, int, Record*>{
             {"/a/", "y", 2, made[3]}, {"/b/", "y", 2, made[0]}, {"/c/", "y", 0, nullptr},
             {"/c/", "/a/x", 1, made[1]}, {"/c/", "NI_3", 1, made[2]}, {"/a/", "x", 0, nullptr},
             {"/c/", "/y", 0, nullptr}}) {
        kol_ext.cur_sim_path = tm_string(level);
        Record* record = nullptr;
        EXPECT_EQ(find(tm_string(name), record), result) << name << " at " << level;
        EXPECT_EQ(record, found) << name << " at " << level;
    }
}

TEST(lookup, finds_records_at_the_level_where_they_were_made) {
    tst_build("net a");
    expect_records(kol_find_break_inrec, kol_ext.break_signal, &yx_break_signal_rec_t::break_name);
    expect_records(kol_find_listsig_inrec, kol_ext.list_signal, &yx_signal_rec_t::name);
    expect_records(kol_find_tracesig_inrec, kol_ext.trace_signal, &yx_signal_rec_t::name);
    kol_ext.start_sim_bus = new yx_bus_rec_t;
    kol_ext.start_sim_bus->next = kol_ext.last_sim_bus = new yx_bus_rec_t;
    kol_ext.start_sim_bus->name = tm_string("low");
    kol_ext.last_sim_bus->name = tm_string("high");
    yx_bus_rec_t* bus = nullptr;
    EXPECT_EQ(kol_find_sim_bus(tm_string("high"), bus), 7);
    EXPECT_EQ(bus, kol_ext.last_sim_bus);
    EXPECT_EQ(kol_find_sim_bus(tm_string("middle"), bus), 0);
}

TEST(lookup, finds_pins_below_the_current_level) {
    tst_build("net a; and x/g y = a");
    for (const auto& [level, inst, name, is_found] : tst_rows<tst_cstr, tst_cstr, tst_cstr, bool>{
             {"/", "x/g", "I1", true}, {"/x/", "G", "i1", true}, {"/x/", "g", "I2", false},
             {"/", "g", "I1", false}, {"/x/", "", "I1", false}, {"/x/", "g", "", false}}) {
        kol_ext.cur_sim_path = tm_string(level);
        yx_pin_record_t* pin = nullptr;
        EXPECT_EQ(kol_find_pin_rel(tm_string(inst), tm_string(name), pin), is_found) << inst;
        EXPECT_EQ(pin, is_found ? &tst_pin("/x/g/I1") : nullptr) << inst;
    }
}
// clang-format on

}  // namespace
