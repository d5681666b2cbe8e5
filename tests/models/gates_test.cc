// The five gates: what they drive and when, and what their set-up refuses.
#include "models/gates.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "foundation/context.h"
#include "kernel/history.h"
#include "support/design_build.h"
#include "support/session.h"
#include "support/stimuli.h"

namespace {

using lines_t = std::vector<std::string>;
using changes_t = std::vector<std::pair<const char*, const char*>>;

void build(const std::string& design) {
    tst_build(design);
    EXPECT_EQ(tst_take_lines(), lines_t{}) << design;
    kol_ext.spike_on = false;
}

void expect_changes(const std::string& design, const char* stimuli, const changes_t& nets) {
    SCOPED_TRACE(design);
    build(design);
    for (const auto& [net, changes] : nets) kol_observe_net(&tst_net(net));
    tst_schedule(stimuli);
    tst_run_until(100000);
    for (const auto& [net, changes] : nets) EXPECT_EQ(tst_changes_of(net), changes) << net;
    EXPECT_EQ(tst_take_lines(), lines_t{});
}

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
    struct row {
        const char* model;
        char (*value)(const std::string&);
    };
    for (const row& r : {
             row{"and", [](const std::string& in) { return controlled(in, '0', '1'); }},
             row{"nand", [](const std::string& in) { return inverted(controlled(in, '0', '1')); }},
             row{"or", [](const std::string& in) { return controlled(in, '1', '0'); }},
             row{"nor", [](const std::string& in) { return inverted(controlled(in, '1', '0')); }},
             row{"xor", parity},
         }) {
        build(std::string(r.model) + " g2 y2 = a b; " + r.model + " g3 y3 = a b c");
        const std::string with_drives[] = {"iR", "0W", "xZ", "1Z"};
        for (std::int32_t k = 0; k < 64; ++k) {
            std::string in;
            const std::int32_t time = 10 * (k + 1);
            for (const auto& [net, digit] : {std::pair{'a', k % 4}, {'b', k / 4 % 4}, {'c', k / 16}}) {
                in += with_drives[digit][0];
                tst_schedule(std::string(1, net) + "=" + with_drives[digit] + "@" +
                             std::to_string(time + net - 'a'));
            }
            tst_run_until(time + 5);
            for (const auto& [net, text] : {std::pair{"y2", in.substr(0, 2)}, {"y3", in}})
                EXPECT_EQ(tst_state_text(tst_net(net).UU.U1.cur_state.state),
                          r.value(text) + std::string("S"))
                    << r.model << " of " << text;
        }
        EXPECT_EQ(tst_take_lines(), lines_t{});
    }
}

TEST(gates, delay_by_output_input_and_net_in_the_timing_range_of_the_instance) {
    const std::string design =
        "net y rise 1:2:3 fall 4:5:6;"
        "and g y = a b rise 10:20:30 fall 40:50:60 irise 100:200:300 ifall 400:500:600 timing ";
    struct row {
        std::int16_t global_range;
        const char* timing_index;
        const char* changes;
    };
    for (const row& r : {
             row{1, "0", "277:iS 1111:1S 2444:0S 4277:xS"},
             row{2, "0", "388:iS 1222:1S 2555:0S 4388:xS"},
             row{3, "0", "499:iS 1333:1S 2666:0S 4499:xS"},
             row{1, "2", "499:iS 1333:1S 2666:0S 4499:xS"},
         }) {
        build(design + r.timing_index);
        kol_ext.sim_range_type = r.global_range;
        kol_ext.timing_ar[1] = 3;
        kol_observe_net(&tst_net("y"));
        tst_schedule("a=1@0 b=1@1000 a=0@2000 b=x@3000 a=1@4000");
        tst_run_until(9000);
        EXPECT_EQ(tst_changes_of("y"), r.changes) << r.global_range << ' ' << r.timing_index;
    }
    expect_changes("or g y = a b irise 3 ifall 3; pin /g/I2 rise 7 fall 9",
                   "a=1@10 a=0@20 b=0@30 b=1@50 b=0@70", {{"y", "13:1S 23:iS 39:0S 57:1S 79:0S"}});
    // The net that the pin is on counts, not the root of its tree.
    expect_changes("net t rise 100 fall 100; sub s of t rise 3 fall 3; and g s = a rise 1 fall 1", "a=1@10",
                   {{"t", "14:1S"}});
}

TEST(gates, drive_each_value_with_its_letter) {
    for (const auto& [option, changes] : std::initializer_list<std::pair<const char*, const char*>>{
             {"", "1:0S 2:xS 3:1S 4:iS"},
             {"drive SSSZ", "1:0S 2:xS 3:1Z 4:iS"},
             {"drive Uzrw", "1:0Z 2:xR 3:1W 4:iU"},
             {"drive wWWWUU", "1:0W 2:xW 3:1W 4:iW"},
             {"drive Q?1-", "1:0S 2:xS 3:1S 4:iS"},
             {"drive RZ", "1:0Z 2:xS 3:1S 4:iR"},
         })
        expect_changes(std::string("and g y = a ") + option, "a=0@1 a=x@2 a=1@3 a=i@4", {{"y", changes}});
}

TEST(gates, read_and_drive_the_bits_of_their_pins) {
    const std::string bus = "bus d 4 rise 50 fall 50; ";
    // The delays of the member nets do not count for a pin that is on the bus.
    expect_changes(bus + "and g d = a rise 2 fall 3", "a=1@10 a=0@20",
                   {{"d[0]", "12:1S 23:0S"}, {"d[1]", "12:1S 23:0S"}, {"d[3]", "12:1S 23:0S"}});
    expect_changes(bus + "and g d.1-2 = a; and h d.3 = a rise 2 fall 2", "a=1@10",
                   {{"d[0]", ""}, {"d[1]", "10:1S"}, {"d[2]", "10:1S"}, {"d[3]", "12:1S"}});
    expect_changes(bus + "and g d[1] = a rise 2 fall 3", "a=1@10", {{"d[1]", "62:1S"}});
    expect_changes(bus + "and g y = d; and h z = d.1-2; and k w = d.3",
                   "d[0]=1@10 d[1]=1@20 d[2]=1@30 d[3]=1@40 d[1]=0@50",
                   {{"y", "10:iS 40:1S 50:0S"}, {"z", "20:iS 30:1S 50:0S"}, {"w", "40:1S"}});
    expect_changes("net t; sub s of t; sub r of s; nand g y = r b", "b=1@1 t=1@10 t=0@20",
                   {{"y", "1:iS 10:0S 20:1S"}});
    expect_changes("xor g y = a a; and h y1 y2 = a drive ZZZZ", "a=1@10",
                   {{"y", "10:0S"}, {"y1", "10:1Z"}, {"y2", "10:1Z"}});
}

TEST(gates, refuse_pins_without_the_properties_they_need) {
    struct row {
        const char* change;
        const char* line;
        const char* pin;
    };
    for (const char* model : {"and", "nand", "or", "nor", "xor"})
        for (const row& r : {
                 row{"pin /g/I1 io 3", "# !!! Error : INVALID  property \"PINTYPE\" on pin : ", "/g/I1"},
                 row{"pin /g/I1 without RISE", "# !!! Error : NO property \"RISE\" on pin : ", "/g/I1"},
                 row{"pin /g/O without RISE", "# !!! Error : NO property \"RISE\" on pin : ", "/g/O"},
                 row{"pin /g/I1 type RISE string",
                     "# !!! Error : INVALID  property \"RISE\" type on pin : ", "/g/I1"},
                 row{"pin /g/I1 without FALL; pin /g/I2 without RISE",
                     "# !!! Error : NO property \"FALL\" on pin : ", "/g/I1"},
                 row{"pin /g/I1 type FALL integer",
                     "# !!! Error : INVALID  property \"FALL\" type on pin : ", "/g/I1"},
                 row{"pin /g/O drive SSSS type DRIVE integer",
                     "# !!! Error : INVALID  property \"DRIVE\" type on pin : ", "/g/O"},
             }) {
            tst_build(std::string(model) + " g y = a b irise 4 ifall 5; " + r.change);
            EXPECT_EQ(tst_take_lines(), (lines_t{r.line, std::string(" !! \"") + r.pin + "\""})) << r.change;
            EXPECT_EQ(tm_vext.num_errors, 1) << r.change;
            EXPECT_EQ(tst_pin("/g/I2").rise[1], 0) << r.change;  // set-up ended before
        }
}

}  // namespace
