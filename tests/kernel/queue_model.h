// The rules of the event queue written down step by step over a plain array, to hold the kernel's queue
// against.
#pragma once

#include <algorithm>
#include <cstdint>
#include <deque>
#include <vector>

struct model_event {
    std::int32_t time = 0;
    std::int8_t state = 0;
    int pin = -1;  // -1: FORCE
    int net = 0;
};

struct queue_model {
    std::vector<std::int16_t> priority;  // of the pins
    std::vector<int> net_of_pin;
    bool spiked = false;
    int spike_model = 2;
    std::vector<model_event*> newest{};  // of the pins; none once it is executed
    std::deque<model_event> records{};
    std::vector<model_event*> queue{};
    model_event* work = nullptr;
    std::int32_t cur_time = 0;
    bool broken = false;

    void put(model_event* e, std::size_t at) {
        queue.insert(queue.begin() + static_cast<std::ptrdiff_t>(at), e);
    }
    bool yields(const model_event* e, std::int16_t prio) const {
        return e->pin >= 0 && prio > priority[e->pin];
    }

    void output(int p, std::int32_t delay, std::int8_t state) {
        const std::int32_t time = cur_time + delay;
        model_event* q = newest[p];
        if (q != nullptr && q->time >= time) {
            q->state = state;
            return;
        }
        model_event* e = &records.emplace_back(model_event{time, state, p, net_of_pin[p]});
        const std::size_t at = place(time, priority[p]);
        put(e, at);
        work = queue[std::min(at + 1, queue.size() - 1)];
        if (spiked && q != nullptr && q->time > queue[0]->time) react(q, state);
        newest[p] = e;
    }

    std::size_t place(std::int32_t time, std::int16_t prio) {
        const std::size_t count = queue.size();
        if (count == 0) return 0;
        const model_event *first = queue.front(), *last = queue.back();
        if (work == nullptr) work = queue.back();
        if (first->time == time && yields(first, prio)) return 1;
        if (last->time < time) return count;
        if (last->time == time && last->pin >= 0 && !yields(last, prio)) return count;
        if (last->time == time && last->pin < 0) work = queue.back();
        auto at = static_cast<std::size_t>(std::ranges::find(queue, work) - queue.begin());
        while (at + 1 < count && queue[at]->time <= time) ++at;
        const auto goes_before = [&](const model_event* b) {
            return b->time > time || (b->time == time && yields(b, prio));
        };
        while (at >= 2 && goes_before(queue[at - 1])) --at;
        broken = broken || (at == 0 && count > 1);
        return std::max<std::size_t>(at, 1);
    }

    void react(model_event* q, std::int8_t state) {
        if (spike_model < 2) return;
        q->state = static_cast<std::int8_t>(state / 4 * 4);
        if (spike_model == 2) return;
        q->time = queue[0]->time;
        std::erase(queue, q);
        put(q, 1);
    }

    void force(int net, std::int32_t time, std::int8_t state) {
        std::size_t at = queue.size();
        while (at > 0 && queue[at - 1]->time > time) --at;
        put(&records.emplace_back(model_event{time, state, -1, net}), at);
    }

    void retire() {
        const model_event* e = queue[0];
        if (e->pin >= 0 && newest[e->pin] == e) newest[e->pin] = nullptr;
        queue.erase(queue.begin());
        if (work == e) work = queue.empty() ? nullptr : queue[0];
    }

    std::int32_t next_change(std::int32_t max_delay) const {
        const model_event& cur = *queue[0];
        for (const model_event* e : queue)
            if (e->time > cur.time + max_delay)
                break;
            else if (e->net == cur.net && e->state != cur.state)
                return e->time - cur.time;
        return -1;
    }
};
