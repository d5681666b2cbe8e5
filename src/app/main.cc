// The program's entry: checks the schematic directory, echoes the arguments, runs the session.
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "app/startup.h"
#include "app/window/pauses.h"
#include "foundation/context.h"
#include "foundation/ends.h"
#include "foundation/platform.h"
#include "foundation/printable.h"

namespace {

constexpr int echoed_characters = 128;

// Echoes the argument and cuts it at its first byte that is not printable.
void echo_argument(int index, char* text) {
    std::printf(" argument : %2d\n   '", index);
    for (int i = 0; i < echoed_characters; ++i) {
        if (!tm_is_printable(text[i])) {
            text[i] = '\0';
            break;
        }
        std::putchar(text[i]);
    }
    std::printf("' \n");
}

bool opens(const char* path, int flags) {
    const int fd = xfopen(path, flags, 0);
    if (fd < 0) return false;
    xdelayms(pause_of_check);
    xfclose(fd);
    return true;
}

// A directory that may not be read is still a directory: the right is checked next.
bool is_directory(const char* path) {
    if (opens(path, O_RDONLY | O_DIRECTORY)) return true;
    struct stat info {};
    return errno == EACCES && stat(path, &info) == 0 && S_ISDIR(info.st_mode);
}

}  // namespace

int main(int argc, char** argv) {
    tm_begin_process();
    setvbuf(stdout, nullptr, _IOLBF, 0);  // the end of a session kills the process: nothing may stay buffered
    tm_vext.debugfile = nullptr;
    tm_vext.cursessfile = nullptr;
    if (argc < 2) {
        std::printf(" !! Unrecoverable Error : Invalid argument number:%2d  < 1 \n", std::max(argc - 1, 0));
        return 1;
    }
    for (int i = 0; i < argc; ++i) echo_argument(i, argv[i]);
    tm_vext.argc_main = argc;
    tm_vext.argv_main = argv;
    if (!is_directory(argv[1])) {
        std::printf(" !! Unrecoverable Error : the file :'%s' is not a  directory ? \n", argv[1]);
        return 1;
    }
    if (!opens(argv[1], O_RDONLY)) {
        std::printf(" !! Unrecoverable Error : No unix 'R' right on the directory:'%s' ? \n", argv[1]);
        return 1;
    }
    kolv_root(argc, argv);
    return 0;
}
