// kolv-fuzz --target=NAME ...: a libFuzzer program for every target.  kolv-fuzz --target=NAME --seeds=FOLDER
// writes files to begin with.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string_view>

#include "fuzz/targets.h"

namespace {

constexpr fz_target targets[] = {
    {"design", fz_feed_design, fz_seed_designs},
    {"state", fz_feed_state, fz_seed_states},
    {"words", fz_feed_words, nullptr},
    {"sheet", fz_feed_sheet, fz_seed_sheets},
    {"link", fz_feed_link, nullptr},
    {"netlist", fz_feed_netlist, fz_seed_netlists},
    {"sdf", fz_feed_sdf, nullptr},
    {"library", fz_feed_library, nullptr},
    {"timing", fz_feed_timing, nullptr},
    {"delays", fz_feed_delays, nullptr},
    {"commands", fz_feed_commands, fz_seed_commands},
};

const fz_target* target = nullptr;

bool take(std::string_view argument) {
    constexpr std::string_view name_option = "--target=", seeds_option = "--seeds=";
    if (argument.starts_with(name_option))
        for (const fz_target& row : targets)
            if (argument.substr(name_option.size()) == row.name) target = &row;
    if (argument.starts_with(seeds_option)) {
        if (target != nullptr && target->write_seeds != nullptr)
            target->write_seeds(std::string(argument.substr(seeds_option.size())));
        std::exit(target == nullptr ? 2 : 0);
    }
    return argument.starts_with("--");
}

}  // namespace

std::string fz_read(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void fz_write(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

extern "C" int LLVMFuzzerInitialize(const int* argc, char*** argv) {
    for (int i = 1; i < *argc; ++i) take((*argv)[i]);
    if (target == nullptr) std::exit(2);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    target->feed({reinterpret_cast<const char*>(bytes), size});
    return 0;
}
