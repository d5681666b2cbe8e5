// The numbers of a session as JSON.
#include "batch/report.h"

#include <sys/resource.h>

#include <chrono>
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "foundation/replacement.h"
#include "kernel/run_end.h"
#include "kernel/say.h"

namespace {

const auto begin = std::chrono::steady_clock::now();

std::int64_t most_memory() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return std::int64_t{usage.ru_maxrss} * 1024;
}

}  // namespace

bool bt_write_report(const std::string& path, int status, const bt_verdict_t& verdict) {
    nlohmann::ordered_json report = {
        {"status", status},
        {"end_time", std::strtod(kol_time_text(kol_ext.cur_time).c_str(), nullptr)},
        {"end_time_steps", kol_ext.cur_time},
        {"events", kol_events_executed},
    };
    for (std::size_t i = 0; i < bt_kinds; ++i) report[bt_kind_names[i]] = verdict.count[i];
    report["seconds"] = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    report["memory_bytes"] = most_memory();
    return tm_replacement(path).write(report.dump(2) + "\n");
}
