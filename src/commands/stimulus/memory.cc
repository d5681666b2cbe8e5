// STATUS MEMORY and LOAD MEMORY: the words of a memory.
#include <charconv>

#include "commands/shared/parameters.h"
#include "commands/stimulus/handlers.h"
#include "foundation/shell.h"
#include "kernel/say.h"
#include "models/mem.h"
#include "models/mem_contents.h"

namespace {

constexpr kol_rejection_t memory_not_found{"# !! Error : MEMORY not found "};
constexpr kol_rejection_t address_invalid{"# !! Error : Invalid address ( decimal, of the memory ) "};

// An instance by its path, or by its name at the current level.
yx_inst_record_t* find_memory(const tm_string_record_t& name) {
    const std::string_view text = tm_view(name);
    const std::string path = text.starts_with('/')
                                 ? std::string(text)
                                 : std::string(tm_view(kol_ext.cur_sim_path)) + std::string(text);
    for (std::int32_t i = 1; i <= yx_sext.max_inst_cur; ++i) {
        yx_inst_record_t* const inst = yx_ptrto_inst_rec(i);
        if (kol_path(inst->sim_path) == path) return kol_contents_of(*inst) == nullptr ? nullptr : inst;
    }
    return nullptr;
}

bool read_address(const tm_string_record_t& keyword, const kol_contents_t& contents, std::int64_t& address) {
    const std::string_view text = tm_view(keyword);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), address);
    return error == std::errc{} && end == text.data() + text.size() && contents.has(address);
}

}  // namespace

kol_result_t kol_status_memory_cmd(const kol_line_t& line) {
    const yx_inst_record_t* const inst = find_memory(line[3]);
    if (inst == nullptr) return memory_not_found;
    const kol_contents_t& contents = *kol_contents_of(*inst);
    std::int64_t from = contents.first, to = contents.first + contents.count - 1;
    if (line.nkeyword > 3 && !read_address(line[4], contents, from)) return address_invalid;
    if (line.nkeyword == 4) to = from;
    if (line.nkeyword > 4 && (!read_address(line[5], contents, to) || to < from)) return address_invalid;
    kol_echo(line);
    for (std::int64_t address = from; address <= to; ++address)
        kol_show({"# ", std::to_string(address), " : ", kol_word_text(contents.word(address))});
    return kol_shown();
}

kol_result_t kol_load_memory_cmd(const kol_line_t& line) {
    yx_inst_record_t* const inst = find_memory(line[3]);
    if (inst == nullptr) return memory_not_found;
    std::string why;
    const tm_string_record_t file = kol_keyword_text(line[4]);
    if (!kol_load_memory(*inst, std::string(tm_view(file)), why))
        return kol_rejected({"# !! Error : Invalid memory file, ", why, " "});
    tm_shell.redraw_states();
    return {};
}
