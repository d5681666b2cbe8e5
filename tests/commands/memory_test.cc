// STATUS MEMORY and LOAD MEMORY.
#include "design_session.h"

namespace {

using memories = design_session;

TEST_F(memories, are_shown_and_replaced_word_by_word) {
    build("mem m R0D0:p R0D1:q R0D2:s R0D3:t R0D4:u = R0A0:a R0A1:b; inst m words 4:6; and g y = a");
    const std::string good = file("words", "1f 0 // two\n@6 0x"), bad = file("bad", "1f\n2f 3f");
    expect_each({
        {"status memory m 5", {" STAtus MEMory m 5 ", "# 5 : xx"}},
        {"load memory /m " + good, {" LOAd MEMory /m " + good + " "}},
        {"STA MEM /m", {" STAtus MEMory /m ", "# 4 : 1f", "# 5 : 00", "# 6 : 0x"}},
        {"sta mem m 5 6", {" STAtus MEMory m 5 6 ", "# 5 : 00", "# 6 : 0x"}},
        {"sta mem m 6 5",
         {"# STAtus MEMory m 6 5 ", "# !! Error : Invalid address ( decimal, of the memory ) "}},
        {"sta mem m 7", {"# STAtus MEMory m 7 ", "# !! Error : Invalid address ( decimal, of the memory ) "}},
        {"sta mem g", {"# STAtus MEMory g ", "# !! Error : MEMORY not found "}},
        {"loa mem n " + good, {"# LOAd MEMory n " + good + " ", "# !! Error : MEMORY not found "}},
        {"loa mem m " + bad,
         {"# LOAd MEMory m " + bad + " ",
          "# !! Error : Invalid memory file, line 2: wider than the memory: 2f "}},
        {"loa mem m none", {"# LOAd MEMory m none ", "# !! Error : Invalid memory file, cannot be read "}},
        {"sta mem m 4", {" STAtus MEMory m 4 ", "# 4 : 1f"}},
    });
}

}  // namespace
