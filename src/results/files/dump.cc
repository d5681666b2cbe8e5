// Changes of a run as the text of a VCD file.
#include "results/files/dump.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <memory>

#include "foundation/growing_file.h"
#include "kernel/bus_bits.h"
#include "kernel/watchers.h"
#include "results/files/dump_names.h"

namespace {

constexpr std::size_t room_of_text = std::size_t{1} << 20;

constexpr std::int8_t not_shown = -1;

// What a net is in the file: a scalar, a bit of vectors, both, or nothing.
struct shown_t {
    std::array<char, 8> line{};      // of the scalar: the value, the code, the line end
    std::uint32_t first_vector = 0;  // into the vectors by net
    std::uint8_t length = 0;         // of the line; 0: no scalar
    bool has_vectors = false;
    std::int8_t state = not_shown;
};
static_assert(sizeof(shown_t) == 16);

struct vector_t {
    std::vector<std::uint32_t> bits;
    std::string code;
    bool is_changed = false;
};

class dump_t {
public:
    dump_t(tm_stream file, rs_dumped_t dumped, bool has_strengths)
        : file_(std::move(file)), has_strengths_(has_strengths), dumped_(std::move(dumped)) {
        shown_.resize(static_cast<std::size_t>(yx_sext.max_net_cur) + 2);
        for (std::size_t code = 0; code < dumped_.bits.size(); ++code) add(static_cast<std::uint32_t>(code));
        link_vectors();
    }

    // The file begins, or goes on with states that no run has brought.
    void begin(std::int32_t time) {
        if (time < time_) start_anew();
        const bool is_first = time_ < 0;
        if (is_first) put(rs_vcd_header(dumped_.variables, scale_, has_strengths_));
        std::vector<kol_net_change_t> changes;
        for (std::uint32_t net = 1; net + 1 < shown_.size(); ++net) changes.push_back({net, state_of(net)});
        if (is_first) put_time(time);
        if (is_first) put("$dumpvars\n");
        take(time, changes);
        if (is_first) put("$end\n");
    }

    void take(std::int32_t time, std::span<const kol_net_change_t> changes) {
        make_room((changes.size() + 4) * sizeof shown_t::line);
        constexpr std::size_t ahead = 8;
        for (std::size_t k = 0; k < changes.size(); ++k) {
            __builtin_prefetch(&shown_[changes[std::min(k + ahead, changes.size() - 1)].net]);
            const kol_net_change_t& change = changes[k];
            shown_t& shown = shown_[change.net];
            if (shown.state == change.state) continue;
            shown.state = change.state;
            if (shown.length == 0 && !shown.has_vectors) continue;
            put_time(time);
            if (shown.length != 0) put_scalar(shown);
            if (shown.has_vectors) mark_vectors(shown);
        }
        for (vector_t* const vector : changed_) put_vector(*vector);
        changed_.clear();
    }

    void end(std::int32_t time) {
        put_time(time);
        write();
        is_whole_ = std::fflush(file_.get()) == 0 && is_whole_;
    }

    bool is_whole() const { return is_whole_; }

private:
    static std::int8_t state_of(std::uint32_t net) {
        const yx_net_record_t& record = *yx_ptrto_net_rec(static_cast<std::int32_t>(net));
        return record.net_type == YX_TSTD_BUS ? std::int8_t{0} : record.UU.U1.cur_state.state;
    }

    void add(std::uint32_t code) {
        const std::vector<std::uint32_t>& bits = dumped_.bits[code];
        std::string name = rs_vcd_code(code);
        if (bits.size() > 1 || has_strengths_) return vectors_.push_back({bits, name, false});
        shown_t& shown = shown_[bits[0]];
        name = "0" + name + "\n";
        shown.length = static_cast<std::uint8_t>(name.copy(shown.line.data(), shown.line.size()));
    }

    // The vectors of each net, net by net.
    void link_vectors() {
        std::vector<std::vector<vector_t*>> vectors(shown_.size());
        for (vector_t& vector : vectors_)
            for (const std::uint32_t net : vector.bits) vectors[net].push_back(&vector);
        for (std::size_t net = 0; net < shown_.size(); ++net) {
            shown_[net].first_vector = static_cast<std::uint32_t>(vectors_of_.size());
            shown_[net].has_vectors = !vectors[net].empty();
            vectors_of_.insert(vectors_of_.end(), vectors[net].begin(), vectors[net].end());
        }
    }

    void start_anew() {
        time_ = -1;
        for (shown_t& shown : shown_) shown.state = not_shown;
        used_ = 0;
        const int fd = ::fileno(file_.get());
        is_whole_ = std::fflush(file_.get()) == 0 && ::ftruncate(fd, 0) == 0;
        std::rewind(file_.get());
    }

    void put_time(std::int32_t time) {
        if (time == time_) return;
        time_ = time;
        std::array<char, 24> digits;
        const auto [end, error] =
            std::to_chars(digits.data(), digits.data() + digits.size(), time * scale_.factor);
        put("#");
        put({digits.data(), end});
        put("\n");
    }

    void put(std::string_view text) {
        make_room(text.size());
        used_ += text.copy(text_.data() + used_, text.size());
    }

    // There is room for it.
    void put_scalar(const shown_t& shown) {
        char* const at = text_.data() + used_;
        std::memcpy(at, shown.line.data(), shown.line.size());
        *at = kol_bit_of_state(shown.state);
        used_ += shown.length;
    }

    void mark_vectors(const shown_t& shown) {
        const std::uint32_t end = (&shown)[1].first_vector;
        for (std::uint32_t k = shown.first_vector; k != end; ++k) {
            vector_t& vector = *vectors_of_[k];
            if (!vector.is_changed) changed_.push_back(&vector);
            vector.is_changed = true;
        }
    }

    void put_vector(vector_t& vector) {
        vector.is_changed = false;
        bits_.clear();
        for (const std::uint32_t net : vector.bits) bits_.push_back(shown_[net].state);
        value_.clear();
        rs_vcd_add_value(bits_, vector.code, has_strengths_, value_);
        put(value_);
    }

    void make_room(std::size_t size) {
        if (text_.size() - used_ < size) write();
        if (text_.size() < size) text_.resize(size);
    }
    void write() {
        is_whole_ = std::fwrite(text_.data(), 1, used_, file_.get()) == used_ && is_whole_;
        used_ = 0;
    }

    tm_stream file_;
    bool has_strengths_, is_whole_ = true;
    rs_dumped_t dumped_;
    rs_vcd_scale_t scale_ = rs_vcd_scale_of(yx_sext.time_step);
    std::int32_t time_ = -1;      // of the last line that says a time
    std::vector<shown_t> shown_;  // by root net
    std::vector<vector_t> vectors_;
    std::vector<vector_t*> vectors_of_, changed_;
    std::vector<std::int8_t> bits_;
    std::string value_;
    std::string text_ = std::string(room_of_text, ' ');  // to be written
    std::size_t used_ = 0;                               // of it
};

std::unique_ptr<dump_t> dump;

void watch(bool is_on) {
    kol_watchers.nets = {};
    if (is_on)
        kol_watchers.nets = {
            [](std::int32_t time) { dump->begin(time); },
            [](std::int32_t time, std::span<const kol_net_change_t> changes) { dump->take(time, changes); },
            [](std::int32_t time) { dump->end(time); }};
    kol_set_watchers();
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
