// The rules of the event queue written down step by step, with a cursor, over a plain linked list, to hold
// the kernel's queue against.
#pragma once

#include <cstdint>
#include <list>
#include <vector>

struct model_event {
    std::int32_t time = 0;
    std::int8_t state = 0;
    int pin = -1;  // -1: FORCE
    int net = 0;
    model_event* previous = nullptr;
    model_event* next = nullptr;
};

struct queue_model {
    std::vector<std::int16_t> priority;  // of the pins
    std::vector<int> net_of_pin;
    std::vector<model_event*> newest;  // of the pins; none once it is executed
    std::list<model_event> records;
    model_event *cur = nullptr, *last = nullptr, *work = nullptr;
    std::int32_t cur_time = 0;
    bool spiked = false, broken = false;
    int spike_model = 2;

    explicit queue_model(std::vector<std::int16_t> priorities, std::vector<int> nets)
        : priority(std::move(priorities)), net_of_pin(std::move(nets)), newest(priority.size()) {}

    void link_behind(model_event* behind, model_event* e) {
        e->previous = behind;
        e->next = behind->next;
        (e->next == nullptr ? last : e->next->previous) = e;
        behind->next = e;
    }
    void unlink(model_event* e) {
        (e->previous == nullptr ? cur : e->previous->next) = e->next;
        (e->next == nullptr ? last : e->next->previous) = e->previous;
    }

    void output(int p, std::int32_t delay, std::int8_t state) {
        const std::int32_t time = cur_time + delay;
        model_event* q = newest[p];
        if (q != nullptr && q->time >= time) {
            q->state = state;
            return;
        }
        model_event* e = &records.emplace_back();
        insert(e, time, priority[p]);
        work = e->next != nullptr ? e->next : last;
        *e = {time, state, p, net_of_pin[p], e->previous, e->next};
        if (spiked && q != nullptr && q->time > cur->time) react(q, state);
        newest[p] = e;
    }

    void insert(model_event* e, std::int32_t time, std::int16_t prio) {
        if (cur == nullptr) {
            cur = last = work = e;
            return;
        }
        if (work == nullptr) work = last;
        if (cur->time == time && cur->pin >= 0 && prio > priority[cur->pin]) return link_behind(cur, e);
        if (last->time < time) return link_behind(last, e);
        if (last->time == time) {
            if (last->pin >= 0 && prio <= priority[last->pin]) return link_behind(last, e);
            if (last->pin < 0) work = last;
        }
        model_event* a = work;
        if (a != last)
            while (a->next != nullptr && a->time <= time) a = a->next;
        model_event* b = a->previous;
        while (b != nullptr && b->previous != nullptr &&
               (b->time > time || (b->time == time && b->pin >= 0 && prio > priority[b->pin]))) {
            a = b;
            b = b->previous;
        }
        if (b == nullptr && !(cur == last && last == a)) broken = true;
        link_behind(b != nullptr ? b : a, e);
    }

    void react(model_event* q, std::int8_t state) {
        if (spike_model < 2) return;
        q->state = static_cast<std::int8_t>(state / 4 * 4);
        if (spike_model == 2) return;
        q->time = cur->time;
        if (cur->next == q) return;
        unlink(q);
        link_behind(cur, q);
    }

    void force(int net, std::int32_t time, std::int8_t state) {
        model_event* e = &records.emplace_back();
        model_event* behind = last;
        while (behind != nullptr && behind->time > time) behind = behind->previous;
        if (behind != nullptr) {
            link_behind(behind, e);
        } else {
            e->next = cur;
            (cur == nullptr ? last : cur->previous) = e;
            cur = e;
        }
        *e = {time, state, -1, net, e->previous, e->next};
    }

    void retire() {
        model_event* e = cur;
        if (e->pin >= 0 && newest[e->pin] == e) newest[e->pin] = nullptr;
        unlink(e);
        if (work == e) work = cur;
    }

    std::int32_t next_change(std::int32_t max_delay) const {
        for (const model_event* e = cur; e != nullptr && e->time <= cur->time + max_delay; e = e->next)
            if (e->net == cur->net && e->state != cur->state) return e->time - cur->time;
        return -1;
    }
};
