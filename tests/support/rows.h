// tst: tables of cases.
#pragma once

#include <initializer_list>
#include <tuple>

using tst_cstr = const char*;

// for (const auto& [name, value] : tst_rows<tst_cstr, int>{{"a", 1}, {"b", 2}}) ...
template <typename... Columns>
using tst_rows = std::initializer_list<std::tuple<Columns...>>;
