// A small model of flip-flop, latch and checker, told apart from the program's: it is given one change after
// the other and says what is shown and what the outputs do.  Values are the characters 0, 1, x and i.
#pragma once

#include <algorithm>
#include <array>
#include <set>
#include <string>

#include "kernel/say.h"

struct ref_input {
    char edge = 0;  // R, F or X; 0: there is no such pin
    std::string path;
    int setup = 0, hold = 0, high = 0, low = 0, rise = 0, fall = 0;
    std::string state = "iU";
    char last = 'X';  // class of its last change
    int rose = 0, fell = 0;
    bool on = false;

    bool is_active(char change) const { return edge == 'X' || edge == change; }
    char active() const { return edge == 0 ? '-' : edge == 'F' ? '0' : '1'; }
    std::string readings() const {
        return edge == 0 ? "." : state[0] == 'x' || state[0] == 'i' ? "01" : state.substr(0, 1);
    }
    int since() const { return edge == 'R' ? rose : edge == 'F' ? fell : std::max(rose, fell); }
    int delay(char value) const { return value == '1' ? rise : value == '0' ? fall : (rise + fall) / 2; }
};

struct ref_output {
    bool is_inverted = false;
    int rise = 0, fall = 0;
    std::string drives = "SSSS";  // of i, 0, x and 1
    std::string state = "iU";
    int changed = -1;
};

struct ref_storage {
    char kind = 'D';  // D flip-flop, L latch, T transparent latch, S checker
    char held = 'i';  // of a transparent latch
    ref_input d, c, s, r, e;
    std::array<ref_output, 2> outputs;
    bool checks = true, has_scheduled = false;
    std::string text;

    // The text that a change shows; the outputs have their new states and times.
    std::string change(char pin, const std::string& state, int time) {
        text.clear();
        has_scheduled = false;
        ref_input& in = input(pin);
        if (in.state == state) return text;
        const char was = in.state[0], is = state[0];
        in.last = was == '0' || is == '1' ? 'R' : was == '1' || is == '0' ? 'F' : 'X';
        in.state = state;
        pulse_ = time - (in.last == 'R' ? in.fell : in.last == 'F' ? in.rose : std::max(in.rose, in.fell));
        const bool has_both = kind == 'T' && pin != 'd';
        if (in.last != 'F' && (in.edge != 'F' || has_both)) in.rose = time;
        if (in.last != 'R' && (in.edge != 'R' || has_both)) in.fell = time;
        now_ = time;
        switch (pin) {
            case 'd':
                return data_changed();
            case 'c':
                return clock_changed();
            case 'e':
                checks = in.last == 'X' ? !checks : in.is_active(in.last);
                return text;
            default:
                return override_changed(in, pin == 's' ? '1' : '0');
        }
    }

    // What a return to the states of the nets leaves.
    void restart() {
        for (ref_input* in : {&d, &c, &s, &r, &e}) {
            in->rose = in->fell = 0;
            in->on = kind == 'T' ? in->state[0] == in->active() : in->edge != 'X' && in->edge == in->last;
        }
        checks = !s.on && !r.on;
        if (kind == 'S') checks = e.edge == 0 || e.last == 'X' || e.is_active(e.last);
    }

    ref_input& input(char pin) {
        return pin == 'd' ? d : pin == 'c' ? c : pin == 's' ? s : pin == 'r' ? r : e;
    }

private:
    int now_ = 0, pulse_ = 0;

    static std::string shown(int time) { return kol_time_text(time); }
    void violation(const std::string& what, const ref_input& in, const ref_input* from, int since,
                   int limit) {
        if (now_ - since >= limit) return;
        text += "# !! " + what + " Violation on pin:\"" + in.path + "\"" +
                (from != nullptr ? "\n#    From pin:\"" + from->path + "\"" : " ") +
                "\n#  time:" + shown(since) + "-->" + shown(now_) + "<->:" + shown(now_ - since) + "(<" +
                shown(limit) + ")\n";
    }
    void check_setup(const ref_input& in) {
        if (in.edge != 0 && c.is_active(c.last)) violation("Setup Time", c, &in, in.since(), in.setup);
    }
    void check_hold(const ref_input& in) {
        if (in.is_active(in.last)) violation("Hold Time", in, &c, c.since(), in.hold);
    }
    void check_pulse(const ref_input& in) {
        const int least = in.high == 0 ? in.low : in.low == 0 ? in.high : std::min(in.high, in.low);
        const auto& [what, limit] = in.last == 'R'   ? std::pair{"Min Time Low", in.low}
                                    : in.last == 'F' ? std::pair{"Min Time High", in.high}
                                                     : std::pair{"Min Time", least};
        violation(what, in, nullptr, now_ - pulse_, limit);
    }
    void drive(char value, int input_delay) {
        has_scheduled = true;
        for (ref_output& out : outputs) {
            const char v = !out.is_inverted || value == 'x' || value == 'i' ? value
                           : value == '0'                                   ? '1'
                                                                            : '0';
            const int delay = v == '1' ? out.rise : v == '0' ? out.fall : (out.rise + out.fall) / 2;
            const std::string state{v, out.drives[std::string("i0x1").find(v)]};
            if (out.state != state) out.changed = now_ + input_delay + delay;
            out.state = state;
        }
    }
    std::string settle(const ref_input& in) {
        std::set<char> results;
        for (const char reset : r.readings())
            for (const char set : s.readings())
                for (const char enable : c.readings())
                    results.insert(reset == r.active()    ? '0'
                                   : set == s.active()    ? '1'
                                   : enable == c.active() ? held  // c.edge: the closing one
                                                          : d.state[0]);
        const char value = results.size() == 1 ? *results.begin() : 'i';
        if (value != held) drive(value, in.delay(value));
        held = value;
        return text;
    }
    std::string data_changed() {
        const bool is_overridden = kind == 'L' && (s.on || r.on);
        if (checks && !is_overridden) check_hold(d);
        if (kind == 'T') return settle(d);
        if (kind == 'L' && !c.on && !is_overridden) drive(d.state[0], d.delay(d.state[0]));
        return text;
    }
    std::string clock_changed() {
        const bool is_edge = c.is_active(c.last);
        if (kind == 'L' || kind == 'T') {
            check_setup(s);
            check_setup(r);
            if (checks) check_pulse(c);
            if (kind == 'T') {
                if (checks) check_setup(d);
                return settle(c);
            }
            c.on = c.edge == 'X' ? !c.on : is_edge;
            if (c.edge == 'X' || !is_edge) return text;
            if (checks) check_setup(d);
        } else {
            if (checks || kind == 'S') check_pulse(c);
            if (checks) check_setup(d);
            if (kind == 'S') return text;
            check_setup(s);
            check_setup(r);
        }
        if (is_edge && !s.on && !r.on) drive(d.state[0], c.delay(d.state[0]));
        return text;
    }
    std::string override_changed(ref_input& in, char value) {
        check_pulse(in);
        if (kind == 'T') {
            check_hold(in);
            in.on = in.state[0] == in.active();
            checks = !s.on && !r.on;
            return settle(in);
        }
        in.on = in.edge == 'X' ? !in.on : in.is_active(in.last);
        const bool begins = in.edge == 'X' ? checks : in.on;
        checks = !begins;
        check_hold(in);
        if (begins && value == '1' && r.on)
            text += "# !! Reset Already  ON pin:\"" + r.path + "\"\n#   That Overide Set pin:\"" + s.path +
                    "\"\n#  time:" + shown(now_) + "\n";
        else if (begins)
            drive(value, in.delay(in.state[0]));
        return text;
    }
};
