// Sheet files: what is saved is read again, what is damaged is refused.
#include <sys/stat.h>

#include "schematic/link_file.h"
#include "schematic/object_property.h"
#include "schematic/object_walk.h"
#include "schematic/saved_sheet.h"
#include "schematic/sheet_check.h"
#include "schematic/sheet_fields.h"
#include "schematic/sheet_stream.h"

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
        {"_-3", nullptr, true, 0, bad_file, 0},
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
    const auto expect_no_save = [&] {
        tm_set_object_deleted(file, net, false);
        EXPECT_EQ(save_and_open().first, bad_file);
        EXPECT_TRUE(tm_is_file_open(file));
        EXPECT_EQ(content_of(path("sheet.tm_1")), bytes);
    };
    std::filesystem::create_directory(path("sheet.tm_2"));
    expect_no_save();
    EXPECT_EQ(content_of(path("sheet.tm")), link);
    std::filesystem::remove(path("sheet.tm_2"));
    std::filesystem::remove(path("sheet.tm"));
    std::filesystem::create_directory(path("sheet.tm"));
    expect_no_save();
    std::filesystem::remove(path("sheet.tm"));
    write("sheet.tm", link);
    EXPECT_EQ(reopen(), 0);
    EXPECT_EQ(save_and_open(), std::pair(0, 0));
    tm_object_as<tm_type_instance>(file, instance).fin = 0;
    STATUS_T status;
    EXPECT_FATAL(tm_file_close(file, true, status), "code : 12\n");
}

class damaged : public saved {
protected:
    damaged() {
        save_and_open();
        sound = content_of(path("sheet.tm_1"));
        fields = tst_sheet_fields(sound);
    }
    const tst_field& field(std::int32_t id, std::string_view name) const {
        return *std::ranges::find_if(fields,
                                     [&](const tst_field& f) { return f.record == id && f.name == name; });
    }
    std::string edited(std::int32_t id, std::string_view name, std::int64_t value) const {
        std::string bytes = sound;
        tst_set(bytes, field(id, name), value);
        return bytes;
    }
    // The status of the file with these bytes; what was there is still there.
    std::int32_t status_of(const std::string& bytes) {
        write("sheet.tm_1", bytes);
        const std::int32_t status = reopen();
        EXPECT_EQ(tm_file_inq_primary_object(file), 1);
        return status;
    }
    std::int16_t last() const { return tm_file_header(file).object_id_max; }

    std::string sound;
    std::vector<tst_field> fields;
};

TEST_F(damaged, fields_that_cannot_be_are_refused) {
    const std::int16_t wires = tm_object(file, segment).father;
    const std::tuple<std::int32_t, const char*, std::int64_t, std::int32_t> rows[] = {
        {0, "software_revision", 0x3f800000, bad_file},
        {0, "object_id_max", -1, bad_file},
        {0, "object_id_max", tm_max_objects + 1, bad_file},
        {0, "object_id_max", last() + 1, bad_file},
        {0, "primary_object", 2, bad_object},
        {0, "grid_obj_id", last() + 1, bad_object},
        {0, "fin", tm_fin_object, bad_file},
        {2, "object_id", 3, bad_object},
        {2, "object_type", 0, bad_type},
        {2, "object_type", tm_type_count, bad_type},
        {2, "status", tm_object_is_deleted, bad_object},
        {2, "fin", 0, bad_object},
        {instance, "symbol", 0, 0},
        {instance, "symbol", net, bad_object},
        {pin_b, "net", own, bad_object},
        {segment, "vertex1", net, bad_object},
        {segment, "vertex2", last() + 1, bad_object},
        {wires, "object_type", tm_type_graphics, 0},
        {wires, "object_type", tm_type_property_family, bad_object},
        {wires, "object_type", tm_type_pin, bad_object},
        {symbol, "path", tm_string_max + 1, bad_file},
        {own, "name", -1, bad_file},
        {own, "nvalue", tm_value_max + 1, bad_file},
    };
    for (const auto& [id, name, value, status] : rows)
        EXPECT_EQ(status_of(edited(id, name, value)), status) << id << ' ' << name << ' ' << value;
    std::string unprintable = sound;
    unprintable[field(own, "nvalue").offset + 4] = '\n';
    EXPECT_EQ(status_of(unprintable), bad_file);
}

// A first child that its father does not name is out of reach, but leads nobody astray.
TEST_F(damaged, links_that_disagree_are_refused) {
    using object = tm_object_gene_rec_t;
    tm_file_gene_recf_t& sheet = tm_file_header(file);
    std::string why;
    for (std::int16_t id = 1; id <= last(); ++id)
        for (auto link : {&object::father, &object::previous, &object::following, &object::child1})
            for (std::int16_t other = -1; other <= last() + 1; ++other) {
                std::int16_t& place = tm_object(file, id).*link;
                const std::int16_t right = std::exchange(place, other);
                const bool is_sound = other == right || (other == 0 && link == &object::child1);
                EXPECT_EQ(tm_sheet_check(sheet, why), is_sound) << id << ' ' << other << why;
                place = right;
            }
}

TEST_F(damaged, files_that_are_cut_are_refused) {
    for (std::size_t cut = 0; cut < sound.size() - 2; cut += 7)
        EXPECT_EQ(status_of(sound.substr(0, cut)), bad_file) << cut;
    EXPECT_EQ(status_of(sound.substr(0, sound.size() - 2)), 0);
}

// A file of objects each of which is the only child of the one before.
std::string nested(std::int16_t levels) {
    tm_file_gene_recf_t header;
    header.software_revision = tm_software_revision, header.fin = tm_fin_header;
    header.object_id_max = levels, header.primary_object = 1;
    std::string bytes;
    writerectype(bytes, &header, tm_rec_header);
    for (std::int16_t id = 1; id <= levels; ++id) {
        tm_object_plain_rec_t object;
        object.object_id = id, object.object_type = tm_type_main, object.fin = tm_fin_object;
        object.father = static_cast<std::int16_t>(id - 1);
        object.child1 = static_cast<std::int16_t>(id == levels ? 0 : id + 1);
        writeOneObject(bytes, object);
    }
    return bytes;
}

TEST_F(damaged, objects_are_nested_64_levels_deep_at_most) {
    EXPECT_EQ(status_of(nested(64)), 0);
    EXPECT_EQ(status_of(nested(65)), bad_object);
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
        {"a/sheet.tm_-3", "a", 0},
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
