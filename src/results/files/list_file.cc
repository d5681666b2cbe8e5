// The list file: the table of the list view as text.
#include "results/files/list_file.h"

#include <string>

#include "results/entries/cursors.h"
#include "results/list/layout.h"
#include "results/list/rows.h"

namespace {

constexpr int max_rows = 10000;
constexpr std::int16_t first_name_position = 15;  // a name stands at its column behind this, from 1

// p: the position after the name written last.
void write_name(std::string& header, const yx_signal_rec_t& place, const tm_string_record_t& name,
                std::int16_t& p) {
    kol_list_check_column(place);
    const std::string_view head = kol_list_name_head(name);
    const auto at = static_cast<std::size_t>(place.column + first_name_position);
    if (header.size() < at + head.size()) header.resize(at + head.size(), ' ');
    header.replace(at - 1, head.size(), head);
    p = static_cast<std::int16_t>(at + head.size());
}

void write_header_line(std::FILE* file, std::int16_t row) {
    std::string header(first_name_position, ' ');
    std::int16_t p = first_name_position;
    for (yx_signal_rec_t* entry = kol_list_first_entry(); entry != nullptr; entry = entry->next) {
        if (!entry->sig_bus) {
            if (entry->row == row) write_name(header, *entry, entry->name, p);
        } else if (entry->bus != nullptr) {
            kol_list_place_members(*entry);
            kol_list_bus_wfile_signame(header, row, entry->bus, p);
        }
    }
    header.resize(static_cast<std::size_t>(p), ' ');
    std::fprintf(file, "%s\n", header.c_str());
}

// p: the column after the value written last.
void write_value(std::FILE* file, const yx_signal_rec_t& signal, std::int16_t& p) {
    const std::string text = kol_list_value_text(signal);
    if (text.empty()) return;
    kol_list_check_column(signal);
    for (int column = p; column < signal.column; ++column) std::fputc(' ', file);
    std::fwrite(text.data(), 1, text.size(), file);
    p = static_cast<std::int16_t>(signal.column + static_cast<std::int16_t>(text.size()));
}

void write_members(std::FILE* file, const yx_bus_rec_t& bus, std::int16_t& p) {
    for (const yx_signal_rec_t* member = bus.signal; member != nullptr; member = member->next) {
        if (!member->sig_bus) {
            write_value(file, *member, p);
        } else if (member->bus != nullptr) {
            kol_list_place_members(*member);
            write_members(file, *member->bus, p);
        }
    }
}

void write_row(std::FILE* file, yx_signal_rec_t* entry, std::int32_t time) {
    std::fprintf(file, "%*s  ", static_cast<int>(kol_list_time_width), kol_list_time_text(time).c_str());
    std::int16_t p = 1;
    for (; entry != nullptr; entry = entry->next) {
        if (!entry->sig_bus) {
            kol_list_get_sigresult(entry, time);
            write_value(file, *entry, p);
        } else if (entry->bus != nullptr) {
            kol_list_place_members(*entry);
            kol_list_wfilebusresult(file, entry->bus, time, p);
        }
    }
    std::fputc('\n', file);
}

}  // namespace

void kol_list_bus_wfile_signame(std::string& header, std::int16_t row_cur, yx_bus_rec_t* bus,
                                std::int16_t& column) {
    if (bus->signal == nullptr) return;
    if (bus->combine) {
        if (bus->signal->row == row_cur) write_name(header, *bus->signal, bus->name, column);
        return;
    }
    for (yx_signal_rec_t* member = bus->signal; member != nullptr; member = member->next) {
        if (!member->sig_bus) {
            if (member->row == row_cur) write_name(header, *member, member->name, column);
        } else if (member->bus != nullptr) {
            kol_list_place_members(*member);
            kol_list_bus_wfile_signame(header, row_cur, member->bus, column);
        }
    }
}

void kol_list_wfile_signame(std::FILE* file) {
    if (kol_ext.list_signal == nullptr) {
        kol_trace(" LIST : nothing to write");
        return;
    }
    for (std::int16_t row = 1; row <= kol_list_header_lines; ++row) write_header_line(file, row);
    std::fputs("\n\n", file);
}

void kol_list_wfilebusresult(std::FILE* file, yx_bus_rec_t* bus, std::int32_t cur_time,
                             std::int16_t& column) {
    kol_list_get_busresult(bus, cur_time);
    write_members(file, *bus, column);
}

void kol_list_wfile_sigresult(std::FILE* file, std::int32_t begin_time, std::int32_t end_time) {
    yx_signal_rec_t* first = kol_list_first_entry();
    if (first == nullptr || begin_time < 0 || end_time < 0) {
        kol_trace(" LIST : nothing to write : begin : %d  end : %d", begin_time, end_time);
        return;
    }
    std::int32_t time = begin_time;
    for (int row = 0; row < max_rows && time <= end_time; ++row) {
        write_row(file, first, time);
        if (!kol_list_next_row_time(time)) return;
    }
}
