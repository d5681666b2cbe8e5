// kol: the memory.  Any number of read and write ports, whose pins say by their name what they are:
//
//   R0A3  R0D5             address and data bit of read port 0; W1A3, W1D5 of write port 1
//   R0CP  R0CN             its clock, acting on the rising or falling edge; a port without reads or writes at
//   any time R0E   W1E8             its enable, active while 1; of a write port for the data bits from 8 to
//   the next enable R0S   R0R              synchronous and asynchronous reset of a read port, active while 1
//
// The property WORDS of the instance is the range of its addresses, "0:255"; VALUES of a pin is a text: of a
// read data pin the value at the start, after R and after S ("x01"), of a read clock a letter a write port
// ("t": what is written at the same edge is read, "x": it makes what is read unknown, "-": the old word is
// read), of S "c" when it needs the enable.  Unknown addresses read "x"; writing there makes unknown every
// word that they may mean.  Ports of one clock read before they write; of two writes the port with the higher
// number wins.  User errors of set-up are shown, counted, and end that instance's set-up.
#pragma once

#include <cstdint>
#include <string>

#include "foundation/archive.h"
#include "netlist/store.h"

void kol_mem_init();
void kol_mem_clear();    // forgets every instance
void kol_mem_restart();  // initial contents; outputs as the nets say
void kol_mem_refresh();  // the current instance's delays and limits from its properties, silently
void kol_mem_archive(tm_archive_t& archive);
void kol_mem_hdler();  // of every input

// The memory of an instance, for commands.
struct kol_contents_t;
const kol_contents_t* kol_contents_of(const yx_inst_record_t& inst);  // none for another model
// The file's words become contents and initial contents; false with what is wrong.  Reads follow.
bool kol_load_memory(yx_inst_record_t& inst, const std::string& path, std::string& why);
