// x: platform shims.  Delays and clocks, raw descriptors, bit operations, bounded text length, the
// environment, and the reduction of key events to a key and one modifier.
#pragma once

#include <sys/time.h>

#include <cstdint>

void xdelayms(std::int32_t ms);   // above 30000: message and exit with status 1
void xdelayms2(std::int32_t ms);  // the same
void xtimems(timeval& tv);
std::int32_t xdiftimems(std::int32_t sec, std::int32_t usec);
void xgetspucode(std::uint32_t n, char (&text)[20]);

int xfopen(const char* path, int flags, int mode);
int xfclose(int fd);
std::int64_t xfread(int fd, void* buf, std::int64_t len);
std::int64_t xfwrite(int fd, const void* buf, std::int64_t len);

template <typename T>
T* xintadd(T* p) {
    return p;
}
template <typename T>
T* xprocaddr(T* p) {
    return p;
}
constexpr std::int32_t xpand(std::int32_t a, std::int32_t b) { return a & b; }
constexpr std::int32_t xpandinv(std::int32_t a, std::int32_t b) { return a & ~b; }
constexpr std::int32_t xpor(std::int32_t a, std::int32_t b) { return a | b; }

std::int32_t xstrlen(const char* text);
const char* xgetenv(const char* name);  // null when unset

// Key events.  state: X modifier bits; the result is Control 4, Shift 1, Alt 8 or 0.
std::uint32_t x_reduce_modifiers(std::uint32_t state);
bool x_is_function_key(std::uint32_t keysym);  // F1..F12, 65470..65481
