// SAVE STATE and RESTORE STATE.
//
// The state file: a header of 34 bytes, two bytes for every net (the state before the last change, the
// state), one for every pin, 20 zero bytes, a line feed.  Numbers are little-endian.  Bus records and pins
// that span bits hold the byte 0: what they stand for is in their member nets.
#include <unistd.h>

#include <cstring>
#include <string>

#include "commands/files/file_path.h"
#include "commands/files/handlers.h"
#include "foundation/context.h"
#include "foundation/files.h"
#include "foundation/replacement.h"
#include "foundation/shell.h"
#include "kernel/cell_records.h"
#include "kernel/resume.h"

namespace {

constexpr kol_rejection_t cannot_open{" !! impossible to open : ", kol_form::wide};
constexpr kol_rejection_t cannot_read{" !! Impossible to read : ", kol_form::wide};
constexpr kol_rejection_t invalid_file{" !! ERROR INVALID file state "};
constexpr kol_rejection_t nets_cut{" !! ERROR restore state (net) NOT COMPLETED ? "};
constexpr kol_rejection_t pins_cut{" !! ERROR restore state (pin) NOT COMPLETED ? "};
constexpr kol_rejection_t not_at_end{"# !! Error : state can be saved only at the end of a run ? "};

// ---- layout

constexpr std::string_view signature = "##SAVE_STATE_FILE*\1\3\2\4";  // title and magic bytes

struct kol_save_state_rec_t {
    std::int32_t nb_net = 0, nb_pin = 0, time = 0;
};
struct number_field {
    std::size_t at;
    std::int32_t kol_save_state_rec_t::*value;
};
constexpr number_field header_numbers[] = {
    {22, &kol_save_state_rec_t::nb_net},
    {26, &kol_save_state_rec_t::nb_pin},
    {30, &kol_save_state_rec_t::time},
};
constexpr std::size_t header_size = 34, number_size = 4, filler_size = 20;
static_assert(signature.size() == header_numbers[0].at);
static_assert(header_numbers[2].at + number_size == header_size);

void put_number(std::int32_t value, char* at) {
    for (std::size_t i = 0; i < number_size; ++i)
        at[i] = static_cast<char>(static_cast<std::uint32_t>(value) >> (8 * i));
}

std::int32_t number_at(const char* at) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < number_size; ++i)
        value |= static_cast<std::uint32_t>(static_cast<unsigned char>(at[i])) << (8 * i);
    return static_cast<std::int32_t>(value);
}

kol_save_state_rec_t header_now() { return {yx_sext.max_net_cur, yx_sext.max_pin_cur, kol_ext.end_time}; }

void put_header(std::string& bytes) {
    const kol_save_state_rec_t header = header_now();
    bytes = signature;
    bytes.resize(header_size);
    for (const number_field& field : header_numbers) put_number(header.*field.value, &bytes[field.at]);
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
    put_header(bytes);
    put_states(bytes);
    bytes.append(filler_size, '\0');
    return bytes += '\n';
}

// ---- files

// An existing file that may not be read is refused here: opening its stream would end the program.
tm_stream open_state_file(const tm_string_record_t& path) {
    std::FILE* file = nullptr;
    bool open_ok = false;
    if (::access(tm_resolve_path(path).c_str(), R_OK) == 0) tm_popen_file(path, 'R', true, file, open_ok);
    return tm_stream(file);
}

// ---- restoring

bool read_header(std::FILE* file, std::string& bytes) {
    bytes.resize(header_size);
    return std::fread(bytes.data(), 1, header_size, file) == header_size;
}

kol_save_state_rec_t header_of(const std::string& bytes) {
    kol_save_state_rec_t header;
    for (const number_field& field : header_numbers) header.*field.value = number_at(&bytes[field.at]);
    return header;
}

bool is_valid(const std::string& bytes) {
    const kol_save_state_rec_t header = header_of(bytes), design = header_now();
    if (bytes.starts_with(signature) && header.nb_net == design.nb_net && header.nb_pin == design.nb_pin &&
        header.time > 0)
        return true;
    kol_trace(" KOL_RESTORE_STATE : \"%.22s\" nb_net : %d nb_pin : %d time : %d", bytes.c_str(),
              header.nb_net, header.nb_pin, header.time);
    return false;
}

// False at the end of the file.  A line feed is read as a blank.
bool read_state(std::FILE* file, std::int8_t& state) {
    const int c = std::getc(file);
    state = static_cast<std::int8_t>(c == '\n' ? ' ' : c);
    return c != EOF;
}

bool read_nets(std::FILE* file) {
    for (std::int32_t i = 1; i <= yx_sext.max_net_cur; ++i) {
        yx_net_record_t& net = *yx_ptrto_net_rec(i);
        std::int8_t old_state = 0, cur_state = 0;
        if (!read_state(file, old_state) || !read_state(file, cur_state)) return false;
        if (net.net_type == YX_TSTD_BUS) continue;
        net.UU.U1.old_state.state = old_state;
        net.UU.U1.cur_state.state = cur_state;
    }
    return true;
}

bool read_pins(std::FILE* file) {
    for (std::int32_t i = 1; i <= yx_sext.max_pin_cur; ++i) {
        yx_pin_record_t& pin = *yx_ptrto_pin_rec(i);
        std::int8_t state = 0;
        if (!read_state(file, state)) return false;
        if (pin.pin_end == 0)
            pin.pin_state.std.state = state;
        else
            kol_take_states_of_bits(pin);
    }
    return true;
}

// What is read before the end of a cut file stays.
kol_rejection_t read_states(std::FILE* file) {
    if (!read_nets(file)) return nets_cut;
    return read_pins(file) ? kol_rejection_t() : pins_cut;
}

kol_result_t failed(const kol_rejection_t& why, const tm_string_record_t& path) {
    return kol_result_t(why).then({" !! \"", tm_view(path), "\" "});
}

}  // namespace

kol_result_t kol_save_state_cmd(const kol_line_t& line) {
    kol_bring_records_up();
    const tm_string_record_t path = kol_file_path(tm_view(line[3]));
    tm_replacement file(path);
    if (!file.is_open()) return failed(cannot_open, path);
    if (kol_ext.cur_time != kol_ext.end_time) return not_at_end;
    if (file.write(state_bytes())) return {};
    tm_count_error();
    return failed(cannot_open, path);
}

kol_result_t kol_restore_state_cmd(const kol_line_t& line) {
    kol_bring_records_up();
    const tm_string_record_t path = kol_file_path(tm_view(line[3]));
    const tm_stream file = open_state_file(path);
    if (!file) return failed(cannot_open, path);
    std::string header;
    if (!read_header(file.get(), header)) return failed(cannot_read, path);
    if (!is_valid(header)) return invalid_file;
    const kol_rejection_t cut = read_states(file.get());
    kol_resume_at(header_of(header).time);
    tm_shell.redraw_states();
    return cut;
}
