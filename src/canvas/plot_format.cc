// The formats of plots by the endings of names.
#include "canvas/plot_format.h"

#include "foundation/strings.h"

namespace {

struct ending_row {
    std::string_view ending;  // in capitals
    tm_plot_format format;
};
constexpr ending_row endings[] = {
    {".PNG", tm_plot_format::png},
    {".SVG", tm_plot_format::svg},
    {".PDF", tm_plot_format::pdf},
};

bool ends_with(std::string_view name, std::string_view capitals) {
    if (name.size() < capitals.size()) return false;
    name.remove_prefix(name.size() - capitals.size());
    for (std::size_t i = 0; i < name.size(); ++i)
        if (tm_upper_case(name[i]) != capitals[i]) return false;
    return true;
}

}  // namespace

tm_plot_format tm_plot_format_of(std::string_view file_name) {
    for (const ending_row& row : endings)
        if (ends_with(file_name, row.ending)) return row.format;
    return tm_plot_format::hpgl;
}
