// Flip-flop, latch and checker under pseudo-random changes with x and i, at distances around their limits,
// against the model of timed_reference.h; and the switch by what it schedules.
#include <gtest/gtest.h>

#include <random>

#include "foundation/context.h"
#include "kernel/model.h"
#include "kernel/setup.h"
#include "kernel/state.h"
#include "support/design_build.h"
#include "support/rows.h"
#include "support/session.h"
#include "support/stimuli.h"
#include "timed_reference.h"

namespace {

std::string number(int n) { return std::to_string(n); }

struct scenario {
    ref_storage model;
    std::string design, pins;  // pins: letters of the inputs
    std::map<char, std::string> nets;
};

std::string three(int n) {
    return number(n + 30) + ":" + number(n) + ":" + number(n + 60);
}  // typical counts

// The letter that says in a pin's name what its edge is: "EP" of a latch is open while 1.
std::string polarity(char kind, char letter, char edge) {
    const bool is_reverse = (kind == 'L' || kind == 'T') && letter == 'c';
    return edge == 'X' ? "X" : (edge == 'R') != is_reverse ? "P" : "N";
}

// Adds a pin of that name on a net, read from a bus member or a sub-net in turn, its edge a property or in
// its name.
void add_input(scenario& s, char letter, char edge, std::string name, bool has_limits) {
    static int turn = 0;
    ref_input& in = s.model.input(letter);
    const std::string net = std::string(1, letter);
    if (turn % 2 == 1 && letter != 'd') name += polarity(s.model.kind, letter, edge);
    in.edge = edge;
    in.path = "/u/" + name;
    in.rise = 1 + (letter == 'd' ? 1 : 0);
    in.fall = 2 + (letter == 'c' ? 1 : 0);
    s.nets[letter] = turn % 3 == 1 ? "v" + net + "[1]" : net;
    if (turn % 3 == 1) s.design += "bus v" + net + " 3; ";
    if (turn % 3 == 2) s.design += "net " + net + "; sub t" + net + " of " + net + "; ";
    s.pins += " " + name + ":" + (turn % 3 == 1 ? "v" + net + ".1" : turn % 3 == 2 ? "t" + net : net);
    ++turn;
    const bool has_window = has_limits && letter != 'c' && letter != 'e';
    const bool has_pulse = has_limits && letter != 'd' && letter != 'e';
    if (has_window) in.setup = 14 + letter % 3, in.hold = 12 + letter % 2;
    if (has_pulse)
        in.high = letter == 'r' ? 0 : 11 + letter % 4, in.low = letter == 's' ? 0 : 13 - letter % 3;
}

void finish(scenario& s, const std::string& model, const std::string& outputs) {
    s.design += model + " u" + outputs + " =" + s.pins + (outputs.empty() ? "" : " rise 3 fall 1");
    for (const auto& [letter, net] : s.nets) {
        const ref_input& in = s.model.input(letter);
        s.design += "; pin " + in.path + " rise " + number(in.rise) + " fall " + number(in.fall);
        if (std::string("PNX").find(in.path.back()) == std::string::npos)
            s.design += std::string(" edge ") + in.edge;
        for (const auto& [option, limit] :
             {std::pair{" setup ", in.setup}, {" hold ", in.hold}, {" high ", in.high}, {" low ", in.low}})
            if (limit != 0) s.design += option + three(limit);
    }
}

scenario storage(char kind, char clock_edge, char override_edge, bool has_set, bool has_reset,
                 bool has_limits) {
    scenario s;
    s.model.kind = kind;
    add_input(s, 'd', clock_edge != 'F' ? 'X' : 'F', "D", has_limits);
    add_input(s, 'c', clock_edge, kind == 'D' ? "CLK" : "E", has_limits);
    if (has_set) add_input(s, 's', override_edge, "S", has_limits);
    if (has_reset) add_input(s, 'r', override_edge, "R", has_limits);
    s.model.outputs[0] = {false, 4, 3, "RWZS", "iU", -1};
    s.model.outputs[1] = {true, 3, 1, "SSSS", "iU", -1};
    s.design += "net q rise 1 fall 2; bus vp 2 rise 50 fall 50; ";
    finish(s, kind == 'D' ? "dff" : kind == 'L' ? "latch" : "dlatch", " Q:q NB:vp.1");
    s.design += "; pin /u/Q drive RWZS";
    return s;
}

scenario checker(char clock_edge, char enable_edge) {
    scenario s;
    s.model.kind = 'S';
    add_input(s, 'd', clock_edge == 'R' ? 'R' : 'X', "D", true);
    add_input(s, 'c', clock_edge, "CLK", true);
    if (enable_edge != 0) add_input(s, 'e', enable_edge, "E", false);
    finish(s, "stable", "");
    return s;
}

class pseudo_random {
public:
    int below(int n) { return static_cast<int>(engine_() % static_cast<unsigned>(n)); }

private:
    std::mt19937 engine_{7};
};

// Distances from 0, once for another pin and where nothing is under way, to beyond every limit.
int distance(pseudo_random& random, const ref_storage& model, bool may_be_0) {
    return may_be_0 && !model.has_scheduled && random.below(8) == 0 ? 0 : 8 + random.below(10);
}

// Limits and delays of the properties, changed, and the model's alike.
void refresh(ref_storage& model) {
    const auto changed = [](int time) { return time > 10 ? time - 1 : time == 3 ? 2 : time; };
    for (std::int32_t i = 1; i <= yx_sext.max_prop_cur; ++i)
        if (yx_prop_record_t& prop = *yx_ptrto_prop_rec(i); prop.prop_type == YX_PTIME)
            prop.valuet[1] = changed(prop.valuet[1]);
    kol_refresh_timing();
    for (ref_input* in : {&model.d, &model.c, &model.s, &model.r, &model.e})
        for (int* time : {&in->setup, &in->hold, &in->high, &in->low, &in->rise, &in->fall})
            *time = changed(*time);
    for (ref_output& out : model.outputs) --out.rise;  // the pin's own 3 is 2
}

void run(scenario& s) {
    SCOPED_TRACE(s.design);
    tst_build(s.design);
    ASSERT_EQ(tst_take_text(), "");
    kol_ext.spike_on = false;
    pseudo_random random;
    std::string letters;
    for (const auto& [letter, net] : s.nets) letters += letter;
    int time = 1;
    int step = 1;
    char pin = 0;
    for (int k = 0; k < 400; ++k) {
        if (k == 200) refresh(s.model);
        if (random.below(50) == 0) {
            kol_restart_models();
            s.model.restart();
        }
        const char before = pin;
        pin = letters[static_cast<std::size_t>(random.below(static_cast<int>(letters.size())))];
        const std::string state{"0101xi"[random.below(6)], "SW"[random.below(12) == 0 ? 1 : 0]};
        step = distance(random, s.model, step != 0 && pin != before);
        time += step;
        const std::string change = s.nets[pin] + "=" + state + "@" + number(time);
        SCOPED_TRACE(change);
        tst_schedule(change);
        tst_run_until(time);
        ASSERT_EQ(tst_take_text(), s.model.change(pin, state, time));
        if (s.model.has_scheduled) tst_run_until(time + 7);
        for (std::size_t i = 0; i < 2 && s.model.kind != 'S'; ++i) {
            const yx_signal_state_rec& seen = tst_net(i == 0 ? "q" : "vp[1]").UU.U1.cur_state;
            ASSERT_EQ(tst_state_text(seen.state), s.model.outputs[i].state) << i;
            ASSERT_EQ(seen.time, s.model.outputs[i].changed) << i;
        }
    }
}

TEST(storage, does_what_a_small_model_of_it_does) {
    for (const char kind : {'D', 'L', 'T'})
        for (const char clock_edge : {'R', 'F', 'X'})
            for (const char override_edge : {'R', 'F', 'X'})
                for (int with = 0; with < 8; ++with) {
                    const bool is_by_level = clock_edge != 'X' && override_edge != 'X';
                    if ((override_edge != 'R' && with < 2) || (kind == 'T' && !is_by_level)) continue;
                    scenario s = storage(kind, clock_edge, override_edge, (with & 2) != 0, (with & 4) != 0,
                                         (with & 1) != 0);
                    ASSERT_NO_FATAL_FAILURE(run(s));
                }
}

// An enable that may be open makes the output unknown where the data differ from what is held.
TEST(storage, a_transparent_latch_goes_on_from_what_its_output_shows_at_a_restart) {
    for (const auto& [output, data] : {std::pair{"Q", "0"}, {"QB", "1"}}) {
        tst_build(std::string("dlatch u ") + output + ":q = D:d EP:e rise 1 fall 1; pin /u/D edge X");
        ASSERT_EQ(tst_take_text(), "");
        tst_schedule(std::string("e=0@1 d=") + data + "@2 q=1@3");
        tst_run_until(5);
        kol_restart_models();
        tst_schedule("e=i@10");
        tst_run_until(30);
        EXPECT_EQ(tst_net_state("q"), "iS") << output;
    }
}

TEST(checker, does_what_a_small_model_of_it_does) {
    for (const char clock_edge : {'R', 'F', 'X'})
        for (const char enable_edge : {'\0', 'R', 'F', 'X'}) {
            scenario s = checker(clock_edge, enable_edge);
            ASSERT_NO_FATAL_FAILURE(run(s));
        }
}

// ---- the switch

// The two states that one driver each brings together, as text.
std::string resolved(const std::string& a, const std::string& b) {
    const std::string strengths = "UZRWS";
    const std::size_t of_a = strengths.find(a[1]), of_b = strengths.find(b[1]);
    if (of_a != of_b) return of_a > of_b ? a : b;
    return a == b && (a[0] == '0' || a[0] == '1') ? a : std::string{'i', a[1]};
}

struct ref_switch {
    char edge = 'R';
    bool is_closed = false;
    std::map<std::string, std::string> state{{"a", "iU"}, {"b", "iU"}, {"e", "iU"}};

    // Pin delays: enable rise 1 fall 2, a 2 and 3, b 3 and 4.
    static int delay(const std::string& pin, char value) {
        const int rise = pin == "e" ? 1 : pin == "a" ? 2 : 3;
        return value == '0' ? rise + 1 : value == '1' ? rise : (2 * rise + 1) / 2;
    }

    // What is scheduled at once.
    std::string change(const std::string& net, const std::string& is, int time) {
        const std::string was = state[net];
        state[net] = is;
        if (was == is) return "";
        if (net == "e") {
            const char kind = was[0] == '0' || is[0] == '1' ? 'R' : was[0] == '1' || is[0] == '0' ? 'F' : 'X';
            is_closed = kind == 'X' ? !is_closed : edge == 'X' || edge == kind;
            if (edge != 'X' && edge != kind) return "";
        } else if (!is_closed) {
            return "";
        }
        const std::string all = resolved(state["b"], resolved(state["a"], "iU"));
        std::multimap<int, std::string> events;
        for (const std::string pin : {"a", "b"})
            if (state[pin] != all)
                events.emplace(time + delay(net, is[0]) + delay(pin, all[0]), "/" + pin + "=" + all);
        std::string text;
        for (const auto& [at, event] : events) text += (text.empty() ? "" : " ") + number(at) + ":" + event;
        return text;
    }
};

TEST(mos_switch, schedules_what_a_small_model_of_it_does) {
    for (const char edge : {'R', 'F', 'X'}) {
        tst_build(
            std::string("smos m = E:e A:a B:b; pin /m/A io 4 rise 2 fall 3; pin /m/B io 4 rise 3 fall 4; "
                        "pin /m/E rise 1 fall 2 edge ") +
            edge);
        kol_ext.spike_on = false;
        pseudo_random random;
        ref_switch model;
        model.edge = edge;
        for (int k = 0, time = 10; k < 1500; ++k, time += 40) {
            const std::string net{"abe"[random.below(3)]};
            const std::string state{"i0x1"[random.below(4)], "UZRWSSSS"[random.below(8)]};
            for (auto& [name, known] : model.state) known = tst_net_state(name);  // after the last one's echo
            const std::string change = net + "=" + state + "@" + number(time);
            SCOPED_TRACE(change);
            tst_schedule(change);
            tst_run_until(time);
            ASSERT_EQ(tst_queue_text(), model.change(net, state, time)) << edge;
            tst_run_until(time + 39);
        }
    }
}

}  // namespace
