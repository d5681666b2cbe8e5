// The families of cells that store or switch, and what their pins read.
#include "expand/timed_cells.h"

#include <unordered_map>

namespace {

constexpr xp_model dff = xp_model_named("DFF"), latch = xp_model_named("DLATCH"), tri = xp_model_named("TRI");

// clang-format off
constexpr xp_timed_row rows[] = {
    // name          controls  model  data  direct
    {"$_DFF_",       "C",      dff,   "",   ""},
    {"$_DFF_",       "CRv",    dff,   "",   "R"},
    {"$_DFFE_",      "CE",     dff,   "e",  ""},
    {"$_DFFE_",      "CRvE",   dff,   "e",  "R"},
    {"$_DFFSR_",     "CSR",    dff,   "",   "SR"},
    {"$_DFFSRE_",    "CSRE",   dff,   "e",  "SR"},
    {"$_SDFF_",      "CRv",    dff,   "r",  ""},
    {"$_SDFFE_",     "CRvE",   dff,   "er", ""},
    {"$_SDFFCE_",    "CRvE",   dff,   "re", ""},
    {"$_ALDFF_",     "CL",     dff,   "",   "L"},
    {"$_ALDFFE_",    "CLE",    dff,   "e",  "L"},
    {"$_DLATCH_",    "E",      latch, "",   ""},
    {"$_DLATCH_",    "ERv",    latch, "",   "R"},
    {"$_DLATCHSR_",  "ESR",    latch, "",   "SR"},
    {"$_SR_",        "SR",     latch, "-",  "SR"},
    {"$_TBUF_",      "E",      tri,  "-",  ""},
    {"$dff",         "C",      dff,   "",   ""},
    {"$dffe",        "CE",     dff,   "e",  ""},
    {"$adff",        "CRv",    dff,   "",   "R"},
    {"$adffe",       "CRvE",   dff,   "e",  "R"},
    {"$sdff",        "CRv",    dff,   "r",  ""},
    {"$sdffe",       "CRvE",   dff,   "er", ""},
    {"$sdffce",      "CRvE",   dff,   "re", ""},
    {"$dffsr",       "CSR",    dff,   "",   "SR"},
    {"$dffsre",      "CSRE",   dff,   "e",  "SR"},
    {"$aldff",       "CL",     dff,   "",   "L"},
    {"$aldffe",      "CLE",    dff,   "e",  "L"},
    {"$dlatch",      "E",      latch, "",   ""},
    {"$adlatch",     "ERv",    latch, "",   "R"},
    {"$dlatchsr",    "ESR",    latch, "",   "SR"},
    {"$sr",          "SR",     latch, "-",  "SR"},
    {"$tribuf",      "E",      tri,  "-",  ""},
};
// clang-format on

bool has(std::string_view text, char letter) { return text.find(letter) != std::string_view::npos; }

// Whether the letters behind the family's name are polarities of its controls.
bool read_polarities(const xp_timed_row& row, std::string_view letters, xp_timed_form& form) {
    if (xp_is_word(row) || row.model == tri) return letters.empty();
    if (letters.size() != row.controls.size() + 1 || letters.back() != '_') return false;
    for (std::size_t i = 0; i < row.controls.size(); ++i) {
        const bool is_value = row.controls[i] == 'v', is_high = letters[i] == (is_value ? '1' : 'P');
        if (!is_high && letters[i] != (is_value ? '0' : 'N')) return false;
        if (is_value) form.resets_to_one = is_high;
        if (!is_value && !is_high) form.low += row.controls[i];
    }
    return true;
}

// ---- formulas

bool is_low(const xp_timed_form& form, char control) { return has(form.low, control); }
std::string level(char control, bool inverted) {
    return inverted ? std::string("not(") + control + ")" : std::string(1, control);
}
std::string active(const xp_timed_form& form, char control) { return level(control, is_low(form, control)); }
std::string idle(const xp_timed_form& form, char control) { return level(control, !is_low(form, control)); }

std::string with_control(const xp_timed_form& form, char control, const std::string& data) {
    if (control == 'e') return is_low(form, 'E') ? "mux(" + data + ",Q,E)" : "mux(Q," + data + ",E)";
    return form.resets_to_one ? "or(" + data + "," + active(form, 'R') + ")"
                              : "and(" + data + "," + idle(form, 'R') + ")";
}

std::string data_formula(const xp_timed_form& form) {
    std::string data = "D";
    for (const char control : form.row->data) data = with_control(form, control, data);
    return data;
}

struct pin_maker {
    const xp_timed_form& form;
    std::vector<xp_timed_pin>& pins;

    void add(std::string_view name, std::string formula) {
        const bool is_port = formula.size() == 1;
        const auto port =
            is_port ? static_cast<std::uint8_t>(xp_timed_ports.find(formula[0])) : std::uint8_t{};
        xp_steps steps = is_port ? xp_steps{} : xp_compile(formula, xp_timed_ports);
        pins.push_back({name, std::move(formula), std::move(steps), port});
    }
    void add_control(std::string_view high_name, std::string_view low_name, char control) {
        add(is_low(form, control) ? low_name : high_name, std::string(1, control));
    }
    void add_reset() {
        if (form.resets_to_one)
            add_control("SP", "SN", 'R');
        else
            add_control("RP", "RN", 'R');
    }
    // A load resets or sets; the set follows its data one gate later than the reset, so that it acts last.
    void add_load() {
        const std::string load = active(form, 'L');
        add("RP", "and(" + load + ",not(A))");
        add("SP", "and(" + load + ",not(not(A)))");
    }
    void add_direct() {
        const std::string_view direct = form.row->direct;
        if (has(direct, 'R')) add_reset();
        if (has(direct, 'S') && form.row->model == latch)
            add_control("SP", "SN", 'S');
        else if (has(direct, 'S'))
            add("SP", "and(" + active(form, 'S') + "," + idle(form, 'R') + ")");
        if (has(direct, 'L')) add_load();
    }
};

std::vector<xp_timed_pin> make_plan(const xp_timed_form& form) {
    std::vector<xp_timed_pin> pins;
    pin_maker maker{form, pins};
    if (form.row->model == tri) {
        maker.add("EP", "E");
        maker.add("A", "A");
        return pins;
    }
    if (xp_has_port(*form.row, 'D')) maker.add("D", data_formula(form));
    if (form.row->model == latch && xp_has_port(*form.row, 'E')) maker.add_control("EP", "EN", 'E');
    if (xp_has_port(*form.row, 'C')) maker.add_control("CLKP", "CLKN", 'C');
    maker.add_direct();
    return pins;
}

std::string_view reset_name(const xp_timed_row& row) {
    if (!has(row.controls, 'v')) return "CLR";
    return row.direct.empty() ? "SRST" : "ARST";
}

struct port_row {
    char letter;
    std::string_view name;  // of a word-level cell
};
constexpr port_row port_rows[] = {{'C', "CLK"}, {'E', "EN"}, {'S', "SET"}, {'L', "ALOAD"}};

}  // namespace

const xp_timed_row* xp_find_timed(std::string_view type, xp_timed_form& form) {
    for (const xp_timed_row& row : rows) {
        form = {&row, {}, false};
        if (type.starts_with(row.name) && read_polarities(row, type.substr(row.name.size()), form))
            return &row;
    }
    return nullptr;
}

bool xp_is_timed(std::string_view type) {
    xp_timed_form form;
    return xp_find_timed(type, form) != nullptr;
}

bool xp_is_word(const xp_timed_row& row) { return !row.name.starts_with("$_"); }

bool xp_has_port(const xp_timed_row& row, char letter) {
    if (letter == 'D') return row.data != "-";
    if (letter == 'A') return row.model == tri || has(row.direct, 'L');
    return letter == 'Q' || has(row.controls, letter);
}

std::string_view xp_timed_port_name(const xp_timed_row& row, char letter) {
    if (letter == 'A') return row.model == tri ? "A" : "AD";
    if (letter == 'Q' && row.model == tri) return "Y";
    if (xp_is_word(row) && letter == 'R') return reset_name(row);
    for (const port_row& port : port_rows)
        if (xp_is_word(row) && port.letter == letter) return port.name;
    return xp_timed_ports.substr(xp_timed_ports.find(letter), 1);
}

bool xp_is_per_bit(const xp_timed_row& row, char letter) {
    return has("DAQS", letter) || (letter == 'R' && reset_name(row) == "CLR");
}

const std::vector<xp_timed_pin>& xp_plan(const xp_timed_form& form) {
    static std::unordered_map<std::string, std::vector<xp_timed_pin>> plans;
    const std::string key = std::string(form.row->name) + std::string(form.row->controls) + form.low +
                            (form.resets_to_one ? "1" : "");
    const auto [known, is_new] = plans.try_emplace(key);
    if (is_new) known->second = make_plan(form);
    return known->second;
}
