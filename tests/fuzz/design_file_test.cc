// Spoiled design files: each is refused with one line or simulated; none crashes or hangs the set-up.
#include <algorithm>
#include <random>

#include "kernel/clear.h"
#include "kernel/context.h"
#include "kernel/setup.h"
#include "models/model_table.h"
#include "netlist/sample_design.h"

namespace {

constexpr int rounds = 10000;

class spoiler {
public:
    explicit spoiler(const yx_design_image_t& design)
        : bytes_(tst_file_of(design)), fields_(tst_fields(design, bytes_)) {}

    std::string next() {
        std::string spoiled = bytes_;
        switch (below(4)) {
            case 0:
                for (std::size_t n = 1 + below(4); n > 0; --n)
                    spoiled[below(spoiled.size())] ^= static_cast<char>(1 << below(8));
                break;
            case 1:
                spoiled.resize(below(spoiled.size()));
                break;
            default:
                for (std::size_t n = 1 + below(3); n > 0; --n)
                    tst_set(spoiled, fields_[below(fields_.size())], value());
        }
        return spoiled;
    }

private:
    std::size_t below(std::size_t bound) { return random_() % bound; }
    std::int64_t value() {
        constexpr std::int64_t extremes[] = {-1, INT8_MAX, INT16_MAX, INT16_MIN, INT32_MAX, INT32_MIN};
        return below(4) == 0 ? extremes[below(std::size(extremes))] : static_cast<std::int64_t>(below(12));
    }

    std::mt19937 random_{20260101};
    std::string bytes_;
    std::vector<tst_field> fields_;
};

TEST(design_file, spoiled_files_are_refused_or_set_up) {
    const tst_directory directory;
    spoiler files(tst_sample_design());
    kol_set_models(kol_model_table());
    int accepted = 0, refused = 0;
    testing::internal::CaptureStdout();
    for (int round = 0; round < rounds; ++round) {
        kol_context_clear();
        tst_write("design_yx", files.next());
        const bool is_loaded = tst_load_file(".", "design_yx") == 0;
        ++(is_loaded ? accepted : refused);
        EXPECT_EQ(yx_sext.open_file_ok, is_loaded);
        if (!is_loaded) continue;
        kol_init_object_ptr();
        kol_init_net_state();
    }
    std::fflush(stdout);
    const std::string said = testing::internal::GetCapturedStdout();
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), refused);
    EXPECT_GT(accepted, rounds / 10);
    EXPECT_GT(refused, rounds / 2);
    kol_context_clear();
    yx_store_clear();
}

}  // namespace
