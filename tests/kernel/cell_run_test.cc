// The run over cells against the general way: the same designs, stimuli and interruptions, every change,
// message and record compared.
#include "kernel/cell_run.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <random>
#include <sstream>

#include "foundation/context.h"
#include "kernel/cell_records.h"
#include "kernel/history.h"
#include "kernel/network.h"
#include "kernel/queue.h"
#include "kernel/say.h"
#include "kernel/setup.h"
#include "kernel/stimuli_reader.h"
#include "support/design_build.h"
#include "support/session.h"
#include "support/stimuli.h"

namespace {

constexpr int inputs = 5, nets = 14;

struct dice {
    std::mt19937 random;
    int priorities = 1;  // of the drivers
    int of(int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); }
    bool one_in(int n) { return of(n) == 0; }
    template <typename... Word>
    std::string choose(const Word&... words) {
        const std::array<std::string, sizeof...(words)> all{words...};
        return all[static_cast<std::size_t>(of(static_cast<int>(all.size())))];
    }
};

std::string input_name(int k) { return "a" + std::to_string(k); }
std::string net_name(int k) { return "n" + std::to_string(k); }

// A net that something may read: a stimulus, a driven net, a sub-net or a bit of the bus.
std::string any_net(dice& d) {
    if (d.one_in(3)) return input_name(d.of(inputs));
    if (d.one_in(12)) return d.choose("s1", "s2", "d.0", "d.1", "d.2");
    return net_name(d.of(nets));
}

std::string delays(dice& d, int longest) {
    std::string text;
    for (const char* property : {" rise ", " fall "}) text += property + std::to_string(d.of(longest));
    if (d.one_in(4)) text += " irise " + std::to_string(d.of(4)) + " ifall " + std::to_string(d.of(3));
    return text + " prio " + std::to_string(5 * d.of(d.priorities));
}

std::string gate(dice& d, int number, const std::string& output, int longest) {
    std::string text =
        d.choose("and", "nand", "or", "nor", "xor") + " g" + std::to_string(number) + " " + output + " =";
    for (int k = d.one_in(6) ? 5 : 1 + d.of(3); k > 0; --k) text += " " + any_net(d);
    if (d.one_in(12)) text += " d";
    text += delays(d, longest);
    return text + (d.one_in(5) ? " drive " + d.choose("SZSS", "WWWW", "ZSRW", "UUSS") : "");
}

// Limits of the data: none, a setup time, or a hold time, too.
std::string register_of(dice& d, int number, const std::string& output, int longest) {
    const std::string name = d.choose("dff", "dff", "latch") + " g" + std::to_string(number);
    const bool is_latch = name.starts_with("latch");
    const std::string clock = is_latch ? "EN:" : d.choose("CLKP:", "CLKN:", "CLKX:");
    std::string text =
        name + " " + d.choose("Q:", "QB:") + output + " = D:" + any_net(d) + " " + clock + any_net(d);
    if (d.one_in(4)) text += " RP:" + any_net(d);
    text += delays(d, longest) + "; pin /g" + std::to_string(number) + "/D edge " + d.choose("X", "X", "R");
    if (d.one_in(2)) text += " setup " + std::to_string(d.of(6));
    if (d.one_in(6)) text += " hold " + std::to_string(d.of(6));
    return text;
}

std::string random_design(dice& d) {
    const int longest = d.one_in(5) ? 3000 : d.one_in(3) ? 3 : 9;
    std::string text =
        "bus d 3; net t; sub s1 of t; sub s2 of s1; net n13 init 1; net n12 " + d.choose("fixed", "kind 4");
    for (int k = 0; k < inputs; ++k) text += "; net " + input_name(k);
    for (int k = 0; k < nets; ++k) {
        const std::string output = k == 3 ? "s2" : k == 4 ? "d.1" : k == 5 ? "d" : net_name(k);
        text +=
            "; " + (d.one_in(4) && k != 5 ? register_of(d, k, output, longest) : gate(d, k, output, longest));
    }
    if (d.one_in(2)) text += "; " + gate(d, nets, net_name(d.of(nets)), longest);  // a second driver
    if (d.one_in(2))
        text += "; smos w = A:" + any_net(d) + " B:" + d.choose("a1", "n7", "n8") + " EP:" + any_net(d) +
                "; pin /w/A io 4 rise " + std::to_string(d.of(4)) + "; pin /w/B io 4 fall " +
                std::to_string(d.of(4));
    return text;
}

const auto all_names = [] {
    std::vector<std::string> names{"t", "d[0]", "d[1]", "d[2]"};
    for (int k = 0; k < inputs; ++k) names.push_back(input_name(k));
    for (int k = 0; k < nets; ++k)
        if (k < 3 || k > 5) names.push_back(net_name(k));
    return names;
}();

struct force_t {
    std::string net;
    std::int8_t state;
    std::int32_t time, stop_time;
};

struct schedule_t {
    std::string stimuli;          // queued at once
    std::vector<force_t> forces;  // entered by the runs
    std::vector<force_t> clocked;
    std::int32_t period;
    std::vector<std::string> observed;
    std::string broken;  // the net with a break
    int ends[3];
    bool looks_for_spikes[3];
    std::int16_t spike_model;
};

std::string random_stimuli(dice& d, int from, int to) {
    std::string text;
    for (int k = 2 + d.of(25); k > 0; --k) {
        const std::string net = d.one_in(15) ? d.choose("n12", "n1", "t") : input_name(d.of(inputs));
        text += net + "=" + d.choose("0", "1", "0", "1", "x", "0z", "i") + "@" +
                std::to_string(from + d.of(to - from)) + " ";
    }
    return text;
}

std::vector<force_t> random_forces(dice& d, int count, int span) {
    std::vector<force_t> forces;
    for (; count > 0; --count)
        forces.push_back({input_name(d.of(inputs)),
                          static_cast<std::int8_t>(d.one_in(8) ? 18 : 17 + 2 * d.of(2)), d.of(span),
                          d.one_in(3) ? d.of(3 * span) : 0});
    return forces;
}

schedule_t random_schedule(dice& d, int span) {
    schedule_t s{};
    s.stimuli = random_stimuli(d, 0, 3 * span);
    s.forces = random_forces(d, d.of(20), 3 * span + 5);
    s.period = 1 + d.of(span);
    s.clocked = random_forces(d, d.one_in(2) ? d.of(3) : 0, 2 * s.period);
    s.spike_model = static_cast<std::int16_t>(d.of(4));
    const int share = 1 + d.of(3);
    for (const std::string& name : all_names)
        if (d.one_in(share)) s.observed.push_back(name);
    if (d.one_in(3)) s.broken = all_names[static_cast<std::size_t>(d.of(static_cast<int>(all_names.size())))];
    for (int k = 0; k < 3; ++k) {
        s.ends[k] = span * (k + 1) + d.of(3);
        s.looks_for_spikes[k] = d.one_in(2);
    }
    return s;
}

void give_stimuli(const schedule_t& s) {
    for (const force_t& force : s.forces) kol_add_force(tst_net(force.net), force.state, force.time, 0);
    kol_add_clock(s.period, 0);
    for (const force_t& force : s.clocked)
        kol_add_repeated_force(tst_net(force.net), force.state, force.time, force.stop_time);
}

// As the run's rules say it: every stimulus of the window becomes an event before the run begins.
void enter_at_once(const schedule_t& s, std::int32_t end) {
    const std::int32_t start = kol_ext.cur_time;
    const auto enter = [&](const force_t& force, std::int32_t time) {
        if (time >= start && time < end) kol_create_force_event(&tst_net(force.net), time, force.state);
    };
    for (std::size_t k = s.forces.size(); k-- > 0;) enter(s.forces[k], s.forces[k].time);
    for (const force_t& force : s.clocked) {
        if (force.stop_time > 0 && start >= force.stop_time) continue;
        for (std::int32_t time = start / s.period * s.period + force.time; time < end; time += s.period) {
            if (force.stop_time > 0 && time > force.stop_time) break;
            enter(force, time);
        }
    }
}

// Events and the stimuli that are still to become events, in their order.
std::string pending_text() {
    std::istringstream words(tst_queue_text());
    std::map<int, std::string> of_time;
    for (std::string word; words >> word;) of_time[std::stoi(word)] += word + " ";
    std::map<int, std::string> waiting;
    for (kol_stimuli_reader_t reader; reader.next_time() != reader.never;) {
        const kol_stimulus_t next = reader.take();
        const yx_net_record_t& net = *kol_root_net(yx_ptrto_net_rec(next.net));
        waiting[next.time] += std::to_string(next.time) + ":" + std::string(kol_path(net.sim_path)) + "=" +
                              tst_state_text(next.state) + " ";
    }
    of_time.merge(waiting);  // a time that has events has all of them
    std::string text;
    for (const auto& [time, events] : of_time) text += events;
    return text;
}

void restart(const schedule_t& s) {
    kol_ext.cur_time = kol_ext.end_time = 0;
    kol_ext.spiked = false;
    tm_vext.num_errors = tm_vext.num_warnings = 0;
    kol_init_net_state();
    tst_take_text();
    for (const std::string& name : s.observed) kol_observe_net(&tst_net(name));
}

std::string seen_by(const yx_signal_state_rec& seen) {
    return tst_state_text(seen.state) + std::to_string(seen.time) + " ";
}

// What can be seen of nets, pins and queue.
std::string records() {
    kol_bring_records_up();
    std::string text;
    for (std::int32_t i = 1; i <= yx_sext.max_net_cur; ++i) {
        const yx_net_record_t& net = *yx_ptrto_net_rec(i);
        if (net.net_type != YX_TSTD_BUS)
            text += "\n" + std::string(kol_path(net.sim_path)) + " " + seen_by(net.UU.U1.cur_state) +
                    tst_state_text(net.UU.U1.old_state.state) + " ";
    }
    for (std::int32_t i = 1; i <= yx_sext.max_pin_cur; ++i) {
        yx_pin_record_t& pin = *yx_ptrto_pin_rec(i);
        text += "\n" + std::string(kol_path(pin.sim_path)) + " ";
        for (std::int32_t bit = pin.pin_start; pin.pin_end != 0 && bit <= pin.pin_end; ++bit)
            text += seen_by(kol_pin_state(pin, *yx_ptrto_net_rec(kol_member_index(pin, bit))));
        if (pin.pin_end == 0) text += seen_by(pin.pin_state.std);
    }
    return text + "\n" + pending_text();
}

enum class way { cells, general, all_at_once };

std::string follow(const schedule_t& s, way taken) {
    kol_cells_are_used = taken == way::cells;
    restart(s);
    yx_break_signal_rec_t record;
    if (!s.broken.empty()) {
        record.net = &tst_net(s.broken);
        record.state = 19;
        kol_ext.break_signal = record.net->UU.U1.break_signal = &record;
    }
    kol_clear_stimuli();
    if (taken != way::all_at_once) give_stimuli(s);
    kol_ext.spike_model = s.spike_model;
    std::string text;
    tst_schedule(s.stimuli);
    for (int k = 0; k < 3; ++k) {
        kol_ext.spike_on = s.looks_for_spikes[k];
        const std::int32_t end = std::max(s.ends[k], kol_ext.cur_time);
        if (taken == way::all_at_once) enter_at_once(s, end);
        tst_run_until(end);
        text += std::to_string(kol_ext.cur_time) + (kol_ext.spiked ? " spiked" : "") +
                (kol_ext.time_breaked ? " broken\n" : "\n") + records() + "\n";
        for (const std::string& name : s.observed) text += name + " " + tst_history_of(name) + "\n";
    }
    if (!s.broken.empty()) kol_ext.break_signal = record.net->UU.U1.break_signal = nullptr;
    for (const std::string& name : s.observed) kol_forget_net(&tst_net(name));
    return text + tst_take_text();
}

TEST(cell_run, does_what_the_general_way_does) {
    std::size_t changes = 0;
    const char* const rounds = std::getenv("KOLV_TEST_ROUNDS");  // for a long comparison by hand
    for (int round = 0; round < (rounds != nullptr ? std::atoi(rounds) : 150); ++round) {
        dice d{std::mt19937(static_cast<unsigned>(round))};
        d.priorities = d.one_in(2) ? 1 : 2 + d.of(3);
        const std::string design = random_design(d);
        tst_build(design);
        for (int k = 0; k < 40; ++k) {
            const schedule_t schedule = random_schedule(d, d.one_in(5) ? 4000 : 40);
            const std::string text = follow(schedule, way::all_at_once);
            changes += text.size();
            for (const way taken : {way::cells, way::general})
                ASSERT_EQ(text, follow(schedule, taken))
                    << "round " << round << " schedule " << k << (taken == way::cells ? " cells\n" : "\n")
                    << design << "\n"
                    << schedule.stimuli;
        }
    }
    EXPECT_GT(changes, 1000000U);
    kol_clear_stimuli();
    kol_cells_are_used = true;
}

}  // namespace
