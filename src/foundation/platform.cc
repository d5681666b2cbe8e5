// Delays, clocks, descriptors, the environment, key events.
#include "foundation/platform.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>

namespace {

constexpr std::int32_t delay_max = 30000;  // milliseconds
constexpr std::size_t count_max = 99;      // characters of a zero-terminated text

constexpr std::uint32_t control_bits = 4, shift_bits = 18 | 1, alt_bits = 40;
constexpr std::uint32_t control_key = 4, shift_key = 1, alt_key = 8;
constexpr std::uint32_t first_function_key = 65470, last_function_key = 65481;

void refuse_long_delay(std::int32_t ms) {
    if (ms <= delay_max) return;
    std::printf(" !! Error in xdelayms : TOO long : delayms = %d    \n", ms);
    std::exit(1);
}

bool is_too_long(const char* text) { return strnlen(text, count_max + 1) > count_max; }

}  // namespace

void xdelayms(std::int32_t ms) {
    refuse_long_delay(ms);
    if (ms <= 0) return;
    timespec left{ms / 1000, ms % 1000 * 1000000L};
    while (nanosleep(&left, &left) != 0 && errno == EINTR) {
    }
}

void xdelayms2(std::int32_t ms) {
    refuse_long_delay(ms);
    if (ms > 0) usleep(static_cast<useconds_t>(ms) * 1000);
}

void xtimems(timeval& tv) { gettimeofday(&tv, nullptr); }

std::int32_t xdiftimems(std::int32_t sec, std::int32_t usec) {
    timeval now{};
    xtimems(now);
    return static_cast<std::int32_t>((now.tv_usec - usec) / 1000 + (now.tv_sec - sec) * 1000);
}

void xgetspucode(std::uint32_t n, char (&text)[20]) {
    std::memset(text, 0, sizeof text);
    std::snprintf(text, sizeof text, "%x", n);
}

int xfopen(const char* path, int flags, int mode) { return open(path, flags, mode); }
int xfclose(int fd) { return close(fd); }
std::int64_t xfread(int fd, void* buf, std::int64_t len) { return read(fd, buf, static_cast<size_t>(len)); }
std::int64_t xfwrite(int fd, const void* buf, std::int64_t len) {
    return write(fd, buf, static_cast<size_t>(len));
}

std::int32_t xstrlen(const char* text) {
    const auto len = static_cast<std::int32_t>(strnlen(text, count_max));
    if (is_too_long(text)) std::printf(" !!! Error in xstrlen(c) : len= %d  '%s'  \n", len, text);
    return len;
}

const char* xgetenv(const char* name) {
    const auto len = static_cast<std::size_t>(xstrlen(name));
    if (len < count_max) return std::getenv(name);
    std::printf(" !!! Error in xgetenv (c) : len+max = %d  %d  '%s' \n", static_cast<int>(len),
                static_cast<int>(count_max), name);
    return std::getenv(std::string(name, count_max - 1).c_str());
}

std::uint32_t x_reduce_modifiers(std::uint32_t state) {
    if ((state & control_bits) != 0) return control_key;
    if ((state & shift_bits) != 0) return shift_key;
    return (state & alt_bits) != 0 ? alt_key : 0;
}

bool x_is_function_key(std::uint32_t keysym) {
    return keysym >= first_function_key && keysym <= last_function_key;
}
