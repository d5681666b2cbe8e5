// The text of the initial contents, memory by memory.
#include "expand/memories_out.h"

#include <algorithm>

namespace {

// The hexadecimal digits of binary ones; x for four of which one is unknown.
std::string word_text(std::string_view binary) {
    std::string text;
    for (std::size_t end = binary.size(); end > 0; end -= std::min<std::size_t>(end, 4)) {
        const std::string_view four =
            binary.substr(end - std::min<std::size_t>(end, 4), std::min<std::size_t>(end, 4));
        unsigned digit = 0;
        for (const char c : four) digit = digit * 2 + (c == '1' ? 1 : 0);
        text.insert(text.begin(),
                    four.find_first_not_of("01") == four.npos ? "0123456789abcdef"[digit] : 'x');
    }
    return text;
}

std::string hexadecimal(std::int64_t number) {
    std::string text;
    for (; number > 0 || text.empty(); number /= 16)
        text.insert(text.begin(), "0123456789abcdef"[number % 16]);
    return text;
}

void add_words(std::string& text, std::string_view init, std::size_t width, std::size_t size,
               std::int64_t offset) {
    const std::size_t on_a_line = std::clamp<std::size_t>(64 / width, 1, 16);
    std::size_t on_this = on_a_line;
    bool is_apart = true;  // the next word needs its address
    for (std::size_t word = 0; word < size && (word + 1) * width <= init.size(); ++word) {
        const std::string_view binary = init.substr(init.size() - (word + 1) * width, width);
        if (binary.find_first_of("01") == binary.npos) {
            is_apart = true;
            continue;
        }
        if (is_apart) text += "\n@" + hexadecimal(offset + static_cast<std::int64_t>(word));
        if (is_apart || on_this == on_a_line) {
            text += '\n';
            on_this = 0;
        }
        text += (on_this++ == 0 ? "" : " ") + word_text(binary);
        is_apart = false;
    }
}

}  // namespace

std::string xp_memories_text(const xp_flat& flat, const xp_paths& paths, const yx_design_image_t& image) {
    std::string text;
    for (const xp_scope& scope : flat.scopes) {
        const xp_module& module = xp_module_of(flat, scope);
        const xp_body& body = xp_body_of(flat, scope);
        for (std::uint32_t gate = 0; gate < body.gates.size(); ++gate) {
            if (body.gates[gate].model->kind != kol_model_kind::memory) continue;
            const xp_cell& cell = module.cells[body.parts[body.gates[gate].part].cell];
            text +=
                "// memory " + std::string(xp_string_text(image, paths.gate_path[scope.first_gate + gate]));
            add_words(text, xp_bits_of_parameter(module, cell, "INIT"),
                      static_cast<std::size_t>(xp_parameter_of(module, cell, "WIDTH", 1)),
                      static_cast<std::size_t>(xp_parameter_of(module, cell, "SIZE", 0)),
                      xp_parameter_of(module, cell, "OFFSET", 0));
            text += '\n';
        }
    }
    return text;
}
