#include "support/stimuli.h"

#include <gtest/gtest.h>

#include <sstream>

#include "kernel/history.h"
#include "kernel/queue.h"
#include "kernel/run.h"
#include "kernel/say.h"
#include "kernel/state.h"
#include "support/design_build.h"
#include "support/session.h"

void tst_schedule(std::string_view stimuli) {
    std::istringstream words{std::string(stimuli)};
    for (std::string word; words >> word;) {
        const std::size_t equals = word.find('=');
        const std::size_t at = word.find('@');
        std::int8_t state = 0;
        ASSERT_TRUE(kol_keyword_to_state(word.substr(equals + 1, at - equals - 1), state)) << word;
        kol_create_force_event(&tst_net(word.substr(0, equals)), std::stoi(word.substr(at + 1)), state);
    }
}

void tst_run_until(std::int32_t time) {
    kol_ext.start_time = kol_ext.cur_time;
    kol_ext.end_time = time;
    kol_ext.time_breaked = false;
    bool no_event_found = false;
    kol_exec_all_event(no_event_found);
}

std::string tst_state_text(std::int8_t state) {
    char two[2];
    kol_state_to_statechar(state, two);
    return {two, 2};
}

namespace {

std::string text_from(const kol_history_t& history, std::size_t place) {
    std::string text;
    for (; place < history.size(); ++place)
        text += (text.empty() ? "" : " ") + std::to_string(history[place].time) + ":" +
                tst_state_text(history[place].state);
    return text;
}

}  // namespace

std::string tst_net_state(std::string_view net) { return tst_state_text(tst_net(net).UU.U1.cur_state.state); }

std::string tst_queue_text() {
    std::string text;
    for (const yx_event_rec_t* event = kol_ext.cur_event; event != nullptr; event = event->next)
        text += (text.empty() ? "" : " ") + std::to_string(event->time) + ":" +
                std::string(kol_path(event->net->sim_path)) + "=" + tst_state_text(event->state);
    return text;
}

std::string tst_history_of(std::string_view net) { return text_from(*tst_net(net).UU.U1.history, 0); }

std::string tst_changes_of(std::string_view net) {
    const kol_history_t* history = tst_net(net).UU.U1.history;
    return history == nullptr ? "not observed" : text_from(*history, 1);
}

void tst_expect_run(const std::string& design, std::string_view stimuli, const std::string& changes,
                    const std::string& text, int spike_model) {
    SCOPED_TRACE(testing::Message() << design << ", " << stimuli << ", spike model " << spike_model);
    tst_build(design);
    EXPECT_EQ(tst_take_text(), "");
    kol_ext.spike_on = spike_model >= 0;
    if (kol_ext.spike_on) kol_ext.spike_model = static_cast<std::int16_t>(spike_model);
    std::vector<std::string> nets;
    std::istringstream words{changes};
    for (std::string word; words >> word;)
        if (word.find(':') == word.npos) kol_observe_net(&tst_net(nets.emplace_back(word)));
    tst_schedule(stimuli);
    tst_run_until(10000);
    std::string seen;
    for (const std::string& net : nets) {
        const std::string of_net = tst_changes_of(net);
        seen += (seen.empty() ? "" : " ") + net + (of_net.empty() ? "" : " ") + of_net;
    }
    EXPECT_EQ(seen, changes);
    EXPECT_EQ(tst_take_text(), text);
}
