// The store's accessors, and its fatal end.
#include "netlist/store.h"

#include <cstdlib>
#include <utility>

#include "foundation/context.h"
#include "foundation/ends.h"
#include "foundation/shell.h"

yx_defref_exp_rec_t yx_sext;
std::FILE* yx_debugfile = nullptr;

namespace {

// One addressable kind: where its blocks and its count are, and how the trace names them.
template <typename Record>
struct kind_t {
    yx_block_table<Record> yx_defref_exp_rec_t::*blocks;
    std::int32_t yx_defref_exp_rec_t::*count;
    const char* accessor;
    const char* count_name;
};

using store = yx_defref_exp_rec_t;
constexpr kind_t<char> chars{&store::arrayof_bcharptr, &store::max_char_cur, "YX_PTRTO_CHARS",
                             "max_char_cur"};
constexpr kind_t<yx_string_record_t> strings{&store::arrayof_bstringptr, &store::max_string_cur,
                                             "YX_PTRTO_STRING_REC", "max_string_cur"};
constexpr kind_t<yx_prop_record_t> props{&store::arrayof_bpropptr, &store::max_prop_cur, "YX_PTRTO_PROP_REC",
                                         "max_prop_cur"};
constexpr kind_t<yx_net_record_t> nets{&store::arrayof_bnetptr, &store::max_net_cur, "YX_PTRTO_NET_REC",
                                       "max_net_cur"};
constexpr kind_t<yx_net_child_record_t> net_children{&store::arrayof_bnetchildptr, &store::max_net_child_cur,
                                                     "YX_PTRTO_NET_CHILD_REC", "max_net_child_cur"};
constexpr kind_t<yx_pin_record_t> pins{&store::arrayof_bpinptr, &store::max_pin_cur, "YX_PTRTO_PIN_REC",
                                       "max_pin_cur"};
constexpr kind_t<yx_inst_record_t> insts{&store::arrayof_binstptr, &store::max_inst_cur, "YX_PTRTO_INST_REC",
                                         "max_inst_cur"};
constexpr kind_t<yx_pinm_record_t> pinms{&store::arrayof_bpinmptr, &store::max_pinm_cur, "YX_PTRTO_PINM_REC",
                                         "max_pinm_cur"};
constexpr kind_t<yx_macro_record_t> macros{&store::arrayof_bmacroptr, &store::max_macro_cur,
                                           "YX_PTRTO_MACRO_REC", "max_macro_cur"};

[[noreturn]] void stop_at_index(const char* accessor, std::int32_t index, const char* count_name,
                                std::int32_t count) {
    if (yx_debugfile != nullptr) {
        std::fprintf(yx_debugfile, " %s  : error : index  : %d\n", accessor, index);
        std::fprintf(yx_debugfile, "   %s : %d\n", count_name, count);
    }
    yx_error_stop();
}

void check_index(const char* accessor, std::int32_t index, std::int32_t lowest, const char* count_name,
                 std::int32_t count) {
    if (index < lowest || index > count) stop_at_index(accessor, index, count_name, count);
}

template <typename Record>
Record* ptrto(const kind_t<Record>& kind, std::int32_t index) {
    check_index(kind.accessor, index, 1, kind.count_name, yx_sext.*kind.count);
    const auto at = static_cast<std::size_t>(index - 1);
    return &(yx_sext.*kind.blocks)[at / yx_block_records][at % yx_block_records];
}

// The n-th record of the chain that begins at index `first`.
template <typename Record>
Record* walk_chain(const char* walker, const kind_t<Record>& kind, std::int32_t first,
                   std::int32_t Record::*next, std::int32_t n) {
    Record* record = ptrto(kind, first);
    if (n == 1) return record;
    for (std::int32_t step = 1; step < n; ++step) {
        check_index(walker, record->*next, 1, kind.count_name, yx_sext.*kind.count);
        record = ptrto(kind, record->*next);
    }
    check_index(walker, record->*next, 0, kind.count_name, yx_sext.*kind.count);
    return record;
}

// What every chain walk asks first: a net of the store and a place that a chain can have.
const yx_net_record_t& net_of_chain(const char* walker, std::int32_t net_index, std::int32_t n,
                                    const char* count_name, std::int32_t count) {
    check_index(walker, net_index, 1, nets.count_name, yx_sext.max_net_cur);
    check_index(walker, n, 1, count_name, count);
    return *ptrto(nets, net_index);
}

void close_sheet_files() {
    for (tm_file_io_rec_t& file : tm_vext.filear) {
        if (file.already_open_ok && file.file_io_id != nullptr) std::fclose(file.file_io_id);
        file = {};
    }
}

}  // namespace

const char* yx_ptrto_chars(std::int32_t string_index) {
    return ptrto(chars, yx_ptrto_string_rec(string_index)->index);
}

yx_string_record_t* yx_ptrto_string_rec(std::int32_t index) { return ptrto(strings, index); }
yx_prop_record_t* yx_ptrto_prop_rec(std::int32_t index) { return ptrto(props, index); }
yx_net_record_t* yx_ptrto_net_rec(std::int32_t index) { return ptrto(nets, index); }
yx_net_child_record_t* yx_ptrto_net_child_rec(std::int32_t index) { return ptrto(net_children, index); }
yx_pin_record_t* yx_ptrto_pin_rec(std::int32_t index) { return ptrto(pins, index); }
yx_inst_record_t* yx_ptrto_inst_rec(std::int32_t index) { return ptrto(insts, index); }
yx_pinm_record_t* yx_ptrto_pinm_rec(std::int32_t index) { return ptrto(pinms, index); }
yx_macro_record_t* yx_ptrto_macro_rec(std::int32_t index) { return ptrto(macros, index); }

yx_net_child_record_t* yx_net_ptrto_net_child_rec(std::int32_t net_index, std::int32_t n) {
    constexpr const char* walker = "YX_NET_PTRTO_NET_CHILD_REC";
    const yx_net_record_t& net =
        net_of_chain(walker, net_index, n, net_children.count_name, yx_sext.max_net_child_cur);
    return walk_chain(walker, net_children, net.first_child, &yx_net_child_record_t::next_child, n);
}

yx_pin_record_t* yx_net_ptrto_pin_in_rec(std::int32_t net_index, std::int32_t n) {
    constexpr const char* walker = "YX_NET_PTRTO_PIN_IN_REC";
    const yx_net_record_t& net = net_of_chain(walker, net_index, n, pins.count_name, yx_sext.max_pin_cur);
    return walk_chain(walker, pins, net.first_pin_in_ind, &yx_pin_record_t::next_pin_in_ind, n);
}

yx_pin_record_t* yx_net_ptrto_pin_out_rec(std::int32_t net_index, std::int32_t n) {
    constexpr const char* walker = "YX_NET_PTRTO_PIN_OUT_REC";
    const yx_net_record_t& net = net_of_chain(walker, net_index, n, pins.count_name, yx_sext.max_pin_cur);
    return walk_chain(walker, pins, net.first_pin_out_ind, &yx_pin_record_t::next_pin_out_ind, n);
}

void yx_error_stop() {
    constexpr const char* line = " YX_ERROR_STOP  \n";
    if (yx_debugfile != nullptr) {
        std::fputs(line, yx_debugfile);
        std::fflush(yx_debugfile);
    }
    tm_repeat_traces();
    if (yx_sext.tm_graphics_used) {
        if (tm_vext.debugfile != nullptr) {
            std::fputs(line, tm_vext.debugfile);
            std::fclose(tm_vext.debugfile);
            tm_vext.debugfile = nullptr;
        }
        close_sheet_files();
        if (std::exchange(tm_vext.init_done, false)) tm_shell.abandon_display();
    }
    std::puts("!!! YX_ERROR_STOP  ");
    std::fflush(stdout);
    std::abort();
}

void yx_store_clear() { yx_sext = {}; }
