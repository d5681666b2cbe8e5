// The sheet of wired_sheet in a directory of its own, which can be saved and read again.
#pragma once

#include <filesystem>
#include <fstream>

#include "foundation/records.h"
#include "schematic/wired_sheet.h"

class saved_sheet : public wired_sheet {
protected:
    saved_sheet() {
        std::filesystem::remove_all(folder);
        std::filesystem::create_directories(folder);
        while (!open_objects.empty()) close();
        tm_file_record(file).dirname = tm_string(folder);
        set_paths();
    }
    ~saved_sheet() override { std::filesystem::remove_all(folder); }

    // Saves and opens what was saved; the statuses of both.
    std::pair<std::int32_t, std::int32_t> save_and_open() {
        STATUS_T saved, opened;
        testing::internal::CaptureStdout();
        tm_file_close(file, true, saved);
        if (saved.all == 0) tm_file_open(tm_string(folder), tm_string("sheet"), file, opened);
        said = testing::internal::GetCapturedStdout();
        return {saved.all, opened.all};
    }
    std::int32_t reopen() {
        STATUS_T status;
        bool found = false;
        testing::internal::CaptureStdout();
        tm_file_reopen(tm_string(folder), tm_string("sheet"), file, found, status);
        said = testing::internal::GetCapturedStdout();
        return status.all;
    }
    std::string path(const std::string& name) const { return folder + "/" + name; }
    void write(const std::string& name, const std::string& bytes) const {
        std::ofstream(path(name), std::ios::binary) << bytes;
    }

    const std::string folder = testing::TempDir() + "kolv_sheets_" + std::to_string(getpid());
    std::string said;

private:
    void set_paths() {
        tm_file_io_rec_t& record = tm_file_record(file);
        record.link_pathname = tm_string(path("sheet.tm"));
        record.file_pathname = tm_string(path("sheet.tm_1"));
    }
};
