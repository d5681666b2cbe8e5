// SPIKE CHECK, SPIKE MIN and SPIKE MODEL.
#include "commands/handlers.h"
#include "commands/keyword.h"
#include "foundation/shell.h"
#include "kernel/say.h"

namespace {

constexpr std::string_view check_words = " SPIke CHEck ";
constexpr std::string_view min_words = " SPIke MIN ";
constexpr std::string_view model_words = " SPIke MODel ";

constexpr kol_rejection_t check_invalid{"# !! Error :  3rd parameter incorrect ? "};
constexpr kol_rejection_t width_invalid{"# !! Error : Invalid time scale ", true};
constexpr kol_rejection_t model_invalid{
    "# !! Error :  3rd parameter incorrect (should be \"N\",\"S\",\"I\",\"P\") ? "};

struct check_row {
    const char* keyword;
    bool on;
    std::string_view echo;
};
constexpr check_row check_table[] = {
    {"ON", true, " SPIke CHEck  ON "},
    {"OF", false, " SPIke CHEck  OFF "},
};

struct model_row {
    std::string_view letter;
    kol_spike_models model;
    std::string_view echo;
};
constexpr model_row model_table[] = {
    {"N", kol_nosuppress, " SPIke MODel Nosuppress "},
    {"S", kol_suppress, " SPIke MODel Suppress "},
    {"I", kol_indgene, " SPIke MODel Indgene "},
    {"P", kol_pessimistic, " SPIke MODel Pessimistic "},
};

}  // namespace

void kol_spike_check_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    for (const check_row& row : check_table) {
        if (!tm_const_equal_string(row.keyword, kol_kw(keyword, 3))) continue;
        kol_ext.spike_on = row.on;
        tm_display(row.echo);
        return;
    }
    kol_reject(check_words, 3, nkeyword, keyword, check_invalid);
}

void kol_spike_min_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    std::int32_t width = 0;
    if (!kol_read_positive_time(kol_kw(keyword, 3), width)) {
        kol_reject(min_words, 3, nkeyword, keyword, width_invalid);
        return;
    }
    if (kol_ext.cur_time < 1) {
        kol_ext.spike_min_t0 = width;
    } else {
        kol_ext.tspike_min = kol_ext.cur_time;
        kol_ext.spike_min_t = width;
    }
    kol_show({min_words, kol_time_text(width)});
}

void kol_spike_model_cmd(std::int16_t nkeyword, kol_array_keyword_t& keyword) {
    for (const model_row& row : model_table) {
        if (!kol_begins_with_one_of(kol_kw(keyword, 3), row.letter)) continue;
        kol_ext.spike_model = row.model;
        tm_display(row.echo);
        return;
    }
    kol_reject(model_words, 3, nkeyword, keyword, model_invalid);
}
