// Views, iterators and the texts of the netlist.
#include "netlist/views.h"
#include "netlist/walk.h"
#include "sample_design.h"

namespace {

class views : public testing::Test {
protected:
    tst_directory directory;
    void load(const yx_design_image_t& design) {
        std::string said;
        ASSERT_EQ(tst_load(tst_file_of(design), said), 0) << said;
    }
    void SetUp() override { load(tst_sample_design()); }
    void TearDown() override { yx_store_clear(); }
};

TEST_F(views, names_come_from_the_record_its_properties_or_its_index) {
    std::unique_ptr<yxi_net_record_t> net;
    std::unique_ptr<yxi_instance_record_t> inst;
    std::unique_ptr<yxi_pin_record_t> pin;
    const auto net_name = [&](std::int32_t i) { return yxi_get_net_record(i, net), yxi_view(net->name); };
    EXPECT_EQ(net_name(1), "a");             // its own name hides the property
    EXPECT_EQ(net_name(3), "net_of_sheet");  // the property NET
    EXPECT_EQ(net_name(7), "N_7");
    yxi_get_instance_record(1, inst), yxi_get_pin_record(3, pin);
    EXPECT_EQ(yxi_view(inst->name), "g1");
    EXPECT_EQ(yxi_view(pin->name), "Y");
    yxi_get_instance_record(2, inst);
    EXPECT_EQ(yxi_view(inst->name), "I_2");
}

TEST_F(views, several_properties_of_the_naming_kind_give_the_first_or_the_last) {
    yx_design_image_t design = tst_sample_design();
    for (auto* names : {&design.prop_instance, &design.prop_pin, &design.prop_net}) {
        names->clear();
        for (const char* name : {"NET", "pin", "Inst", "Net", "PIN", "INST"}) tst_add_name(*names, name);
    }
    design.props.clear();
    for (const char* text : {"n1", "p1", "i1", "n2", "p2", "i2", "x", "x", "x", "x", "x", "x"})
        tst_add_text(design, text);
    design.nets[1].first_prop = 1, design.nets[1].nb_of_property = 6;
    design.insts[1].first_prop = 1, design.insts[1].nb_of_property = 6;
    design.pins[6].first_prop = 1, design.pins[6].nb_of_property = 6;
    design.pins[5].first_prop = 1, design.pins[5].nb_of_property = 1;
    load(design);
    std::unique_ptr<yxi_net_record_t> net;
    std::unique_ptr<yxi_instance_record_t> inst;
    std::unique_ptr<yxi_pin_record_t> pin;
    yxi_get_net_record(2, net), yxi_get_instance_record(2, inst), yxi_get_pin_record(7, pin);
    EXPECT_EQ(yxi_view(net->name), "n1");
    EXPECT_EQ(yxi_view(inst->name), "i2");
    EXPECT_EQ(yxi_view(pin->name), "p2");
    yxi_get_pin_record(6, pin);
    EXPECT_EQ(yxi_view(pin->name), "N_6");
}

TEST_F(views, a_view_copies_what_its_kind_of_net_has) {
    std::unique_ptr<yxi_net_record_t> view;
    using row =
        std::array<std::int32_t, 8>;  // index, bus, father, first and next sub-net, bits, first member
    for (const row& r : {row{1, 0, 0, 2, 0, 0, 0, 0}, row{2, 0, 1, 0, 3, 0, 0, 0},
                         row{5, 6, 0, 0, 0, 0, 0, 0}, row{6, 0, 0, 0, 0, 0, 1, 4}}) {
        yxi_get_net_record(r[0], view);
        EXPECT_EQ(r, (row{view->self_id, view->bus, view->father_net, view->first_sub_net, view->next_sub_net,
                          view->net_bus_start, view->net_bus_end, view->netind_start}));
    }
    EXPECT_EQ(yxi_view(view->sim_path), "/q");
    yxi_get_net_record(9, view);
    EXPECT_EQ(view, nullptr);
    std::unique_ptr<yxi_instance_record_t> inst;
    yxi_get_instance_record(1, inst);
    EXPECT_TRUE(inst->primitive && inst->timing_index == 3 && yxi_view(inst->file_path) == "lib/nand2");
    yx_store_clear();
    yxi_get_instance_record(1, inst);
    EXPECT_EQ(inst, nullptr);
}

TEST_F(views, properties_are_found_by_their_exact_name) {
    std::unique_ptr<yxi_pin_record_t> pin;
    yxi_get_pin_record(3, pin);
    const yxi_prop_record_t* prop = nullptr;
    const auto find = [&](const std::string& name) {
        yxi_text_t text;
        yxi_copy_const(name.c_str(), text);
        return yxi_find_pin_property(*pin, text, prop);
    };
    ASSERT_TRUE(find("FALL"));
    EXPECT_TRUE(prop->vtype == YX_PTIME && prop->tvalue[2] == 42);
    ASSERT_TRUE(find("PIN"));
    EXPECT_EQ(yxi_view(prop->svalue), "Y");
    EXPECT_FALSE(find("fall") || find("FAL") || find(""));
    EXPECT_EQ(prop, nullptr);
    yxi_get_pin_record(1, pin);  // refilled: three properties are left
    EXPECT_FALSE(find("COUNT"));
}

TEST_F(views, iterators_visit_every_record_once) {
    const auto pins_of = [](auto first, auto next, std::int32_t owner) {
        std::string seen;
        std::int32_t pin = -1;
        std::int16_t io = -1;
        for (first(owner, pin, io); pin != 0; next(pin, io))
            seen += std::to_string(pin) + ":" + std::to_string(io) + " ";
        EXPECT_EQ(io, 0);
        return seen;
    };
    EXPECT_EQ(pins_of(yxi_get_first_pin_in_of_net, yxi_get_next_pin_in_of_net, 4), "6:1 5:1 ");
    EXPECT_EQ(pins_of(yxi_get_first_pin_out_of_net, yxi_get_next_pin_out_of_net, 7), "3:2 ");
    EXPECT_EQ(pins_of(yxi_get_first_pin_in_of_net, yxi_get_next_pin_in_of_net, 99), "");
    std::string seen;
    std::int32_t inst = 0, pin = 0;
    for (yxi_get_first_instance(inst); inst != 0; yxi_get_next_instance(inst))
        for (yxi_get_first_pin_of_instance(inst, pin); pin != 0; yxi_get_next_pin_of_instance(pin))
            seen += std::to_string(inst) + "." + std::to_string(pin) + " ";
    EXPECT_EQ(seen, "1.1 1.2 1.3 1.4 2.5 2.6 2.7 ");
    std::int32_t nets = 0, net = 0;
    for (yxi_get_first_net(net); net != 0; yxi_get_next_net(net)) ++nets;
    EXPECT_EQ(nets, 8);
    yx_store_clear();
    yxi_get_first_net(net);
    EXPECT_EQ(net, 0);
}

TEST_F(views, store_strings_compare_without_regard_to_case) {
    const std::int32_t nand = yx_ptrto_prop_rec(1)->valuec;
    const auto text = [](const char* s) { return tm_string(s); };
    EXPECT_TRUE(yxistring_iden_tmstring(nand, text("NaNd")));
    EXPECT_FALSE(yxistring_iden_tmstring(nand, text("NAN")) || yxistring_iden_tmstring(nand, text("nands")));
    EXPECT_TRUE(tmstring_equal_yxistring(text("NAN"), nand) && tmstring_equal_yxistring(text(""), nand));
    EXPECT_FALSE(tmstring_equal_yxistring(text("nands"), nand) || tmstring_equal_yxistring(text("an"), nand));
    const std::pair<const char*, void (*)()> stops[] = {
        {"index 0", [] { yxistring_iden_tmstring(0, {}); }},
        {"index too large", [] { tmstring_equal_yxistring({}, yx_sext.max_string_cur + 1); }},
        {"negative length",
         [] {
             tm_string_record_t s;
             yx_ptrto_string_rec(1)->len = -1;
             yxi_copy_string_yx_tm(1, s);
         }},
        {"no characters",
         [] {
             yxi_text_t s;
             yx_ptrto_string_rec(1)->charp = nullptr;
             yxi_copy_string_yx_yxi(1, s);
         }},
        {"201 characters",
         [] {
             yxi_text_t s;
             yxi_copy_const(std::string(201, 'c').c_str(), s);
         }},
    };
    for (const auto& [what, stop] : stops) EXPECT_EXIT(stop(), testing::ExitedWithCode(69), "") << what;
}

TEST(texts, numbers_and_copies_fit_their_records) {
    yxi_text_t text, copy;
    yxi_integer_to_string(-120, text);
    EXPECT_EQ(yxi_view(text), "-120");
    yxi_real_to_string(2.5F, text);
    EXPECT_EQ(yxi_view(text), "2.50");
    yxi_copy_const(std::string(200, 'c').c_str(), text);
    yxi_copy_string(text, copy);
    EXPECT_TRUE(yxi_equal_string(text, copy));
    EXPECT_EQ(std::string(yxi_writestr(copy).get()), std::string(200, 'c'));
    yxi_coprec_tm_yxi(tm_string("C"), text);
    EXPECT_STREQ(text.charp, "C");
    yxi_copy_const("c", copy);
    EXPECT_FALSE(yxi_equal_string(text, copy));
}

}  // namespace
