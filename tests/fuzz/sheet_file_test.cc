// Spoiled sheet files and links: each is refused with a status or opened, walked and saved; none crashes or
// hangs.
#include <filesystem>
#include <fstream>
#include <random>

#include "foundation/records.h"
#include "schematic/object_property.h"
#include "schematic/object_walk.h"
#include "schematic/sheet_draw.h"
#include "schematic/sheet_fields.h"
#include "schematic/wired_sheet.h"

namespace {

constexpr int rounds = 20000;

class sheet_files : public wired_sheet {
protected:
    sheet_files() {
        std::filesystem::create_directories(folder);
        while (!open_objects.empty()) close();
        tm_file_index_t copy = 0;
        STATUS_T status;
        tm_file_create_new(tm_string(folder), tm_string("sheet"), copy, status);
        std::swap(tm_file_record(copy).start_buf_ptr, tm_file_record(file).start_buf_ptr);
        testing::internal::CaptureStdout();
        tm_file_close(copy, true, status);
        testing::internal::GetCapturedStdout();
        sound = content_of(folder + "/sheet.tm_1");
        fields = tst_sheet_fields(sound);
    }
    ~sheet_files() override { std::filesystem::remove_all(folder); }

    std::size_t below(std::size_t bound) { return random() % bound; }
    std::string spoiled_sheet() {
        std::string bytes = sound;
        // Ids and types are small numbers: most changes are to such ones.
        for (std::size_t n = below(4); n > 0; --n)
            tst_set(
                bytes, fields[below(fields.size())],
                below(8) == 0 ? static_cast<std::int64_t>(random()) : static_cast<std::int64_t>(below(40)));
        if (below(4) == 0) bytes[below(bytes.size())] = static_cast<char>(below(256));
        if (below(8) == 0) bytes.resize(below(bytes.size()));
        return bytes;
    }
    std::string spoiled_link() {
        constexpr const char* links[] = {"_1",  "_2",     "",     "\n", "_",  "1",
                                         "_-1", "_99999", "_1,2", "/x", ",_1"};
        std::string link = links[below(std::size(links))];
        if (below(4) == 0) link.insert(below(link.size() + 1), 1 + below(300), static_cast<char>(below(256)));
        return link;
    }
    void put(const std::string& name, const std::string& bytes) const {
        std::ofstream(folder + "/" + name, std::ios::binary) << bytes;
    }
    // What a session does with a sheet.
    void use(tm_file_index_t index) {
        tm_string_record_t value;
        bool found = false;
        for (const std::int16_t id : tm_instances(index)) {
            yx_get_valueof_prop_inst(index, id, tm_string("SIZE"), value, found);
            for (const std::int16_t pin : tm_pins(index, id))
                yx_get_valueof_prop_pinpropfam(index, pin, tm_string("SIZE"), value, found);
        }
        for (const std::int16_t id : tm_symbols(index))
            for (const std::int16_t pin : tm_pins(index, id))
                yx_get_valueof_prop_pin(index, pin, tm_string("SIZE"), value, found);
        for (const std::int16_t id : tm_nets(index)) met += !tm_segments(index, id).empty();
        canvas.clear();
        tm_draw_sheet(index, {0, 100 * k, k, 100, 100}, canvas);
        met += static_cast<int>(canvas.drawn.size());
    }

    const std::string folder =
        (std::filesystem::is_directory("/dev/shm") ? "/dev/shm/" : testing::TempDir()) + "kolv_sheet_fuzz_" +
        std::to_string(getpid());
    std::string sound;
    std::vector<tst_field> fields;
    std::mt19937 random{20261123};
    int met = 0;
};

TEST_F(sheet_files, spoiled_ones_are_refused_or_used) {
    int opened = 0, refused = 0, empty = 0;
    testing::internal::CaptureStdout();
    for (int round = 0; round < rounds; ++round) {
        put("sheet.tm", round % 4 == 0 ? spoiled_link() : "_1");
        put("sheet.tm_1", spoiled_sheet());
        tm_file_index_t index = 0;
        STATUS_T status;
        tm_file_open(tm_string(folder), tm_string("sheet"), index, status);
        ++(status.all != 0 ? refused : tm_file_header(index).object_id_max == 0 ? empty : opened);
        if (status.all != 0) continue;
        use(index);
        tm_file_close(index, round % 8 == 1, status);
        EXPECT_EQ(status.all, 0);
    }
    testing::internal::GetCapturedStdout();
    EXPECT_GT(opened, rounds / 5);
    EXPECT_GT(refused, rounds / 3);
    EXPECT_GT(empty, rounds / 100);
    EXPECT_GT(met, opened);
}

}  // namespace
