// sg_drawing: a page ready to be written.  Owns everything that stands on it, with its place; net ids are
// those of the sheet file.
#pragma once

#include <string>
#include <vector>

#include "sheets/symbol.h"

struct sg_drawn_symbol {
    sg_symbol_kind kind;
    sg_symbol shape;
    std::string path;  // of its file
};

struct sg_drawn_instance {
    std::int32_t symbol = 0;
    sg_point at;
    bool is_flipped = false;  // upside down
    std::string name;         // INST
    bool shows_name = true;
    std::vector<std::int16_t> pin_net;  // by pin, 0 for none
};

struct sg_drawn_text {
    std::string property, text;
    sg_words words;
};

inline constexpr std::int16_t sg_first_net_id = 3;  // behind the main object and the net family

struct sg_drawn_net {
    std::int16_t id = 0;
    std::int32_t number = 0;  // on all pages
    std::string name;         // NET
    bool is_bus = false;
    std::int16_t start = 0, end = 0;
    std::vector<sg_wire> wires;
    std::vector<sg_point> ties;    // where more than two wires meet
    std::vector<sg_wire> bars;     // of joints, cut where parts come to them
    std::vector<sg_point> points;  // that belong to it without a wire
    sg_words label;
    // PORT: names of ports that are not the net's, beside their tags; PAGE: other pages, beside tags; BITS:
    // of a part at a joint.
    std::vector<sg_drawn_text> texts;
};

inline sg_point sg_pin_place(const sg_drawn_instance& instance, const sg_drawn_symbol& symbol,
                             std::size_t pin) {
    const sg_point& at = symbol.shape.pin_at[pin];
    return {instance.at.x + at.x, instance.at.y + (instance.is_flipped ? -at.y : at.y)};
}

enum class sg_tag_kind : std::uint8_t { input, output, inout, from_page, to_page };
inline constexpr std::string_view sg_tag_names[] = {"INPUT", "OUTPUT", "INOUT", "FROM_PAGE", "TO_PAGE"};

struct sg_drawn_tag {
    sg_tag_kind kind = sg_tag_kind::input;
    sg_point at;
    std::string name;
};

struct sg_drawing {
    std::string title;
    std::int32_t page = 0, page_count = 1;
    std::vector<sg_drawn_symbol> symbols;
    std::vector<sg_drawn_instance> instances;
    std::vector<sg_drawn_net> nets;  // by id
    std::vector<sg_drawn_tag> tags;
    sg_rectangle extent;
};

// The room that a tag's pennant takes beside its origin.
constexpr std::int32_t sg_tag_room(std::size_t characters) {
    return sg_text_width(characters, sg_tag_text) + 10000;
}
