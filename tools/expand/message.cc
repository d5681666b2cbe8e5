// The texts of the refusals.
#include "expand/message.h"

#include <array>

namespace {

struct fault_text {
    xp_fault fault;
    std::string_view text;
};

// clang-format off
constexpr std::array fault_texts = {
    fault_text{xp_fault::none,             ""},
    fault_text{xp_fault::bad_usage,        "wrong usage"},
    fault_text{xp_fault::no_yosys,         "cannot start the program"},
    fault_text{xp_fault::yosys_failed,     "failed"},
    fault_text{xp_fault::cannot_read,      "cannot read the file"},
    fault_text{xp_fault::cannot_write,     "cannot write the file"},
    fault_text{xp_fault::bad_json,         "malformed JSON"},
    fault_text{xp_fault::bad_value,        "unexpected value"},
    fault_text{xp_fault::missing_value,    "missing value"},
    fault_text{xp_fault::no_top,           "no top module"},
    fault_text{xp_fault::unknown_cell,     "cells without a model"},
    fault_text{xp_fault::missing_module,   "missing module"},
    fault_text{xp_fault::black_box,        "black box module without contents"},
    fault_text{xp_fault::recursive_module, "recursive hierarchy"},
    fault_text{xp_fault::too_deep,         "hierarchy too deep"},
    fault_text{xp_fault::unknown_port,     "unknown port"},
    fault_text{xp_fault::bad_width,        "connection width mismatch"},
    fault_text{xp_fault::driven_constant,  "output drives a constant"},
    fault_text{xp_fault::joined_constants, "different constants joined"},
    fault_text{xp_fault::two_drivers,      "two drivers without drive strengths"},
    fault_text{xp_fault::bad_drive,        "bad drive strengths"},
    fault_text{xp_fault::bad_timing,       "bad timing"},
    fault_text{xp_fault::bad_delay,        "bad delay"},
    fault_text{xp_fault::bad_library,      "bad library"},
    fault_text{xp_fault::bad_sdf,          "bad SDF"},
    fault_text{xp_fault::too_large,        "the design does not fit"},
};
// clang-format on

constexpr bool is_in_order() {
    for (std::size_t i = 0; i < fault_texts.size(); ++i)
        if (fault_texts[i].fault != static_cast<xp_fault>(i)) return false;
    return fault_texts.size() == static_cast<std::size_t>(xp_fault::count);
}
static_assert(is_in_order());

}  // namespace

void xp_fail(xp_status& status, xp_fault fault, std::string_view where, std::string_view detail) {
    if (!xp_ok(status)) return;
    status.fault = fault;
    status.where = where;
    status.detail = detail;
}

void xp_warn(xp_status& status, std::string_view where, std::string_view text) {
    status.warnings.push_back(std::string(where) + ": " + std::string(text));
}

void xp_note(xp_status& status, std::string_view text) { status.notes.emplace_back(text); }

std::string xp_message_text(const xp_status& status) {
    std::string text = status.where;
    if (!text.empty()) text += ": ";
    text += fault_texts[static_cast<std::size_t>(status.fault)].text;
    if (!status.detail.empty()) text += (status.detail[0] == '\n' ? ":" : ": ") + status.detail;
    return text;
}

std::string xp_quoted(std::string_view text) { return '"' + std::string(text) + '"'; }
