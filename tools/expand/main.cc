// kolv-expand: the program.
#include <cstdio>
#include <string_view>

#include "expand/expand.h"
#include "foundation/ends.h"

namespace {

constexpr std::size_t warnings_shown = 20;

void print_warnings(const xp_status& status) {
    for (const std::string& note : status.notes)
        std::fprintf(stderr, "kolv-expand: note: %s\n", note.c_str());
    for (std::size_t i = 0; i < status.warnings.size() && i < warnings_shown; ++i)
        std::fprintf(stderr, "kolv-expand: warning: %s\n", status.warnings[i].c_str());
    if (status.warnings.size() > warnings_shown)
        std::fprintf(stderr, "kolv-expand: %zu more warnings\n", status.warnings.size() - warnings_shown);
}

void print_summary(const xp_options& options, const xp_summary& summary) {
    std::printf("%s: %zu instances, %zu nets, %zu macros\n", options.output.c_str(), summary.instances,
                summary.nets, summary.macros);
    if (options.sheets) std::printf("sheets: %zu page%s\n", summary.pages, summary.pages == 1 ? "" : "s");
}

}  // namespace

int main(int argc, char** argv) {
    tm_begin_process();
    xp_status status;
    xp_options options;
    xp_summary summary;
    xp_parse_options({argv + 1, static_cast<std::size_t>(argc > 0 ? argc - 1 : 0)}, options, status);
    if (!options.help.empty()) {
        std::fputs(options.help.c_str(), stdout);
        return 0;
    }
    if (xp_ok(status)) xp_expand(options, summary, status);
    print_warnings(status);
    if (!xp_ok(status)) {
        std::fprintf(stderr, "kolv-expand: %s\n", xp_message_text(status).c_str());
        return 1;
    }
    print_summary(options, summary);
    return 0;
}
