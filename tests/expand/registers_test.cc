// Flip-flops, latches and tri-state buffers of a netlist, expanded and simulated.
#include "expansion.h"
#include "kernel/history.h"
#include "support/design_build.h"
#include "support/session.h"
#include "support/stimuli.h"

namespace {

class registers : public expansion {
protected:
    void run(const std::string& cells, const std::string& stimuli, const std::string& timing = "{}") {
        start("cell " + cells, "--timing", file("timing", timing));
        if (found("q") == "/q") kol_observe_net(&tst_net("q"));
        tst_schedule(stimuli);
        tst_run_until(1000);
    }
    static std::string value_of_q(std::size_t width) {
        std::string text;
        while (width-- > 0) text += value("q[" + std::to_string(width) + "]");
        return text;
    }
};

// Q rises after 4 steps and falls after 3; each gate in front of an input adds one.
TEST_F(registers, take_set_reset_enable_and_pass_as_their_type_says) {
    const char* const synchronous =
        "d=0@1 e=0@1 r=1@1 c=0@5 c=1@20 r=0@25 c=0@30 c=1@40 e=1@45 c=0@50 c=1@60";
    const std::tuple<const char*, const char*, const char*> cases[] = {
        // set is still active when reset ends
        {"$_DFFSR_NPN_ u D=d C=c S=s R=r Q=q",
         "d=0@1 s=0@1 r=1@1 c=1@2 c=0@10 s=1@20 r=0@30 r=1@40 s=0@50 c=1@55 c=0@60",
         "13:0S 25:1S 33:0S 45:1S 63:0S"},
        {"$_SDFFE_PP1P_ u D=d C=c R=r E=e Q=q", synchronous, "24:1S 63:0S"},
        {"$_ALDFF_PN_ u D=d C=c L=l AD=a Q=q",
         "d=1@1 a=0@1 l=1@1 c=0@5 c=1@10 l=0@20 a=1@30 c=0@35 c=1@45 a=0@50 l=1@60 c=0@65 c=1@75",
         "14:1S 25:0S 37:1S 55:0S 79:1S"},
        // a latch that opens shows its data
        {"$_DLATCH_P_ u D=d E=e Q=q", "d=1@1 e=0@5 e=1@10 d=0@20 e=0@30 d=1@40", "14:1S 23:0S"},
        // open when set or reset ends: the data shows again
        {"$_DLATCH_PN0_ u D=d E=e R=r Q=q", "d=1@1 r=1@1 e=1@2 r=0@10 r=1@20 e=0@30 d=0@40",
         "6:1S 13:0S 24:1S"},
        {"$_DLATCHSR_PPP_ u D=d E=e S=s R=r Q=q", "d=0@1 s=0@1 r=0@1 e=1@2 s=1@10 s=0@20",
         "5:0S 14:1S 23:0S"},
        // buffers that are off leave the bus to the other one
        {"$_TBUF_ t A=a E=e Y=q; cell $_TBUF_ v A=b E=f Y=q; cell $_BUF_ w A=q Y=z",
         "a=1@1 b=0@1 e=0@1 f=0@1 e=1@10 e=0@20 f=1@30", "4:iZ 14:1S 23:iZ 33:0S"},
        // clock and data change together: the clock is first
        {"$_BUF_ b1 A=b Y=d; cell $_BUF_ b2 A=b Y=c; cell $_DFF_P_ u D=d C=c Q=q", "b=0@1 b=1@10", "17:0S"},
    };
    for (const auto& [cell, stimuli, q] : cases) {
        SCOPED_TRACE(cell);
        run(cell, stimuli);
        EXPECT_EQ(tst_changes_of("q"), q);
        EXPECT_EQ(tst_take_lines(), std::vector<std::string>{});
    }
}

TEST_F(registers, of_many_bits_follow_their_parameters) {
    std::string wide;
    for (int k = 0; k < 35; ++k) wide += "10";
    const std::string data = "d[1]=1@1 d[0]=0@1 ", low = "d[1]=0@1 d[0]=1@1 ";
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {"$adff u ARST_POLARITY:0 ARST_VALUE:" + wide + " D=d:70 CLK=c ARST=r Q=q:70", "r=1@1 c=0@5 r=0@20",
         wide},
        // initial values stay until the clock
        {"$dff u D=d:3 CLK=c Q=q:3; init q 1x0", "c=0@5", "1i0"},
        {"$dff u D=d:3 CLK=c Q=q:3; init q 1x0", low + "d[2]=0@1 c=0@5 c=1@50", "001"},
    };
    for (const auto& [cell, stimuli, q] : cases) {
        SCOPED_TRACE(cell);
        run(cell, stimuli);
        EXPECT_EQ(value_of_q(q.size()), q);
    }
    EXPECT_EQ(tst_net("q[2]").UU.U1.state_init, 19);
    EXPECT_EQ(tst_net("q[1]").UU.U1.state_init, 0);
    EXPECT_EQ(tst_net("q[0]").UU.U1.state_init, 17);
}

TEST_F(registers, with_ports_left_open_or_out_read_nets_that_nothing_drives) {
    run("$_DFF_P_ u D= C=c Q=q; cell $_AND_ v A=q Y=; cell $_DFF_P_ w D=d C=c", "c=0@1 c=1@10");
    EXPECT_EQ(tst_changes_of("q"), "14:iS");
    const std::vector<std::string> warnings = {"/c: nothing drives this net", "/d: nothing drives this net",
                                               "/u.D: nothing drives this net",
                                               "/v.B: nothing drives this net"};
    EXPECT_EQ(status.warnings, warnings);
}

TEST_F(registers, report_the_limits_of_their_type) {
    const std::tuple<const char*, const char*, std::string, std::string> cases[] = {
        {"{}", "c=0@1 d=1@9 c=1@10", "Setup Time Violation on pin:\"/u/CLKP\"",
         "9.000-->10.000<->:1.000(<2.000)"},
        {R"({"default":{"setup":[1,5,9]}})", "c=0@1 d=1@9 c=1@13", "Setup Time Violation on pin:\"/u/CLKP\"",
         "9.000-->13.000<->:4.000(<5.000)"},
        {R"({"cells":{"$_DFF_P_":{"setup":0,"hold":3}}})", "c=0@1 c=1@10 d=1@12",
         "Hold Time Violation on pin:\"/u/D\"", "10.000-->12.000<->:2.000(<3.000)"},
        {R"({"cells":{"$_DFF_P_":{"min_high":6}}})", "d=1@1 c=0@5 c=1@10 c=0@15",
         "Min Time High Violation on pin:\"/u/CLKP\" ", "10.000-->15.000<->:5.000(<6.000)"},
    };
    for (const auto& [timing, stimuli, first, time] : cases) {
        SCOPED_TRACE(timing);
        run("$_DFF_P_ u D=d C=c Q=q", stimuli, timing);
        const std::vector<std::string> lines = tst_take_lines();
        ASSERT_GE(lines.size(), 2U);
        EXPECT_EQ(lines.front(), "# !! " + first);
        EXPECT_EQ(lines.back(), "#  time:" + time);
    }
}

}  // namespace
