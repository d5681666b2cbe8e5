// The run loop: what events do to nets, what is reported, what ends a run.
#include "kernel/run.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "foundation/context.h"
#include "kernel/history.h"
#include "kernel/queue.h"
#include "support/design_build.h"
#include "support/session.h"
#include "support/stimuli.h"

namespace {

using lines_t = std::vector<std::string>;

lines_t operator+(lines_t first, const lines_t& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

constexpr std::int16_t check_off = -1;  // spikes are not looked for

void build(std::string_view design, std::int16_t spike_model) {
    tst_build(design);
    ASSERT_EQ(tst_take_lines(), lines_t{});
    kol_ext.spike_on = spike_model != check_off;
    if (kol_ext.spike_on) kol_ext.spike_model = spike_model;
}

struct scenario {
    std::int16_t spike_model;
    const char* design;
    const char* stimuli;
    std::vector<std::pair<const char*, const char*>> changes;
    lines_t lines;
};

void expect_scenario(const scenario& s) {
    SCOPED_TRACE(testing::Message() << s.design << ", " << s.stimuli << ", spike model " << s.spike_model);
    build(s.design, s.spike_model);
    for (const auto& [net, changes] : s.changes) kol_observe_net(&tst_net(net));
    tst_schedule(s.stimuli);
    tst_run_until(1000);
    for (const auto& [net, changes] : s.changes) EXPECT_EQ(tst_changes_of(net), changes) << net;
    EXPECT_EQ(tst_take_lines(), s.lines);
    const auto is_first = [](const std::string& line) { return line.starts_with("# !! "); };
    EXPECT_EQ(tm_vext.num_warnings, std::ranges::count_if(s.lines, is_first));
}

// ---- resolution and hazards

const lines_t pin_hazard{"# !! WARNING : HAZARD Condition  on pin : time = 10.000", "#   pin : \"/g/O\" ",
                         "#   more than 1 event(not equal) at this time "};
lines_t bit_hazard(const char* bit) {
    return {pin_hazard[0], std::string("#   pin : \"/g/O\"  ") + bit, pin_hazard[2]};
}
const lines_t net_hazard{"# !! WARNING : HAZARD Condition on net : time = 10.000", "#   net : \"/a\" ",
                         "#   You FORCE a state incompatible to existing events "};
const lines_t fixed_nets{"# !! WARNING : You FORCE a FIXED net : time = 100.000", "#   net : \"/f\" ",
                         "# !! WARNING : You FORCE a FIXED net : time = 106.000", "#   net : \"/f\" "};

// clang-format off
TEST(run, resolves_the_drivers_of_a_net_tree) {
    const char* const conflict = "and g1 y = a; and g2 y = b; and g3 z = y rise 1 fall 1";
    for (const scenario& s : {
             scenario{check_off, conflict, "a=1@10 b=0@20 b=1@30",
                      {{"y", "10:1S 20:iS 30:1S"}, {"z", "11:1S 21:iS 31:1S"}}, {}},
             {check_off, conflict, "a=1@10 b=0@10", {{"y", "10:iS"}, {"z", "11:iS"}}, {}},
             {check_off, "and g1 y = a drive SSSZ; and g2 y = b drive WWWW", "a=1@10 b=0@20 a=0@30 a=1@40",
              {{"y", "10:1Z 20:0W 30:0S 40:0W"}}, {}},
             {check_off,
              "net t; sub s1 of t; sub s2 of s1; sub s3 of t; and g1 s2 = a; and g2 s3 = b; and g3 z = s2",
              "a=1@10 b=0@20", {{"t", "10:1S 20:iS"}, {"z", "10:1S 20:iS"}}, {}},
         })
        expect_scenario(s);
}

TEST(run, reports_hazards_and_forces_of_fixed_nets) {
    for (const scenario& s : {
             // The gate with the higher priority changes twice at 10; the second change is dropped.
             scenario{check_off, "nand n c = a; and g y = a c prio 5", "a=0@1 a=1@10 a=0@20",
                      {{"y", "1:0S 10:1S 20:0S"}}, pin_hazard},
             // Each bit goes directly behind the event that is executed, so the last bit comes first.
             {check_off, "bus d 2; nand n c = a; and g d = a c prio 5", "a=0@1 a=1@10",
              {{"d[0]", "1:0S 10:1S"}, {"d[1]", "1:0S 10:1S"}}, bit_hazard("[2] ") + bit_hazard("[1] ")},
             {check_off, "and g y = a rise 1 fall 1", "a=1@0 a=0@0 a=1@10 a=1@10 a=0@10", {{"a", "10:0S"}},
              net_hazard},
             {check_off, "and g y = a", "a=1@10 y=0@20 y=1@30 a=0@30", {{"y", "10:1S 20:0S 30:0S"}}, {}},
             {kol_indgene, "net f fixed; and g f = a; and h z = f irise 8 ifall 8",
              "f=1@0 a=0@5 f=0@100 a=1@102 f=1@106",
              {{"f", "100:0S 106:1S"}, {"z", "8:1S 108:0S 114:1S"}}, fixed_nets},
         })
        expect_scenario(s);
}

// ---- spikes

// A pulse of 6 through a driver of 10, a fed pin of 4 and one of 8.
const char* const pulse_design = "and g y = a rise 10 fall 10; and h z = y irise 4 ifall 4; "
                                 "and k w = y irise 8 ifall 8";
const char* const pulse = "a=0@0 a=1@100 a=0@106";
const lines_t driver_spike{"# !! SPIKE on pin : \"/g/O\" ", "#   To net : \"/y\" ",
                           "#   time:110.000 -->116.000 <-> spike:6.000 (<10.000) "};
const lines_t fed_spike{"# !! SPIKE on pin : \"/k/I1\" ", "#    From pin : \"/g/O\" ",
                        "#    time:116.000 -->110.000 <-> spike:6.000 (<8.000) "};
const lines_t earlier_fed_spike{fed_spike[0], fed_spike[1],
                                "#    time:106.000 -->100.000 <-> spike:6.000 (<8.000) "};
const lines_t force_spike{"# !! SPIKE on pin : \"/g/I1\" ", "#   From net : \"/a\" ",
                          "#   time:100.000 -->106.000 <-> spike:6.000 (<8.000) "};

TEST(run, lets_each_spike_model_shape_a_short_pulse) {
    const char* const fed = "and g y = a irise 8 ifall 8";
    for (const scenario& s : {
             scenario{check_off, pulse_design, pulse,
                      {{"y", "10:0S 110:1S 116:0S"}, {"z", "14:0S 114:1S 120:0S"}, {"w", "18:0S 118:1S 124:0S"}}, {}},
             {kol_nosuppress, pulse_design, pulse,
              {{"y", "10:0S 110:1S 116:0S"}, {"z", "14:0S 114:1S 120:0S"}, {"w", "18:0S 118:1S 124:0S"}},
              driver_spike + fed_spike},
             {kol_suppress, pulse_design, pulse, {{"y", "10:0S"}, {"z", "14:0S"}, {"w", "18:0S"}},
              driver_spike + fed_spike},
             {kol_indgene, pulse_design, pulse,
              {{"y", "10:0S 110:iS 116:0S"}, {"z", "14:0S 114:iS 120:0S"}, {"w", "18:0S 118:iS 124:0S"}},
              driver_spike + fed_spike},
             {kol_pessimistic, pulse_design, pulse,
              {{"y", "10:0S 100:iS 116:0S"}, {"z", "14:0S 114:iS 120:0S"}, {"w", "18:0S 118:iS 124:0S"}},
              driver_spike + earlier_fed_spike},
             // As long as the delay is no spike.
             {kol_indgene, "and g y = a irise 6 ifall 6", pulse, {{"y", "6:0S 106:1S 112:0S"}}, {}},
             {kol_indgene, fed, pulse, {{"a", "100:1S 106:0S"}, {"y", "8:0S 108:1S 114:0S"}}, force_spike},
             {kol_suppress, fed, pulse, {{"a", "100:1S 106:0S"}, {"y", "8:0S"}}, force_spike},
         })
        expect_scenario(s);
}

TEST(run, merges_two_changes_of_a_net_at_one_time) {
    const char* const design = "and g1 y = a rise 2 fall 2 drive SZSS; and g2 y = b rise 2 fall 2 drive WWWW";
    const char* const stimuli = "a=1@0 b=0@0 a=0@10 b=1@10 b=0@11";
    // With the state before both, but in a spike with the one between.
    expect_scenario({check_off, design, stimuli, {{"y", "2:1S 12:1S 13:0W"}}, {}});
    expect_scenario({kol_nosuppress, design, stimuli, {{"y", "2:1S 12:iW 13:0W"}},
                     {"# !! SPIKE on pin : \"/g2/O\" ", "#   To net : \"/y\" ",
                      "#   time:12.000 -->13.000 <-> spike:1.000 (<2.000) "}});
}
// clang-format on

TEST(run, shows_fed_pins_the_resolved_state_of_a_spike) {
    struct row {
        std::int16_t spike_model;
        const char* net;
        const char* near_pin;  // sees no spike
        const char* far_pin;   // sees one
        std::int32_t time;
    };
    for (const row& r :
         {row{kol_nosuppress, "1S", "1S", "1S", 110}, row{kol_suppress, "0S", "1S", "0S", 10},
          row{kol_indgene, "iS", "1S", "1S", 110}, row{kol_pessimistic, "iS", "1S", "1S", 100}}) {
        SCOPED_TRACE(r.spike_model);
        build(pulse_design, r.spike_model);
        tst_schedule(pulse);
        tst_run_until(112);
        EXPECT_EQ(tst_state_text(tst_net("y").UU.U1.cur_state.state), r.net);
        EXPECT_EQ(tst_net("y").UU.U1.cur_state.time, r.time);
        EXPECT_EQ(tst_state_text(tst_pin("/h/I1").pin_state.std.state), r.near_pin);
        EXPECT_EQ(tst_state_text(tst_pin("/k/I1").pin_state.std.state), r.far_pin);
        EXPECT_EQ(tst_pin("/k/I1").pin_state.std.time, r.time);
    }
}

TEST(run, is_silent_about_spikes_up_to_the_threshold_of_the_time) {
    const lines_t first = driver_spike;
    const lines_t second{first[0], first[1], "#   time:210.000 -->216.000 <-> spike:6.000 (<10.000) "};
    struct row {
        std::int32_t before, after, switching;
        lines_t lines;
    };
    for (const row& r : {row{5, 6, 0, first + second}, row{6, 5, 0, {}}, row{6, 5, 210, second},
                         row{6, 5, 211, {}}, row{5, 6, 200, first}}) {
        build("and g y = a rise 10 fall 10", kol_indgene);
        kol_observe_net(&tst_net("y"));
        kol_ext.spike_min_t0 = r.before;
        kol_ext.spike_min_t = r.after;
        kol_ext.tspike_min = r.switching;
        tst_schedule("a=0@0 a=1@100 a=0@106 a=1@200 a=0@206");
        tst_run_until(1000);
        EXPECT_EQ(tst_take_lines(), r.lines) << r.before << ' ' << r.after << ' ' << r.switching;
        EXPECT_EQ(tst_changes_of("y"), "10:0S 110:iS 116:0S 210:iS 216:0S");
    }
}

// ---- what ends a run

void set_break(const std::string& net, std::int8_t state) {
    auto* record = new yx_break_signal_rec_t;
    record->net = &tst_net(net);
    record->break_name = tm_string(net);
    record->state = state;
    record->previous = kol_ext.break_signal;
    kol_ext.break_signal = record->net->UU.U1.break_signal = record;
}

TEST(run, stops_at_a_break_but_not_where_it_starts) {
    struct row {
        const char* name;
        const char* design;
        const char* net;
        const char* stimuli;  // behind a first run to 10
        std::int32_t stopped;
    };
    for (const row& r : {
             row{"force", "and g y = a rise 3 fall 3", "a", "a=0@11 a=1@12", 12},
             {"pin event", "and g y = a rise 3 fall 3", "y", "a=1@12", 15},
             {"start", "and g y = a", "a", "a=1@10 b=1@12 a=0@14 a=1@16", 16},
             {"without a change", "and g y = a", "a", "a=1@10 a=1@14", 14},
             {"other state", "and g y = a", "a", "a=0@11 a=x@12 a=1z@13", 100},
             {"bus member", "bus d 2; and g d.1 = a rise 3 fall 3", "d[1]", "a=1@12", 15},
             {"bit of a bus pin", "bus d 2; and g d = a rise 3 fall 3", "d[1]", "a=1@12", 15},
             {"sub-net", "net t; sub s of t; and g s = a rise 3 fall 3", "t", "a=1@12", 15},
         }) {
        SCOPED_TRACE(r.name);
        build(std::string("net b; ") + r.design, kol_indgene);
        tst_run_until(10);
        set_break(r.net, 19);
        tst_schedule(r.stimuli);
        tst_run_until(100);
        EXPECT_EQ(kol_ext.cur_time, r.stopped);
        EXPECT_EQ(kol_ext.time_breaked, r.stopped < 100);
        const std::string quoted = std::string(r.net) + "\" ";
        const lines_t lines{"# !! BREAK on net : \"/" + quoted, "#    Name : \"" + quoted,
                            "#    time: " + std::to_string(r.stopped) + ".000"};
        EXPECT_EQ(tst_take_lines(), r.stopped < 100 ? lines : lines_t{});
        EXPECT_EQ(tm_vext.num_warnings, 0);
    }
}

TEST(run, stops_at_the_51st_error_or_warning) {
    build("net f fixed; net e", kol_indgene);
    tm_vext.num_warnings = 30;  // of before
    for (int k = 1; k <= 120; ++k) tst_schedule("f=" + std::to_string(k % 2) + "@" + std::to_string(k));
    tst_run_until(50);
    EXPECT_FALSE(kol_ext.time_breaked);
    EXPECT_EQ(tst_take_lines().size(), 100U);
    tst_run_until(1000);
    EXPECT_TRUE(kol_ext.time_breaked);
    EXPECT_EQ(kol_ext.cur_time, 101);
    EXPECT_EQ(tst_state_text(tst_net("f").UU.U1.cur_state.state), "1S");
    const lines_t lines = tst_take_lines();
    ASSERT_EQ(lines.size(), 105U);
    EXPECT_EQ(
        lines_t(lines.end() - 3, lines.end()),
        (lines_t{"# !! More than 50 errors or warnings : so simulation is BREAKED  . ", "#    time: 101.000",
                 "# !! to avoid too many spike warnings use \"SPIKE MIN\" ... ? "}));
    EXPECT_EQ(kol_ext.cur_event->time, 102);
}

TEST(run, asks_for_the_users_keys_behind_force_events_only) {
    struct row {
        const char* keys;
        std::int32_t stopped;
        lines_t lines;
        const char* left;
    };
    for (const row& r :
         {row{"s", 20, {"# !! Simulation BREAKED Request ", "#    time : 20.000"}, ""},
          row{"bs", 20, {"# !! Simulation BREAKED Request ", "#    time : 20.000"}, "b"},
          row{"b", 100, {"# !! Simulation STATUS : time = 20.000"}, ""}, row{"", 100, {}, ""}}) {
        build("net b; and g y = a rise 5 fall 5", kol_indgene);
        tst_schedule("a=1@10 b=1@20");
        tst_run_until(11);
        tst_session.keys = r.keys;
        tst_run_until(100);
        EXPECT_EQ(kol_ext.cur_time, r.stopped) << r.keys;
        EXPECT_EQ(tst_take_lines(), r.lines) << r.keys;
        EXPECT_EQ(tst_session.keys, r.left);
    }
}

TEST(run, leaves_events_behind_its_end_queued) {
    build("and g y = a rise 3 fall 3", kol_indgene);
    kol_observe_net(&tst_net("y"));
    tst_schedule("a=1@10 a=0@14");
    tst_run_until(12);
    EXPECT_EQ(kol_ext.cur_time, 12);
    EXPECT_EQ(tst_changes_of("y"), "");
    tst_run_until(13);  // the event at the end belongs to the run
    EXPECT_EQ(tst_changes_of("y"), "13:1S");
    tst_run_until(100);
    EXPECT_EQ(tst_changes_of("y"), "13:1S 17:0S");
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

void append_forces(const std::vector<force>& forces, kol_force_rec_t*& first, kol_force_rec_t*& last) {
    for (const force& f : forces) {
        auto* record = new kol_force_rec_t;
        record->net = &tst_net("a");
        record->time = f.time;
        record->state = f.state;
        record->stop_time = f.stop_time;
        record->previous = last;
        (last == nullptr ? first : last->next) = record;
        last = record;
    }
}

TEST(run, turns_forces_and_clocks_of_its_window_into_events) {
    struct row {
        std::vector<force> forces;
        std::int32_t period, block_start;
        std::vector<force> clocked;
        const char* events;  // of the window from 23 to 60
    };
    for (const row& r : {
             row{{}, 10, 0, {{5, 19}}, "25:1S 35:1S 45:1S 55:1S"},
             {{}, 10, 0, {{5, 19, 40}}, "25:1S 35:1S"},
             {{}, 10, 0, {{5, 19, 45}}, "25:1S 35:1S 45:1S"},
             {{}, 10, 0, {{3, 19, 23}}, ""},  // stopped before the run
             {{}, 10, 0, {{5, 19, 24}}, ""},  // and before the first event
             {{}, 10, 0, {{0, 17}, {5, 19}}, "25:1S 30:0S 35:1S 40:0S 45:1S 50:0S 55:1S"},
             {{}, 10, 3, {{0, 17}, {5, 19}}, "23:0S 28:1S 33:0S 38:1S 43:0S 48:1S 53:0S 58:1S"},
             {{}, 10, 42, {{5, 19}}, "47:1S 57:1S"},
             {{}, 10, 60, {{0, 19}}, ""},
             {{}, 0, 0, {{30, 19}}, ""},
             {{}, 10, 0, {{25, 19}}, "45:1S 55:1S"},
             {{{22, 19}, {23, 17}, {59, 19}, {60, 17}}, 0, 0, {}, "23:0S 59:1S"},
             {{{30, 17}, {30, 19}}, 30, 0, {{0, 18}, {0, 16}}, "30:1S 30:0S 30:xS 30:iS"},
         }) {
        build("net a", kol_indgene);
        append_forces(r.forces, kol_ext.start_force, kol_ext.last_force);
        auto* block = new kol_forceblk_rec_t;
        block->clock_period = r.period;
        block->start_time = r.block_start;
        append_forces(r.clocked, block->start_force, block->last_force);
        kol_ext.start_clock_force_blk = kol_ext.last_clock_force_blk = block;
        kol_ext.start_time = kol_ext.cur_time = 23;
        kol_ext.end_time = 60;
        kol_expand_stimuli();
        std::string events;
        for (const yx_event_rec_t* event = kol_ext.cur_event; event != nullptr; event = event->next)
            events += (events.empty() ? "" : " ") + std::to_string(event->time) + ":" +
                      tst_state_text(event->state);
        EXPECT_EQ(events, r.events) << r.period << " from " << r.block_start;
    }
}

}  // namespace
