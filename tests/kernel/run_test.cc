// The run loop: what events do to nets, what is reported, what ends a run.
#include "kernel/run.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "foundation/context.h"
#include "kernel/cell_records.h"
#include "kernel/history.h"
#include "kernel/queue.h"
#include "kernel/stimuli_reader.h"
#include "support/design_build.h"
#include "support/rows.h"
#include "support/session.h"
#include "support/stimuli.h"

namespace {

constexpr int check_off = -1;  // spikes are not looked for

using scenarios = tst_rows<int, std::string, tst_cstr, tst_cstr, std::string>;

// Expects each scenario, and a warning counted for each text that begins with "# !! ".
void expect(const scenarios& rows) {
    for (const auto& [spike_model, design, stimuli, changes, text] : rows) {
        tst_expect_run(design, stimuli, changes, text, spike_model);
        int warnings = 0;
        for (std::size_t at = 0; (at = text.find("# !! ", at)) != text.npos; ++at) ++warnings;
        EXPECT_EQ(tm_vext.num_warnings, warnings) << design << ", " << stimuli;
    }
}

// clang-format off
// ---- resolution and hazards

std::string pin_hazard(const std::string& bit) {
    return "# !! WARNING : HAZARD Condition  on pin : time = 10.000\n#   pin : \"/g/O\" " + bit +
           "\n#   more than 1 event(not equal) at this time \n";
}
const char* const net_hazard = "# !! WARNING : HAZARD Condition on net : time = 10.000\n#   net : \"/a\" \n"
                               "#   You FORCE a state incompatible to existing events \n";
const char* const fixed_nets = "# !! WARNING : You FORCE a FIXED net : time = 100.000\n#   net : \"/f\" \n"
                               "# !! WARNING : You FORCE a FIXED net : time = 106.000\n#   net : \"/f\" \n";

TEST(run, resolves_the_drivers_of_a_net_tree_and_reports_hazards) {
    const char* const conflict = "and g1 y = a; and g2 y = b; and g3 z = y rise 1 fall 1";
    expect({
        {check_off, conflict, "a=1@10 b=0@20 b=1@30", "y 10:1S 20:iS 30:1S z 11:1S 21:iS 31:1S", ""},
        {check_off, conflict, "a=1@10 b=0@10", "y 10:iS z 11:iS", ""},
        {check_off, "and g1 y = a drive SSSZ; and g2 y = b drive WWWW", "a=1@10 b=0@20 a=0@30 a=1@40",
         "y 10:1Z 20:0W 30:0S 40:0W", ""},
        {check_off, "net t; sub s1 of t; sub s2 of s1; sub s3 of t; and g1 s2 = a; and g2 s3 = b; and g3 z = s2",
         "a=1@10 b=0@20", "t 10:1S 20:iS z 10:1S 20:iS", ""},
        // The gate with the higher priority changes twice at 10; the second change is dropped.
        {check_off, "nand n c = a; and g y = a c prio 5", "a=0@1 a=1@10 a=0@20", "y 1:0S 10:1S 20:0S",
         pin_hazard("")},
        // Each bit goes directly behind the event that is executed, so the last bit comes first.
        {check_off, "bus d 2; nand n c = a; and g d = a c prio 5", "a=0@1 a=1@10", "d[0] 1:0S 10:1S d[1] 1:0S 10:1S",
         pin_hazard(" [2] ") + pin_hazard(" [1] ")},
        {check_off, "and g y = a rise 1 fall 1", "a=1@0 a=0@0 a=1@10 a=1@10 a=0@10", "a 10:0S", net_hazard},
        {check_off, "and g y = a", "a=1@10 y=0@20 y=1@30 a=0@30", "y 10:1S 20:0S 30:0S", ""},
        {kol_indgene, "net f fixed; and g f = a; and h z = f irise 8 ifall 8", "f=1@0 a=0@5 f=0@100 a=1@102 f=1@106",
         "f 100:0S 106:1S z 8:1S 108:0S 114:1S", fixed_nets},
    });
}

// ---- spikes

// A pulse of 6 through a driver of 10, a fed pin of 4 and one of 8.
const char* const pulse_design = "and g y = a rise 10 fall 10; and h z = y irise 4 ifall 4; "
                                 "and k w = y irise 8 ifall 8";
const char* const pulse = "a=0@0 a=1@100 a=0@106";

std::string driver_spike(const std::string& times, const std::string& pin = "/g/O") {
    return "# !! SPIKE on pin : \"" + pin + "\" \n#   To net : \"/y\" \n#   time:" + times + ") \n";
}
std::string fed_spike(const std::string& times) {
    return "# !! SPIKE on pin : \"/k/I1\" \n#    From pin : \"/g/O\" \n#    time:" + times + ") \n";
}

TEST(run, lets_each_spike_model_shape_a_short_pulse) {
    const std::string driver = driver_spike("110.000 -->116.000 <-> spike:6.000 (<10.000");
    const std::string spikes = driver + fed_spike("116.000 -->110.000 <-> spike:6.000 (<8.000");
    const std::string earlier = driver + fed_spike("106.000 -->100.000 <-> spike:6.000 (<8.000");
    const std::string forced = "# !! SPIKE on pin : \"/g/I1\" \n#   From net : \"/a\" \n"
                               "#   time:100.000 -->106.000 <-> spike:6.000 (<8.000) \n";
    const char* const unspoilt = "y 10:0S 110:1S 116:0S z 14:0S 114:1S 120:0S w 18:0S 118:1S 124:0S";
    // Two changes at one time merge with the state before both, but in a spike with the one between.
    const char* const merge_design = "and g1 y = a rise 2 fall 2 drive SZSS; and g2 y = b rise 2 fall 2 drive WWWW";
    const char* const merging = "a=1@0 b=0@0 a=0@10 b=1@10 b=0@11";
    expect({
        {check_off, pulse_design, pulse, unspoilt, ""},
        {kol_nosuppress, pulse_design, pulse, unspoilt, spikes},
        {kol_suppress, pulse_design, pulse, "y 10:0S z 14:0S w 18:0S", spikes},
        {kol_indgene, pulse_design, pulse, "y 10:0S 110:iS 116:0S z 14:0S 114:iS 120:0S w 18:0S 118:iS 124:0S",
         spikes},
        {kol_pessimistic, pulse_design, pulse, "y 10:0S 100:iS 116:0S z 14:0S 114:iS 120:0S w 18:0S 118:iS 124:0S",
         earlier},
        {kol_indgene, "and g y = a irise 6 ifall 6", pulse, "y 6:0S 106:1S 112:0S", ""},  // as long as the delay
        {kol_indgene, "and g y = a irise 8 ifall 8", pulse, "a 100:1S 106:0S y 8:0S 108:1S 114:0S", forced},
        {kol_suppress, "and g y = a irise 8 ifall 8", pulse, "a 100:1S 106:0S y 8:0S", forced},
        {check_off, merge_design, merging, "y 2:1S 12:1S 13:0W", ""},
        {kol_nosuppress, merge_design, merging, "y 2:1S 12:iW 13:0W",
         driver_spike("12.000 -->13.000 <-> spike:1.000 (<2.000", "/g2/O")},
    });
}

TEST(run, shows_fed_pins_the_resolved_state_of_a_spike) {
    const auto text_of = [](const yx_signal_state_rec& seen) {
        return std::to_string(seen.time) + ":" + tst_state_text(seen.state) + " ";
    };
    // The net, a pin that sees the spike, one that sees none.
    for (const auto& [spike_model, states] : tst_rows<std::int16_t, tst_cstr>{
             {kol_nosuppress, "110:1S 110:1S 1S"}, {kol_suppress, "10:0S 10:0S 1S"},
             {kol_indgene, "110:iS 110:1S 1S"}, {kol_pessimistic, "100:iS 100:1S 1S"}}) {
        tst_build(pulse_design);
        kol_ext.spike_model = spike_model;
        tst_schedule(pulse);
        tst_run_until(112);
        kol_bring_records_up();
        EXPECT_EQ(text_of(tst_net("y").UU.U1.cur_state) + text_of(tst_pin("/k/I1").pin_state.std) +
                  tst_state_text(tst_pin("/h/I1").pin_state.std.state), states);
    }
}

TEST(run, is_silent_about_spikes_up_to_the_threshold_of_the_time) {
    const std::string first = driver_spike("110.000 -->116.000 <-> spike:6.000 (<10.000");
    const std::string second = driver_spike("210.000 -->216.000 <-> spike:6.000 (<10.000");
    for (const auto& [before, after, switching, text] : tst_rows<int, int, int, std::string>{
             {5, 6, 0, first + second}, {6, 5, 0, ""}, {6, 5, 210, second}, {6, 5, 211, ""}, {5, 6, 200, first}}) {
        tst_build("and g y = a rise 10 fall 10");
        kol_observe_net(&tst_net("y"));
        kol_ext.spike_min_t0 = before;
        kol_ext.spike_min_t = after;
        kol_ext.tspike_min = switching;
        tst_schedule("a=0@0 a=1@100 a=0@106 a=1@200 a=0@206");
        tst_run_until(1000);
        EXPECT_EQ(tst_take_text(), text) << before << ' ' << after << ' ' << switching;
        EXPECT_EQ(tst_changes_of("y"), "10:0S 110:iS 116:0S 210:iS 216:0S");
    }
}

// ---- what ends a run

TEST(run, stops_at_a_break_but_not_where_it_starts) {
    for (const auto& [design, net, stimuli, stopped] : tst_rows<std::string, std::string, tst_cstr, int>{
             {"and g y = a rise 3 fall 3", "a", "a=0@11 a=1@12", 12},  // stimuli behind a first run to 10
             {"and g y = a rise 3 fall 3", "y", "a=1@12", 15},
             {"and g y = a", "a", "a=1@10 b=1@12 a=0@14 a=1@16", 16},
             {"and g y = a", "a", "a=1@10 a=1@14", 14},  // without a change
             {"and g y = a", "a", "a=0@11 a=x@12 a=1z@13", 100},
             {"bus d 2; and g d.1 = a rise 3 fall 3", "d[1]", "a=1@12", 15},
             {"bus d 2; and g d = a rise 3 fall 3", "d[1]", "a=1@12", 15},
             {"net t; sub s of t; and g s = a rise 3 fall 3", "t", "a=1@12", 15},
         }) {
        SCOPED_TRACE(design + ", " + stimuli);
        tst_build("net b; " + design);
        tst_run_until(10);
        auto* record = kol_ext.break_signal = tst_net(net).UU.U1.break_signal = new yx_break_signal_rec_t;
        record->net = &tst_net(net);
        record->break_name = tm_string(net);
        record->state = 19;
        tst_schedule(stimuli);
        tst_run_until(100);
        EXPECT_EQ(kol_ext.cur_time, stopped);
        EXPECT_EQ(kol_ext.time_breaked, stopped < 100);
        const std::string text = "# !! BREAK on net : \"/" + net + "\" \n#    Name : \"" + net + "\" \n#    time: " +
                                 std::to_string(stopped) + ".000\n";
        EXPECT_EQ(tst_take_text(), stopped < 100 ? text : "");
        EXPECT_EQ(tm_vext.num_warnings, 0);
    }
}

TEST(run, stops_at_the_51st_error_or_warning) {
    tst_build("net f fixed");
    tm_vext.num_warnings = INT16_MAX - 10;  // of before
    for (int k = 1; k <= 120; ++k) tst_schedule("f=" + std::to_string(k % 2) + "@" + std::to_string(k));
    tst_run_until(50);
    EXPECT_FALSE(kol_ext.time_breaked);
    EXPECT_EQ(tst_take_lines().size(), 100U);
    tst_run_until(1000);
    EXPECT_TRUE(kol_ext.time_breaked);
    EXPECT_EQ(kol_ext.cur_time, 101);
    EXPECT_EQ(tst_net_state("f"), "1S");
    const std::string text = tst_take_text();
    EXPECT_EQ(std::ranges::count(text, '\n'), 105);
    EXPECT_TRUE(text.ends_with(
        "\n# !! More than 50 errors or warnings : so simulation is BREAKED  . \n#    time: 101.000\n"
        "# !! to avoid too many spike warnings use \"SPIKE MIN\" ... ? \n")) << text;
    EXPECT_EQ(kol_ext.cur_event->time, 102);
}

TEST(run, asks_for_the_users_keys_behind_force_events_only) {
    const char* const breaked = "# !! Simulation BREAKED Request \n#    time : 20.000\n";
    for (const auto& [keys, stopped, text, left] : tst_rows<tst_cstr, int, tst_cstr, tst_cstr>{
             {"s", 20, breaked, ""}, {"bs", 20, breaked, "b"},
             {"b", 100, "# !! Simulation STATUS : time = 20.000\n", ""}, {"", 100, "", ""}}) {
        tst_build("net b; and g y = a rise 5 fall 5");
        tst_schedule("a=1@10 b=1@20");
        tst_run_until(11);
        tst_session.keys = keys;
        tst_run_until(100);
        EXPECT_EQ(kol_ext.cur_time, stopped) << keys;
        EXPECT_EQ(tst_take_text(), text) << keys;
        EXPECT_EQ(tst_session.keys, left);
    }
}

TEST(run, leaves_events_behind_its_end_queued) {
    tst_build("and g y = a rise 3 fall 3");
    kol_observe_net(&tst_net("y"));
    tst_schedule("a=1@10 a=0@14");
    for (const auto& [end, changes] : tst_rows<int, tst_cstr>{{12, ""}, {13, "13:1S"}, {100, "13:1S 17:0S"}}) {
        tst_run_until(end);
        EXPECT_EQ(kol_ext.cur_time, end);
        EXPECT_EQ(tst_changes_of("y"), changes);
    }
    bool no_event_found = false;
    kol_ext.end_time = 200;
    kol_exec_all_event(no_event_found);
    EXPECT_TRUE(no_event_found);
    EXPECT_EQ(kol_ext.cur_time, 200);
}

// ---- stimuli

struct force {
    std::int32_t time;
    std::int8_t state;
    std::int32_t stop_time = 0;
};
using forces_t = std::vector<force>;

TEST(run, turns_forces_and_clocks_of_its_window_into_events) {
    // Forces, the period and the start of a clock, its forces; the events of the window from 23 to 60.
    for (const auto& [forces, period, start, clocked, events] : tst_rows<forces_t, int, int, forces_t, tst_cstr>{
             {{}, 10, 0, {{5, 19}}, "25:/a=1S 35:/a=1S 45:/a=1S 55:/a=1S"},
             {{}, 10, 0, {{5, 19, 40}}, "25:/a=1S 35:/a=1S"},
             {{}, 10, 0, {{5, 19, 45}}, "25:/a=1S 35:/a=1S 45:/a=1S"},
             {{}, 10, 0, {{3, 19, 23}}, ""},  // stopped before the run
             {{}, 10, 0, {{5, 19, 24}}, ""},  // and before the first event
             {{}, 10, 0, {{0, 17}, {5, 19}}, "25:/a=1S 30:/a=0S 35:/a=1S 40:/a=0S 45:/a=1S 50:/a=0S 55:/a=1S"},
             {{}, 10, 3, {{0, 17}, {5, 19}},
              "23:/a=0S 28:/a=1S 33:/a=0S 38:/a=1S 43:/a=0S 48:/a=1S 53:/a=0S 58:/a=1S"},
             {{}, 10, 42, {{5, 19}}, "47:/a=1S 57:/a=1S"}, {{}, 20, 4, {{19, 19}}, "23:/a=1S 43:/a=1S"},
             {{}, 10, 60, {{0, 19}}, ""}, {{}, 0, 0, {{30, 19}}, ""},
             {{}, 10, 0, {{25, 19}}, "45:/a=1S 55:/a=1S"},
             {{{22, 19}, {23, 17}, {59, 19}, {60, 17}}, 0, 0, {}, "23:/a=0S 59:/a=1S"},
             {{{30, 17}, {30, 19}}, 30, 0, {{0, 18}, {0, 16}}, "30:/a=1S 30:/a=0S 30:/a=xS 30:/a=iS"},
         }) {
        tst_build("net a");
        const yx_net_record_t& a = tst_net("a");
        for (const force& f : forces) kol_add_force(a, f.state, f.time, f.stop_time);
        kol_add_clock(period, start);
        for (const force& f : clocked) kol_add_repeated_force(a, f.state, f.time, f.stop_time);
        kol_open_window(23, 60);
        std::string text;
        for (kol_stimuli_reader_t reader; reader.next_time() != reader.never;) {
            const kol_stimulus_t next = reader.take();
            text += (text.empty() ? "" : " ") + std::to_string(next.time) + ":/a=" + tst_state_text(next.state);
        }
        EXPECT_EQ(text, events) << period << " from " << start;
    }
}
// clang-format on

}  // namespace
