// kol: the faults that CHECK SHEET looks for, group by group, and the report they go to.  Each fault shows
// one line, "# !! Error : " or "# !! Warning : ", what is wrong, the object and what it is called.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "schematic/object.h"

struct kol_sheet_report_t {
    tm_file_index_t file = 0;
    std::int32_t errors = 0, warnings = 0;
};

struct kol_sheet_fault_t {
    bool is_error;
    std::string_view text;
};

// Shows the line: the object's number, then, where it is not empty, the detail between quotes.
void kol_report_fault(kol_sheet_report_t& report, const kol_sheet_fault_t& fault, std::int16_t object,
                      std::string_view detail);

// Names compare without regard to case.
std::string kol_upper(std::string_view text);

// The number of objects, which no file holds more than 30,000 of.
void kol_check_room(kol_sheet_report_t& report);
// INST on every instance and once on the sheet; MODEL on those without a sheet below, and a model of that
// name; the sheet below; as many pins as the symbol has.
void kol_check_instances(kol_sheet_report_t& report);
// One NET on a net and on one net only; names and ranges of buses.
void kol_check_nets(kol_sheet_report_t& report);
// PIN on every pin of a symbol, once; the bits of pins on buses.
void kol_check_pins(kol_sheet_report_t& report);
// Ends of segments on other nets; wires that end nowhere.
void kol_check_wires(kol_sheet_report_t& report);
// Tags that stand on no net or on a net of another name.
void kol_check_tags(kol_sheet_report_t& report);
