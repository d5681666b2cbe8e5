#include "foundation/replacement.h"

#include <unistd.h>

#include <filesystem>

namespace {

bool can_be_replaced(const std::filesystem::path& target) {
    if (::access(target.c_str(), F_OK) != 0) return true;
    return std::filesystem::is_regular_file(target) && ::access(target.c_str(), W_OK) == 0;
}

}  // namespace

tm_replacement::tm_replacement(const tm_string_record_t& path) {
    std::error_code failed;
    const std::filesystem::path target = std::filesystem::weakly_canonical(tm_resolve_path(path), failed);
    if (failed || !can_be_replaced(target)) return;
    target_ = target;
    written_ = target_ + "." + std::to_string(::getpid());
    stream_.reset(std::fopen(written_.c_str(), "wb"));
}

tm_replacement::~tm_replacement() {
    if (!written_.empty()) std::remove(written_.c_str());
}

bool tm_replacement::write(std::string_view bytes) {
    const bool in_buffer = std::fwrite(bytes.data(), 1, bytes.size(), stream_.get()) == bytes.size();
    const bool on_disk = std::fflush(stream_.get()) == 0 && ::fsync(::fileno(stream_.get())) == 0;
    const bool closed = std::fclose(stream_.release()) == 0;
    return in_buffer && on_disk && closed && std::rename(written_.c_str(), target_.c_str()) == 0;
}
