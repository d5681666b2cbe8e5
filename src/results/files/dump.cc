// Changes of a run as the text of a VCD file.
#include "results/files/dump.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <memory>

#include "foundation/growing_file.h"
#include "kernel/bus_bits.h"
#include "kernel/run_watch.h"
#include "results/files/dump_names.h"

namespace {

constexpr std::size_t room_of_text = std::size_t{1} << 20;

// What a net is in the file: a scalar, a bit of vectors, both, or nothing.
struct shown_t {
    std::array<char, 6> code{};      // with its line end
    std::uint8_t length = 0;         // of it; 0: no scalar
    std::uint32_t first_vector = 0;  // into the vectors by net
    std::uint32_t end_vector = 0;
};

struct vector_t {
    std::vector<std::uint32_t> bits;
    std::string code;
    bool is_changed = false;
};

class dump_t {
public:
    dump_t(tm_stream file, rs_dumped_t dumped, bool has_strengths)
        : file_(std::move(file)), has_strengths_(has_strengths), dumped_(std::move(dumped)) {
        states_.assign(static_cast<std::size_t>(yx_sext.max_net_cur) + 1, not_shown);
        shown_.resize(states_.size());
        for (std::size_t code = 0; code < dumped_.bits.size(); ++code) add(static_cast<std::uint32_t>(code));
        link_vectors();
        text_.reserve(room_of_text);
    }

    // The file begins, or goes on with states that no run has brought.
    void begin(std::int32_t time) {
        if (time < time_) start_anew();
        const bool is_first = time_ < 0;
        if (is_first) text_ = rs_vcd_header(dumped_.variables, scale_, has_strengths_);
        std::vector<kol_net_change_t> changes;
        for (std::uint32_t net = 1; net < states_.size(); ++net) changes.push_back({net, state_of(net)});
        if (is_first) put_time(time);
        if (is_first) text_ += "$dumpvars\n";
        take(time, changes);
        if (is_first) text_ += "$end\n";
    }

    void take(std::int32_t time, std::span<const kol_net_change_t> changes) {
        for (const kol_net_change_t& change : changes) {
            if (states_[change.net] == change.state) continue;
            states_[change.net] = change.state;
            put_change(time, change);
        }
        for (vector_t* const vector : changed_) put_vector(*vector);
        changed_.clear();
        if (text_.size() > room_of_text - room_of_text / 8) write();
    }

    void end(std::int32_t time) {
        put_time(time);
        write();
        is_whole_ = std::fflush(file_.get()) == 0 && is_whole_;
    }

    bool is_whole() const { return is_whole_; }

private:
    static constexpr std::int8_t not_shown = -1;

    static std::int8_t state_of(std::uint32_t net) {
        const yx_net_record_t& record = *yx_ptrto_net_rec(static_cast<std::int32_t>(net));
        return record.net_type == YX_TSTD_BUS ? std::int8_t{0} : record.UU.U1.cur_state.state;
    }

    void add(std::uint32_t code) {
        const std::vector<std::uint32_t>& bits = dumped_.bits[code];
        std::string name = rs_vcd_code(code);
        if (bits.size() > 1 || has_strengths_) return vectors_.push_back({bits, name, false});
        shown_t& shown = shown_[bits[0]];
        name += '\n';
        shown.length = static_cast<std::uint8_t>(name.copy(shown.code.data(), shown.code.size()));
    }

    // The vectors of each net, net by net.
    void link_vectors() {
        std::vector<std::uint32_t> count(states_.size() + 1);
        for (const vector_t& vector : vectors_)
            for (const std::uint32_t net : vector.bits) ++count[net];
        std::uint32_t at = 0;
        for (std::size_t net = 0; net < states_.size(); ++net) {
            shown_[net].first_vector = shown_[net].end_vector = at;
            at += count[net];
        }
        vectors_of_.resize(at);
        for (vector_t& vector : vectors_)
            for (const std::uint32_t net : vector.bits) vectors_of_[shown_[net].end_vector++] = &vector;
    }

    void start_anew() {
        time_ = -1;
        std::ranges::fill(states_, not_shown);
        text_.clear();
        const int fd = ::fileno(file_.get());
        is_whole_ = std::fflush(file_.get()) == 0 && ::ftruncate(fd, 0) == 0;
        std::rewind(file_.get());
    }

    void put_time(std::int32_t time) {
        if (time == time_) return;
        time_ = time;
        text_.append("#").append(std::to_string(time * scale_.factor)) += '\n';
    }

    void put_change(std::int32_t time, const kol_net_change_t& change) {
        const shown_t& shown = shown_[change.net];
        if (shown.length == 0 && shown.first_vector == shown.end_vector) return;
        put_time(time);
        if (shown.length != 0) {
            text_ += kol_bit_of_state(change.state);
            text_.append(shown.code.data(), shown.length);
        }
        for (std::uint32_t k = shown.first_vector; k != shown.end_vector; ++k) {
            vector_t& vector = *vectors_of_[k];
            if (!vector.is_changed) changed_.push_back(&vector);
            vector.is_changed = true;
        }
    }

    void put_vector(vector_t& vector) {
        vector.is_changed = false;
        bits_.clear();
        for (const std::uint32_t net : vector.bits) bits_.push_back(states_[net]);
        rs_vcd_add_value(bits_, vector.code, has_strengths_, text_);
    }

    void write() {
        is_whole_ = std::fwrite(text_.data(), 1, text_.size(), file_.get()) == text_.size() && is_whole_;
        text_.clear();
    }

    tm_stream file_;
    bool has_strengths_, is_whole_ = true;
    rs_dumped_t dumped_;
    rs_vcd_scale_t scale_ = rs_vcd_scale_of(yx_sext.time_step);
    std::int32_t time_ = -1;           // of the last line that says a time
    std::vector<std::int8_t> states_;  // by root net
    std::vector<shown_t> shown_;       // by root net
    std::vector<vector_t> vectors_;
    std::vector<vector_t*> vectors_of_, changed_;
    std::vector<std::int8_t> bits_;
    std::string text_;
};

std::unique_ptr<dump_t> dump;

void watch(bool is_on) {
    kol_run_watch.nets = {};
    if (is_on)
        kol_run_watch.nets = {
            [](std::int32_t time) { dump->begin(time); },
            [](std::int32_t time, std::span<const kol_net_change_t> changes) { dump->take(time, changes); },
            [](std::int32_t time) { dump->end(time); }};
    kol_set_run_watch();
}

}  // namespace

bool rs_begin_dump(const std::string& file, std::string_view path, std::int32_t levels, bool has_strengths,
                   std::string& error) {
    rs_end_dump();
    rs_dumped_t dumped = rs_dumped_below(path, levels);
    if (dumped.variables.empty()) return error = "no net below this path", false;
    tm_stream stream = tm_create_log(file);
    if (stream == nullptr) return error = std::strerror(errno), false;
    dump = std::make_unique<dump_t>(std::move(stream), std::move(dumped), has_strengths);
    watch(true);
    return true;
}

bool rs_end_dump() {
    const bool was_whole = dump != nullptr && dump->is_whole();
    dump.reset();
    watch(false);
    return was_whole;
}

bool rs_is_dumping() { return dump != nullptr; }
