#include <sys/stat.h>

#include "schematic/link_file.h"
#include "schematic/object_property.h"
#include "schematic/object_walk.h"
#include "schematic/saved_sheet.h"

namespace {

using saved = saved_sheet;
constexpr std::int32_t bad_file = tm_status_base + file_open_invalid;
constexpr std::int32_t bad_type = tm_status_base + object_type_invalid;
constexpr std::int32_t bad_object = tm_status_base + file_close_invalid;
constexpr std::size_t date_at = 4, date_bytes = 10;

std::string undated(std::string bytes) { return bytes.replace(date_at, date_bytes, date_bytes, '-'); }

TEST_F(saved, a_sheet_written_read_and_written_again_is_the_same) {
    tm_file_header(file).dot_width = 77;
    set_status(net, tm_object_is_selected);
    EXPECT_EQ(save_and_open(), std::pair(0, 0));
    EXPECT_EQ(said, " -- saving file :\"" + path("sheet.tm_1") + "\" --\n");
    const std::string first = content_of(path("sheet.tm_1"));
    EXPECT_EQ(content_of(path("sheet.tm")), "_1        \n");
    EXPECT_EQ(first.substr(first.size() - 2), std::string(2, '\0'));
    EXPECT_EQ(std::tuple(tm_object(file, net).status, tm_file_header(file).dot_width), std::tuple(0, 77));
    EXPECT_EQ(tm_file_header(file).ar_objindex.size(), tm_file_header(file).object_id_max + 2010U);
    EXPECT_EQ(save_and_open(), std::pair(0, 0));
    EXPECT_EQ(undated(content_of(path("sheet.tm_2"))), undated(first));
    EXPECT_EQ(content_of(path("sheet.tm")), "_2        \n");
    EXPECT_EQ(tm_file_record(file).version, 2);
}

TEST_F(saved, objects_made_after_reading_follow_the_last_ones_read) {
    save_and_open();
    const std::int16_t last = tm_file_header(file).last_child[static_cast<std::size_t>(main)];
    std::int16_t type = 0;
    STATUS_T status;
    tm_object_open(file, main, type, status);
    open_objects.push_back(main);
    const std::int16_t added = add(tm_type_tag_family, tm_tag_family);
    close();
    EXPECT_EQ(std::tuple(tm_object(file, added).previous, tm_object(file, last).following),
              std::tuple(last, added));
    EXPECT_EQ(std::tuple(open(tm_type_main, {}, tm_main), tm_object(file, main).following),
              std::tuple(added + 1, added + 1));
}

// Without the symbol's first pin and its property, the corner of the wire, and the page.
TEST_F(saved, deleted_objects_vanish_and_ids_are_translated) {
    const std::int16_t first_pin = tm_pins(file, symbol).first();
    for (const std::int16_t id : {page, first_pin, tm_properties(file, first_pin).first(), corner})
        tm_set_object_deleted(file, id, true);
    const int before = tm_file_header(file).object_id_max;
    ASSERT_EQ(save_and_open(), std::pair(0, 0));
    const auto now = [](std::int16_t id, int less) { return static_cast<std::int16_t>(id - less); };
    const tm_file_gene_recf_t& header = tm_file_header(file);
    EXPECT_EQ(std::tuple(header.object_id_max, header.primary_object, header.page_obj_id),
              std::tuple(before - 4, 1, 0));
    EXPECT_EQ(tm_object(file, main).child1, 2);
    EXPECT_EQ(tm_object(file, 2).previous, 0);
    tm_string_record_t value;
    bool found = false;
    yx_get_valueof_prop_pin(file, tm_pins(file, now(symbol, 1)).first(), tm_string("PIN"), value, found);
    EXPECT_EQ(text_of(value), "B");
    EXPECT_EQ(tm_object_as<tm_type_instance>(file, now(instance, 3)).symbol, now(symbol, 1));
    EXPECT_EQ(tm_object_as<tm_type_pinpropfam>(file, now(pin_b, 3)).net, now(net, 3));
    EXPECT_EQ(tm_vertices(file, now(net, 3)).first(), now(end, 4));
    EXPECT_EQ(tm_object_as<tm_type_vertex_2d>(file, now(end, 4)).net, now(net, 3));
    const auto& wire = tm_object_as<tm_type_segment>(file, now(segment, 4));
    EXPECT_EQ(std::tuple(wire.vertex1, wire.vertex2), std::tuple(now(pin_b, 3), 0));
}

TEST_F(saved, the_link_names_the_version) {
    save_and_open();
    const std::string bytes = content_of(path("sheet.tm_1"));
    struct row {
        const char *link, *data;  // data: the file's suffix, null when none is made
        bool found;
        int version;
        std::int32_t status;
        int errors;
    };
    constexpr row rows[] = {
        {"_4        \n", "_4", true, 4, 0, 0},
        {"_12,x", "_12", true, 12, 0, 0},
        {"x7", "x7", true, 7, 0, 0},
        {"_4", nullptr, true, 4, bad_file, 1},
        {"_x \n", nullptr, true, 0, bad_file, 0},
        {"_99999", nullptr, true, 0, bad_file, 0},
        {"", nullptr, false, 1, 0, 1},
        {"\n", nullptr, false, 1, 0, 0},
    };
    for (const row& row : rows) {
        write("sheet.tm", row.link);
        if (row.data != nullptr) write(std::string("sheet.tm") + row.data, bytes);
        tm_vext.num_errors = 0;
        tm_string_record_t file_path, link_path, value;
        std::int16_t version = -1;
        bool found = !row.found;
        tm_file_get_file_version(tm_string(folder), tm_string("sheet"), version, file_path, link_path, value,
                                 found);
        EXPECT_EQ(std::tuple(found, version), std::tuple(row.found, row.version)) << row.link;
        tm_vext.num_errors = 0;
        tm_file_index_t other = 0;
        STATUS_T status;
        testing::internal::CaptureStdout();
        tm_file_open(tm_string(folder), tm_string("sheet"), other, status);
        testing::internal::GetCapturedStdout();
        EXPECT_EQ(std::tuple(status.all, tm_vext.num_errors), std::tuple(row.status, row.errors)) << row.link;
        EXPECT_EQ(other, status.all == 0 ? 2 : 0) << row.link;
        if (other == 0) continue;
        EXPECT_EQ(tm_file_inq_primary_object(other), row.found ? 1 : 0) << row.link;
        tm_file_close(other, false, status);
        std::filesystem::remove(path(std::string("sheet.tm") + (row.data == nullptr ? "-" : row.data)));
    }
    tm_file_index_t index = 0;
    STATUS_T status;
    std::filesystem::remove(path("sheet.tm"));
    const auto open_many = [&] {
        while (true) tm_file_open(tm_string(folder), tm_string("s"), index, status);
    };
    EXPECT_FATAL(open_many(), "error in open file .too_many_files. = '" + folder + "'\n(.|\n)*code : 14\n");
    EXPECT_FATAL((tm_vext.init_done = false, open_many()), "code : 1\n");
}

// Whatever stops a save, the version before it stays in use.
TEST_F(saved, a_save_that_fails_leaves_the_old_version) {
    save_and_open();
    const std::string link = content_of(path("sheet.tm")), bytes = content_of(path("sheet.tm_1"));
    for (const char* in_the_way : {"sheet.tm_2", "sheet.tm_2.new", "sheet.tm.new"}) {
        std::filesystem::create_directories(path(in_the_way) + "/x");
        tm_set_object_deleted(file, net, false);
        EXPECT_EQ(save_and_open().first, bad_file) << in_the_way;
        EXPECT_TRUE(tm_is_file_open(file));
        EXPECT_EQ(std::pair(content_of(path("sheet.tm")), content_of(path("sheet.tm_1"))),
                  std::pair(link, bytes))
            << in_the_way;
        std::filesystem::remove_all(path(in_the_way));
    }
    EXPECT_EQ(reopen(), 0);
    EXPECT_EQ(save_and_open(), std::pair(0, 0));
    tm_object_as<tm_type_instance>(file, instance).fin = 0;
    STATUS_T status;
    EXPECT_FATAL(tm_file_close(file, true, status), "code : 12\n");
}

struct damage {
    const char* what;
    std::size_t at;
    std::string bytes;
    std::int32_t status;
};

TEST_F(saved, damaged_files_are_refused) {
    save_and_open();
    const std::string sound = content_of(path("sheet.tm_1"));
    std::vector<std::size_t> start = {0};  // of the objects in the file, by id
    std::size_t at = 38;
    for (std::int16_t id = 1; id <= tm_file_header(file).object_id_max; ++id) {
        start.push_back(at);
        const std::int16_t type = tm_object(file, id).object_type;
        std::string part;
        at += 40;
        if (type == tm_type_property_2d) {
            const auto& property = tm_object_as<tm_type_property_2d>(file, id);
            at += static_cast<std::size_t>(20 + property.name.len + property.nvalue.len);
        } else {
            at += type == tm_type_symbol      ? 8 + std::size_t{16}
                  : type == tm_type_net       ? 10
                  : type == tm_type_vertex_2d ? 6
                  : type == tm_type_instance || type == tm_type_pinpropfam || type == tm_type_segment ? 12
                                                                                                      : 2;
        }
    }
    ASSERT_EQ(at + 2, sound.size());
    using namespace std::string_literals;
    const auto of = [&](std::int16_t id) { return start[static_cast<std::size_t>(id)]; };
    const char net_id = static_cast<char>(net), own_id = static_cast<char>(own);
    const damage rows[] = {
        {"revision 1.0", 0, "\x3f\x80"s, bad_file},
        {"object_id_max negative", 14, "\xff\xff"s, bad_file},
        {"object_id_max above 30000", 14, "\x75\x31"s, bad_file},
        {"more objects than there are", 14, "\x01\x00"s, bad_file},
        {"primary_object no main", 16, "\0\2"s, bad_object},
        {"grid out of range", 20, "\x70\0"s, bad_object},
        {"header fin", 36, "\xff\xf6"s, bad_file},
        {"object_id", of(2), "\0\3"s, bad_object},
        {"father out of range", of(2) + 2, "\x70\0"s, bad_object},
        {"father of another", of(2) + 2, "\0\3"s, bad_object},
        {"father itself", of(1) + 2, "\0\1"s, bad_object},
        {"previous", of(2) + 4, "\0\3"s, bad_object},
        {"following negative", of(2) + 6, "\xff\xff"s, bad_object},
        {"following itself", of(2) + 4, "\0\2\0\2"s, bad_object},
        {"child1 of another", of(2) + 8, "\0\3"s, bad_object},
        {"object type 0", of(2) + 12, "\0\0"s, bad_type},
        {"object type 33", of(2) + 12, "\0\41"s, bad_type},
        {"deleted", of(2) + 14, "\0\40"s, bad_object},
        {"object fin", of(2) + 40, "\0\0"s, bad_object},
        {"symbol 0", of(instance) + 42, "\0\0"s, bad_object},
        {"symbol no symbol", of(instance) + 42, "\0"s + net_id, bad_object},
        {"net no net", of(pin_b) + 42, "\0"s + own_id, bad_object},
        {"vertex no vertex", of(segment) + 44, "\0"s + net_id, bad_object},
        {"wires among properties", of(tm_object(file, segment).father) + 12, "\0\26"s, bad_object},
        {"path too long", of(symbol) + 42, "\0\0\0\xc8"s, bad_file},
        {"name negative", of(own) + 44, "\xff"s, bad_file},
        {"value too long", of(own) + 53, "\0\0\0\x61"s, bad_file},
        {"value unprintable", of(own) + 57, "\n"s, bad_file},
    };
    for (const auto& [what, place, bytes, status] : rows) {
        write("sheet.tm_1", std::string(sound).replace(place, bytes.size(), bytes));
        EXPECT_EQ(reopen(), status) << what;
        EXPECT_EQ(tm_file_inq_primary_object(file), 1) << what;  // what was there is still there
    }
    for (std::size_t cut = 0; cut < sound.size() - 2; cut += 7) {
        write("sheet.tm_1", sound.substr(0, cut));
        EXPECT_EQ(reopen(), bad_file) << cut;
    }
    write("sheet.tm_1", sound.substr(0, sound.size() - 2));
    EXPECT_EQ(reopen(), 0);
}

TEST_F(saved, files_take_the_lowest_free_index_and_the_last_opened_is_current) {
    save_and_open();
    tm_file_index_t second = 0, third = 0, again = 0;
    STATUS_T status;
    tm_file_open(tm_string(folder), tm_string("other"), second, status);
    tm_file_open(tm_string(folder), tm_string("sheet"), third, status);
    EXPECT_EQ(std::tuple(second, third, tm_vext.cur_file, tm_vext.num_file_open), std::tuple(2, 3, 3, 3));
    tm_file_close(second, false, status);
    EXPECT_EQ(tm_vext.cur_file, 3);
    tm_file_create_new(tm_string(folder), tm_string("other"), again, status);
    EXPECT_EQ(std::tuple(again, tm_vext.cur_file), std::tuple(2, 2));
    tm_file_select(file, status);
    EXPECT_EQ(std::tuple(tm_vext.cur_file, tm_vext.previous_obj_atlevel0), std::tuple(1, 1));
    EXPECT_FATAL(tm_file_select(4, status), "code : 8\n");
    for (const tm_file_index_t index : {again, third}) tm_file_close(index, false, status);
    EXPECT_EQ(tm_vext.num_file_open, 1);
    bool found = true;
    tm_file_reopen(tm_string(folder + "/missing"), tm_string("sheet"), file, found, status);
    EXPECT_EQ(std::tuple(found, status.all, tm_file_inq_primary_object(file)), std::tuple(false, 0, 1));
}

TEST(Path, splits_into_directory_and_version) {
    constexpr std::tuple<const char*, const char*, int> rows[] = {
        {"adder/sheet.tm_4", "adder", 4},
        {"/a/S1/SHEET.TM_12 ", "/a/S1", 12},
        {"sheet.tm_3", "", 3},
        {"a/b/symbol", "a/b", 0},
        {"a/s/x.tm_2", "a", 2},
        {"s/a.tm_1.tm_5", "", 5},
    };
    for (const auto& [path, directory, version] : rows) {
        tm_string_record_t folder;
        std::int16_t number = -1;
        tm_get_path_n0version(tm_string(path), folder, number);
        EXPECT_EQ(std::pair(text_of(folder), int{number}), std::pair(std::string(directory), version))
            << path;
    }
}

}  // namespace
