// The link of a sheet: the text that names its current version.
#include "schematic/link_file.h"

#include <cerrno>
#include <charconv>
#include <string>

#include "foundation/numbers.h"
#include "schematic/whole_file.h"

namespace {

constexpr std::string_view link_suffix = ".tm";
constexpr std::string_view first_link_value = "_1";
constexpr std::string_view version_mark = ".TM_";
constexpr std::string_view link_padding = "        ";

// The number that the text begins with; false without a digit or beyond 16 bits.
bool read_number(std::string_view text, std::int16_t& number, const char*& stop) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    stop = end;
    return !text.starts_with('-') && error == std::errc();
}

bool read_version(std::string_view digits, std::int16_t& version) {
    const char* stop = nullptr;
    return read_number(digits, version, stop) && stop == digits.data() + digits.size();
}

tm_string_record_t path_of(const tm_string_record_t& dirname, const tm_string_record_t& filetype) {
    tm_string_record_t path;
    tm_copy_line(dirname, path);
    tm_append("/", path);
    tm_concat_line(filetype, path);
    tm_append(link_suffix, path);
    return path;
}

std::string upper(std::string_view text) {
    std::string result(text);
    for (char& c : result) c = tm_upper_case(c);
    return result;
}

}  // namespace

bool tm_read_tm_link(const tm_string_record_t& link_pathname, tm_string_record_t& link_value,
                     bool& link_found) {
    link_value = {};
    link_found = false;
    errno = 0;
    const tm_stream file = tm_open_to_read(link_pathname);
    if (file == nullptr) return errno == 0 || errno == ENOENT || errno == ENOTDIR;
    const int first = std::getc(file.get());
    if (first == EOF) {
        ++tm_vext.num_errors;
        return std::ferror(file.get()) == 0;
    }
    std::ungetc(first, file.get());
    tm_string_record_t line;
    std::int32_t pos = 1;
    bool cut = false;
    tm_read_one_line(file.get(), line, pos, cut);  // a zero byte comes as a blank
    tm_rd_string_t(line, tm_char_set(" ,"), link_value, pos);
    link_found = link_value.len > 0;
    return std::ferror(file.get()) == 0;
}

bool tm_add_tm_link(const tm_string_record_t& link_pathname, const tm_string_record_t& link_value) {
    return tm_write_whole(link_pathname, std::string(tm_view(link_value)).append(link_padding) + "\n");
}

bool tm_file_get_file_version(const tm_string_record_t& dirname, const tm_string_record_t& filetype,
                              std::int16_t& fileversion, tm_string_record_t& file_pathname,
                              tm_string_record_t& link_pathname, tm_string_record_t& link_value,
                              bool& version_found) {
    link_pathname = path_of(dirname, filetype);
    const bool is_read = tm_read_tm_link(link_pathname, link_value, version_found);
    if (!version_found) link_value = tm_string(first_link_value);
    file_pathname = link_pathname;
    fileversion = 0;
    if (read_version(tm_view(link_value).substr(1), fileversion))
        tm_concat_line(link_value, file_pathname);
    else
        fileversion = 0;
    return is_read;
}

void tm_file_new_file_version(const tm_string_record_t& dirname, const tm_string_record_t& filetype,
                              std::int16_t fileversion, std::int16_t& fileversion_new,
                              tm_string_record_t& link_value_new, tm_string_record_t& pathname_new) {
    fileversion_new = static_cast<std::int16_t>(fileversion + 1);
    tm_string_record_t digits;
    tm_int16_to_string(fileversion_new, digits);
    link_value_new = tm_string("_");
    tm_concat_line(digits, link_value_new);
    pathname_new = path_of(dirname, filetype);
    tm_concat_line(link_value_new, pathname_new);
}

void tm_get_path_n0version(const tm_string_record_t& path, tm_string_record_t& directory,
                           std::int16_t& version) {
    const std::string text = upper(tm_view(path));
    const std::size_t slash = text.rfind("/S");
    directory = slash == std::string::npos ? tm_string_record_t{} : tm_string(tm_view(path).substr(0, slash));
    version = 0;
    const std::size_t mark = text.rfind(version_mark);
    if (mark == std::string::npos) return;
    const char* stop = nullptr;
    if (!read_number(tm_view(path).substr(mark + version_mark.size()), version, stop)) version = 0;
}
