// The memory: what its ports read and write with unknown values, its set-up, and its contents as text.
#include "models/mem.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>

#include "foundation/context.h"
#include "kernel/setup.h"
#include "models/mem_contents.h"
#include "support/design_build.h"
#include "support/rows.h"
#include "support/session.h"
#include "support/stimuli.h"

namespace {

// Two address and two data bits, one write port, one read port at any time and one clocked.
const std::string memory =
    "mem m R0D0:p R0D1:q R1D0:s R1D1:t = R0A0:a R0A1:b W0A0:c W0A1:d W0D0:e W0D1:f W0E0:g W0E1:h W0CP:k "
    "R1A0:a R1A1:b R1E:r R1CP:k R1S:u R1R:v rise 3 fall 2; inst m words 0:3; ";

yx_inst_record_t& instance() { return *yx_ptrto_inst_rec(1); }

std::string contents() {
    std::string text;
    for (std::int64_t word = 0; word < 4; ++word)
        for (std::size_t bit = 2; bit-- > 0;) text += "i0x1"[kol_contents_of(instance())->word(word)[bit]];
    return text;
}

void load(const std::string& words) {
    std::string why;
    const std::string file = testing::TempDir() + "kolv_words_" + std::to_string(getpid());
    std::ofstream(file) << words;
    EXPECT_TRUE(kol_load_memory(instance(), file, why)) << why;
}

TEST(memory, keeps_known_what_unknown_inputs_leave_known) {
    // Inputs c d e f g h, by letter; what the words are after an edge, from 00 01 10 11.
    for (const auto& [inputs, words] : tst_rows<std::string, std::string>{{"101111", "00111011"},
                                                                          {"101110", "00011011"},
                                                                          {"010011", "00010011"},
                                                                          {"x01111", "xxxx1011"},
                                                                          {"0x1111", "xx01xx11"},
                                                                          {"xx1111", "xxxxxxxx"},
                                                                          {"xx1100", "00011011"},
                                                                          {"xx1110", "0x0x1x1x"},
                                                                          {"00x011", "0x011011"},
                                                                          {"000010", "00011011"},
                                                                          {"0000x0", "00011011"},
                                                                          {"0010x0", "0x011011"},
                                                                          {"1111xx", "00011011"},
                                                                          {"1101xx", "0001101x"},
                                                                          {"110011", "00011000"},
                                                                          {"i0ii11", "xxxx1011"}}) {
        tst_build(memory);
        EXPECT_EQ(tst_take_text(), "");
        kol_ext.spike_on = false;
        load("0 1 2 3");
        for (std::size_t i = 0; i < 6; ++i)
            tst_schedule(std::string(1, "cdefgh"[i]) + "=" + inputs[i] + "@1");
        tst_schedule("r=0@1 k=0@2 k=1@10 k=0@20");
        tst_run_until(50);
        EXPECT_EQ(contents(), words) << inputs;
        kol_init_net_state();
        EXPECT_EQ(contents(), "00011011");
    }
}

TEST(memory, reads_at_any_time_or_at_the_edge) {
    const auto expect = [](const std::string& options, const char* stimuli, const char* changes) {
        tst_build(memory + options);
        kol_ext.spike_on = false;
        load("3 1 2 0");
        const std::string nets[] = {"p", "q", "s", "t"};
        tst_schedule("c=0@1 d=0@1 e=0@1 f=0@1 g=0@1 h=0@1 r=1@1 u=0@1 v=0@1 k=0@1");
        tst_schedule(stimuli);
        tst_run_until(1000);
        std::string states;
        for (const std::string& net : nets) states += tst_net_state(net)[0];
        EXPECT_EQ(states, changes) << options << stimuli;
        EXPECT_EQ(tst_take_text(), "");
    };
    expect("", "a=0@1 b=0@1", "11ii");
    expect("", "a=0@1 b=0@1 k=1@10 a=1@20", "1011");
    expect("", "a=x@1 b=0@1 k=1@10", "xxxx");
    expect("", "a=0@1 b=0@1 r=0@2 k=1@10", "11ii");
    expect("", "a=0@1 b=0@1 k=1@10 k=0@20 a=1@30 r=x@31 k=1@40", "101x");  // both ways agree on one bit
    expect("", "a=0@1 b=0@1 g=1@2 h=1@2 k=1@10", "0011");                  // the old word at the edge
    expect("pin /m/R1CP values t", "a=0@1 b=0@1 g=1@2 h=1@2 k=1@10", "0000");
    expect("pin /m/R1CP values x", "a=0@1 b=0@1 g=1@2 k=1@10", "01x1");
    expect("pin /m/R1CP values t", "a=1@1 b=0@1 g=1@2 h=1@2 k=1@10", "1010");
    expect("pin /m/R1D0 values x01; pin /m/R1D1 values x10", "a=0@1 b=0@1 k=1@10 v=1@20 v=0@30", "1101");
    expect("pin /m/R1D0 values x01; pin /m/R1D1 values x10", "a=0@1 b=0@1 u=1@2 k=1@10", "1110");
    expect("pin /m/R1D0 values x01; pin /m/R1D1 values x10", "a=1@1 b=0@1 u=1@2 r=0@3 k=1@10", "1010");
    expect("pin /m/R1D0 values x01; pin /m/R1D1 values x10; pin /m/R1S values c",
           "a=1@1 b=0@1 u=1@2 r=0@3 k=1@10", "10ii");
    expect("pin /m/R1D0 values x01; pin /m/R1D1 values x10", "a=0@1 b=0@1 v=1@5 k=1@10 v=x@20", "1101");
    tst_expect_run(memory + "pin /m/R1A0 setup 5; pin /m/R0A0 rise 7", "b=0@1 r=1@1 k=0@1 a=1@8 k=1@10", "",
                   "# !! Setup Time Violation on pin:\"/m/R1CP\"\n#    From pin:\"/m/R1A0\"\n"
                   "#  time:8.000-->10.000<->:2.000(<5.000)\n");
}

TEST(memory, set_up_refuses_pins_and_words_that_do_not_fit) {
    for (const auto& [design, fault, path] : tst_rows<std::string, std::string, std::string>{
             {"mem m R0D0:p = R0A0:a; inst m words 3:0", "INVALID  property \"WORDS\" Value on instance",
              "/m"},
             {"mem m R0D0:p = R0A0:a; inst m words 0:99999999999",
              "INVALID  property \"WORDS\" Value on instance", "/m"},
             {"mem m R0D0:p = R0A0:a", "NO property \"WORDS\" on instance", "/m"},
             {"mem m R0D1:p = R0A0:a; inst m words 0:1", "Memory Pins are missing on instance", "/m"},
             {"mem m R0D0:p = R0A1:a; inst m words 0:1", "Memory Pins are missing on instance", "/m"},
             {"mem m R0D0:p = R0A0:a W0D1:b; inst m words 0:1", "Memory Pins are missing on instance", "/m"},
             {"mem m R0D0:p = R0C:a; inst m words 0:1", "Invalid Memory Pin Name on pin", "/m/R0C"},
             {"mem m R0D0:p = W0S:a; inst m words 0:1", "Invalid Memory Pin Name on pin", "/m/W0S"},
             {"mem m W0D0:p = R0A0:a; inst m words 0:1", "INVALID  property \"PINTYPE\" on pin",
              "/m/W0D0"}}) {
        tst_build(design);
        EXPECT_EQ(tst_take_text(), "# !!! Error : " + fault + " : \n !! \"" + path + "\"\n") << design;
        EXPECT_EQ(tm_vext.num_errors, 1) << design;
    }
}

TEST(memory, words_are_read_as_they_are_written) {
    for (const auto& [text, words] :
         tst_rows<std::string, std::string>{{"0f3 1xx // 2\n @7 7ff", "0f3 1xx 7ff"},
                                            {"@6 A_5", "xxx 0a5 xxx"},
                                            {"", "xxx xxx xxx"},
                                            {"800", "line 1: wider than the memory: 800"},
                                            {"1\n@4 2", "line 2: no such address: 4"},
                                            {"\n\n 1 g", "line 3: no hexadecimal word: g"},
                                            {"@x", "line 1: no address: @x"},
                                            {"1 2 3 4", "line 1: no such address: 8"}}) {
        kol_contents_t contents{5, 3, 11, {}};
        contents.clear_to_unknown();
        std::string why, seen;
        if (!kol_read_words(text, contents, why)) {
            EXPECT_EQ(why, words);
            continue;
        }
        for (std::int64_t word = 5; word < 8; ++word)
            seen += (word > 5 ? " " : "") + kol_word_text(contents.word(word));
        EXPECT_EQ(seen, words) << text;
    }
    const auto parts = kol_split_memories("1\n// memory /a\n2 // x\n3\n// memory /b/c\r\n4\n");
    EXPECT_EQ(parts.size(), 2U);
    EXPECT_EQ(parts.at("/a"), "2 // x\n3\n");
    EXPECT_EQ(parts.at("/b/c"), "4\n");
}

}  // namespace
