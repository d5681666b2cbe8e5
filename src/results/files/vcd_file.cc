// Histories as a VCD file.
#include "results/files/vcd_file.h"

#include <map>

#include "results/entries/entry.h"
#include "results/entries/observed.h"
#include "results/files/changes.h"
#include "results/files/vcd.h"

namespace {

class vcd_file_t {
public:
    vcd_file_t(std::FILE* file, bool has_strengths) : file_(file), has_strengths_(has_strengths) {
        rs_add_observed(kol_list_first_entry(), observed_);
        rs_add_observed(kol_trace_first_entry(), observed_);
        for (const rs_observed_t& one : observed_) add_variable(one);
    }

    void write(std::int32_t begin_time, std::int32_t end_time) {
        put(rs_vcd_header(variables_, scale_, has_strengths_));
        rs_changes_t found = rs_changes_of(nets_, begin_time, end_time);
        states_ = std::move(found.states);
        is_changed_.assign(bits_.size(), false);
        put(time_line(begin_time) + "$dumpvars\n");
        for (std::uint32_t code = 0; code < bits_.size(); ++code) put_value(code);
        put("$end\n");
        for (std::size_t k = 0; k < found.changes.size();) k = write_time(found.changes, k);
        if (found.changes.empty() || found.changes.back().time < end_time) put(time_line(end_time));
    }

private:
    std::uint32_t slot_of(yx_net_record_t* net) {
        const auto [at, is_new] = slots_.try_emplace(net, static_cast<std::uint32_t>(nets_.size()));
        if (is_new) {
            nets_.push_back(net);
            shown_in_.emplace_back();
        }
        return at->second;
    }

    void add_variable(const rs_observed_t& one) {
        const auto code = static_cast<std::uint32_t>(bits_.size());
        const std::size_t width = one.bits.size();
        std::vector<std::uint32_t>& bits = bits_.emplace_back();
        for (yx_net_record_t* net : one.bits) {
            bits.push_back(slot_of(net));
            shown_in_[bits.back()].push_back(code);
        }
        const std::string range = width > 1 ? "[" + std::to_string(width - 1) + ":0]" : "";
        variables_.push_back({one.path, range, static_cast<std::uint32_t>(width), code});
    }

    // The changes of one time, each variable once; the result is the first change of the next time.
    std::size_t write_time(const std::vector<rs_change_t>& changes, std::size_t k) {
        const std::int32_t time = changes[k].time;
        std::vector<std::uint32_t> changed;
        for (; k < changes.size() && changes[k].time == time; ++k) {
            states_[changes[k].net] = changes[k].state;
            for (const std::uint32_t code : shown_in_[changes[k].net]) {
                if (!is_changed_[code]) changed.push_back(code);
                is_changed_[code] = true;
            }
        }
        put(time_line(time));
        for (const std::uint32_t code : changed) {
            put_value(code);
            is_changed_[code] = false;
        }
        return k;
    }

    void put_value(std::uint32_t code) {
        std::vector<std::int8_t> states;
        for (const std::uint32_t slot : bits_[code]) states.push_back(states_[slot]);
        std::string text;
        rs_vcd_add_value(states, rs_vcd_code(code), has_strengths_, text);
        put(text);
    }
    std::string time_line(std::int32_t time) const {
        return "#" + std::to_string(time * scale_.factor) + "\n";
    }
    void put(const std::string& text) { std::fwrite(text.data(), 1, text.size(), file_); }

    std::FILE* file_;
    bool has_strengths_;
    rs_vcd_scale_t scale_ = rs_vcd_scale_of(yx_sext.time_step);
    std::vector<rs_observed_t> observed_;
    std::vector<rs_vcd_variable_t> variables_;
    std::vector<std::vector<std::uint32_t>> bits_, shown_in_;  // nets by code, codes by net
    std::vector<yx_net_record_t*> nets_;
    std::map<const yx_net_record_t*, std::uint32_t> slots_;
    std::vector<std::int8_t> states_;
    std::vector<bool> is_changed_;
};

}  // namespace

void rs_write_vcd(std::FILE* file, std::int32_t begin_time, std::int32_t end_time, bool has_strengths) {
    vcd_file_t(file, has_strengths).write(begin_time, end_time);
}
