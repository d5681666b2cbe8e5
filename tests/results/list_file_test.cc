#include <sstream>

#include "list_table.h"

namespace {

class written_list : public list_table {
protected:
    std::string write(std::int32_t begin_time, std::int32_t end_time) {
        std::FILE* stream = std::tmpfile();
        kol_update_column_list(nullptr);
        kol_list_wfile_signame(stream);
        kol_list_wfile_sigresult(stream, begin_time, end_time);
        std::string text(static_cast<std::size_t>(std::ftell(stream)), '\0');
        std::rewind(stream);
        EXPECT_EQ(std::fread(text.data(), 1, text.size(), stream), text.size());
        std::fclose(stream);
        return text;
    }
};

TEST_F(written_list, is_the_table_as_text_with_staggered_names) {
    EXPECT_EQ(write(0, 10), "") << "nothing is listed";
    list("clk V(r I[s t]) a_long_signal_name W[p q] W");
    history("clk", "iU@0 1S@5 0S@10");
    for (const char* name : {"r", "t", "q"}) history(name, "0S@0");
    history("s", "1S@0");
    history("a_long_signal_name", "xZ@0");
    history("p", "1S@0 0R@5");
    kol_ext.cur_time = 12;
    EXPECT_EQ(write(0, 12),
              "               clk       a_long_signa \n"
              "                  r         W \n"
              "                     I \n"
              "                                W \n"
              "\n\n"
              "         0.0  iU 0S 1S0SxZ 1S0S1S0S\n"
              "       5.000  1S 0S 1S0SxZ 0R0S0R0S\n"
              "      10.000  0S 0S 1S0SxZ 0R0S0R0S\n"
              "      12.000  0S 0S 1S0SxZ 0R0S0R0S\n");
}

TEST_F(written_list, advances_by_changes_up_to_the_present_and_by_periods_up_to_the_end) {
    list("a");
    history("a", "0S@0 1S@3 0S@6");
    kol_ext.list_state_on = false;
    kol_ext.cur_time = 8;
    const std::size_t header_size = write(1, 0).size();
    const std::tuple<bool, std::int32_t, std::int32_t, std::int32_t, const char*> cases[] = {
        {true, 0, 0, 100, "0.0 0|3.000 1|6.000 0|8.000 0|"},
        {true, 0, 2, 6, "2.000 0|3.000 1|6.000 0|"},
        {true, 0, 20, 30, "20.000 0|"},
        {true, 0, 10, 5, ""},
        {false, 5, 1, 12, "1.000 0|6.000 0|11.000 0|"},
        {false, 2147483647, 1, 2147483647, "1.000 0|"}};
    for (const auto& [change_on, period, begin, end, rows] : cases) {
        kol_ext.list_change_on = change_on;
        kol_ext.list_period = period;
        std::istringstream written(write(begin, end).substr(header_size));
        std::string time, value, joined;
        while (written >> time >> value) joined += time + " " + value + "|";
        EXPECT_EQ(joined, rows) << begin << ".." << end << " period " << period;
    }
    kol_ext.list_period = 0;
    EXPECT_EQ((write(3, 3).size() - header_size) / std::string("       3.000  1\n").size(), 10000U);
}

}  // namespace
