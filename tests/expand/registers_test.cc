// Flip-flops, latches and tri-state buffers of a netlist, expanded and simulated.
#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "expand/buses_out.h"
#include "expand/design_out.h"
#include "kernel/history.h"
#include "kernel/queue.h"
#include "kernel/run.h"
#include "kernel/state.h"
#include "support/design_build.h"
#include "support/session.h"

namespace {

// Cells "TYPE PORT=net PORT=net:WIDTH ... NAME_WITH_=digits" set apart by ';' as a module of Yosys.  The nets
// of Q are outputs, the others that no Y drives inputs; words with a "_" are parameters.
struct module_maker {
    std::string cells, ports, netnames;
    std::map<std::string, int> first_bit;
    int next_bit = 2;

    static std::string quoted(const std::string& text) { return '"' + text + '"'; }
    static void append(std::string& list, const std::string& item) {
        list += (list.empty() ? "" : ",") + item;
    }

    std::string bits_of(const std::string& port, const std::string& word) {
        if (word.find_first_not_of("01xz") == std::string::npos) return "[" + quoted(word) + "]";
        const std::size_t colon = word.find(':');
        const int width = colon == std::string::npos ? 1 : std::stoi(word.substr(colon + 1));
        const std::string name = word.substr(0, colon);
        const bool is_new = first_bit.try_emplace(name, next_bit).second;
        if (is_new) next_bit += width;
        std::string bits;
        for (int k = 0; k < width; ++k) append(bits, std::to_string(first_bit[name] + k));
        if (is_new && port != "Y")
            append(ports, quoted(name) + ":{\"direction\":" + (port == "Q" ? "\"output\"" : "\"input\"") +
                              ",\"bits\":[" + bits + "]}");
        if (is_new && (port == "Q" || port == "Y"))
            append(netnames, quoted(name) + ":{\"attributes\":{" + (port == "Q" ? "INIT" : "") +
                                 "},\"bits\":[" + bits + "]}");
        return "[" + bits + "]";
    }

    void add(const std::string& cell) {
        std::istringstream words(cell);
        std::string type, connections, parameters;
        words >> type;
        for (std::string word; words >> word;) {
            const std::string key = word.substr(0, word.find('=')), value = word.substr(word.find('=') + 1);
            if (key.find('_') != std::string::npos)
                append(parameters, quoted(key) + ":" + quoted(value));
            else
                append(connections, quoted(key) + ":" + bits_of(key, value));
        }
        append(cells, quoted("u" + std::to_string(cells.size())) + ":{\"type\":" + quoted(type) +
                          ",\"parameters\":{" + parameters + "},\"connections\":{" + connections + "}}");
    }
};

std::string module_of(const std::string& text, const std::string& init) {
    module_maker maker;
    std::istringstream lines(text);
    for (std::string cell; std::getline(lines, cell, ';');) maker.add(cell);
    std::string json = "{\"modules\":{\"m\":{\"ports\":{" + maker.ports + "},\"cells\":{" + maker.cells +
                       "},\"netnames\":{" + maker.netnames + "}}}}";
    if (const std::size_t at = json.find("INIT"); at != std::string::npos)
        json.replace(at, 4, init.empty() ? "" : "\"init\":\"" + init + '"');
    return json;
}

struct expansion {
    xp_netlist netlist;
    xp_hierarchy hierarchy;
    xp_flat flat;
    xp_timing timing;
    yx_design_image_t image;
    xp_status status;

    explicit expansion(const std::string& json, const std::string& timing_text = "{}") {
        std::vector<xp_delays> delays;
        xp_paths paths;
        xp_parse_netlist("n", json, netlist, status);
        xp_parse_timing("t", timing_text, timing, status);
        xp_choose_top(netlist, "", hierarchy, status);
        xp_map_modules(netlist, hierarchy, status);
        xp_flatten(netlist, hierarchy, flat, status);
        xp_find_delays(flat, timing, delays, status);
        xp_build_design(flat, delays, 1.0F, xp_economies(), image, paths, status);
    }
};

std::string history(const std::string& name) {
    std::string text;
    const yx_list_state_rec_t* record = tst_net(name).UU.U1.first_state;
    for (record = record->next; record != nullptr; record = record->next) {
        char two[2];
        kol_state_to_statechar(record->state, two);
        text += (text.empty() ? "" : " ") + std::to_string(record->time) + ":" + std::string(two, 2);
    }
    return text;
}

void load(const std::string& cells, const std::string& init = "", const std::string& timing = "{}") {
    const expansion made(module_of(cells, init), timing);
    ASSERT_TRUE(xp_ok(made.status)) << xp_message_text(made.status);
    tst_load(made.image);
    tst_set_up();
    kol_ext.spike_on = false;
}

// Stimuli "d=1@5 c=0@7", then everything up to time 1000.
void run(const std::string& stimuli) {
    std::istringstream words(stimuli);
    for (std::string word; words >> word;) {
        const std::size_t equals = word.find('='), at = word.find('@');
        std::int8_t state = 0;
        ASSERT_TRUE(kol_keyword_to_state(word.substr(equals + 1, at - equals - 1), state)) << word;
        kol_create_force_event(&tst_net(word.substr(0, equals)), std::stoi(word.substr(at + 1)), state);
    }
    kol_ext.end_time = 1000;
    bool nothing = false;
    kol_exec_all_event(nothing);
}

// Q rises after 4 steps and falls after 3; each gate in front of an input adds one.
TEST(registers, take_set_reset_enable_and_pass_as_their_type_says) {
    const char* const clock = "d=0@1 c=0@5 c=1@10 d=1@15 c=0@20 c=1@30 d=0@35 c=0@40";
    const char* const synchronous =
        "d=0@1 e=0@1 r=1@1 c=0@5 c=1@20 r=0@25 c=0@30 c=1@40 e=1@45 c=0@50 c=1@60";
    const struct {
        const char *cell, *stimuli, *q;
    } cases[] = {
        {"$_DFF_P_ D=d C=c Q=q", clock, "13:0S 34:1S"},
        {"$_DFF_N_ D=d C=c Q=q", clock, "8:0S 24:1S 43:0S"},
        {"$_DFF_PN0_ D=d C=c R=r Q=q", "d=1@1 r=1@2 c=0@5 c=1@10 r=0@20 c=0@25 c=1@30 r=1@35 c=0@40 c=1@50",
         "14:1S 23:0S 54:1S"},
        {"$_DFF_PP1_ D=d C=c R=r Q=q", "d=0@1 r=0@2 c=0@5 c=1@10 r=1@20 c=0@25 c=1@30 r=0@35 c=0@40 c=1@50",
         "13:0S 24:1S 53:0S"},
        // set is still active when reset ends
        {"$_DFFSR_NPN_ D=d C=c S=s R=r Q=q",
         "d=0@1 s=0@1 r=1@1 c=1@2 c=0@10 s=1@20 r=0@30 r=1@40 s=0@50 c=1@55 c=0@60",
         "13:0S 25:1S 33:0S 45:1S 63:0S"},
        {"$_DFFE_PN_ D=d C=c E=e Q=q",
         "d=1@1 e=0@1 c=0@5 c=1@20 e=1@25 d=0@26 c=0@30 c=1@40 e=0@45 c=0@50 c=1@60", "24:1S 63:0S"},
        {"$_DFFE_PP1N_ D=d C=c R=r E=e Q=q",
         "d=0@1 r=0@1 e=0@1 c=0@5 r=1@10 r=0@15 c=1@20 e=1@25 d=1@26 c=0@30 c=1@40", "14:1S 23:0S"},
        {"$_SDFF_PN0_ D=d C=c R=r Q=q", "d=1@1 r=0@1 c=0@5 c=1@20 r=1@25 c=0@30 c=1@40 r=0@45",
         "23:0S 44:1S"},
        {"$_SDFFE_PP1P_ D=d C=c R=r E=e Q=q", synchronous, "24:1S 63:0S"},
        {"$_SDFFCE_PP1P_ D=d C=c R=r E=e Q=q", synchronous, "23:iS 63:0S"},
        {"$_ALDFF_PN_ D=d C=c L=l AD=a Q=q",
         "d=1@1 a=0@1 l=1@1 c=0@5 c=1@10 l=0@20 a=1@30 c=0@35 c=1@45 a=0@50 l=1@60 c=0@65 c=1@75",
         "14:1S 25:0S 37:1S 55:0S 79:1S"},
        // a latch is open until its enable first closes it
        {"$_DLATCH_P_ D=d E=e Q=q", "d=1@1 e=0@5 e=1@10 d=0@20 e=0@30 d=1@40", "5:1S 23:0S"},
        {"$_DLATCH_N_ D=d E=e Q=q", "d=1@1 e=1@5 e=0@10 d=0@20 e=1@30 d=1@40", "5:1S 23:0S"},
        // open when set or reset ends: the data shows again
        {"$_DLATCH_PN0_ D=d E=e R=r Q=q", "d=1@1 r=1@1 e=1@2 r=0@10 r=1@20 e=0@30 d=0@40",
         "6:1S 13:0S 25:1S"},
        {"$_DLATCHSR_PPP_ D=d E=e S=s R=r Q=q", "d=0@1 s=0@1 r=0@1 e=1@2 s=1@10 s=0@20", "6:0S 15:1S 25:0S"},
        {"$_SR_PN_ S=s R=r Q=q", "s=0@1 r=1@1 s=1@10 s=0@20 r=0@30 r=1@40", "15:1S 33:0S"},
        // clock and data change together: the clock is first
        {"$_BUF_ A=b Y=d;$_BUF_ A=b Y=c;$_DFF_P_ D=d C=c Q=q", "b=0@1 b=1@10", "17:0S"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.cell);
        load(c.cell);
        kol_observe_net(&tst_net("q"));
        run(c.stimuli);
        EXPECT_EQ(history("q"), c.q);
        EXPECT_EQ(tst_take_lines(), std::vector<std::string>{});
    }
}

std::string value_of(const std::string& vector, int width) {
    std::string text;
    for (int k = width; k-- > 0;) {
        char two[2];
        const std::string bit = width == 1 ? vector : vector + "[" + std::to_string(k) + "]";
        kol_state_to_statechar(tst_net(bit).UU.U1.cur_state.state, two);
        text += two[0];
    }
    return text;
}

std::string repeated(const std::string& text, int count) {
    std::string all;
    for (; count > 0; --count) all += text;
    return all;
}

TEST(registers, of_many_bits_follow_their_parameters) {
    const std::string wide = repeated("10", 35), data = "d[1]=1@1 d[0]=0@1 ";
    const struct {
        std::string cell, stimuli;
        int width;
        std::string q;
    } cases[] = {
        {"$dff WIDTH_=2 CLK_POLARITY=0 D=d:2 CLK=c Q=q:2", data + "c=1@5 c=0@10", 2, "10"},
        {"$dffe EN_POLARITY=0 D=d:2 CLK=c EN=e Q=q:2",
         data + "e=0@1 c=0@5 c=1@10 e=1@20 d[0]=1@20 c=0@25 c=1@40", 2, "10"},
        {"$adff ARST_POLARITY=0 ARST_VALUE=" + wide + " D=d:70 CLK=c ARST=r Q=q:70", "r=1@1 c=0@5 r=0@20", 70,
         wide},
        {"$sdff SRST_VALUE=01 D=d:2 CLK=c SRST=r Q=q:2", data + "r=1@1 c=0@5 c=1@10", 2, "01"},
        {"$dffsr CLR_POLARITY=0 D=d:2 CLK=c SET=s:2 CLR=r:2 Q=q:2", "r[1]=0@1 r[0]=1@1 s[1]=0@1 s[0]=1@1", 2,
         "01"},
        {"$dlatch EN_POLARITY=0 D=d:2 EN=e Q=q:2", data + "e=0@5 e=1@10 d[0]=1@20 d[1]=0@20", 2, "10"},
        {"$adlatch ARST_VALUE=10 D=d:2 EN=e ARST=r Q=q:2", "d[1]=0@1 d[0]=1@1 r=0@1 e=1@2 r=1@10", 2, "10"},
        {"$tribuf A=d:2 EN=e Y=q:2", data + "e=0@1 e=1@10", 2, "10"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.cell);
        load(c.cell);
        run(c.stimuli);
        EXPECT_EQ(value_of("q", c.width), c.q);
    }
}

TEST(registers, pass_through_a_switch_that_leaves_the_bus_as_it_was_when_it_opens) {
    const std::string bus = "$_TBUF_ A=a E=e Y=y;$_TBUF_ A=b E=f Y=y;$_BUF_ A=y Y=q";
    load(bus);
    kol_observe_net(&tst_net("y"));
    run("a=1@1 b=0@1 e=0@1 f=0@1 e=1@10 e=0@20 f=1@30");
    EXPECT_EQ(history("y"), "14:1S 33:iS");
}

TEST(registers, begin_at_their_initial_values_until_they_are_clocked) {
    load("$dff D=d:3 CLK=c Q=q:3", "1x0");
    EXPECT_EQ(tst_net("q[2]").UU.U1.state_init, 19);
    EXPECT_EQ(tst_net("q[1]").UU.U1.state_init, 0);
    EXPECT_EQ(tst_net("q[0]").UU.U1.state_init, 17);
    run("c=0@5");
    EXPECT_EQ(value_of("q", 3), "1i0");
    load("$dff D=d:3 CLK=c Q=q:3", "1x0");
    run("d[2]=0@1 d[1]=0@1 d[0]=1@1 c=0@5 c=1@50");
    EXPECT_EQ(value_of("q", 3), "001");
}

TEST(registers, report_the_limits_of_their_type) {
    const std::string flop = "$_DFF_P_ D=d C=c Q=q";
    const struct {
        const char *timing, *stimuli, *first, *time;
    } cases[] = {
        {"{}", "c=0@1 d=1@9 c=1@10", "Setup Time Violation on pin:\"/u0/CLKP\"",
         "9.000-->10.000<->:1.000(<2.000)"},
        {R"({"default":{"setup":[1,5,9]}})", "c=0@1 d=1@9 c=1@13", "Setup Time Violation on pin:\"/u0/CLKP\"",
         "9.000-->13.000<->:4.000(<5.000)"},
        {R"({"cells":{"$_DFF_P_":{"setup":0,"hold":3}}})", "c=0@1 c=1@10 d=1@12",
         "Hold Time Violation on pin:\"/u0/D\"", "10.000-->12.000<->:2.000(<3.000)"},
        {R"({"cells":{"$_DFF_P_":{"min_high":6}}})", "d=1@1 c=0@5 c=1@10 c=0@15",
         "Min Time High Violation on pin:\"/u0/CLKP\" ", "10.000-->15.000<->:5.000(<6.000)"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.timing);
        load(flop, "", c.timing);
        run(c.stimuli);
        const std::vector<std::string> lines = tst_take_lines();
        ASSERT_GE(lines.size(), 2U);
        EXPECT_EQ(lines.front(), std::string("# !! ") + c.first);
        EXPECT_EQ(lines.back(), std::string("#  time:") + c.time);
    }
}

TEST(registers, that_are_public_vectors_become_buses) {
    const std::string cells =
        R"("f":{"type":"$dff","parameters":{},"connections":{"D":[2,3],"CLK":[4],"Q":[5,6]}},)"
        R"("g":{"type":"$_NOT_","connections":{"A":[5],"Y":[7]}})";
    const std::string nets =
        R"("count":{"bits":[5,6],"offset":4},"mixed":{"bits":[5,7]},"hidden":{"hide_name":1,"bits":[6,5]})";
    const expansion made("{\"modules\":{\"m\":{\"cells\":{" + cells + "},\"netnames\":{" + nets + "}}}}");
    ASSERT_TRUE(xp_ok(made.status)) << xp_message_text(made.status);
    const std::string text = xp_buses_text(made.flat);
    EXPECT_NE(text.find("DEFINE BUS C count count[5] count[4]\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("mixed"), std::string::npos);
    EXPECT_EQ(text.find("hidden"), std::string::npos);
    EXPECT_EQ(xp_buses_text(made.flat, false).find("count"), std::string::npos);
}

TEST(registers, that_cannot_be_are_refused) {
    const struct {
        const char *cell, *timing, *message;
    } cases[] = {
        {"$_FF_ D=d Q=q", "{}", "/u0: unknown cell type: \"$_FF_\""},
        {"$_DFF_PX0_ D=d C=c R=r Q=q", "{}", "/u0: unknown cell type: \"$_DFF_PX0_\""},
        {"$_DFF_PN_ D=d C=c R=r Q=q", "{}", "/u0: unknown cell type: \"$_DFF_PN_\""},
        {"$_DFF_P_ D=d Q=q", "{}", "/u0: port not connected: \"C\""},
        {"$_DFF_P_ D=d C=c R=r Q=q", "{}", "/u0: unknown port: \"R\""},
        {"$dff D=d:3 CLK=c Q=q:2", "{}",
         "/u0: connection width mismatch: port \"D\" has 2 bits, the connection 3"},
        {"$adff ARST_VALUE=1 D=d:2 CLK=c ARST=r Q=q:2", "{}",
         "/u0: connection width mismatch: the reset value has 1 bits, the output 2"},
        {"$_DFF_P_ D=d C=c Q=q", R"({"cells":{"$_AND_":{"hold":1}}})",
         "t: cells/$_AND_: bad timing: unknown key \"hold\""},
        {"$_DFF_P_ D=d C=c Q=q", R"({"default":{"setup":[1,2]}})",
         "t: default/setup: bad timing: expected a whole number of steps from 0 on, or three"},
        {"$_DFF_P_ D=d C=c Q=q", R"({"default":{"hold":-1}})",
         "t: default/hold: bad timing: expected a whole number of steps from 0 on, or three"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(xp_message_text(expansion(module_of(c.cell, ""), c.timing).status), c.message);
}

}  // namespace
