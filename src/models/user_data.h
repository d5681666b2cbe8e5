// kol: per-instance data of the models.  Owns one record per instance of a model, referenced from the
// instance's user_data_area; records live until the program ends.  An instance without its record is fatal
// (file_data_invalid).
#pragma once

#include <deque>

#include "foundation/status.h"
#include "kernel/context.h"

template <typename T>
class kol_user_data {
public:
    T& create() {
        T& record = records_.emplace_back();
        kol_ext.cur_inst->user_data_area = &record;
        return record;
    }
    // The record of the current instance.
    T& current() const {
        if (kol_ext.cur_inst == nullptr || kol_ext.cur_inst->user_data_area == nullptr) {
            kol_trace(" KOL_USER_DATA : no current instance or no data of it");
            tm_fatal(file_data_invalid);
        }
        return *static_cast<T*>(kol_ext.cur_inst->user_data_area);
    }
    std::deque<T>& all() { return records_; }

private:
    std::deque<T> records_;
};
