// Picking nets on a sheet: PROBE, LIST and TRACE without a name, STATUS NET, and the names of nets by number.
#include "kernel/lookup.h"
#include "kernel/say.h"
#include "schematic/probe_display.h"
#include "sheet_session.h"

namespace {

class picking : public sheet_session {
protected:
    static lines refused(const std::string& words, const std::string& error) { return {"# " + words, error}; }
    // The texts beside a net, the newest first.
    static lines probes_at(std::string_view name) {
        lines texts;
        const auto* probe =
            static_cast<const tm_probe_display_t*>(tm_object_as<tm_type_net>(sheet(), net(name)).ptrto_probe);
        for (; probe != nullptr; probe = probe->next) texts.emplace_back(probe->text(*probe));
        return texts;
    }
    static std::string entry(const yx_signal_rec_t* signal) {
        return std::string(tm_view(signal->name)) + "=" + std::string(kol_path(signal->net->sim_path)) +
               " at " + std::string(tm_view(signal->cur_sim_path));
    }
};

TEST_F(picking, checks_come_in_order) {
    const std::string window = "# !! Error :  Invalid window ? ",
                      no_sheet = "# !! Error :  No sheet in Context window ? ",
                      outside = "# !! Error : Invalid point (outside of page ...)  ? ",
                      cursor = "# !! Error :  cursor  outside of page ? ",
                      no_vertex = "# !! Error :  No Vertex Found at point ? ";
    expect_each({{"probe p", refused("PROBe p ", no_sheet)}, {"trace", refused("TRACe ", no_sheet)}});
    type("view sheet");
    tm_vext.numpage = tm_page::results;
    expect_each({{"probe p 1 x", refused("PROBe p 1 x ", window)}, {"list h", refused("LIST h ", window)}});
    tm_vext.numpage = tm_page::context;
    kol_ext.file_level_cur = 0;
    point_at(-8000, 0);
    expect_each({{"probe p 1 x", refused("PROBe p 1 x ", "# !! Error : Invalid coordinate ? ")},
                 {"probe p 4.1 1", refused("PROBe p 4.1 1 ", outside)},
                 {"probe p", refused("PROBe p ", cursor)},
                 {"list b", refused("LIST b ", cursor)},
                 {"trace", refused("TRACe ", cursor)}});
    point_at(0, 0);
    expect_each({{"probe p", refused("PROBe p ", "# !! Error :  No level sheet VALID for PROBE ? ")},
                 {"list b", refused("LIST b ", "# !! Error :  No level sheet VALID for LIST ? ")},
                 {"trace", refused("TRACe ", "# !! Error :  No level sheet VALID for TRACe ? ")}});
    kol_ext.file_level_cur = 1;
    type("view sheet carry");
    expect_each({{"probe p", refused("PROBe p ", "# !! Error :  No sheet VALID for PROBE ? ")},
                 {"list b", refused("LIST b ", "# !! Error :  No sheet VALID for LIST ? ")},
                 {"trace", refused("TRACe ", "# !! Error :  No sheet VALID for TRACe ? ")}});
    type("view sheet");
    expect_each({{"probe p 0.05 0.05", refused("PROBe p 0.05 0.05 ", no_vertex)},
                 {"trace", refused("TRACe ", no_vertex)}});
    EXPECT_EQ(kol_ext.start_probe_signal, nullptr);
}

TEST_F(picking, lists_and_traces_the_net_at_the_cursor_under_its_number) {
    type("view sheet;view down U1;view down P1");
    const std::string m = "N_" + std::to_string(net("M"));
    point_at(140000 + 2500, 100000 + 2500);  // rounds to the pin, a half towards zero
    ASSERT_EQ(type("list b;trace"), (lines{" LIST b ", " TRACe "}));
    EXPECT_EQ(entry(kol_ext.list_signal), "/U1/P1/" + m + "=/U1/P1/M at /U1/P1/");
    EXPECT_EQ(entry(kol_ext.trace_signal), entry(kol_ext.list_signal));
    EXPECT_EQ(kol_ext.list_signal->base_number, 1);
    EXPECT_EQ(type("list b " + m + " /x/n_1").back(), "# Signal : \"/x/n_1\" ");  // by number as well
    EXPECT_EQ(entry(kol_ext.list_signal), m + "=/U1/P1/M at /U1/P1/");
    type("view sheet");
    point_at(40000, 200000);  // the bus
    const std::string d = "N_" + std::to_string(net("D"));
    EXPECT_EQ(type("list h"), lines{" LIST h "});
    EXPECT_EQ(entry(kol_ext.list_signal), "/" + d + "_0=/D[0] at /");
    tm_object_as<tm_type_pinpropfam>(sheet(), tm_child_of_type(sheet(), instance("G1"), tm_type_pinpropfam))
        .net = 1;
    EXPECT_EQ(type("probe p 2.1 1.1").back(), "# !! Error :  No NET Found in expand file ? ");
    point_at(210000, 110000);
    EXPECT_EQ(type("trace"),
              (lines{"# TRACe ", "# !! Error :  No NET Found in expand file ? ", "# Net_name : \"/N_1\" "}));
}

TEST_F(picking, a_probe_shows_its_value_on_the_sheet_of_its_level_until_it_is_forgotten) {
    type("view sheet;view down U1");
    EXPECT_EQ(type("probe carry 1.8 0.9;probe other 1.8 0.9"),
              (lines{" PROBe carry 1.8 0.9 ", " PROBe other 1.8 0.9 "}));
    EXPECT_EQ(probes_at("C"), (lines{"other iU", "carry iU"}));
    const int redraws = seen.redraws;
    type("force a /D[0] 1 0;force a /D[1] 1 0;run 10");
    EXPECT_EQ(probes_at("C"), (lines{"other 1S", "carry 1S"}));
    EXPECT_EQ(seen.redraws, redraws + 1);
    EXPECT_EQ(type("forget p other"), lines{" FORGet p other "});
    EXPECT_EQ(probes_at("C"), lines{"carry 1S"});
    type("view up;view down U2");
    EXPECT_EQ(probes_at("C"), lines{});  // another instance of the same sheet
    type("view up");
    EXPECT_EQ(type("probe bus 0.4 2.0"), lines{" PROBe bus 0.4 2.0 "});
    EXPECT_EQ(probes_at("D"), lines{"bus 11"});
    type("view down U1");
    EXPECT_EQ(probes_at("C"), lines{"carry 1S"});
    type("forget p *");
    EXPECT_EQ(probes_at("C"), lines{});
}

TEST_F(picking, status_net_reports_the_selected_nets) {
    const std::string words = "# STAtus NET ";
    expect_each({{"status net", {words, "# !! No Sheet available in Context Window ?  "}}});
    type("view sheet carry");
    expect_each({{"status net", {words, "# !! Error :  No level sheet VALID for STAtus NET ? "}}});
    type("view sheet;view sheet carry");
    expect_each({{"status net", {"# LIST ", "# !! Error :  No sheet VALID for STAtus NET ? "}}});
    type("view sheet");
    expect_each({{"status net", {words, "# !! Error : No NET selected ? "}}});
    const std::int16_t t = net("T"), sum = net("SUM");
    const tm_walk segments = tm_segments(sheet(), t);
    tm_set_object_selected(sheet(), segments.first(), true);
    const auto& segment = tm_object_as<tm_type_segment>(sheet(), segments.first());
    const auto number = [](std::int16_t id) { return std::to_string(id); };
    EXPECT_EQ(type("status net"),
              (lines{"#  OBJect : Handle = " + number(t) + " ;  type = NET  ",
                     "# SEGMENT: " + number(segments.first()) + " ;  VERTEX1" + number(segment.vertex1) +
                         "_P:  ;  VERTEX2" + number(segment.vertex2) + "  : ",
                     "# Net_sim_path: \"/T\" ", " STAtus NET "}));
    tm_set_object_selected(sheet(), segments.first(), false);
    tm_set_object_selected(sheet(), sum, true);  // as a whole
    kol_ext.cur_sim_path = {};
    const lines shown = type("status net");
    ASSERT_EQ(shown.size(), 8U);
    EXPECT_EQ((lines{shown.begin() + 4, shown.end()}),
              (lines{words, "# !! Error : NET not Found in expand file ? ",
                     "# !! net_name : \"N_" + number(sum) + "\" ", " STAtus NET "}));
}

TEST_F(picking, numbers_of_nets_are_those_of_the_level_in_use) {
    yx_net_record_t* found = nullptr;
    EXPECT_EQ(kol_ext.arrayof_file[0].highest_net, 0);
    type("view sheet");
    EXPECT_EQ(kol_ext.arrayof_file[0].highest_net, tm_file_header(sheet()).object_id_max);
    const std::string t = "N_" + std::to_string(net("T"));
    EXPECT_EQ(kol_find_net(tm_string(t), found), 4);
    EXPECT_EQ(kol_path(found->sim_path), "/T");
    type("view down U2");
    EXPECT_EQ(kol_find_net(tm_string("n_" + std::to_string(net("A"))), found), 4);
    EXPECT_EQ(kol_path(found->sim_path), "/T");
}

}  // namespace
