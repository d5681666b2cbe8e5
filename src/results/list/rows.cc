// The texts of the list rows.
#include "results/list/rows.h"

#include "kernel/history.h"
#include "kernel/say.h"
#include "kernel/state.h"
#include "results/list/layout.h"

std::string kol_list_time_text(std::int32_t time) {
    std::string text = kol_time_text(time);
    if (text.size() > kol_list_time_width) text.erase(0, text.size() - kol_list_time_width);
    return text;
}

std::string kol_list_value_text(const yx_signal_rec_t& signal) {
    if (signal.history == nullptr) return {};
    char two[2];
    kol_state_to_statechar((*signal.history)[signal.cursor].state, two);
    return {two, kol_list_value_width()};
}

std::string_view kol_list_name_head(const tm_string_record_t& name) {
    return tm_view(name).substr(0, kol_list_name_width());
}
