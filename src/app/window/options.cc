// The program's own resources.
#include "app/window/options.h"

#include "app/window/window_record.h"

namespace {

window_options_t options;

XtResource resource(const char* name, const char* type, Cardinal offset) {
    return {const_cast<char*>(name),
            const_cast<char*>(XtCBoolean),
            const_cast<char*>(type),
            sizeof(Boolean),
            offset,
            const_cast<char*>(XtRImmediate),
            nullptr};
}

}  // namespace

const window_options_t& window_options() { return options; }

void window_options_read() {
    XtResource rows[] = {
        resource("resultsFollowWindow", XtRBoolean, XtOffsetOf(window_options_t, results_follow_window)),
        resource("namesBesideRows", XtRBoolean, XtOffsetOf(window_options_t, names_beside_rows)),
        resource("confirmLoss", XtRBoolean, XtOffsetOf(window_options_t, confirm_loss)),
    };
    XtGetApplicationResources(tm_window.top_window, &options, rows, XtNumber(rows), nullptr, 0);
}
