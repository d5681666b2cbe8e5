// The accessors of the store and the property lookup: what they reach and where they stop the program.
#include "netlist/property.h"
#include "sample_design.h"

namespace {

class store : public testing::Test {
protected:
    tst_directory directory;
    void SetUp() override {
        std::string said;
        ASSERT_EQ(tst_load(tst_file_of(tst_sample_design()), said), 0) << said;
    }
    void TearDown() override { yx_store_clear(); }
};

// Runs the access with standard output going where the death test looks; tells whether it ended the program.
template <typename Access>
void expect_stop(Access access) {
    const auto both_streams = [&] {
        dup2(2, 1);
        access();
    };
    EXPECT_EXIT(both_streams(), testing::KilledBySignal(SIGABRT), "!!! YX_ERROR_STOP  \n");
}

TEST_F(store, indexes_outside_their_kind_stop_the_program) {
    for (const std::int32_t index : {0, -1, 9, 500000, 500001}) {
        expect_stop([&] { yx_ptrto_net_rec(index); });
        EXPECT_NE(tst_read("debug_yxdfi")
                      .find(" YX_PTRTO_NET_REC  : error : index  : " + std::to_string(index) +
                            "\n   max_net_cur : 8\n YX_ERROR_STOP  \n"),
                  std::string::npos);
    }
    expect_stop([] { yx_ptrto_chars(yx_sext.max_string_cur + 1); });
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
    expect_stop([] { yx_net_ptrto_pin_in_rec(4, 3); });
    expect_stop([] { yx_net_ptrto_pin_in_rec(4, 0); });
    expect_stop([] { yx_net_ptrto_pin_in_rec(4, yx_sext.max_pin_cur + 1); });
    expect_stop([] { yx_net_ptrto_pin_out_rec(9, 1); });
    expect_stop([] { yx_net_ptrto_net_child_rec(2, 1); });
    yx_ptrto_pin_rec(6)->next_pin_in_ind = -1;  // looked at by the last step, not by the first
    EXPECT_EQ(yx_net_ptrto_pin_in_rec(4, 1)->self, 6);
    yx_ptrto_pin_rec(5)->next_pin_in_ind = 8;
    yx_ptrto_pin_rec(6)->next_pin_in_ind = 5;
    expect_stop([] { yx_net_ptrto_pin_in_rec(4, 2); });
}

TEST_F(store, properties_are_found_by_name_in_the_table_of_their_kind) {
    const auto found_in = [](auto lookup, const auto* record, const char* name) {
        yx_prop_record_t* value = nullptr;
        bool found = true;
        lookup(record, tm_string(name), value, found);
        EXPECT_EQ(found, value != nullptr);
        return found ? static_cast<std::int32_t>(value->valuei[0]) : -99;
    };
    const yx_pin_record_t* input = yx_ptrto_pin_rec(1);
    const yx_inst_record_t* inst = yx_ptrto_inst_rec(2);
    EXPECT_EQ(found_in(kol_pin_getvalueof_prop_on, input, "RISE"), 10);
    EXPECT_EQ(found_in(kol_pin_getvalueof_prop_on, input, "rise"), 10);
    EXPECT_EQ(found_in(kol_pin_getvalueof_prop_on, input, "RIS"), -99);
    EXPECT_EQ(found_in(kol_pin_getvalueof_prop_on, input, "COUNT"), -99);  // the fourth name, three values
    EXPECT_EQ(found_in(kol_pin_getvalueof_prop_on, yx_ptrto_pin_rec(3), "Count"), -1);
    EXPECT_EQ(found_in(kol_inst_getvalueof_prop_on, inst, "model"), yx_ptrto_prop_rec(3)->valuec);
    EXPECT_EQ(found_in(kol_inst_getvalueof_prop_on, inst, "INST"), -99);
    EXPECT_EQ(found_in(kol_net_getvalueof_prop_on, yx_ptrto_net_rec(1), "net"),
              yx_ptrto_prop_rec(12)->valuec);
    EXPECT_EQ(found_in(kol_net_getvalueof_prop_on, yx_ptrto_net_rec(2), "net"), -99);
    EXPECT_EQ(found_in(kol_macro_getvalueof_prop_on, yx_ptrto_macro_rec(1), "MODEL"),
              yx_ptrto_prop_rec(1)->valuec);
    EXPECT_EQ(found_in(kol_pinm_getvalueof_prop_on, yx_ptrto_pinm_rec(2), "PIN"),
              yx_ptrto_prop_rec(4)->valuec);
    EXPECT_EQ(found_in(kol_inst_getvalueof_prop_on, static_cast<yx_inst_record_t*>(nullptr), ""), -99);
    EXPECT_EXIT(found_in(kol_pin_getvalueof_prop_on, input, ""), testing::KilledBySignal(SIGABRT), "");
}

}  // namespace
