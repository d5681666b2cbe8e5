// A session over the full adder of the examples: its sheets and its design in a folder of the case's own, the
// Context page in front, 800 by 600 pixels.
#pragma once

#include <cstdlib>

#include "command_session.h"
#include "schematic/object_walk.h"
#include "schematic/sheet_file.h"
#include "support/design_build.h"
#include "support/places/places.h"

class sheet_session : public command_session {
protected:
    void SetUp() override {
        command_session::SetUp();
        std::filesystem::create_directories(folder);
        const std::string make =
            tst_program_dir() + "/example_sheets " + folder.string() + " > " + path("made");
        ASSERT_EQ(std::system(make.c_str()), 0);
        tst_read(folder);
        tst_set_up();
        kol_ext.dir_path = tm_string(folder.string());
        tm_vext.init_done = tm_vext.display_on = true;
        tm_vext.numpage = tm_page::context;
        tm_vext.bitmap_size = {0, 0, 800, 600};
        tm_vext.pick_aperture = {10, 10};
        tm_shell.redraw_context = [] { ++seen.redraws; };
    }
    std::string path(const std::string& name) const { return (folder / name).string(); }
    // What one command line shows, the last lines only when so many are asked for.
    static lines last(std::string_view line, std::size_t count) {
        const lines shown = type(line);
        return {shown.end() - static_cast<std::ptrdiff_t>(std::min(count, shown.size())), shown.end()};
    }
    static tm_file_index_t sheet() { return static_cast<tm_file_index_t>(tm_vext.file_id_context); }
    static std::string sim_path() { return std::string(tm_view(kol_ext.cur_sim_path)); }
    // An object of the sheet in the window by the value of a property.
    static std::int16_t named(std::string_view property, std::string_view value, std::int16_t count = 1) {
        for (const std::int16_t id : tm_walk::of_file(sheet(), tm_type_property_2d)) {
            const auto& each = tm_object_as<tm_type_property_2d>(sheet(), id);
            if (tm_view(each.name) == property && tm_view(each.nvalue) == value && --count == 0) return id;
        }
        return 0;
    }
    static tm_object_property_rec_t& property(std::string_view name, std::string_view value) {
        return tm_object_as<tm_type_property_2d>(sheet(), named(name, value));
    }
    // The instance or net of that name.
    static std::int16_t holder(std::string_view name, std::string_view value, std::int16_t type) {
        return tm_ancestor_of_type(sheet(), named(name, value), type);
    }
    static std::int16_t instance(std::string_view name) { return holder("INST", name, tm_type_instance); }
    static std::int16_t net(std::string_view name) { return holder("NET", name, tm_type_net); }
    static void rename(std::string_view name, std::string_view value, std::string_view new_value) {
        tm_copy_value(tm_string(new_value), property(name, value).nvalue);
    }
    static void point_at(std::int32_t x, std::int32_t y) { tm_vext.obj_pos = {x, y}; }
};
