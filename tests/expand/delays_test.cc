// The delays of cells: the rule, timing files, delay files, and what is refused in them.
#include <sstream>

#include "expansion.h"
#include "support/design_build.h"

namespace {

class delays : public expansion {};

// inv has 1 load, nand 6 (five pins and a port), the bits of word 1 and 0; mux reads 3 inputs.
constexpr std::string_view netlist =
    "module leaf; in i 2; out o 3; cell $_NOT_ g A=2 Y=3\n"
    "module top top; in a 2; in b 3; out y 5; out m 9\n"
    "cell $_NOT_ inv A=2 Y=4; cell $_NAND_ nand A=4 B=3 Y=5; cell $_BUF_ l1 A=5 Y=6\n"
    "cell $and word A=5,5 B=5,3 Y=7,8; cell $_MUX_ mux A=5 B=7 S=3 Y=9; cell leaf deep i=5 o=10";

TEST_F(delays, follow_the_default_rule_a_timing_file_and_a_delay_file) {
    constexpr const char* timing = R"({
        "factors": {"minimum": 0.5, "maximum": 2},
        "default": {"rise": {"base": 10}, "fall": {"base": 0, "per_input": 0.25, "per_load": 0}},
        "cells": {"$_NAND_": {"rise": {"base": 1, "per_input": 2, "per_load": 3.5, "load_cap": 5}},
                  "$_BUF_": {"rise": {"base": 0.4, "per_input": 0, "per_load": 0}}}})";
    const std::tuple<const char*, const char*, const char*> rows[] = {
        // Rise 2 + inputs + min(loads, 4), fall one less; 0.7 and 1.3 of it rounded.  The last gate of a
        // multiplexer has what two gates of one step before it leave of 2 + 3 + 1.
        {"--timing", "{}",
         "inv 3:4:5/2:3:4 nand 6:8:10/5:7:9 l1 2:3:4/1:2:3 word[0] 4:5:7/3:4:5 word[1] 3:4:5/2:3:4 "
         "deep/g 2:3:4/1:2:3 mux 2:4:6/2:3:5 mux.g1 1:1:1/1:1:1"},
        {"--timing", timing, "inv 6:12:24/1:1:2 nand 12:23:46/1:1:2 l1 1:1:2/1:1:2 deep/g 6:11:22/1:1:2"},
        {"--delays", "inv\t10\t7\r\n\n/nand\t1:2:3\t5:5:9\nword\t20\t30\ndeep/g\t100000000\t1\nmux\t1\t9",
         "inv 7:10:13/5:7:9 nand 1:2:3/5:5:9 l1 2:3:4/1:2:3 word[0] 14:20:26/21:30:39 "
         "word[1] 14:20:26/21:30:39 mux 1:1:1/4:7:10 deep/g 70000000:100000000:100000000/1:1:1"}};
    for (const auto& [option, given, expected] : rows) {
        start(netlist, option, file("given", given));
        std::istringstream words(expected);
        for (std::string instance, text; words >> instance >> text;) {
            const yx_pin_record_t& pin = tst_pin(instance + "/Y");
            std::string found;
            for (const std::int32_t* edge : {pin.rise, pin.fall})
                for (int k = 0; k < 3; ++k)
                    found += (found.empty() ? "" : k == 0 ? "/" : ":") + std::to_string(edge[k]);
            EXPECT_EQ(found, text) << instance;
        }
    }
    EXPECT_EQ(yx_sext.time_step, 1.0F);
    start(netlist, "--time-step", "0.25");
    EXPECT_EQ(yx_sext.time_step, 0.25F);
}

TEST_F(delays, that_do_not_belong_there_are_refused_with_their_place) {
    const std::string bad = ": bad timing: ", key = bad + "unknown key ";
    const std::string whole = bad + "expected a whole number of steps from 0 on, or three";
    const auto expect = [&](const char* option, const std::string& text, const std::string& message) {
        EXPECT_EQ(expand(netlist, option, file("given", text)), message) << text;
    };
    expect("--delays", "\n\ninv 2 2", "given: line 3: bad delay: expected cell, rise and fall between tabs");
    for (const char* const text : {"inv\t1", "inv\t1\t1\t1", "\t1\t1"})
        expect("--delays", text, "given: line 1: bad delay: expected cell, rise and fall between tabs");
    for (const char* const steps : {"0", "-1", "1.5", "100000001", "1:2", "1:2:3:4", "3:2:4"})
        expect("--delays", "inv\t1\t" + std::string(steps),
               "given: line 1: bad delay: a delay is a whole number of steps from 1 on, or "
               "minimum:typical:maximum");
    const std::tuple<const char*, const char*, std::string> rows[] = {
        {"--delays", "inv\t1\t1\n/inv\t2\t2", "given: line 2: bad delay: cell \"inv\" again"},
        {"--delays", "inv\t1\t1\nno\t1\t1\ng\t1\t1", "--delays: line 2: bad delay: no cell \"no\""},
        {"--timing", "{\"factors\": ", "given: malformed JSON"},
        {"--timing", "[]", "given" + bad + "expected an object"},
        {"--timing", R"({"cell": {}})", "given" + key + "\"cell\""},
        {"--timing", R"({"factors": {"minimum": -1}})",
         "given: factors/minimum" + bad + "expected a number from 0 on"},
        {"--timing", R"({"factors": {"minimum": 1.1}})",
         "given: factors" + bad + "minimum is at most 1 and maximum at least 1"},
        {"--timing", R"({"default": {"up": {}}})", "given: default" + key + "\"up\""},
        {"--timing", R"({"default": {"rise": 3}})", "given: default/rise" + bad + "expected an object"},
        {"--timing", R"({"cells": {"$_NOT_": {"fall": {"base": "2"}}}})",
         "given: cells/$_NOT_/fall/base" + bad + "expected a number from 0 on"},
        {"--timing", R"({"cells": {"$_AND_": {"hold": 1}}})", "given: cells/$_AND_" + key + "\"hold\""},
        {"--timing", R"({"default": {"setup": [1,2]}})", "given: default/setup" + whole},
        {"--timing", R"({"default": {"hold": -1}})", "given: default/hold" + whole},
        {"--timing", R"({"cells": {"$_NOT": {}}})", "given: cells" + bad + "unknown cell type \"$_NOT\""},
    };
    for (const auto& [option, text, message] : rows) expect(option, text, message);
}

}  // namespace
