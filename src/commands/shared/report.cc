// Lines of the STATUS reports.

#include "commands/shared/report.h"

#include "commands/language/command.h"
#include "foundation/shell.h"
#include "kernel/say.h"

void kol_report_quoted(std::string_view label, std::string_view text) {
    kol_show({label, "\"", text, "\" "});
}

void kol_report_net(const yx_net_record_t& net) {
    kol_report_quoted("# Net index      : ", "NI_" + std::to_string(net.self));
    kol_report_quoted("# Net sim_path   : ", kol_path(net.sim_path));
    kol_report_quoted("# Net id         : ", "N_" + std::to_string(net.object_id));
}

void kol_report_end() { tm_display("#******************************* "); }
