#include <algorithm>

#include "list_table.h"

namespace {

class written_list : public list_table {
protected:
    std::string write(std::int32_t begin_time, std::int32_t end_time) {
        std::FILE* stream = std::tmpfile();
        kol_wli = stream;
        kol_update_column_list(nullptr);
        kol_list_wfile_signame();
        kol_list_wfile_sigresult(begin_time, end_time);
        std::string text(static_cast<std::size_t>(std::ftell(stream)), '\0');
        std::rewind(stream);
        EXPECT_EQ(std::fread(text.data(), 1, text.size(), stream), text.size());
        std::fclose(stream);
        return text;
    }
    std::string rows(std::int32_t begin_time, std::int32_t end_time) {
        const std::string text = write(begin_time, end_time);
        return text.substr(text.find("\n\n\n") + 3);
    }
};

TEST_F(written_list, is_the_table_as_text_with_staggered_names) {
    list("clk V(r s) a_long_signal_name W[p q]");
    history("clk", "iU@0 1S@5 0S@10");
    history("r", "0S@0");
    history("s", "1S@0");
    history("a_long_signal_name", "xZ@0");
    history("p", "1S@0 0R@5");
    history("q", "0S@0");
    kol_ext.cur_time = 12;
    EXPECT_EQ(write(0, 12),
              "               clk         W \n"
              "                  r \n"
              "                     s \n"
              "                        a_long_signa \n"
              "\n\n"
              "         0.0  iU 0S 1S xZ 1S0S\n"
              "       5.000  1S 0S 1S xZ 0R0S\n"
              "      10.000  0S 0S 1S xZ 0R0S\n"
              "      12.000  0S 0S 1S xZ 0R0S\n");
}

TEST_F(written_list, packs_the_values_of_combined_buses_without_drives) {
    list("W[p q] U[p2] V(I[m n]) W z");
    for (const char* name : {"p", "m", "z"}) history(name, "1S@0");
    for (const char* name : {"q", "n", "p2"}) history(name, "0S@0");
    kol_ext.list_state_on = false;
    EXPECT_EQ(write(0, 0),
              "               W \n"
              "                     W \n"
              "                 U \n"
              "                   I    z \n"
              "\n\n"
              "         0.0  100 1010 1\n");
}

TEST_F(written_list, advances_by_changes_up_to_the_present_and_by_periods_up_to_the_end) {
    list("a");
    history("a", "0S@0 1S@3 0S@6");
    kol_ext.list_state_on = false;
    kol_ext.cur_time = 8;
    struct {
        bool change_on;
        std::int32_t period, begin, end;
        const char* rows;
    } const cases[] = {
        {true, 0, 0, 100, "0.0  0|3.000  1|6.000  0|8.000  0|"},
        {true, 0, 2, 6, "2.000  0|3.000  1|6.000  0|"},
        {true, 0, 20, 30, "20.000  0|"},
        {true, 0, 10, 5, ""},
        {false, 5, 1, 12, "1.000  0|6.000  0|11.000  0|"},
        {false, 2147483647, 1, 2147483647, "1.000  0|"},
    };
    for (const auto& c : cases) {
        kol_ext.list_change_on = c.change_on;
        kol_ext.list_period = c.period;
        std::string joined;
        for (const char ch : rows(c.begin, c.end))
            if (ch == '\n')
                joined += '|';
            else if (ch != ' ' || !(joined.empty() || joined.back() == '|'))
                joined += ch;
        EXPECT_EQ(joined, c.rows) << c.begin << ".." << c.end << " period " << c.period;
    }
}

TEST_F(written_list, holds_no_more_than_ten_thousand_rows) {
    list("a");
    history("a", "0S@0");
    kol_ext.list_change_on = false;
    const std::string text = rows(3, 3);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 10000);
}

TEST_F(written_list, is_empty_when_nothing_is_listed) { EXPECT_EQ(write(0, 10), ""); }

}  // namespace
