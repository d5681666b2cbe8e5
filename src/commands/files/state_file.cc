// SAVE STATE and RESTORE STATE.
//
// The state file: a header of 34 bytes, two bytes for every net (the state before the last change, the
// state), one for every pin, 20 zero bytes, a line feed.  Numbers are little-endian.  Bus records and pins
// that span bits hold the byte 0: what they stand for is in their member nets.
#include <array>
#include <string>

#include "commands/files/file_path.h"
#include "commands/files/handlers.h"
#include "foundation/context.h"
#include "foundation/layout.h"
#include "foundation/replacement.h"
#include "foundation/shell.h"
#include "kernel/cell_records.h"
#include "kernel/resume.h"
#include "kernel/state.h"
#include "schematic/whole_file.h"

namespace {

constexpr kol_rejection_t cannot_read{" !! Impossible to read : ", kol_form::wide};
constexpr kol_rejection_t invalid_file{" !! ERROR INVALID file state "};
constexpr kol_rejection_t nets_cut{" !! ERROR restore state (net) NOT COMPLETED ? "};
constexpr kol_rejection_t pins_cut{" !! ERROR restore state (pin) NOT COMPLETED ? "};
constexpr kol_rejection_t not_at_end{"# !! Error : state can be saved only at the end of a run ? "};

// ---- layout

struct kol_save_state_rec_t {
    std::array<char, 18> title = {};
    std::array<char, 4> magic = {};
    std::int32_t nb_net = 0, nb_pin = 0, time = 0;
};
constexpr std::string_view title = "##SAVE_STATE_FILE*", magic = "\1\3\2\4";
constexpr std::size_t header_size = 34, filler_size = 20;

using header = kol_save_state_rec_t;
using row = lay_rows_of<header, lay_order::low_first>;
constexpr std::array header_rows = {
    row::field<&header::title>(0, "title"),    row::field<&header::magic>(18, "magic"),
    row::field<&header::nb_net>(22, "nb_net"), row::field<&header::nb_pin>(26, "nb_pin"),
    row::field<&header::time>(30, "time"),
};
static_assert(lay_fills(header_rows, header_size, 0));
constexpr lay_layout<header> header_layout{"state file", header_size, lay_only<header_rows>};

header header_now() {
    header now{{}, {}, yx_sext.max_net_cur, yx_sext.max_pin_cur, kol_ext.end_time};
    title.copy(now.title.data(), title.size());
    magic.copy(now.magic.data(), magic.size());
    return now;
}

void put_states(std::string& bytes) {
    for (std::int32_t i = 1; i <= yx_sext.max_net_cur; ++i) {
        const yx_net_record_t& net = *yx_ptrto_net_rec(i);
        const bool is_bus = net.net_type == YX_TSTD_BUS;
        bytes += is_bus ? '\0' : static_cast<char>(net.UU.U1.old_state.state);
        bytes += is_bus ? '\0' : static_cast<char>(net.UU.U1.cur_state.state);
    }
    for (std::int32_t i = 1; i <= yx_sext.max_pin_cur; ++i) {
        const yx_pin_record_t& pin = *yx_ptrto_pin_rec(i);
        bytes += pin.pin_end != 0 ? '\0' : static_cast<char>(pin.pin_state.std.state);
    }
}

std::string state_bytes() {
    std::string bytes;
    lay_put(header_layout, header_now(), bytes);
    put_states(bytes);
    bytes.append(filler_size, '\0');
    return bytes += '\n';
}

// ---- files

// Of a longer file only what the design has states for.  False: it cannot be read.
bool read_file(std::FILE* file, std::string& bytes) {
    bytes.resize(header_size + 2 * static_cast<std::size_t>(yx_sext.max_net_cur) +
                 static_cast<std::size_t>(yx_sext.max_pin_cur));
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file));
    return std::ferror(file) == 0 && bytes.size() >= header_size;
}

// ---- restoring

bool is_valid(const header& read) {
    const header design = header_now();
    if (read.title == design.title && read.magic == design.magic && read.nb_net == design.nb_net &&
        read.nb_pin == design.nb_pin && read.time > 0)
        return true;
    kol_trace(" KOL_RESTORE_STATE : \"%.18s\" nb_net : %d nb_pin : %d time : %d", read.title.data(),
              read.nb_net, read.nb_pin, read.time);
    return false;
}

// Goes through the state bytes of a file, as far as it goes, with what each belongs to.
class states_t {
public:
    explicit states_t(std::string_view bytes) : bytes_(bytes.substr(header_size)) {}

    // Calls take(net, old state, state) for each net and take(pin, state) for each pin of one bit,
    // spread(pin) for the others; says where the bytes end.
    template <typename TakeNet, typename TakePin, typename Spread>
    kol_rejection_t visit(TakeNet take_net, TakePin take_pin, Spread spread) {
        for (std::int32_t i = 1; i <= yx_sext.max_net_cur; ++i) {
            if (bytes_.size() - at_ < 2) return nets_cut;
            const std::int8_t old_state = next(), cur_state = next();
            yx_net_record_t& net = *yx_ptrto_net_rec(i);
            if (net.net_type != YX_TSTD_BUS) take_net(net, old_state, cur_state);
        }
        for (std::int32_t i = 1; i <= yx_sext.max_pin_cur; ++i) {
            if (at_ == bytes_.size()) return pins_cut;
            const std::int8_t state = next();
            yx_pin_record_t& pin = *yx_ptrto_pin_rec(i);
            if (pin.pin_end == 0)
                take_pin(pin, state);
            else
                spread(pin);
        }
        return {};
    }

private:
    std::int8_t next() { return static_cast<std::int8_t>(bytes_[at_++]); }

    std::string_view bytes_;
    std::size_t at_ = 0;
};

// Whether every byte that would be taken is a state.
bool all_are_states(std::string_view bytes) {
    bool all = true;
    states_t(bytes).visit(
        [&](yx_net_record_t&, std::int8_t old_state, std::int8_t cur_state) {
            all = all && kol_state_is_valid(old_state) && kol_state_is_valid(cur_state);
        },
        [&](yx_pin_record_t&, std::int8_t state) { all = all && kol_state_is_valid(state); },
        [](yx_pin_record_t&) {});
    return all;
}

// A line feed is taken as a blank.
std::int8_t taken(std::int8_t state) { return state == '\n' ? std::int8_t{' '} : state; }

// What is read before the end of a cut file stays.
kol_rejection_t take_states(std::string_view bytes) {
    return states_t(bytes).visit(
        [](yx_net_record_t& net, std::int8_t old_state, std::int8_t cur_state) {
            net.UU.U1.old_state.state = taken(old_state);
            net.UU.U1.cur_state.state = taken(cur_state);
        },
        [](yx_pin_record_t& pin, std::int8_t state) { pin.pin_state.std.state = taken(state); },
        kol_take_states_of_bits);
}

kol_result_t failed(const kol_rejection_t& why, const tm_string_record_t& path) {
    return kol_result_t(why).then({" !! \"", tm_view(path), "\" "});
}

}  // namespace

kol_result_t kol_save_state_cmd(const kol_line_t& line) {
    kol_bring_records_up();
    const tm_string_record_t path = kol_file_path(tm_view(line[3]));
    tm_replacement file(path);
    if (!file.is_open()) return failed(kol_cannot_open, path);
    if (kol_ext.cur_time != kol_ext.end_time) return not_at_end;
    if (file.write(state_bytes())) {
        ++kol_ext.saves;
        return {};
    }
    tm_count_error();
    return failed(kol_cannot_open, path);
}

kol_result_t kol_restore_state_cmd(const kol_line_t& line) {
    kol_bring_records_up();
    const tm_string_record_t path = kol_file_path(tm_view(line[3]));
    const tm_stream file = tm_open_to_read(path);
    if (!file) return failed(kol_cannot_open, path);
    std::string bytes;
    header read;
    std::size_t at = 0;
    if (!read_file(file.get(), bytes) || !lay_get(header_layout, bytes, at, read))
        return failed(cannot_read, path);
    if (!is_valid(read) || !all_are_states(bytes)) return invalid_file;
    const kol_rejection_t cut = take_states(bytes);
    kol_resume_at(read.time);
    tm_shell.redraw_states();
    return cut;
}
