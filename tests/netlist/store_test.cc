// What the store gives: records by index and along chains, properties, views, iterators and texts.
#include "netlist/property.h"
#include "netlist/views.h"
#include "netlist/walk.h"
#include "sample_design.h"

namespace {

class store : public testing::Test {
protected:
    tst_directory directory;
    void load(const yx_design_image_t& design) {
        std::string said;
        ASSERT_EQ(tst_load(tst_file_of(design), said), 0) << said;
    }
    void SetUp() override { load(tst_sample_design()); }
    void TearDown() override { yx_store_clear(); }
};

// The access ends the program, which says so on standard output, here where the death test looks.
template <typename Access>
void expect_stop(Access access) {
    EXPECT_EXIT((dup2(2, 1), access()), testing::KilledBySignal(SIGABRT), "!!! YX_ERROR_STOP  \n");
}

TEST_F(store, indexes_outside_their_kind_stop_the_program) {
    for (const std::int32_t index : {0, -1, 9, 500001}) expect_stop([&] { yx_ptrto_net_rec(index); });
    std::ifstream debug("debug_yxdfi");
    const std::string told{std::istreambuf_iterator<char>(debug), {}};
    EXPECT_NE(
        told.find(" YX_PTRTO_NET_REC  : error : index  : 500001\n   max_net_cur : 8\n YX_ERROR_STOP  \n"),
        told.npos);
    expect_stop([] { yx_ptrto_net_child_rec(3); });
    yx_ptrto_string_rec(1)->index = yx_sext.max_char_cur + 1;
    expect_stop([] { yx_ptrto_chars(1); });
    yx_store_clear();
    expect_stop([] { yx_ptrto_macro_rec(1); });
}

TEST_F(store, chains_are_walked_to_the_nth_record) {
    EXPECT_EQ(yx_net_ptrto_pin_in_rec(4, 1)->self, 6);
    EXPECT_EQ(yx_net_ptrto_pin_in_rec(4, 2)->self, 5);
    EXPECT_EQ(yx_net_ptrto_pin_out_rec(8, 1)->self, 7);
    EXPECT_EQ(yx_net_ptrto_net_child_rec(1, 2)->self, 2);
    for (const std::int32_t n : {0, 3}) expect_stop([&] { yx_net_ptrto_pin_in_rec(4, n); });
    expect_stop([] { yx_net_ptrto_pin_out_rec(9, 1); });
    yx_ptrto_pin_rec(6)->next_pin_in_ind = -1;  // looked at by the last step, not by the first
    EXPECT_EQ(yx_net_ptrto_pin_in_rec(4, 1)->self, 6);
    yx_ptrto_pin_rec(5)->next_pin_in_ind = 8, yx_ptrto_pin_rec(6)->next_pin_in_ind = 5;
    expect_stop([] { yx_net_ptrto_pin_in_rec(4, 2); });
}

TEST_F(store, properties_are_found_by_name_in_the_table_of_their_kind) {
    // The property that a record has under a name, 0 for none.
    const auto found = [](auto lookup, const auto* record, const char* name) {
        yx_prop_record_t* value = nullptr;
        bool is_found = true;
        lookup(record, tm_string(name), value, is_found);
        EXPECT_EQ(is_found, value != nullptr);
        return is_found ? value - yx_ptrto_prop_rec(1) + 1 : 0;
    };
    const std::tuple<int, const char*, int> of_pins[] = {{1, "RISE", 5},
                                                         {1, "rise", 5},
                                                         {1, "RIS", 0},
                                                         {3, "Count", 10},
                                                         {1, "COUNT", 0}};  // three values only
    for (const auto& [pin, name, prop] : of_pins)
        EXPECT_EQ(found(kol_pin_getvalueof_prop_on, yx_ptrto_pin_rec(pin), name), prop) << name;
    EXPECT_EQ(found(kol_inst_getvalueof_prop_on, yx_ptrto_inst_rec(2), "model"), 3);
    EXPECT_EQ(found(kol_inst_getvalueof_prop_on, yx_ptrto_inst_rec(2), "INST"), 0);
    EXPECT_EQ(found(kol_net_getvalueof_prop_on, yx_ptrto_net_rec(1), "net"), 12);
    EXPECT_EQ(found(kol_macro_getvalueof_prop_on, yx_ptrto_macro_rec(1), "MODEL"), 1);
    EXPECT_EQ(found(kol_pinm_getvalueof_prop_on, yx_ptrto_pinm_rec(2), "PIN"), 4);
    EXPECT_EQ(found(kol_inst_getvalueof_prop_on, static_cast<yx_inst_record_t*>(nullptr), ""), 0);
    EXPECT_EXIT(found(kol_pin_getvalueof_prop_on, yx_ptrto_pin_rec(1), ""), testing::KilledBySignal(SIGABRT),
                "");
}

TEST_F(store, views_are_named_by_the_record_its_properties_or_its_index) {
    std::unique_ptr<yxi_net_record_t> net;
    std::unique_ptr<yxi_instance_record_t> inst;
    std::unique_ptr<yxi_pin_record_t> pin;
    using links = std::array<std::int32_t, 7>;  // bus, father, first, next sub-net, bits, first member
    const std::tuple<std::int32_t, const char*, links> nets[] = {{1, "a", {0, 0, 2, 0, 0, 0, 0}},
                                                                 {2, "N_2", {0, 1, 0, 3, 0, 0, 0}},
                                                                 {3, "net_of_sheet", {0, 1, 0, 0, 0, 0, 0}},
                                                                 {5, "N_5", {6, 0, 0, 0, 0, 0, 0}},
                                                                 {6, "N_6", {0, 0, 0, 0, 0, 1, 4}}};
    for (const auto& [index, name, expected] : nets) {
        yxi_get_net_record(index, net);
        EXPECT_EQ(yxi_view(net->name), name);
        EXPECT_EQ(expected, (links{net->bus, net->father_net, net->first_sub_net, net->next_sub_net,
                                   net->net_bus_start, net->net_bus_end, net->netind_start}));
    }
    yxi_get_pin_record(1, pin), yxi_get_pin_record(3, pin);  // refilled: a property more
    const yxi_prop_record_t* prop = nullptr;
    const auto find = [&](const char* name) {
        yxi_text_t text;
        yxi_copy_const(name, text);
        return yxi_find_pin_property(*pin, text, prop);
    };
    EXPECT_TRUE(find("COUNT") && find("FALL") && prop->vtype == YX_PTIME && prop->tvalue[2] == 42);
    EXPECT_FALSE(find("fall") || find("FAL") || find(""));
    // Of several properties of that name a net takes the first, others the last.
    yx_design_image_t d = tst_sample_design();
    for (auto* names : {&d.prop_instance, &d.prop_pin, &d.prop_net}) {
        names->clear();
        for (const char* name : {"NET", "pin", "Inst", "Net", "PIN", "INST"})
            names->push_back({tm_string(name), tm_string("any")});
    }
    for (const char* text : {"n1", "p1", "i1", "n2", "p2", "i2"}) tst_add_prop(d, text);
    tst_set_properties(d.nets[1], 13, 6), tst_set_properties(d.insts[1], 13, 6),
        tst_set_properties(d.pins[6], 13, 6);
    load(d);
    yxi_get_net_record(2, net), yxi_get_instance_record(2, inst), yxi_get_pin_record(7, pin);
    EXPECT_TRUE(yxi_view(net->name) == "n1" && yxi_view(inst->name) == "i2" && yxi_view(pin->name) == "p2");
}

TEST_F(store, iterators_visit_every_record_once) {
    std::string seen;
    std::int32_t inst = 0, pin = 0, net = 0;
    std::int16_t io = 0;
    for (yxi_get_first_instance(inst); inst != 0; yxi_get_next_instance(inst))
        for (yxi_get_first_pin_of_instance(inst, pin); pin != 0; yxi_get_next_pin_of_instance(pin))
            seen += std::to_string(inst) + "." + std::to_string(pin) + " ";
    EXPECT_EQ(seen, "1.1 1.2 1.3 1.4 2.5 2.6 2.7 ");
    seen.clear();
    for (yxi_get_first_net(net); net != 0; yxi_get_next_net(net)) {
        seen += std::to_string(net);
        for (yxi_get_first_pin_in_of_net(net, pin, io); pin != 0; yxi_get_next_pin_in_of_net(pin, io))
            seen += " <" + std::to_string(pin) + ":" + std::to_string(io);
        for (yxi_get_first_pin_out_of_net(net, pin, io); pin != 0; yxi_get_next_pin_out_of_net(pin, io))
            seen += " >" + std::to_string(pin) + ":" + std::to_string(io);
        seen += "; ";
    }
    EXPECT_EQ(seen, "1 <1:1; 2 <2:1; 3; 4 <6:1 <5:1 >4:2; 5; 6 <5:1; 7 >3:2; 8 >7:2; ");
}

TEST_F(store, texts_compare_without_regard_to_case_and_stop_the_program_when_unsound) {
    const std::int32_t nand = yx_ptrto_prop_rec(1)->valuec;
    const std::tuple<const char*, bool, bool> rows[] = {// equal, a prefix of it
                                                        {"NaNd", true, true},
                                                        {"NAN", false, true},
                                                        {"", false, true},
                                                        {"nands", false, false},
                                                        {"an", false, false}};
    for (const auto& [text, is_equal, is_prefix] : rows) {
        EXPECT_EQ(yxistring_iden_tmstring(nand, tm_string(text)), is_equal) << text;
        EXPECT_EQ(tmstring_equal_yxistring(tm_string(text), nand), is_prefix) << text;
    }
    yxi_text_t text;
    EXPECT_EXIT(yxistring_iden_tmstring(0, {}), testing::ExitedWithCode(69), "");
    EXPECT_EXIT(tmstring_equal_yxistring({}, yx_sext.max_string_cur + 1), testing::ExitedWithCode(69), "");
    EXPECT_EXIT(yxi_copy_const(std::string(201, 'c').c_str(), text), testing::ExitedWithCode(69), "");
    yx_ptrto_string_rec(1)->len = -1;
    EXPECT_EXIT(yxi_copy_string_yx_yxi(1, text), testing::ExitedWithCode(69), "");
}

}  // namespace
