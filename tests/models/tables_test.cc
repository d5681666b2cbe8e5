// Tri-state buffer and look-up table: what each choice of input values drives, and when.
#include <gtest/gtest.h>

#include "foundation/context.h"
#include "support/design_build.h"
#include "support/rows.h"
#include "support/session.h"
#include "support/stimuli.h"

namespace {

TEST(tri_state_buffer, drives_while_enabled_and_never_back) {
    const std::string values = "i0x1";
    for (const auto& [pin, on] : tst_rows<std::string, char>{{"EP", '1'}, {"EN", '0'}}) {
        tst_build("tri t Y:y YB:z = A:a " + pin + ":e rise 3 fall 5 irise 1 ifall 2; pin /t/YB drive RWZS");
        kol_ext.spike_on = false;
        for (std::int32_t k = 0, time = 20; k < 256; ++k, time += 20) {
            const char a = values[static_cast<std::size_t>(k * 7 % 4)],
                       e = values[static_cast<std::size_t>(k / 3 % 4)];
            const auto at = [&](int offset) { return "@" + std::to_string(time + offset) + " "; };
            tst_schedule(std::string("a=") + a + "R" + at(0) + "e=" + e + "S" + at(10));
            tst_run_until(time + 19);
            const bool is_known = e == '0' || e == '1';
            const char y = is_known ? a : 'i', z = y == '0' ? '1' : y == '1' ? '0' : y;
            const char strength = std::string("RWZS").at(values.find(z));
            EXPECT_EQ(tst_net_state("y"), is_known && e != on ? "xZ" : std::string() + y + 'S') << a << e;
            EXPECT_EQ(tst_net_state("z"), is_known && e != on ? "xZ" : std::string() + z + strength)
                << a << e;
            EXPECT_EQ(tst_net_state("a"), (std::string{a, 'R'}));
        }
    }
    const std::string two = "tri t Y:y = A:a EP:e rise 3 fall 5 irise 1 ifall 2; tri u Y:y = A:b EP:f";
    tst_expect_run(two, "e=0@1 f=0@1 a=1@2 b=0@3 e=1@10 e=0@20 f=1@30 a=0@40",
                   "y 1:xZ 6:iZ 14:1S 25:iZ 30:0S a 2:1S 40:0S");
    tst_build("tri t Y:y = B:a");
    EXPECT_NE(tst_take_text().find("Invalid Pin Type Output  on pin : \n !! \"/t/B\""), std::string::npos);
}

// Input bits of a place, the completions of those that are unknown, and what the table says of them all.
char looked_up(std::uint64_t table, const std::string& inputs, std::size_t k = 0, unsigned place = 0) {
    if (k == inputs.size()) return (table >> place & 1U) != 0 ? '1' : '0';
    const char low = inputs[k] == '1' ? 0 : looked_up(table, inputs, k + 1, place);
    const char high = inputs[k] == '0' ? 0 : looked_up(table, inputs, k + 1, place | 1U << k);
    return low == 0 ? high : high == 0 || high == low ? low : 'i';
}

TEST(look_up_table, gives_what_all_completions_of_its_inputs_agree_on) {
    for (const auto& [digits, count] : tst_rows<std::string, std::size_t>{{"1", 1},
                                                                          {"8", 2},
                                                                          {"6", 2},
                                                                          {"ca", 3},
                                                                          {"E8", 3},
                                                                          {"6996", 4},
                                                                          {"cafef00d", 5},
                                                                          {"123456789abcdef0", 6}}) {
        const std::string names = "abcdef";
        std::string design = "lut l y =";
        for (std::size_t k = 0; k < count; ++k) design += std::string(" ") + names[k];
        tst_build(design + "; inst l table " + digits);
        ASSERT_EQ(tst_take_text(), "");
        kol_ext.spike_on = false;
        std::string inputs(count, 'i');
        unsigned pattern = 12345;
        for (std::int32_t time = 10; time < 10 + 600; ++time) {
            pattern = pattern * 1103515245U + 12345U;
            const std::size_t k = pattern / 65536 % count;
            inputs[k] = "01i01x"[pattern / 1048576 % 6];
            tst_schedule(std::string(1, names[k]) + "=" + inputs[k] + "W@" + std::to_string(time));
            tst_run_until(time);
            EXPECT_EQ(tst_net_state("y")[0], looked_up(std::stoull(digits, nullptr, 16), inputs))
                << digits << ' ' << inputs;
        }
    }
    tst_expect_run("lut l y = a b rise 3 fall 2 irise 10 ifall 20; inst l table 6; pin /l/I2 rise 30 fall 40",
                   "a=0@1 b=0@1 b=1@100 a=1@200 b=x@300 b=0@400 a=i@500",
                   "y 18:iS 43:0S 133:1S 222:0S 337:iS 433:1S 517:iS");
}

TEST(look_up_table, set_up_refuses_what_is_no_table) {
    for (const auto& [design, fault, path] : tst_rows<tst_cstr, std::string, std::string>{
             {"lut l y = a", "NO property \"TABLE\" on instance", "/l"},
             {"lut l y = a; inst l table 1 type TABLE integer",
              "INVALID  property \"TABLE\" type on instance", "/l"},
             {"lut l y = a; inst l table 1g", "INVALID  property \"TABLE\" Value on instance", "/l"},
             {"lut l y = a; inst l table 12345678123456781", "INVALID  property \"TABLE\" Value on instance",
              "/l"},
             {"lut l y = a b c d e f g; inst l table 0", "LUT has more than 6 inputs, on pin", "/l/I7"},
             {"bus b 4; lut l y = b; inst l table 0", "Pin Bus Not Allowed on pin", "/l/I1"},
         }) {
        tst_build(design);
        EXPECT_EQ(tst_take_text(), "# !!! Error : " + fault + " : \n !! \"" + path + "\"\n") << design;
        EXPECT_EQ(tm_vext.num_errors, 1) << design;
    }
}

}  // namespace
