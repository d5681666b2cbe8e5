// kol: the table of models that the program knows, in the order in which MODEL values are tried.
#pragma once

#include <span>

#include "kernel/model.h"

std::span<const kol_model_t> kol_model_table();
