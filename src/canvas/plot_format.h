// tm: the formats of plots.
#pragma once

#include <cstdint>
#include <string_view>

enum class tm_plot_format : std::uint8_t { hpgl, png, svg, pdf };

// By the ending of the name: ".png", ".svg" and ".pdf" in either case, HP-GL for every other.
tm_plot_format tm_plot_format_of(std::string_view file_name);
