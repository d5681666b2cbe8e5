// The memory: its contents, what a clock edge and a change of an input read and write.
#include "models/mem.h"

#include <algorithm>
#include <charconv>

#include "foundation/input.h"
#include "kernel/say.h"
#include "kernel/state.h"
#include "models/instance_properties.h"
#include "models/mem_ports.h"
#include "models/pin_outputs.h"
#include "models/pin_setup.h"
#include "models/timing_checks.h"
#include "models/user_data.h"
#include "netlist/design_file.h"

namespace {

using word_t = std::vector<std::int8_t>;

struct kol_mem_userdata_rec_t {
    const yx_inst_record_t* owner = nullptr;
    kol_mem_ports_t ports;
    kol_contents_t initial, contents;
};

kol_user_data<kol_mem_userdata_rec_t> user_data;
std::map<std::string, std::string, std::less<>> initial_texts;  // of the loaded design's file, by path
bool has_initial_texts = false;

constexpr bool is_known(std::int16_t value) { return value == kol_v0 || value == kol_v1; }

// ---- addresses

// The words that an address may mean; the bits of it that are unknown are set in the mask.
struct address_t {
    std::int64_t value = 0, unknown = 0;
};

address_t address_of(const kol_mem_port_t& port) {
    address_t address;
    for (std::size_t k = 0; k < port.address.size() && k < 62; ++k) {
        const std::int16_t value = kol_role_value(port.address[k]);
        if (value == kol_v1) address.value |= std::int64_t{1} << k;
        if (!is_known(value)) address.unknown |= std::int64_t{1} << k;
    }
    return address;
}

bool may_be(const address_t& address, std::int64_t word) {
    return ((word ^ address.value) & ~address.unknown) == 0;
}

// ---- writing

std::int16_t enable_of(const kol_mem_port_t& port, std::size_t bit) {
    const auto behind = port.enables.upper_bound(bit);
    return behind == port.enables.begin() ? std::int16_t{kol_v1} : kol_role_value(std::prev(behind)->second);
}

// The value of a bit that is written, or may be.
std::int8_t written(std::int8_t old, std::int16_t data, bool is_certain) {
    if (is_certain) return static_cast<std::int8_t>(is_known(data) ? data : std::int16_t{kol_vx});
    return old == data ? old : std::int8_t{kol_vx};
}

void write_word(const kol_mem_port_t& port, bool clock_is_certain, bool address_is_certain,
                std::span<std::int8_t> word) {
    for (std::size_t bit = 0; bit < word.size(); ++bit) {
        const std::int16_t enable = enable_of(port, bit), data = kol_role_value(port.data[bit]);
        if (enable == kol_v0) continue;
        word[bit] = address_is_certain ? written(word[bit], data, clock_is_certain && enable == kol_v1)
                                       : std::int8_t{kol_vx};
    }
}

void write(kol_mem_userdata_rec_t& mem, const kol_mem_port_t& port) {
    const address_t address = address_of(port);
    kol_contents_t& contents = mem.contents;
    if (address.unknown == 0) {
        if (contents.has(address.value)) write_word(port, true, true, contents.word(address.value));
        return;
    }
    for (std::int64_t at = contents.first; at < contents.first + contents.count; ++at)
        if (may_be(address, at)) write_word(port, true, false, contents.word(at));
}

// ---- reading

word_t stored(const kol_mem_userdata_rec_t& mem, const kol_mem_port_t& port) {
    const address_t address = address_of(port);
    if (address.unknown != 0 || !mem.contents.has(address.value)) return word_t(mem.contents.width, kol_vx);
    const std::span<const std::int8_t> word = mem.contents.word(address.value);
    return {word.begin(), word.end()};
}

// What a write of the same edge does to the word that is read.
void mix_write(const kol_mem_port_t& read, const kol_mem_port_t& write, char how, word_t& word) {
    if (how != 't' && how != 'x') return;
    const address_t from = address_of(read), to = address_of(write);
    if (((from.value ^ to.value) & ~(from.unknown | to.unknown)) != 0) return;
    const bool is_certain = (from.unknown | to.unknown) == 0;
    for (std::size_t bit = 0; bit < word.size(); ++bit) {
        const std::int16_t enable = enable_of(write, bit), data = kol_role_value(write.data[bit]);
        if (enable != kol_v0)
            word[bit] =
                how == 'x' ? std::int8_t{kol_vx} : written(word[bit], data, is_certain && enable == kol_v1);
    }
}

std::int8_t value_of_letter(char letter) {
    return letter == '0' ? std::int8_t{kol_v0} : letter == '1' ? std::int8_t{kol_v1} : std::int8_t{kol_vx};
}

// The letters of the port's data bits: at the start, after R, after S.
word_t values_of(const kol_mem_port_t& port, std::size_t which) {
    word_t word;
    for (const std::string& values : port.values) word.push_back(value_of_letter(values[which]));
    return word;
}

// Takes what certainly or possibly replaces a word.
void take(const word_t& from, std::int16_t control, word_t& word) {
    for (std::size_t bit = 0; bit < word.size() && control != kol_v0; ++bit)
        word[bit] = written(word[bit], from[bit], control == kol_v1);
}

void begin_shown(kol_mem_port_t& port) {
    if (!port.shown.empty()) return;
    for (const yx_pin_record_t* pin : port.outputs)
        port.shown.push_back(
            static_cast<std::int8_t>(kol_value_of(kol_input_net(pin)->UU.U1.cur_state.state)));
}

void show(kol_mem_port_t& port, const word_t& word, const yx_pin_record_t* cause) {
    for (std::size_t bit = 0; bit < word.size(); ++bit) {
        if (port.shown[bit] == word[bit]) continue;
        port.shown[bit] = word[bit];
        kol_schedule_output(port.outputs[bit], word[bit],
                            cause == nullptr ? 0 : kol_input_delay(cause, word[bit]));
    }
}

void show_unclocked(kol_mem_userdata_rec_t& mem, const yx_pin_record_t* cause) {
    for (kol_mem_port_t& port : mem.ports.reads)
        if (!port.has_clock()) {
            begin_shown(port);
            show(port, stored(mem, port), cause);
        }
}

std::int16_t value_or(const kol_timing_role_t& role, std::int16_t absent) {
    return role.found ? kol_role_value(role) : absent;
}

// ---- clock edges

void check_setups(const kol_mem_port_t& port, const kol_transition_t& edge) {
    const auto check = [&](const kol_timing_role_t& input) {
        if (!input.found || (input.setup[0] | input.setup[1] | input.setup[2]) == 0) return;
        kol_timing_role_t at = input;
        at.rising_time = at.falling_time = std::max(0, kol_input_net(input.pin)->UU.U1.cur_state.time);
        kol_check_setup(port.clock, edge, at);
    };
    for (const kol_timing_role_t& role : port.address) check(role);
    for (const kol_timing_role_t& role : port.data) check(role);
    for (const auto& [bit, role] : port.enables) check(role);
    check(port.sync_reset);
}

// The ports that the current pin's net clocks and that have not seen this change.
std::vector<kol_mem_port_t*> clocked(std::vector<kol_mem_port_t>& ports, const yx_net_record_t* net) {
    std::vector<kol_mem_port_t*> found;
    for (kol_mem_port_t& port : ports) {
        if (!port.has_clock() || kol_input_net(port.clock.pin) != net ||
            port.done == net->UU.U1.cur_state.time)
            continue;
        port.done = net->UU.U1.cur_state.time;
        found.push_back(&port);
    }
    return found;
}

bool acts(const kol_mem_port_t& port, const kol_transition_t& edge) {
    if (!kol_is_active(port.clock.edge, edge.change)) return false;
    check_setups(port, edge);
    return true;
}

void read_at_edge(kol_mem_userdata_rec_t& mem, kol_mem_port_t& port,
                  const std::vector<kol_mem_port_t*>& writes) {
    begin_shown(port);
    if (value_or(port.async_reset, kol_v0) == kol_v1) return;
    word_t word = port.shown, read = stored(mem, port);
    for (const kol_mem_port_t* write : writes) {
        const auto number = static_cast<std::size_t>(write - mem.ports.writes.data());
        mix_write(port, *write, number < port.with_writes.size() ? port.with_writes[number] : '-', read);
    }
    const std::int16_t enable = enable_of(port, 0);
    take(read, enable, word);
    const std::int16_t reset = value_or(port.sync_reset, kol_v0);
    take(values_of(port, 2), port.enable_over_reset ? kol_and_value(reset, enable) : reset, word);
    take(values_of(port, 1), value_or(port.async_reset, kol_v0), word);
    show(port, word, port.clock.pin);
}

void clock_changed(kol_mem_userdata_rec_t& mem, const kol_timing_role_t& clock) {
    const yx_net_record_t* const net = kol_input_net(clock.pin);
    const kol_transition_t edge = kol_read_transition(clock);
    std::vector<kol_mem_port_t*> reads = clocked(mem.ports.reads, net),
                                 writes = clocked(mem.ports.writes, net);
    std::erase_if(writes, [&](const kol_mem_port_t* port) { return !acts(*port, edge); });
    for (kol_mem_port_t* port : reads)
        if (acts(*port, edge)) read_at_edge(mem, *port, writes);
    for (const kol_mem_port_t* port : writes) write(mem, *port);
    if (!writes.empty()) show_unclocked(mem, clock.pin);
}

// ---- other inputs

void read_port_changed(kol_mem_userdata_rec_t& mem, kol_mem_port_t& port) {
    begin_shown(port);
    if (!port.has_clock()) return show(port, stored(mem, port), kol_ext.cur_pin);
    if (kol_ext.cur_pin != port.async_reset.pin) return;
    word_t word = port.shown;
    take(values_of(port, 1), kol_role_value(port.async_reset), word);
    show(port, word, kol_ext.cur_pin);
}

void write_port_changed(kol_mem_userdata_rec_t& mem, const kol_mem_port_t& port) {
    if (port.has_clock()) return;
    write(mem, port);
    show_unclocked(mem, kol_ext.cur_pin);
}

// ---- contents

bool read_range(std::string_view text, kol_contents_t& contents) {
    std::int64_t last = 0;
    const char* const end = text.data() + text.size();
    const auto first = std::from_chars(text.data(), end, contents.first);
    if (first.ec != std::errc{} || first.ptr == end || *first.ptr != ':') return false;
    const auto second = std::from_chars(first.ptr + 1, end, last);
    if (second.ec != std::errc{} || second.ptr != end || contents.first < 0 || last < contents.first ||
        last - contents.first >= kol_most_memory_bits / static_cast<std::int64_t>(contents.width))
        return false;
    contents.count = last - contents.first + 1;
    return true;
}

const std::string* initial_text(std::string_view path) {
    std::string text;
    if (!has_initial_texts && tm_read_input(yxi_design_path() + ".mem", text))
        initial_texts = kol_split_memories(text);
    has_initial_texts = true;
    const auto found = initial_texts.find(path);
    return found == initial_texts.end() ? nullptr : &found->second;
}

bool read_initial(kol_contents_t& contents) {
    const std::string* const text = initial_text(kol_path(kol_ext.cur_inst->sim_path));
    std::string why;
    contents.clear_to_unknown();
    if (text == nullptr || kol_read_words(*text, contents, why)) return true;
    return kol_show_instance_error("# !!! Error : Memory Contents, " + why + ", of instance : ");
}

}  // namespace

void kol_mem_init() {
    kol_mem_userdata_rec_t& mem = user_data.create();
    mem.owner = kol_ext.cur_inst;
    std::string_view range;
    if (!kol_set_up_ports(mem.ports, mem.initial.width) || !kol_read_instance_text("WORDS", range)) return;
    if (!read_range(range, mem.initial))
        kol_show_instance_error("# !!! Error : INVALID  property \"WORDS\" Value on instance : ");
    else if (read_initial(mem.initial))
        mem.contents = mem.initial;
}

void kol_mem_clear() {
    user_data.all().clear();
    initial_texts.clear();
    has_initial_texts = false;
}

void kol_mem_restart() {
    for (kol_mem_userdata_rec_t& mem : user_data.all()) {
        mem.contents = mem.initial;
        for (auto* all : {&mem.ports.reads, &mem.ports.writes})
            for (kol_mem_port_t& port : *all) {
                port.shown.clear();
                port.done = -1;
            }
    }
}

void kol_mem_archive(tm_archive_t& archive) {
    for (kol_mem_userdata_rec_t& mem : user_data.all()) {
        archive(mem.initial.bits, mem.contents.bits);
        for (auto* all : {&mem.ports.reads, &mem.ports.writes})
            for (kol_mem_port_t& port : *all) archive(port.shown, port.done);
    }
}

void kol_mem_refresh() {
    kol_refresh_pin_delays(*kol_ext.cur_inst);
    kol_refresh_ports(user_data.current().ports);
}

void kol_mem_hdler() {
    kol_mem_userdata_rec_t& mem = user_data.current();
    if (mem.contents.bits.empty()) return;  // its set-up has failed
    for (auto* all : {&mem.ports.reads, &mem.ports.writes})
        for (kol_mem_port_t& port : *all) {
            if (port.clock.pin == kol_ext.cur_pin) return clock_changed(mem, port.clock);
            if (!kol_is_of_port(port, kol_ext.cur_pin)) continue;
            return all == &mem.ports.reads ? read_port_changed(mem, port) : write_port_changed(mem, port);
        }
}

const kol_contents_t* kol_contents_of(const yx_inst_record_t& inst) {
    for (const kol_mem_userdata_rec_t& mem : user_data.all())
        if (mem.owner == &inst && !mem.contents.bits.empty()) return &mem.contents;
    return nullptr;
}

bool kol_load_memory(yx_inst_record_t& inst, const std::string& path, std::string& why) {
    auto& all = user_data.all();
    const auto mem = std::ranges::find(all, &inst, &kol_mem_userdata_rec_t::owner);
    std::string text;
    if (mem == all.end() || mem->contents.bits.empty()) return why = "no memory", false;
    if (!tm_read_input(path, text)) return why = "cannot be read", false;
    kol_contents_t loaded = mem->initial;
    loaded.clear_to_unknown();
    if (!kol_read_words(text, loaded, why)) return false;
    mem->initial = mem->contents = loaded;
    kol_ext.cur_inst = &inst;
    show_unclocked(*mem, nullptr);
    return true;
}
