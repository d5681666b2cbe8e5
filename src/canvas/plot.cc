// Plots into files and onto paper.
#include "canvas/plot.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "canvas/cairo_canvas.h"
#include "canvas/hpgl_canvas.h"
#include "canvas/stroke_font.h"
#include "foundation/files.h"
#include "foundation/platform.h"
#include "foundation/replacement.h"

namespace {

constexpr mode_t spool_mode = 0600;

// False when something that is not ours stands there.
bool remove_left_spool_file() {
    struct stat found {};
    if (::lstat(tm_plot_spool_file, &found) != 0) return true;
    if (!S_ISREG(found.st_mode) || found.st_uid != ::geteuid()) return false;
    return ::unlink(tm_plot_spool_file) == 0;
}

bool write_all(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        const std::int64_t written = xfwrite(fd, bytes.data(), static_cast<std::int64_t>(bytes.size()));
        if (written <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

void write_spool_file(std::string_view bytes, std::string& error) {
    if (!remove_left_spool_file()) {
        error = std::string("not a plot file of yours : ") + tm_plot_spool_file;
        return;
    }
    const int fd = xfopen(tm_plot_spool_file, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, spool_mode);
    const bool written = fd >= 0 && write_all(fd, bytes);
    const bool closed = fd >= 0 && xfclose(fd) == 0;
    if (written && closed) return;
    if (fd >= 0) ::unlink(tm_plot_spool_file);
    error = std::string("impossible to write : ") + tm_plot_spool_file;
}

}  // namespace

std::string tm_plot_bytes(const tm_plot_t& plot, tm_plot_format format, std::string& error) {
    const auto is_length = [](std::int32_t length) { return length >= 1 && length <= tm_plot_largest; };
    error = !tm_font_loaded()                                   ? "no stroke font"
            : !is_length(plot.width) || !is_length(plot.height) ? "no picture of that size"
                                                                : "";
    if (!error.empty()) return {};
    if (format == tm_plot_format::hpgl) {
        hpgl_canvas canvas(plot.width, plot.height);
        plot.draw(canvas);
        return canvas.finish();
    }
    cairo_canvas canvas(plot.width, plot.height, format);
    plot.draw(canvas);
    return canvas.finish(error);
}

void tm_plot_to_file(const tm_plot_t& plot, const tm_string_record_t& path, std::string& error) {
    const std::string bytes = tm_plot_bytes(plot, tm_plot_format_of(tm_view(path)), error);
    if (!error.empty()) return;
    tm_replacement file(path);
    if (!file.is_open() || !file.write(bytes)) error = "impossible to write : " + std::string(tm_view(path));
}

void tm_plot_and_print(const tm_plot_t& plot, std::string& error) {
    if (!tm_shell_commands_allowed) return;
    const std::string bytes = tm_plot_bytes(plot, tm_plot_format::hpgl, error);
    if (error.empty()) write_spool_file(bytes, error);
    if (error.empty()) tm_system(tm_string(tm_plot_print_command));
}
