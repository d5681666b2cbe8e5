// CHECK SHEET: a sound sheet has no faults, and each way to spoil it has its own line.
#include <algorithm>
#include <functional>

#include "commands/sheets/sheet_faults.h"
#include "sheet_session.h"

namespace {

class check_sheet : public sheet_session {
protected:
    template <std::int16_t Type>
    static tm_record_of<Type>& as(std::int16_t id) {
        return tm_object_as<Type>(sheet(), id);
    }
    static auto& first_tag() { return as<tm_type_tag>(tm_tags(sheet()).first()); }
    static auto& first_pin(const char* name) {
        return as<tm_type_pinpropfam>(tm_pins(sheet(), instance(name)).first());
    }
    static auto& first_segment() { return as<tm_type_segment>(tm_segments(sheet(), net("SUM")).first()); }
    static auto& first_vertex(const char* name) {
        return as<tm_type_vertex_2d>(tm_vertices(sheet(), net(name)).first());
    }
    static auto& symbol_path() {
        return as<tm_type_symbol>(as<tm_type_instance>(instance("U1")).symbol).path;
    }
    // "#" in the line stands for the object's number.
    static void expect_fault(std::string line, std::int16_t object) {
        line.replace(line.find('#'), 1, "object " + std::to_string(object));
        const lines shown = type("check sheet");
        EXPECT_NE(std::find(shown.begin(), shown.end(), "# !! " + line), shown.end())
            << line << testing::PrintToString(shown);
        EXPECT_NE(shown.back(), "# CHECK SHEET : 0 errors, 0 warnings ");
    }
};

TEST_F(check_sheet, sound_sheets_have_no_faults) {
    for (const char* typed : {"view sheet", "view down U1", "view down P1"}) {
        type(typed);
        EXPECT_EQ(type("check sheet"), (lines{" CHEck SHEet ", "# CHECK SHEET : 0 errors, 0 warnings "}))
            << typed;
    }
}

// clang-format off
TEST_F(check_sheet, wrong_names_are_found) {
    struct name_case {
        const char *name, *value, *new_value;  // null: the property is missing
        std::int16_t holder;                   // type
        const char* line;
    };
    const name_case cases[] = {
        {"INST", "G1", nullptr, tm_type_instance, "Error : instance without INST : # "},
        {"INST", "U2", "u1", tm_type_instance, "Error : INST of another instance, too : # \"u1\" "},
        {"NET", "C2", "c1", tm_type_net, "Error : NET of another net, too : # \"c1\" "},
        {"NET", "T", "T[1:0]", tm_type_net, "Error : range in the name of a net that is no bus : # \"T[1:0]\" "},
        {"NET", "T", "T[x]", tm_type_net, "Error : invalid range in the name of a net : # \"T[x]\" "},
        {"NET", "D", nullptr, tm_type_net, "Error : bus without NET : # "},
        {"NET", "D", "D[2:0]", tm_type_net, "Error : range in the name of a bus is not its own : # \"D[2:0]\" "},
        {"PIN", "I2", nullptr, tm_type_pin, "Error : pin without PIN : # "},
        {"PIN", "I2", "i1", tm_type_pin, "Error : PIN of another pin of the symbol, too : # \"i1\" "},
    };
    for (const name_case& c : cases) {
        type("view sheet");
        const std::int16_t object = holder(c.name, c.value, c.holder);
        if (c.new_value != nullptr) rename(c.name, c.value, c.new_value);
        else tm_copy_name(tm_string("OTHER"), property(c.name, c.value).name);
        expect_fault(c.line, object);
    }
}

TEST_F(check_sheet, wrong_models_wires_and_tags_are_found) {
    struct fault_case {
        const char* line;
        std::function<std::int16_t()> spoil;  // the number of the object
    };
    const fault_case cases[] = {
        {"Error : instance without MODEL and without a sheet below : # \"G1\" ", [] { tm_copy_name(tm_string("X"), property("MODEL", "OR").name); return instance("G1"); }},
        {"Error : instance without a symbol : # \"G1\" ", [] { as<tm_type_instance>(instance("G1")).symbol = 0; return instance("G1"); }},
        {"Error : instance without MODEL and without a sheet below : # \"U1\" ", [] { symbol_path() = tm_string("box/symbol.tm_1"); return instance("U1"); }},
        {"Warning : MODEL that the simulator does not know : # \"MUX\" ", [] { rename("MODEL", "OR", "MUX"); return instance("G1"); }},
        {"Error : sheet below not found : # \"none\" ", [] { symbol_path() = tm_string("none/sheet.tm_1"); return instance("U1"); }},
        {"Error : instance with other pins than its symbol : # \"G1\" ", [] { tm_set_object_deleted(sheet(), first_pin("G1").object_id, true); return instance("G1"); }},
        {"Error : pin of several bits on a net that is no bus : # \"U1/A\" ", [] { first_pin("U1").pin_end = 3; return first_pin("U1").object_id; }},
        {"Error : pin beyond the bits of its bus : # \"U1/A\" ", [] { first_pin("U1").net = net("D"); first_pin("U1").pin_net_start = 2; return first_pin("U1").object_id; }},
        {"Error : segment ends on another net : # \"SUM\" ", [] { first_segment().vertex2 = first_vertex("T").object_id; return first_segment().object_id; }},
        {"Warning : segment from a vertex to itself : # \"SUM\" ", [] { first_segment().vertex2 = first_segment().vertex1; return first_segment().object_id; }},
        {"Error : vertex of another net : # \"T\" ", [] { first_vertex("T").net = net("SUM"); return first_vertex("T").object_id; }},
        {"Warning : wire ends nowhere : # \"CIN\" ", [] { as<tm_type_tag>(tm_tags(sheet()).next(first_tag().object_id)).origin = {0, 0}; return first_vertex("CIN").object_id; }},
        {"Error : tag on no net : # \"D\" ", [] { first_tag().origin = {0, 0}; return first_tag().object_id; }},
        {"Error : tag on a net of another name : # \"E\" ", [] { tm_copy_value(tm_string("E"), first_tag().nvalue); return first_tag().object_id; }},
        {"Warning : tag of an unknown kind : # \"UP\" ", [] { tm_copy_name(tm_string("UP"), first_tag().name); return first_tag().object_id; }},
    };
    for (const fault_case& c : cases) {
        type("view sheet");
        expect_fault(c.line, c.spoil());
    }
}
// clang-format on

TEST_F(check_sheet, a_sheet_is_full_at_30000_objects) {
    type("view sheet");
    kol_sheet_report_t report{sheet()};
    for (const std::int16_t count : {std::int16_t{29500}, tm_max_objects}) {
        tm_file_header(sheet()).object_id_max = count;
        kol_check_room(report);
    }
    EXPECT_EQ(std::pair(report.errors, report.warnings), std::pair(1, 1));
}

}  // namespace
