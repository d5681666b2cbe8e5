// The signal of Control-C as a key that waits.
#include "batch/interrupt.h"

#include <csignal>

#include "foundation/shell.h"

namespace {

volatile std::sig_atomic_t waits = 0;

void interrupt(int signal) {
    if (waits != 0) {
        std::signal(signal, SIG_DFL);
        std::raise(signal);
    }
    waits = 1;
}

bool take_control_key(char letter) {
    if (letter != 's' || waits == 0) return false;
    waits = 0;
    return true;
}

}  // namespace

void bt_watch_interrupts() {
    struct sigaction action {};
    action.sa_handler = interrupt;
    action.sa_flags = SA_RESTART | SA_NODEFER;
    ::sigaction(SIGINT, &action, nullptr);
    tm_shell.take_control_key = take_control_key;
}

void bt_forget_interrupt() { waits = 0; }
