#include "kernel/queue.h"

#include <gtest/gtest.h>

#include <random>

#include "kernel/net_events.h"
#include "kernel/queue_check.h"
#include "queue_model.h"
#include "support/design_build.h"

namespace {

// Two pins drive /n1, the others a net each.
constexpr std::string_view drivers =
    "nand g0 n0 = a; nand g1 n0 = a; nand g2 n2 = a; nand g3 n3 = a; nand g4 n4 = a; nand g5 n5 = a";

// The kernel's queue and the model of it, driven side by side.
struct both_queues {
    queue_model fresh, model;
    std::vector<yx_pin_record_t*> pins;

    both_queues(const std::vector<std::int16_t>& priorities, std::int16_t spike_model, bool spiked)
        : fresh{priorities, {0, 0, 2, 3, 4, 5}, spiked, spike_model} {
        fresh.newest.resize(priorities.size());
        for (std::size_t k = 0; k < priorities.size(); ++k)
            pins.push_back(&tst_pin("/g" + std::to_string(k) + "/O"));
    }
    yx_net_record_t* net(int k) const { return pins[static_cast<std::size_t>(k)]->net_ptr; }

    void reset() {
        kol_empty_queue();
        model = fresh;
        kol_ext.cur_time = 0;
        kol_ext.spiked = model.spiked;
        kol_ext.spike_model = static_cast<std::int16_t>(model.spike_model);
        for (std::size_t k = 0; k < pins.size(); ++k) pins[k]->pin_hdl_priority = model.priority[k];
    }
    void force(int k, std::int32_t after, std::int8_t state) {
        kol_create_force_event(net(k), kol_ext.cur_time + after, state);
        model.force(model.net_of_pin[static_cast<std::size_t>(k)], kol_ext.cur_time + after, state);
    }
    void output(int pin, std::int32_t delay, std::int8_t state) {
        kol_output_state(pins[static_cast<std::size_t>(pin)], net(pin), delay, state);
        model.output(pin, delay, state);
    }
    void begin_head() { kol_ext.cur_time = model.cur_time = model.queue[0]->time; }
    void retire() {
        kol_retire_cur_event();
        model.retire();
    }
    // The first difference, empty when there is none.
    std::string difference() const {
        const yx_event_rec_t* e = kol_ext.cur_event;
        for (const model_event* m : model.queue) {
            const yx_pin_record_t* pin = m->pin < 0 ? nullptr : pins[static_cast<std::size_t>(m->pin)];
            if (e == nullptr) return "shorter than the model";
            if (e->time != m->time || e->state != m->state || e->pin != pin || e->net != net(m->net))
                return "at time " + std::to_string(m->time);
            e = e->next;
        }
        if (e != nullptr) return "longer than the model";
        if (model.broken) return "the model found no place";
        if (!model.queue.empty() && kol_next_change(*kol_ext.cur_event) != model.next_change(kol_max_delay))
            return "next change";
        kol_list_all_event();
        return {};
    }
};

// Sequences of steps, begun with FORCE events at the given times and the first of them executed: while the
// head is executed, each pin schedules at each delay or the head retires; between events, the user forces or
// the next event begins.
struct short_sequences {
    both_queues& queues;
    const std::vector<int>& forces;
    int delays, longest;
    std::vector<int> steps{};  // the sequence followed, the last one not yet taken
    int checked = 0;

    int retires() const { return 3 * delays; }
    // Takes a step; false when it is none.
    bool take(int step, std::int8_t state, bool& executing) {
        if (executing && step < retires())
            queues.output(step / delays, step % delays, state);
        else if (executing)
            queues.retire();
        else if (step < 2)
            queues.force(0, step, state);
        else if (step == 2 && !queues.model.queue.empty())
            queues.begin_head();
        else
            return false;
        if (step == (executing ? retires() : 2)) executing = !executing;
        return true;
    }
    // False when the last step is none; the steps before it are.
    bool follow() {
        queues.reset();
        for (const int time : forces) queues.force(0, time, 19);
        queues.begin_head();
        bool executing = true;
        for (std::size_t k = 0; k < steps.size(); ++k)
            if (!take(steps[k], k % 2 == 0 ? 17 : 19, executing)) return false;
        return true;
    }
    // Every sequence that begins with the steps followed; queues stand behind them.  The first longer one
    // goes on from there, the others begin anew.
    void follow_all(bool executing) {
        ++checked;
        const std::string difference = queues.difference();
        if (!difference.empty()) FAIL() << difference << " after " << testing::PrintToString(steps);
        if (static_cast<int>(steps.size()) == longest) return;
        bool stands_here = true;
        for (int step = 0; step <= (executing ? retires() : 2); ++step) {
            const std::int8_t state = steps.size() % 2 == 0 ? 17 : 19;
            bool goes_on = executing;
            steps.push_back(step);
            const bool is_step = stands_here ? take(step, state, goes_on) : follow();
            if (!stands_here && is_step && step == (executing ? retires() : 2)) goes_on = !executing;
            if (is_step) {
                follow_all(goes_on);
                stands_here = false;
            }
            steps.pop_back();
            if (testing::Test::HasFatalFailure()) return;
        }
    }
};

TEST(event_queue, follows_the_rules_in_every_short_sequence) {
    tst_build(drivers);
    kol_max_delay = 1;
    for (const auto& priorities : {std::vector<std::int16_t>{1, 2, 3}, {3, 2, 1}, {2, 1, 2}, {1, 1, 1}})
        for (const auto& forces : {std::vector<int>{0}, {0, 0, 1}})
            for (const bool spiked : {false, true}) {
                both_queues queues(priorities, spiked ? kol_pessimistic : kol_suppress, spiked);
                short_sequences all{queues, forces, spiked ? 3 : 2, spiked ? 5 : 6};
                ASSERT_TRUE(all.follow());
                ASSERT_NO_FATAL_FAILURE(all.follow_all(true));
                EXPECT_GT(all.checked, 10000);
            }
}

// Delays that leave the near times, starts of runs before what an earlier run left, bursts at one time.
TEST(event_queue, follows_the_rules_in_long_random_runs) {
    tst_build(drivers);
    kol_max_delay = 700;
    std::mt19937 random(20240229);
    const auto one_of = [&random](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    for (int round = 0; round < 12; ++round) {
        both_queues queues({1, 3, 2, 3, static_cast<std::int16_t>(round), -4},
                           static_cast<std::int16_t>(round % 4), round % 3 != 0);
        queues.reset();
        const int longest = round % 2 == 0 ? 3 : 4000;
        for (int step = 0; step < 1500; ++step) {
            if (one_of(50) == 0) kol_ext.cur_time /= 2;  // as a restored state does
            for (int k = one_of(4); k > 0; --k)
                queues.force(one_of(6), one_of(longest), static_cast<std::int8_t>(17 + 2 * one_of(2)));
            for (int events = one_of(6); events > 0 && !queues.model.queue.empty(); --events) {
                queues.begin_head();
                for (int k = one_of(4); k > 0; --k)
                    queues.output(one_of(6), one_of(longest), static_cast<std::int8_t>(17 + 2 * one_of(2)));
                ASSERT_EQ(queues.difference(), "") << "round " << round << " step " << step;
                queues.retire();
            }
            ASSERT_EQ(queues.difference(), "") << "round " << round << " step " << step;
        }
    }
}

}  // namespace
