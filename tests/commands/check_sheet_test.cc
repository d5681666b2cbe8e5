// CHECK SHEET: a sound sheet has no faults, and each way to spoil it has its own line.
#include <algorithm>
#include <functional>

#include "commands/sheet_faults.h"
#include "sheet_session.h"

namespace {

struct fault_case {
    std::string line;  // "#" stands for the number of the object, which spoil returns
    std::function<std::int16_t()> spoil;
};

class check_sheet : public sheet_session {
protected:
    template <std::int16_t Type>
    static tm_record_of<Type>& as(std::int16_t id) {
        return tm_object_as<Type>(sheet(), id);
    }
    static std::int16_t symbol_of(std::string_view name) {
        return as<tm_type_instance>(instance(name)).symbol;
    }
    static std::int16_t pin_of(std::string_view name) { return tm_pins(sheet(), instance(name)).first(); }
    static std::int16_t tag() { return tm_tags(sheet()).first(); }
    // A wire's corner, which two segments share.
    static std::int16_t corner() { return tm_vertices(sheet(), net("T")).first(); }
    // Every property of a kind gets another name, so that it is missing.
    static std::int16_t without(std::string_view name, std::string_view value, std::int16_t holder) {
        tm_copy_name(tm_string("OTHER"), property(name, value).name);
        return holder;
    }
    static std::int16_t with_value(std::string_view name, std::string_view value, std::string_view new_value,
                                   std::int16_t holder) {
        rename(name, value, new_value);
        return holder;
    }
    static std::int16_t with_path(std::string_view path) {
        as<tm_type_symbol>(symbol_of("U1")).path = tm_string(path);
        return instance("U1");
    }
    // A fault of one segment among sound ones.
    static std::int16_t with_end(std::int16_t vertex) {
        const std::int16_t segment = tm_segments(sheet(), net("SUM")).first();
        as<tm_type_segment>(segment).vertex2 = vertex;
        return segment;
    }
};

TEST_F(check_sheet, sound_sheets_have_no_faults) {
    for (const char* typed : {"view sheet", "view down U1", "view down P1"}) {
        type(typed);
        EXPECT_EQ(type("check sheet"), (lines{" CHEck SHEet ", "# CHECK SHEET : 0 errors, 0 warnings "}))
            << typed;
    }
}

TEST_F(check_sheet, each_fault_has_its_line) {
    const std::vector<fault_case> cases = {
        {"Error : instance without INST", [] { return without("INST", "G1", instance("G1")); }},
        {"Error : INST of another instance, too : object # \"u1\"",
         [] { return with_value("INST", "U2", "u1", instance("U2")); }},
        {"Error : instance without MODEL and without a sheet below : object # \"G1\"",
         [] { return without("MODEL", "OR", instance("G1")); }},
        {"Warning : MODEL that the simulator does not know : object # \"MUX\"",
         [] { return with_value("MODEL", "OR", "MUX", instance("G1")); }},
        {"Error : sheet below not found : object # \"none\"", [] { return with_path("none/sheet.tm_1"); }},
        {"Error : instance without MODEL and without a sheet below : object # \"U1\"",
         [] { return with_path("box/symbol.tm_1"); }},
        {"Error : instance with other pins than its symbol : object # \"G1\"",
         [] {
             tm_set_object_deleted(sheet(), pin_of("G1"), true);
             return instance("G1");
         }},
        {"Error : NET of another net, too : object # \"c1\"",
         [] { return with_value("NET", "C2", "c1", net("C2")); }},
        {"Error : range in the name of a net that is no bus : object # \"T[1:0]\"",
         [] { return with_value("NET", "T", "T[1:0]", net("T")); }},
        {"Error : invalid range in the name of a net : object # \"T[x]\"",
         [] { return with_value("NET", "T", "T[x]", net("T")); }},
        {"Error : bus without NET", [] { return without("NET", "D", net("D")); }},
        {"Error : range in the name of a bus is not its own : object # \"D[2:0]\"",
         [] { return with_value("NET", "D", "D[2:0]", net("D")); }},
        {"Error : pin without PIN",
         [] { return without("PIN", "I2", tm_ancestor_of_type(sheet(), named("PIN", "I2"), tm_type_pin)); }},
        {"Error : PIN of another pin of the symbol, too : object # \"i1\"",
         [] {
             return with_value("PIN", "I2", "i1",
                               tm_ancestor_of_type(sheet(), named("PIN", "I2"), tm_type_pin));
         }},
        {"Error : pin of several bits on a net that is no bus : object # \"U1/A\"",
         [] {
             as<tm_type_pinpropfam>(pin_of("U1")).pin_end = 3;
             return pin_of("U1");
         }},
        {"Error : pin beyond the bits of its bus : object # \"U1/A\"",
         [] {
             auto& pin = as<tm_type_pinpropfam>(pin_of("U1"));
             pin.net = net("D");
             pin.pin_net_start = 2;
             return pin_of("U1");
         }},
        {"Error : segment ends on another net : object # \"SUM\"", [] { return with_end(corner()); }},
        {"Warning : segment from a vertex to itself : object # \"SUM\"",
         [] { return with_end(as<tm_type_segment>(tm_segments(sheet(), net("SUM")).first()).vertex1); }},
        {"Error : vertex of another net : object # \"T\"",
         [] {
             as<tm_type_vertex_2d>(corner()).net = net("SUM");
             return corner();
         }},
        {"Warning : wire ends nowhere : object # \"CIN\"",
         [] {
             as<tm_type_tag>(tm_tags(sheet()).next(tag())).origin = {0, 0};
             return tm_vertices(sheet(), net("CIN")).first();
         }},
        {"Error : tag on no net : object # \"D\"",
         [] {
             as<tm_type_tag>(tag()).origin = {0, 0};
             return tag();
         }},
        {"Error : tag on a net of another name : object # \"E\"",
         [] {
             tm_copy_value(tm_string("E"), as<tm_type_tag>(tag()).nvalue);
             return tag();
         }},
        {"Warning : tag of an unknown kind : object # \"UP\"",
         [] {
             tm_copy_name(tm_string("UP"), as<tm_type_tag>(tag()).name);
             return tag();
         }},
    };
    for (const fault_case& c : cases) {
        type("view sheet");
        std::string wanted = c.line;
        const std::string number = std::to_string(c.spoil());
        if (const std::size_t at = wanted.find(" #"); at != wanted.npos) wanted.replace(at + 1, 1, number);
        const lines shown = type("check sheet");
        EXPECT_TRUE(std::ranges::any_of(
            shown, [&](const std::string& line) { return line.starts_with("# !! " + wanted); }))
            << wanted << "\n"
            << testing::PrintToString(shown);
        EXPECT_NE(shown.back(), "# CHECK SHEET : 0 errors, 0 warnings ");
    }
}

TEST_F(check_sheet, a_sheet_is_full_at_30000_objects) {
    type("view sheet");
    kol_sheet_report_t report{sheet()};
    tm_file_header(sheet()).object_id_max = 29500;
    kol_check_room(report);
    tm_file_header(sheet()).object_id_max = tm_max_objects;
    kol_check_room(report);
    EXPECT_EQ(std::pair(report.errors, report.warnings), std::pair(1, 1));
}

}  // namespace
