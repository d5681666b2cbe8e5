// kol: the event queue.  Owns every change that is scheduled and has not happened yet, in one list ordered by
// time and, within one time, by handler priority and arrival; executed records are recycled, newest first.
// Scheduling before the time of the event being executed is fatal (file_data_invalid); a time beyond 32 bits
// becomes the largest.
//
// The place of a pin's event depends only on the events queued: whatever was inserted before, the search ends
// at the same neighbours.  So no insertion cursor is kept; the time index finds the place.
#pragma once

#include <span>

#include "kernel/context.h"
#include "kernel/stimuli_reader.h"

// Schedules the pin's change to state at cur_time + delay on the net it drives (standard net or sub-net).
void kol_output_state(yx_pin_record_t* pin, yx_net_record_t* net, std::int32_t delay, std::int8_t state);
// The same for a root net and a handler priority that the caller has at hand.
void kol_schedule(yx_pin_record_t* pin, yx_net_record_t* root, std::int16_t priority, std::int32_t delay,
                  std::int8_t state);
// Schedules a FORCE event at an absolute time, behind every queued event of that time.
void kol_create_force_event(yx_net_record_t* net, std::int32_t abs_time, std::int8_t state);
// Schedules FORCE events for a time in front of every queued event of that time, none of which is executed.
void kol_put_forces_first(std::int32_t time, std::span<const kol_stimulus_t> stimuli);
// Puts an event of a root net back behind every queued one, which it does not outrank; none for the pin: a
// FORCE event.
void kol_append_event(yx_pin_record_t* pin, yx_net_record_t* root, std::int32_t time, std::int8_t state);
// Takes the head off the queue and recycles its record.
void kol_retire_cur_event();
// Empties the queue; the records go to the free list with time -1.
void kol_empty_queue();
// Frees every event record.
void kol_clear_queue();
