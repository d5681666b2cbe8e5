// kol: the index of the design's names.  Answers which net, or which pin, is the first by index that one of
// its strings names, without regard to case.  Made when first asked, from a store whose references are
// filled; forgotten when another design is set up.
#pragma once

#include <string>
#include <vector>

#include "kernel/context.h"

struct kol_named_t {
    std::int32_t net = 0;        // by its path or name, its children's names and paths, its pins' paths
    std::int32_t net_alone = 0;  // by its path or name or its children's paths
    std::int32_t pin = 0;        // by the pin's own path
};

// Indexes of the first records that the name names, 0 for none.
kol_named_t kol_find_named(const tm_string_record_t& name);
// The names of nets and pins that begin with a text, without regard to case, each up to the next "/" behind
// it, in their order, at most so many.
std::vector<std::string> kol_names_beginning(std::string_view text, std::size_t most);
// Whether strings that differ in case alone name nets that are not one.
bool kol_names_several_nets(const tm_string_record_t& name);
// Drops what lookups remember of the design's names; the next lookup reads them again.
void kol_forget_names();
