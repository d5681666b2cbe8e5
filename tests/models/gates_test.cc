// The five gates: what they drive and when, and what their set-up refuses.
#include "models/gates.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "foundation/context.h"
#include "kernel/history.h"
#include "kernel/setup.h"
#include "support/design_build.h"
#include "support/rows.h"
#include "support/session.h"
#include "support/stimuli.h"

namespace {

bool has(const std::string& values, char value) { return values.find(value) != std::string::npos; }
char inverted(char value) { return value == '0' ? '1' : value == '1' ? '0' : value; }

// The controlling value wins, then i, then x; otherwise the value of an undisturbed gate.
char controlled(const std::string& in, char controlling, char otherwise) {
    for (const char winner : {controlling, 'i', 'x'})
        if (has(in, winner)) return winner;
    return otherwise;
}
char parity(const std::string& in) {
    if (has(in, 'i') || has(in, 'x')) return has(in, 'i') ? 'i' : 'x';
    return std::ranges::count(in, '1') % 2 == 0 ? '0' : '1';
}

TEST(gates, compute_their_function_of_the_values_of_all_inputs) {
    for (const auto& [model, value] : tst_rows<std::string, char (*)(const std::string&)>{
             {"and", [](const std::string& in) { return controlled(in, '0', '1'); }},
             {"nand", [](const std::string& in) { return inverted(controlled(in, '0', '1')); }},
             {"or", [](const std::string& in) { return controlled(in, '1', '0'); }},
             {"nor", [](const std::string& in) { return inverted(controlled(in, '1', '0')); }},
             {"xor", parity},
         }) {
        tst_build(model + " g2 y2 = a b; " + model + " g3 y3 = a b c");
        kol_ext.spike_on = false;
        const std::string with_drives[] = {"iR", "0W", "xZ", "1Z"};
        for (std::int32_t k = 0; k < 64; ++k) {
            std::string in;
            const std::int32_t time = 10 * (k + 1);
            for (const auto& [net, digit] : {std::pair{'a', k % 4}, {'b', k / 4 % 4}, {'c', k / 16}}) {
                in += with_drives[digit][0];
                const std::string at = "@" + std::to_string(time + net - 'a');
                tst_schedule(std::string(1, net) + "=" + with_drives[digit] + at);
            }
            tst_run_until(time + 5);
            for (const auto& [net, text] : {std::pair{"y2", in.substr(0, 2)}, {"y3", in}})
                EXPECT_EQ(tst_net_state(net), value(text) + std::string("S")) << model << " of " << text;
        }
        EXPECT_EQ(tst_take_text(), "");
    }
}

TEST(gates, delay_by_output_input_and_net_in_the_timing_range_of_the_instance) {
    for (const auto& [global_range, timing_index, changes] : tst_rows<std::int16_t, std::string, tst_cstr>{
             {1, "0", "277:iS 1111:1S 2444:0S 4277:xS"},
             {2, "0", "388:iS 1222:1S 2555:0S 4388:xS"},
             {3, "0", "499:iS 1333:1S 2666:0S 4499:xS"},
             {1, "2", "499:iS 1333:1S 2666:0S 4499:xS"},
         }) {
        tst_build(
            "net y rise 1:2:3 fall 4:5:6; and g y = a b rise 10:20:30 fall 40:50:60 irise 100:200:300 "
            "ifall 400:500:600 timing " +
            timing_index);
        kol_ext.spike_on = false;
        kol_ext.sim_range_type = global_range;
        kol_ext.timing_ar[1] = 3;
        kol_observe_net(&tst_net("y"));
        tst_schedule("a=1@0 b=1@1000 a=0@2000 b=x@3000 a=1@4000");
        tst_run_until(9000);
        EXPECT_EQ(tst_changes_of("y"), changes) << global_range << ' ' << timing_index;
    }
    tst_build("and g y = a rise 1:2:3 fall 1:2:3");
    for (const auto& [range, stimuli, y] : tst_rows<std::int16_t, std::string, std::int32_t>{
             {1, "a=1@100", 101}, {3, "a=0@200", 203}, {2, "a=1@300", 302}}) {
        kol_ext.sim_range_type = range;
        tst_schedule(stimuli);
        tst_run_until(y + 50);
        EXPECT_EQ(tst_net("y").UU.U1.cur_state.time, y);
        if (range == 3)
            for (std::int32_t i = 1; i <= yx_sext.max_prop_cur; ++i)
                if (yx_ptrto_prop_rec(i)->prop_type == YX_PTIME) ++yx_ptrto_prop_rec(i)->valuet[1];
    }
    kol_refresh_timing();
    tst_schedule("a=0@400");
    tst_run_until(500);
    EXPECT_EQ(tst_net("y").UU.U1.cur_state.time, 404);  // input and output one step more each
    tst_expect_run("or g y = a b irise 3 ifall 3; pin /g/I2 rise 7 fall 9",
                   "a=1@10 a=0@20 b=0@30 b=1@50 b=0@70", "y 13:1S 23:iS 39:0S 57:1S 79:0S");
    // The net that the pin is on counts, not the root of its tree.
    tst_expect_run("net t rise 100 fall 100; sub s of t rise 3 fall 3; and g s = a rise 1 fall 1", "a=1@10",
                   "t 14:1S");
}

TEST(gates, drive_each_value_with_its_letter) {
    for (const auto& [option, changes] : tst_rows<std::string, std::string>{
             {"", "1:0S 2:xS 3:1S 4:iS"},
             {"drive SSSZ", "1:0S 2:xS 3:1Z 4:iS"},
             {"drive Uzrw", "1:0Z 2:xR 3:1W 4:iU"},
             {"drive wWWWUU", "1:0W 2:xW 3:1W 4:iW"},
             {"drive Q?1-", "1:0S 2:xS 3:1S 4:iS"},
             {"drive RZ", "1:0Z 2:xS 3:1S 4:iR"},
         })
        tst_expect_run("and g y = a " + option, "a=0@1 a=x@2 a=1@3 a=i@4", "y " + changes);
}

TEST(gates, read_and_drive_the_bits_of_their_pins) {
    for (const auto& [design, stimuli, changes] : tst_rows<std::string, tst_cstr, tst_cstr>{
             // The delays of the member nets do not count for a pin that is on the bus.
             {"bus d 4 rise 50 fall 50; and g d = a rise 2 fall 3", "a=1@10 a=0@20",
              "d[0] 12:1S 23:0S d[1] 12:1S 23:0S d[3] 12:1S 23:0S"},
             {"bus d 4 rise 50 fall 50; and g d.1-2 = a; and h d.3 = a rise 2 fall 2", "a=1@10",
              "d[0] d[1] 10:1S d[2] 10:1S d[3] 12:1S"},
             {"bus d 4 rise 50 fall 50; and g d[1] = a rise 2 fall 3", "a=1@10", "d[1] 62:1S"},
             {"bus d 4; and g y = d; and h z = d.1-2; and k w = d.3",
              "d[0]=1@10 d[1]=1@20 d[2]=1@30 d[3]=1@40 d[1]=0@50",
              "y 10:iS 40:1S 50:0S z 20:iS 30:1S 50:0S w 40:1S"},
             {"net t; sub s of t; sub r of s; nand g y = r b", "b=1@1 t=1@10 t=0@20", "y 1:iS 10:0S 20:1S"},
             {"xor g y = a a; and h y1 y2 = a drive ZZZZ", "a=1@10", "y 10:0S y1 10:1Z y2 10:1Z"},
         })
        tst_expect_run(design, stimuli, changes);
}

TEST(gates, refuse_pins_without_the_properties_they_need) {
    for (const char* model : {"and", "nand", "or", "nor", "xor"})
        for (const auto& [change, fault, pin] : tst_rows<tst_cstr, std::string, std::string>{
                 {"pin /g/I1 io 3", "INVALID  property \"PINTYPE\" on", "/g/I1"},
                 {"pin /g/I1 without RISE", "NO property \"RISE\" on", "/g/I1"},
                 {"pin /g/O without RISE", "NO property \"RISE\" on", "/g/O"},
                 {"pin /g/I1 type RISE string", "INVALID  property \"RISE\" type on", "/g/I1"},
                 {"pin /g/I1 without FALL; pin /g/I2 without RISE", "NO property \"FALL\" on", "/g/I1"},
                 {"pin /g/I1 type FALL integer", "INVALID  property \"FALL\" type on", "/g/I1"},
                 {"pin /g/O drive SSSS type DRIVE integer", "INVALID  property \"DRIVE\" type on", "/g/O"},
             }) {
            tst_build(std::string(model) + " g y = a b irise 4 ifall 5; " + change);
            EXPECT_EQ(tst_take_text(), "# !!! Error : " + fault + " pin : \n !! \"" + pin + "\"\n") << change;
            EXPECT_EQ(tm_vext.num_errors, 1) << change;
            EXPECT_EQ(tst_pin("/g/I2").rise[1], 0) << change;  // set-up ended before
        }
}

}  // namespace
