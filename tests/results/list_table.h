// A list built from one line of text, without a design: "a b" are signals, "W[p q]" a combined bus, "V(r s)"
// a bus with separate members, both nest; a bus named again without members is the same bus once more.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "foundation/context.h"
#include "kernel/history.h"
#include "kernel/state.h"
#include "results/entries/cursors.h"
#include "results/files/list_file.h"
#include "results/list/layout.h"
#include "results/list/view.h"
#include "results/page.h"
#include "results/scroll.h"

struct recorder_canvas final : tm_canvas {
    std::int32_t w = 0, h = 0;
    int clears = 0;
    std::vector<std::string> texts;     // "x,y text"
    std::vector<std::string> grounds;   // opaque, and what stands below
    std::vector<std::string> segments;  // "x y x y colour dash"
    std::vector<tm_pixel> places;       // of dots
    int dots_drawn = 0;
    std::int32_t width() const override { return w; }
    std::int32_t height() const override { return h; }
    void clear() override {
        ++clears, dots_drawn = 0, texts.clear(), segments.clear(), places.clear(), grounds.clear();
    }
    void polyline(std::span<const tm_pixel> points, const tm_pen& pen) override {
        constexpr const char* colours[] = {"black", "red", "green", "blue", "cyan", "yellow"};
        std::string text;
        for (const tm_pixel& point : points)
            text += std::to_string(point.x) + " " + std::to_string(point.y) + " ";
        segments.push_back(text + colours[static_cast<int>(pen.colour)] + " " +
                           std::to_string(static_cast<int>(pen.dash)));
    }
    void fill(std::span<const tm_pixel> corners, tm_colour) override {
        grounds.push_back(std::to_string(corners[0].y) + ".." + std::to_string(corners[2].y) + " behind " +
                          std::to_string(texts.size()) + " texts");
    }
    void dots(tm_pixel from, tm_pixel, tm_pixel count, tm_colour) override {
        places.push_back(from);
        dots_drawn += count.x * count.y;
    }
    void text(tm_pixel at, std::string_view text, const tm_lettering&) override {
        texts.push_back(std::to_string(at.x) + "," + std::to_string(at.y) + " " + std::string(text));
    }
};

class list_table : public testing::Test {
protected:
    list_table() {
        kol_ext = kol_defref_var_rec_t{};
        yx_sext.time_step = 1.0F;
    }
    ~list_table() override {
        kol_ext = kol_defref_var_rec_t{};
        tm_vext.display_on = false;
    }

    void list(std::string_view text) {
        std::size_t at = 0;
        yx_signal_rec_t* last = nullptr;
        parse(text, at, last);
        kol_ext.list_signal = last;
    }

    void trace(std::string_view text) {
        list(text);
        kol_ext.trace_signal = std::exchange(kol_ext.list_signal, nullptr);
        kol_ext.list_or_trace = false;
    }

    // The history of a signal: its states at times, "iU@0 1S@10".
    kol_history_t& history(const std::string& name, const std::string& text) {
        kol_history_t& history = histories.emplace_back();
        signal_of.at(name)->history = &history;
        for (std::size_t at = 0; at < text.size(); at = std::min(text.find(' ', at), text.size() - 1) + 1) {
            if (at > 0) history.append(0, 0);
            EXPECT_TRUE(kol_keyword_to_state(text.substr(at, 2), history.newest().state));
            history.newest().time = std::stoi(text.substr(at + 3));
        }
        return history;
    }

    // Every entry and member as "name@column/row", in table order.
    std::string layout() {
        kol_update_column_list(nullptr);
        std::string text;
        describe(kol_list_first_entry(), text);
        return text;
    }

    std::map<std::string, yx_signal_rec_t*> signal_of;
    std::map<std::string, yx_bus_rec_t*> bus_of;

private:
    void parse(std::string_view text, std::size_t& at, yx_signal_rec_t*& last) {
        while (at < text.size()) {
            const char c = text[at++];
            if (c == ')' || c == ']') return;
            if (c == ' ') continue;
            const std::size_t end = std::min(text.find_first_of(" ()[]", at), text.size());
            yx_signal_rec_t& signal = signals.emplace_back();
            const std::string name(text.substr(at - 1, end - at + 1));
            signal.name = tm_string(name);
            signal.previous = last;
            if (last != nullptr) last->next = &signal;
            last = &signal;
            at = end;
            const char open = at < text.size() ? text[at] : ' ';
            if (open == '[' || open == '(')
                make_bus(name, open == '[', text, ++at);
            else if (!bus_of.contains(name))
                signal_of[name] = &signal;
            if (!bus_of.contains(name)) continue;
            signal.sig_bus = true;
            signal.bus = bus_of[name];
        }
    }

    void make_bus(const std::string& name, bool combine, std::string_view text, std::size_t& at) {
        yx_bus_rec_t& bus = buses.emplace_back();
        bus.name = tm_string(name);
        bus.combine = combine;
        yx_signal_rec_t* last = nullptr;
        parse(text, at, last);
        while (last != nullptr && last->previous != nullptr) last = last->previous;
        bus.signal = last;
        bus_of[name] = &bus;
    }

    void describe(const yx_signal_rec_t* entry, std::string& text) {
        for (; entry != nullptr; entry = entry->next) {
            text += (text.empty() ? "" : " ") + std::string(tm_view(entry->name)) + "@" +
                    std::to_string(entry->column) + "/" + std::to_string(entry->row);
            if (!entry->sig_bus) continue;
            kol_list_place_members(*entry);
            describe(entry->bus->signal, text);
        }
    }

    std::deque<yx_signal_rec_t> signals;
    std::deque<yx_bus_rec_t> buses;
    std::deque<kol_history_t> histories;
};
