// kol: the properties of instances that single models have.  A false result: the property is missing or no
// text; the error is shown with the path of the current instance and counted.
#pragma once

#include <string_view>

#include "kernel/context.h"

bool kol_show_instance_error(std::string_view text);
bool kol_read_instance_text(std::string_view name, std::string_view& text);
