// tst: small designs written as text.  A text becomes a design file, the file is loaded into the store and
// set up, and the simulation can begin; whatever an earlier case left is dropped first.
//
// Statements end with ';' or a line end, words are set apart by blanks:
//
//   net a b [OPTION...]             standard nets, also `in a b`; nets that a pin names first need none
//       init 1  kind 4  fixed  rise T  fall T  object N  name TEXT  path TEXT
//   sub a1 of a [OPTION...]         a sub-net of a net or sub-net
//   bus d = d0 d1 d2 [OPTION...]    a bus; its members are new nets, the first at bit 0; `bus d 8` calls them
//                                   d[0] ... d[7]
//   child a [OPTION...]             a child record of a net: name, path, object
//   MODEL INST OUT... = IN... [OPTION...]     an instance, MODEL being any word that is no statement here:
//       rise T  fall T              of its output pins (0 without it)
//       irise T  ifall T            of its input pins (0)
//       prio N  drive TEXT          of its output pins (1, no DRIVE)
//       iprio N                     of its input pins (1)
//       timing N                    timing_index
//   pin /g1/I2 [OPTION...]          changes a pin that exists: rise T  fall T  prio N  drive TEXT
//       io N                        4: the pin drives its net, too
//       without NAME                the pin has no property NAME, nor those behind it: PIN, RISE, FALL,
//       DRIVE,
//                                   EDGE, SETUP_TIME, HOLD_TIME, MIN_TIME_HIGH, MIN_TIME_LOW
//       type NAME integer           the property is of another type: string, integer, time or real
//       values TEXT  edge TEXT  setup T  hold T  high T  low T
//   inst g1 [OPTION...]             changes an instance: timing N, table TEXT, words TEXT, without MODEL,
//   type MODEL real
//
// T is a number of time steps or MIN:TYP:MAX.  The path of net a is /a, of instance g1 /g1, of its pins /g1/
// and their PIN property: O for a single output or O1, O2, ..., I1, I2, ... for inputs, or what is written
// before the net as in `dff f1 Q:q QB:qb = D:d CLK:c`.  A net word may choose on a bus: d is a pin that spans
// the whole bus, d.2-5 one that spans four bits, d.3 a single pin on one bit of it; d3 is the member net.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "kernel/context.h"
#include "netlist/design_image.h"

// Loads and sets up the design of a text; a faulty text or a design that does not load fails the test.
void tst_build(std::string_view text);

// The steps of it, for tests that need one alone.
yx_design_image_t tst_design(std::string_view text, std::string& error);  // error says what is wrong
void tst_load(const yx_design_image_t& image);  // fresh records, a recorded session, then the store filled
void tst_read(const std::filesystem::path& directory);  // the store filled from its file "design_yx"
void tst_set_up();  // models registered, objects set up, simulation path "/"

// Records of the loaded design by path, the first "/" may be left out; one that does not exist ends the test.
yx_net_record_t& tst_net(std::string_view name);
yx_pin_record_t& tst_pin(std::string_view path);
