// kol_ext: the record of the simulator, one instance for the whole program: schematic directory, timing
// range, run window, event queue, spike settings, the instance, pin and net whose handler runs, the
// simulation path, and the lists of probes, breaks, user buses, list and trace signals.
// Times are time steps.
#pragma once

#include <array>
#include <cstdio>

#include "netlist/store.h"

inline constexpr std::size_t kol_max_parameters = 30;
using kol_array_param_t = std::array<tm_string_record_t, kol_max_parameters>;

struct kol_probe_signal_rec_t {
    yx_net_record_t* net = nullptr;
    tm_string_record_t probe_name, cur_sim_path;
    kol_probe_signal_rec_t* previous = nullptr;
    kol_probe_signal_rec_t* next = nullptr;
    std::int16_t object_id = 0, vertex = 0;  // the net on its sheet, and where on the net the probe stands
};

inline constexpr std::size_t kol_max_levels = 28;

struct kol_file_record_t {         // the sheet open at a level of the hierarchy
    std::int8_t file_index = 0;    // of the schematic database, 1..32; anything else: no sheet
    tm_string_record_t file_path;  // of its data file
    std::int32_t highest_net = 0;  // number of a net of the sheet; 0: no sheet
};

enum kol_spike_models : std::int16_t {
    kol_nosuppress = 0,
    kol_suppress = 1,
    kol_indgene = 2,
    kol_pessimistic = 3,
};

struct kol_defref_var_rec_t {
    // Session.
    bool save_to_do = false;                                     // set by BYE, cleared by QUIT
    std::int32_t saves = 0;                                      // of the state, by SAVE STATE
    std::int16_t file_level_cur = 0, file_level_max = 0;         // 1 is the top sheet, 0: none opened yet
    std::array<kol_file_record_t, kol_max_levels> arrayof_file;  // level n is entry n - 1
    std::int16_t nb_of_ext_arg = 0;
    kol_array_param_t ext_arg;  // parameters of the initial command file
    kol_array_param_t top_var;  // top-level variables of the interpreter
    tm_string_record_t dir_path;
    std::int16_t sim_range_type = 2;  // 1 minimum, 2 typical, 3 maximum
    yx_timing_index_array_t timing_ar{};
    bool view_sheet_done = false, view_sheetaux_done = false;
    tm_string_record_t cur_sim_path;  // ends with "/"
    float scale_user_unit = 1.0F;

    // Run.
    std::int32_t start_time = 0, cur_time = 0, end_time = 0;
    bool time_breaked = false;
    std::int32_t resume_time = 0;  // of the state restored last
    std::int32_t history = 0;
    bool history_abs = false;
    yx_inst_record_t* cur_inst = nullptr;
    yx_pin_record_t* cur_pin = nullptr;
    yx_net_record_t* cur_net = nullptr;

    // Event queue.
    yx_event_rec_t* cur_event = nullptr;        // head
    yx_event_rec_t* last_event = nullptr;       // tail
    yx_event_rec_t* start_old_event = nullptr;  // free list of event records
    yx_event_rec_t* last_old_event = nullptr;

    // Spikes.
    bool spike_on = true;
    bool spiked = false;
    std::int16_t spike_model = kol_indgene;
    std::int32_t spike_min = 0, spike_min_t0 = 0, spike_min_t = 0, tspike_min = 0;
    float tim_coef_delay = 1.0F, tim_coef_setup = 1.0F, tim_coef_hold = 1.0F, tim_coef_minpulse = 1.0F;

    // Observation.
    yx_break_signal_rec_t* break_signal = nullptr;  // newest
    kol_probe_signal_rec_t* start_probe_signal = nullptr;
    kol_probe_signal_rec_t* last_probe_signal = nullptr;
    yx_bus_rec_t* start_sim_bus = nullptr;
    yx_bus_rec_t* last_sim_bus = nullptr;
    yx_bus_rec_t* start_forgotten_bus = nullptr;  // forgotten by name, still held
    yx_bus_rec_t* last_forgotten_bus = nullptr;
    yx_signal_rec_t* list_signal = nullptr;   // newest; previous leads to the first
    yx_signal_rec_t* trace_signal = nullptr;  // newest
    std::int32_t signal_position = 0;         // picked last in a view

    // List view.
    bool list_or_trace = true;  // true: the Results page shows the list
    std::int32_t list_cur_time = 0;
    std::int16_t list_cur_column = 1, list_last_column = 0, list_work_column = 1, list_work_row = 1;
    std::int32_t list_period = 0, list_base_time = 0;
    bool list_state_on = true, list_change_on = true;
    std::int32_t list_height = 20, list_stepv = 20, list_steph = 12;
    std::int32_t list_sig1n_x0 = 0, list_sig1n_y0 = 0, list_sig1r_x0 = 0, list_sig1r_y0 = 0;
    std::int32_t list_sig1t_x0 = 0, list_sig1t_y0 = 0;

    // Trace view.
    std::int32_t trace_cur_time = 0;
    std::int16_t trace_cur_row = 1;
    std::int32_t trace_scale = 1000, trace_period = 0;
    bool trace_period_on = false;
    std::int32_t trace_height = 20, trace_stepv = 40, trace_steph = 24;
    std::int32_t trace_left_x = 24, trace_left_y = 50, trace_right_x = 276, trace_right_y = 50;
    std::int32_t trace_sig1t_x0 = 24, trace_sig1t_y0 = 0, trace_sig1n_x0 = 252, trace_sig1n_y0 = 50;
    std::int32_t trace_sig1r_x0 = 24, trace_sig1r_y0 = 50;
    std::int32_t trace_sig1g_x1 = 24, trace_sig1g_y1 = 0, trace_sig1g_y2 = 50;
};

extern kol_defref_var_rec_t kol_ext;
extern std::FILE* kol_dbf;          // the simulator's trace stream
extern std::int32_t kol_max_delay;  // largest net-plus-pin delay of the design
extern tm_string_record_t kol_init_do_file;

// Writes a line to the simulator's trace stream when it is open.
[[gnu::format(printf, 1, 2)]] void kol_trace(const char* format, ...);
