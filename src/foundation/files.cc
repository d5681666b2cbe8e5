// Opening by path, shell commands, lines of a stream.
#include "foundation/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "foundation/platform.h"
#include "foundation/printable.h"
#include "foundation/status.h"

bool tm_shell_commands_allowed = true;
bool tm_streams_are_read = false;

namespace {

constexpr const char* root_prefix = "$QUILLARN";
constexpr std::size_t root_prefix_length = 9;
constexpr std::size_t path_max = 192;
constexpr int file_mode = 0660;
constexpr std::int32_t probe_delay = 10;  // milliseconds
constexpr std::int32_t line_max = 198;

// Whether what is there may be opened at all.  A FIFO is not opened to see: its writer would meet that
// reader.
bool is_source(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) != 0 || S_ISREG(info.st_mode) ||
           (tm_streams_are_read && S_ISFIFO(info.st_mode));
}

bool is_fifo(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISFIFO(info.st_mode);
}

// Whether the path can be opened as a file; without rdoly the file exists afterwards.
bool probe(const std::string& path, bool rdoly) {
    if (!is_source(path)) return false;
    if (is_fifo(path)) return ::access(path.c_str(), R_OK) == 0;
    const int fd = xfopen(path.c_str(), (rdoly ? O_RDONLY : O_CREAT) | O_NONBLOCK | O_NOCTTY, file_mode);
    if (fd < 0) return false;
    xfclose(fd);
    xdelayms(probe_delay);
    return true;
}

int next_char(std::FILE* file) { return std::getc(file); }

bool ends_line(int c) { return c == '\n' || c == EOF; }

std::FILE* standard_input() {
    const int fd = ::dup(STDIN_FILENO);
    return fd < 0 ? nullptr : ::fdopen(fd, "r");
}

}  // namespace

// The root becomes part of command lines and file names, which are printable.
std::string tm_installation_root() {
    const char* const named = xgetenv("QUILLARN");
    const std::string root = named != nullptr ? named : "";
    const bool is_usable =
        !root.empty() && std::all_of(root.begin(), root.end(), [](char c) { return c >= 32 && c <= 126; });
    return is_usable ? root : tm_default_root;
}

std::string tm_resolve_path(const tm_string_record_t& pathin) {
    tm_check_string(pathin);
    std::string path(tm_view(pathin));
    if (tm_const_equal_string(root_prefix, pathin))
        path.replace(0, root_prefix_length, tm_installation_root());
    return path.substr(0, path_max);
}

void tm_popen_file(const tm_string_record_t& pathin, char rorw, bool rdoly, std::FILE*& fid, bool& open_ok) {
    const std::string path = tm_resolve_path(pathin);
    fid = nullptr;
    if (tm_streams_are_read && path == "-") {
        fid = standard_input();
        open_ok = fid != nullptr;
        return;
    }
    open_ok = probe(path, rdoly);
    if (!open_ok) return;
    const char mode = tm_upper_case(rorw);
    if (mode != 'W' && mode != 'R') {
        tm_trace("!!! ( tm_popen_file ) rorw invalid  : \"%.*s\"  \"%c\"\n", pathin.len, pathin.char_, rorw);
        tm_fatal(file_data_invalid);
    }
    fid = std::fopen(path.c_str(), mode == 'W' ? "w" : "r");
    if (fid == nullptr) {
        std::printf("?? tm_popen_file : impossible to open file_name :'%s' (for %c) \n", path.c_str(), mode);
        std::exit(0);
    }
    tm_trace("tm_popen_file : \"%s\" open\n", path.c_str());
}

void tm_popen_filei(const tm_string_record_t& pathin, char /*rorw*/, bool rdoly, int& fid, bool& open_ok) {
    const std::string path = tm_resolve_path(pathin);
    fid = xfopen(path.c_str(), rdoly ? O_RDONLY : O_WRONLY | O_CREAT | O_TRUNC, file_mode);
    open_ok = fid >= 0;
    if (!open_ok)
        tm_trace("!!! ( tm_popen_filei ) impossible to open file  : \"%.*s\" \n", pathin.len, pathin.char_);
}

int tm_system(const tm_string_record_t& cmd) {
    tm_check_string(cmd);
    if (cmd.len >= tm_string_max || !tm_shell_commands_allowed) return 0;
    std::string text(tm_view(cmd));
    if (!text.empty() && (text[0] == '"' || text[0] == '\''))
        text = text.size() < 2 ? "" : text.substr(1, text.size() - 2);
    std::fflush(stdout);  // what was printed so far stands before the command's own output
    return std::system(text.c_str());
}

bool tm_read_one_line(std::FILE* file, tm_string_record_t& buf, std::int32_t& pos, bool& cut) {
    buf.len = 0;
    pos = 1;
    int c = next_char(file);
    for (; buf.len < line_max && !ends_line(c); c = next_char(file))
        buf.char_[buf.len++] = tm_is_printable(c) ? static_cast<char>(c) : ' ';
    buf.char_[buf.len] = '\0';
    cut = !ends_line(c);
    for (std::int64_t skipped = 0; !ends_line(c) && skipped < tm_line_limit; ++skipped) c = next_char(file);
    if (std::ferror(file) != 0) buf = {};  // the rest is not known
    return ends_line(c);
}

bool tm_no_more_lines(std::FILE* file) {
    if (std::feof(file) != 0 || std::ferror(file) != 0) return true;
    if (::ftello(file) == 0) return false;  // an empty file holds one line, an empty one
    const int c = next_char(file);
    return c == EOF || std::ungetc(c, file) == EOF;
}
