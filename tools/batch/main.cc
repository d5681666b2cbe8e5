// kolv-batch: the program.
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "batch/options.h"
#include "batch/session.h"
#include "foundation/ends.h"

namespace {

int refuse(const std::string& fault) {
    std::fprintf(stderr, "kolv-batch: %s\n", fault.c_str());
    return bt_unusable;
}

}  // namespace

int main(int argc, char** argv) {
    tm_begin_process();
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    bt_options_t options;
    const bt_reply_t reply =
        bt_read_options({argv + 1, static_cast<std::size_t>(argc > 0 ? argc - 1 : 0)}, options);
    if (!reply.text.empty()) return std::fputs(reply.text.c_str(), stdout) < 0 ? bt_failed : bt_good;
    if (!reply.fault.empty()) return refuse(reply.fault);
    const std::string& directory = options.arguments.front();
    if (!std::filesystem::is_directory(directory)) return refuse("no directory : " + directory);
    if (::access(directory.c_str(), R_OK | X_OK) != 0)
        return refuse("the directory cannot be read : " + directory + " : " + std::strerror(errno));
    bt_run_session(options);
}
