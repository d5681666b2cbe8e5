#include "kernel/queue.h"

#include <gtest/gtest.h>

#include <random>

#include "kernel/net_events.h"
#include "queue_model.h"
#include "support/design_build.h"

namespace {

// Two pins drive /n1, the others a net each.
constexpr std::string_view drivers =
    "nand g0 n0 = a; nand g1 n0 = a; nand g2 n2 = a; nand g3 n3 = a; nand g4 n4 = a; nand g5 n5 = a";

// The kernel's queue and the model of it, driven side by side.
struct both_queues {
    std::vector<yx_pin_record_t*> pins;
    queue_model model;

    both_queues(const std::vector<std::int16_t>& priorities, std::int16_t spike_model, bool spiked)
        : model(priorities, {0, 0, 2, 3, 4, 5}) {
        for (std::size_t k = 0; k < priorities.size(); ++k) {
            pins.push_back(&tst_pin("/g" + std::to_string(k) + "/O"));
            pins[k]->pin_hdl_priority = priorities[k];
        }
        model.spiked = spiked;
        model.spike_model = spike_model;
        apply_spikes();
    }
    void apply_spikes() const {
        kol_ext.spiked = model.spiked;
        kol_ext.spike_model = static_cast<std::int16_t>(model.spike_model);
    }
    yx_net_record_t* net(int k) const { return pins[static_cast<std::size_t>(k)]->net_ptr; }

    void reset() {
        kol_empty_queue();
        queue_model fresh(model.priority, model.net_of_pin);
        fresh.spiked = model.spiked;
        fresh.spike_model = model.spike_model;
        model = std::move(fresh);
        kol_ext.cur_time = 0;
    }
    void force(int k, std::int32_t after, std::int8_t state) {
        kol_create_force_event(net(k), kol_ext.cur_time + after, state);
        model.force(model.net_of_pin[static_cast<std::size_t>(k)], kol_ext.cur_time + after, state);
    }
    void output(int pin, std::int32_t delay, std::int8_t state) {
        kol_output_state(pins[static_cast<std::size_t>(pin)], net(pin), delay, state);
        model.output(pin, delay, state);
    }
    void begin_head() { kol_ext.cur_time = model.cur_time = model.cur->time; }
    void retire() {
        kol_retire_cur_event();
        model.retire();
    }
    // The first difference, empty when there is none.
    std::string difference() const {
        const model_event* m = model.cur;
        int place = 0;
        for (const yx_event_rec_t* e = kol_ext.cur_event; e != nullptr; e = e->next, m = m->next, ++place) {
            if (m == nullptr) return "longer than the model";
            const yx_pin_record_t* pin = m->pin < 0 ? nullptr : pins[static_cast<std::size_t>(m->pin)];
            if (e->time != m->time || e->state != m->state || e->pin != pin || e->net != net(m->net))
                return "at place " + std::to_string(place);
        }
        if (m != nullptr) return "shorter than the model";
        if (model.broken) return "the model found no place";
        if (model.cur != nullptr && kol_next_change(*kol_ext.cur_event) != model.next_change(kol_max_delay))
            return "next change";
        kol_list_all_event();
        return {};
    }
};

// Every sequence of a few steps, begun with FORCE events at the given times and the first of them executed:
// while the head is executed, each pin schedules at each delay or the head retires; between events, the user
// forces or the next event begins.
struct every_sequence {
    both_queues& queues;
    std::vector<std::int32_t> forces;
    int delays;  // 0, 1, ...
    std::vector<int> steps{};
    int checked = 0;

    int retires() const { return 3 * delays; }
    void replay() {
        queues.reset();
        for (const std::int32_t time : forces) queues.force(0, time, 19);
        queues.begin_head();
        bool executing = true;
        for (std::size_t k = 0; k < steps.size(); ++k) {
            const auto state = static_cast<std::int8_t>(k % 2 == 0 ? 17 : 19);
            const int step = steps[k];
            if (!executing && step < 2) queues.force(0, step, state);
            if (!executing && step == 2) queues.begin_head();
            if (executing && step < retires()) queues.output(step / delays, step % delays, state);
            if (executing && step == retires()) queues.retire();
            if (executing ? step == retires() : step == 2) executing = !executing;
        }
    }
    void visit(std::size_t depth, bool executing) {
        replay();
        ++checked;
        const std::string difference = queues.difference();
        const bool is_empty = queues.model.cur == nullptr;
        if (!difference.empty()) {
            std::string text;
            for (const int step : steps) text += " " + std::to_string(step);
            FAIL() << difference << " after" << text;
        }
        if (depth == 0 || testing::Test::HasFatalFailure()) return;
        for (int step = 0; step < (executing ? retires() + 1 : 3); ++step) {
            if (!executing && step == 2 && is_empty) continue;
            steps.push_back(step);
            visit(depth - 1, executing ? step != retires() : step == 2);
            steps.pop_back();
            if (testing::Test::HasFatalFailure()) return;
        }
    }
};

TEST(event_queue, follows_the_rules_in_every_short_sequence) {
    tst_build(drivers);
    kol_max_delay = 1;
    for (const std::vector<std::int16_t>& priorities :
         {std::vector<std::int16_t>{1, 2, 3}, {3, 2, 1}, {2, 1, 2}, {1, 1, 1}})
        for (const std::vector<std::int32_t>& forces : {std::vector<std::int32_t>{0}, {0, 0, 1}}) {
            both_queues plain(priorities, kol_suppress, false), spiked(priorities, kol_pessimistic, true);
            for (every_sequence sequences : {every_sequence{plain, forces, 2}, {spiked, forces, 3}}) {
                sequences.queues.apply_spikes();
                sequences.visit(sequences.delays == 2 ? 6 : 5, true);
                ASSERT_FALSE(HasFatalFailure());
                EXPECT_GT(sequences.checked, 10000);
            }
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
            for (int events = one_of(6); events > 0 && queues.model.cur != nullptr; --events) {
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
