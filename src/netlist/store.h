// yx: the netlist store.  Owns the flattened design: nets, net children, pins, instances, macros, macro pins,
// property values, strings and characters, each kind in blocks of 1000 records that never move, addressed by
// 1-based 32-bit indexes (0: none).  How many records a kind may have depends on the revision of the design
// file; there are as many blocks as the design needs.  The design file reader fills it once; the set-up turns
// indexes into references; the kernel keeps the running state in the same records.  Times and delays are time
// steps.  An index beyond the records of its kind is a fatal internal error: a trace line, then
// yx_error_stop.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <vector>

#include "foundation/strings.h"

inline constexpr std::int32_t yx_block_records = 1000;
inline constexpr float yx_large_revision = 3.0F;           // of design files, from this one on large
inline constexpr std::int32_t yx_max_index = 500'000;      // records of a kind
inline constexpr std::int32_t yx_max_large = 100'000'000;  // of a large file
constexpr std::int32_t yx_max_index_of(float revision) {
    return revision >= yx_large_revision ? yx_max_large : yx_max_index;
}
inline constexpr std::int32_t yx_max_names = 16;      // entries of a property name table
inline constexpr std::int32_t yx_max_bus_bits = 128;  // bit states of a pin that spans bits
inline constexpr std::int32_t yx_timing_indexes = 120;

enum yx_net_types : std::int16_t { YX_TSTANDARD = 1, YX_TSUB_NET = 2, YX_TSTD_BUS = 3 };
enum yx_prop_types : std::int16_t { YX_PSTRING = 0, YX_PINTEGER = 1, YX_PTIME = 2, YX_PREAL = 3 };
enum yx_io_types : std::int16_t { YX_IO_INPUT = 1, YX_IO_OUTPUT = 2, YX_IO_BOTH = 3, YX_IO_TERMINAL = 4 };
inline constexpr std::int16_t yx_kind_initialised = 4;  // net_kind whose initial state is always applied

using yx_procedure_t = void (*)();

struct kol_pin_link_t;
struct yx_event_rec_t;
class kol_history_t;
struct yx_break_signal_rec_t;
struct yx_net_record_t;
struct yx_pin_record_t;
struct yx_inst_record_t;
struct yx_macro_record_t;

// ---- design records
// -----------------------------------------------------------------------------------------

struct yx_string_record_t {
    const char* charp = nullptr;  // the first character; not terminated
    std::int32_t index = 0;       // the same in the character area, 1-based
    std::int8_t len = 0;          // 0..127
};

struct yx_prop_record_t {
    std::int16_t prop_type = 0;  // yx_prop_types
    union {
        std::int32_t valuei[3] = {0, 0, 0};  // minimum, typical, maximum
        std::int32_t valuet[3];              // the same, time steps
        float valuer[3];
        std::int32_t valuec;  // string index
    };
};

struct yx_signal_state_rec {
    std::int32_t time = -1;  // of the last change; -1 never
    std::int8_t state = 0;   // 0..19
    bool fixed = false;      // a net that ignores its drivers
};

struct yx_pin_signal_state_rec {
    yx_signal_state_rec std;             // a pin on one bit
    yx_signal_state_rec* bus = nullptr;  // a pin spanning bits: one record per bit of its bus
};

// Standard net and sub-net.  What a run touches at every event comes first.
struct yx_net_u1_t {
    yx_signal_state_rec cur_state, old_state;

    // Run time, of a root net.
    const kol_pin_link_t* link = nullptr;  // pins that drive the tree, then those it feeds, each in pre-order
    std::int32_t nb_of_driver = 0;
    std::int32_t nb_of_fan_out = 0;
    yx_event_rec_t* first_pending = nullptr;  // queued events from pins, the newest first
    yx_event_rec_t* first_force = nullptr;    // queued FORCE events, by time while forces_sorted
    kol_history_t* history = nullptr;         // while somebody observes the net
    yx_break_signal_rec_t* break_signal = nullptr;

    yx_event_rec_t* last_force = nullptr;
    bool forces_sorted = true;
    std::int8_t state_init = 0;       // 0: none
    std::int16_t posinbus = 0;        // 1-based
    std::int32_t nb_of_observer = 0;  // signals that keep the history alive

    std::int32_t rise[3] = {0, 0, 0};  // minimum, typical, maximum
    std::int32_t fall[3] = {0, 0, 0};
    std::int32_t bus = 0;
    std::int32_t first_sub_net = 0, father_net = 0, next_sub_net = 0;
    yx_net_record_t* bus_ptr = nullptr;
    yx_net_record_t* first_sub_net_ptr = nullptr;
    yx_net_record_t* father_net_ptr = nullptr;
    yx_net_record_t* next_sub_net_ptr = nullptr;
};

struct yx_net_u2_t {  // bus
    std::int16_t net_bus_start = 0, net_bus_end = 0;
    std::int32_t netind_start = 0;  // first member net
    yx_net_record_t* netind_start_ptr = nullptr;
};

struct yx_net_child_record_t {
    std::int32_t self = 0;
    std::int32_t sim_path = 0;  // string index
    std::int16_t object_id = 0;
    std::int32_t name = 0;  // string index
    std::int16_t net_kind = 0;
    std::int32_t next_child = 0;
    yx_net_child_record_t* next_child_ptr = nullptr;
};

struct yx_net_record_t {
    struct {
        yx_net_u1_t U1;  // meaningful for net_type 1 and 2; zero in a bus
        yx_net_u2_t U2;  // meaningful for net_type 3
    } UU;
    std::int32_t self = 0;
    std::int16_t object_id = 0;
    std::int16_t net_type = 0;  // yx_net_types
    std::int16_t status = 0;
    std::int16_t net_kind = 0;
    std::int32_t name = 0;      // string index, 0 unnamed
    std::int32_t sim_path = 0;  // string index
    std::int32_t nb_of_child = 0, first_child = 0;
    yx_net_child_record_t* first_child_ptr = nullptr;
    yx_pin_record_t* first_pin_in_ptr = nullptr;  // pins that this net feeds
    std::int32_t first_pin_in_ind = 0;
    std::int32_t first_pin_out_ind = 0;  // pins that drive this net
    yx_pin_record_t* first_pin_out_ptr = nullptr;
    std::int16_t nb_pin_in = 0, nb_pin_out = 0;
    std::int32_t first_prop = 0;
    std::int8_t nb_of_property = 0;
};

// What a run touches comes first.
struct yx_pin_record_t {
    yx_procedure_t pin_hdler = nullptr;
    yx_inst_record_t* instance_ptr = nullptr;
    yx_pin_signal_state_rec pin_state;
    std::int32_t rise[3] = {0, 0, 0};  // minimum, typical, maximum
    std::int32_t fall[3] = {0, 0, 0};
    std::int32_t self = 0;
    std::int16_t object_id = 0;
    std::int16_t status = 0;

    std::int16_t io_type = 0;                    // yx_io_types; all but outputs receive a signal
    std::int16_t pin_hdl_priority = 0;           // higher runs first at one time
    std::int16_t drive_array[4] = {0, 0, 0, 0};  // by value code
    std::int32_t sim_path = 0;
    std::int32_t instance_ind = 0;
    std::int32_t net_ind = 0;
    std::int32_t next_pin_in_ind = 0, next_pin_out_ind = 0;
    std::int32_t first_prop = 0;
    yx_pin_record_t* next_pin_inst_ptr = nullptr;
    yx_net_record_t* net_ptr = nullptr;
    yx_pin_record_t* next_pin_in_ptr = nullptr;
    yx_pin_record_t* next_pin_out_ptr = nullptr;
    std::int16_t pin_start = 0, pin_end = 0;  // bit range on a bus; pin_end 0: one bit
    std::int16_t pin_net_start = 0;           // first bit's offset within the bus's members
    std::int8_t nb_of_property = 0;
};

// What a run touches comes first.
struct yx_inst_record_t {
    std::array<std::byte, 56> run_area{};  // for what the instance's model gathers to run
    std::int8_t timing_index = 0;          // 0: global timing range, 1..120: an entry of the table
    std::int32_t self = 0;
    std::int16_t object_id = 0;
    std::int16_t status = 0;
    void* user_data_area = nullptr;
    std::int32_t sim_path = 0;
    std::int32_t file_path = 0;
    std::int16_t nb_of_pin = 0;
    std::int32_t first_pin_ind = 0;
    yx_pin_record_t* first_pin_ptr = nullptr;
    std::int8_t nb_of_property = 0;
    std::int32_t first_prop = 0;
};

struct yx_pinm_record_t {
    std::int32_t self = 0;
    std::int16_t object_id = 0;
    std::int16_t status = 0;
    std::int32_t sim_path = 0;
    std::int32_t macro_ind = 0;
    yx_macro_record_t* macro_ptr = nullptr;
    std::int32_t net_ind = 0;
    yx_net_record_t* net_ptr = nullptr;
    std::int16_t pin_start = 0, pin_end = 0, pin_net_start = 0;
    std::int8_t nb_of_property = 0;
    std::int32_t first_prop = 0;
};

struct yx_macro_record_t {
    std::int32_t self = 0;
    std::int16_t object_id = 0;
    std::int16_t status = 0;
    std::int8_t timing_index = 0;
    std::int32_t sim_path = 0;
    std::int32_t file_path = 0;
    std::int16_t nb_of_pin = 0;
    std::int32_t first_pin_ind = 0;
    yx_pinm_record_t* first_pin_ptr = nullptr;
    std::int8_t nb_of_property = 0;
    std::int32_t first_prop = 0;
};

// ---- run-time records
// ---------------------------------------------------------------------------------------

struct alignas(64) yx_event_rec_t {
    std::int32_t time = 0;
    std::int8_t state = 0;
    bool unordered = false;          // placed by the fast path or moved by the Pessimistic reaction
    std::int16_t priority = 0;       // the pin's handler priority; the largest for a FORCE event
    yx_pin_record_t* pin = nullptr;  // the output pin that scheduled it; none for a FORCE event
    yx_net_record_t* net = nullptr;  // root of the net tree concerned
    yx_event_rec_t* previous = nullptr;
    yx_event_rec_t* next = nullptr;
    yx_event_rec_t* net_next = nullptr;  // among the queued events of the net
    yx_event_rec_t* higher = nullptr;    // chain of priorities within one time, see the time index
    yx_event_rec_t* lower = nullptr;
};
static_assert(sizeof(yx_event_rec_t) == 64);  // one cache line

struct yx_break_signal_rec_t {
    yx_net_record_t* net = nullptr;
    tm_string_record_t break_name;
    std::int8_t state = 0;
    tm_string_record_t cur_sim_path;
    std::int16_t net_type = 0;
    yx_break_signal_rec_t* previous = nullptr;
    yx_break_signal_rec_t* next = nullptr;
};

struct yx_bus_rec_t;

struct yx_signal_rec_t {  // an entry of the list or the trace, or a member of a user bus
    tm_string_record_t name, cur_sim_path;
    bool sig_bus = false;            // the entry is a user bus
    std::int16_t base_number = 0;    // 0 hexadecimal, 1 binary, 2 decimal
    yx_bus_rec_t* bus = nullptr;     // when sig_bus
    yx_net_record_t* net = nullptr;  // otherwise
    std::int16_t column = 0, row = 0;
    const kol_history_t* history = nullptr;  // of the net
    std::size_t cursor = 0;                  // place of the change whose state is shown
    yx_signal_rec_t* previous = nullptr;
    yx_signal_rec_t* next = nullptr;
};

struct yx_bus_rec_t {  // a user bus
    tm_string_record_t name, cur_sim_path;
    bool combine = false;
    yx_signal_rec_t* signal = nullptr;  // first member; members are linked through next
    std::int32_t nb_of_holder = 0;      // entries of the views and members of other buses that show it
    bool forgotten = false;             // no name finds it; it goes with its last holder
    yx_bus_rec_t* previous = nullptr;
    yx_bus_rec_t* next = nullptr;
};

using yx_timing_index_array_t = std::array<std::int16_t, yx_timing_indexes>;

// ---- the store
// ----------------------------------------------------------------------------------------------

struct yx_general_info_record_t {  // header of the design file
    std::int16_t day = 0, month = 0, year = 0;
    float software_revision = 0;
    std::int32_t nbof_prop_instance = 0, nbof_prop_pin = 0, nbof_prop_net = 0;
    std::int32_t nbof_char = 0, nbof_string = 0, nbof_prop = 0, nbof_instance = 0, nbof_pin = 0, nbof_net = 0;
    std::int32_t nbof_net_child = 0, nbof_pinm = 0, nbof_macro = 0;
    float time_step = 0;
    std::int16_t num_errors = 0, num_warnings = 0;
};

struct yx_prop_type_record_t {
    tm_string_record_t name, prop_type;
};

struct yx_prim_in_record_t {
    tm_string_record_t name, nvalue;
};

struct yx_param_in_record_t {
    tm_string_record_t name;
    float nvalue[3] = {0, 0, 0};
};

struct yx_global_net_record_t {
    tm_string_record_t nvalue;
    std::int32_t net_ind = 0;
    yx_global_net_record_t* ptrto_next_rec = nullptr;
};

template <typename T>
using yx_block_table = std::vector<std::unique_ptr<T[]>>;

struct yx_defref_exp_rec_t {
    std::int32_t max_char_cur = 0, max_string_cur = 0, max_prop_cur = 0, max_pin_cur = 0, max_inst_cur = 0;
    std::int32_t max_net_cur = 0, max_net_child_cur = 0, max_pinm_cur = 0, max_macro_cur = 0;
    std::int32_t max_index = yx_max_index;  // records that a kind may have in a file of this revision
    yx_block_table<char> arrayof_bcharptr;
    yx_block_table<yx_string_record_t> arrayof_bstringptr;
    yx_block_table<yx_prop_record_t> arrayof_bpropptr;
    yx_block_table<yx_pin_record_t> arrayof_bpinptr;
    yx_block_table<yx_inst_record_t> arrayof_binstptr;
    yx_block_table<yx_net_record_t> arrayof_bnetptr;
    yx_block_table<yx_net_child_record_t> arrayof_bnetchildptr;
    yx_block_table<yx_pinm_record_t> arrayof_bpinmptr;
    yx_block_table<yx_macro_record_t> arrayof_bmacroptr;
    std::array<yx_prim_in_record_t, yx_max_names> primitive;
    std::int32_t nbof_primitive = 0;
    std::array<yx_param_in_record_t, yx_max_names> parameter;
    std::int32_t nbof_parameter = 0;
    std::array<yx_prop_type_record_t, yx_max_names> property_instance;
    std::int32_t nbof_property_instance = 0;
    std::array<yx_prop_type_record_t, yx_max_names> property_pin;
    std::int32_t nbof_property_pin = 0;
    std::array<yx_prop_type_record_t, yx_max_names> property_net;
    std::int32_t nbof_property_net = 0;
    yx_global_net_record_t* ptrto_first_global_net = nullptr;
    yx_global_net_record_t* ptrto_cur_global_net = nullptr;
    float time_step = 0;
    yx_general_info_record_t general_info;
    std::int32_t designfile = -1;  // descriptor; -1 closed
    bool open_file_ok = false;     // a design is loaded
    bool tm_graphics_used = false;
};

extern yx_defref_exp_rec_t yx_sext;
extern std::FILE* yx_debugfile;  // "debug_yxdfi"; null until a design is opened

// Accessors: 1-based index to record; out of range is fatal.
const char* yx_ptrto_chars(std::int32_t string_index);
yx_string_record_t* yx_ptrto_string_rec(std::int32_t index);
yx_prop_record_t* yx_ptrto_prop_rec(std::int32_t index);
yx_net_record_t* yx_ptrto_net_rec(std::int32_t index);
yx_net_child_record_t* yx_ptrto_net_child_rec(std::int32_t index);
yx_pin_record_t* yx_ptrto_pin_rec(std::int32_t index);
yx_inst_record_t* yx_ptrto_inst_rec(std::int32_t index);
yx_pinm_record_t* yx_ptrto_pinm_rec(std::int32_t index);
yx_macro_record_t* yx_ptrto_macro_rec(std::int32_t index);
// The n-th (from 1) record of a net's chain.
yx_net_child_record_t* yx_net_ptrto_net_child_rec(std::int32_t net_index, std::int32_t n);
yx_pin_record_t* yx_net_ptrto_pin_in_rec(std::int32_t net_index, std::int32_t n);
yx_pin_record_t* yx_net_ptrto_pin_out_rec(std::int32_t net_index, std::int32_t n);

// Ends the program after a failed check: a line in the debug files, sheet files and display closed, abort.
[[noreturn]] void yx_error_stop();

// Empties the store and frees its blocks (a test begins with an empty store; the program never does this).
void yx_store_clear();
