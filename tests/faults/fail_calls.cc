// A library to preload: makes calls of the system fail, be interrupted or do a part of their work.  It
// catches the system calls themselves, so those from inside the C library count, too: opening a file of the
// working directory, and reading, writing, flushing, cutting and renaming such files.  KOLV_FAULT says which
// one fails:
//
//   call N      the Nth call, with an error that fits it
//   space N     every write behind the first N bytes: no space is left
//   part        every read and write does a part of its work
//   signal N    the Nth call is interrupted before it has done anything
//   memory N    the Nth allocation behind the start of the program
//
// The file KOLV_FAULT_LOG says at the end how many calls, bytes written and allocations there were, and what
// the call that failed was: "read" where nothing was to be changed.
#include <dlfcn.h>
#include <fcntl.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <ucontext.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>

extern "C" {
long fault_syscall(long number, long a, long b, long c, long d, long e, long f);
extern const char fault_syscall_end[];
}
// The one place whose calls are not caught.
asm(".text\n.globl fault_syscall\nfault_syscall:\n"
    "mov %rdi,%rax\nmov %rsi,%rdi\nmov %rdx,%rsi\nmov %rcx,%rdx\nmov %r8,%r10\nmov %r9,%r8\nmov 8(%rsp),%r9\n"
    "syscall\n.globl fault_syscall_end\nfault_syscall_end:\nret\n");

namespace {

enum class kind { none, call, space, part, signal, memory };
kind fault = kind::none;
long place = 0, calls = 0, bytes = 0, allocations = 0;
bool is_counting = false;
const char* failed = "none";
bool is_own[1024];  // descriptors of files of the working directory
char directory[4096];

// Not its traces: they may be cut, and nobody is told.
bool is_of_directory(const char* path) {
    const char* const name = std::strrchr(path, '/');
    const bool is_inside = path[0] != '/' || std::strncmp(path, directory, std::strlen(directory)) == 0;
    return is_inside && std::strncmp(name == nullptr ? path : name + 1, "debug_", 6) != 0;
}

long error_of(long number) {
    switch (number) {
        case SYS_openat:
            return -EMFILE;
        case SYS_write:
            return -ENOSPC;
        default:
            return -EIO;
    }
}

// True: the call ends with the result.
bool fails(long number, bool changes, long count, long& result) {
    ++calls;
    if (number == SYS_write && fault == kind::space && bytes + count > place) return result = -ENOSPC, true;
    if ((fault != kind::call && fault != kind::signal) || calls != place) return false;
    failed = changes ? "change" : "read";
    result = fault == kind::signal ? -EINTR : error_of(number);
    return true;
}

long carry_out(const greg_t* r, long number) {
    long count = r[REG_RDX];
    const bool has_path = number == SYS_openat || number == SYS_rename;
    const long fd = r[REG_RDI];
    const bool is_file = fd >= 0 && fd < 1024 && is_own[fd];
    const bool counts =
        has_path
            ? is_of_directory(reinterpret_cast<const char*>(number == SYS_openat ? r[REG_RSI] : r[REG_RDI]))
            : is_file;
    long result = 0;
    const bool changes = number == SYS_openat ? (r[REG_RDX] & O_ACCMODE) != O_RDONLY : number != SYS_read;
    if (is_counting && counts && fails(number, changes, count, result)) return result;
    if (counts && fault == kind::part && (number == SYS_read || number == SYS_write) && count > 1)
        count = (count + 1) / 2;
    result = fault_syscall(number, r[REG_RDI], r[REG_RSI], count, r[REG_R10], r[REG_R8], r[REG_R9]);
    if (number == SYS_openat && result >= 0 && result < 1024) is_own[result] = counts;
    if (number == SYS_write && counts && result > 0) bytes += result;
    return result;
}

void catch_call(int, siginfo_t* info, void* context) {
    const int kept = errno;
    greg_t* const r = static_cast<ucontext_t*>(context)->uc_mcontext.gregs;
    r[REG_RAX] = carry_out(r, info->si_syscall);
    errno = kept;
}

// Everything but the calls of interest goes on, and those from fault_syscall.
void catch_calls() {
    const auto end = reinterpret_cast<unsigned long>(fault_syscall_end);
    struct sock_filter code[] = {
        {BPF_LD | BPF_W | BPF_ABS, 0, 0, offsetof(seccomp_data, nr)},
        {BPF_JMP | BPF_JEQ | BPF_K, 6, 0, SYS_openat},
        {BPF_JMP | BPF_JEQ | BPF_K, 5, 0, SYS_read},
        {BPF_JMP | BPF_JEQ | BPF_K, 4, 0, SYS_write},
        {BPF_JMP | BPF_JEQ | BPF_K, 3, 0, SYS_fsync},
        {BPF_JMP | BPF_JEQ | BPF_K, 2, 0, SYS_ftruncate},
        {BPF_JMP | BPF_JEQ | BPF_K, 1, 0, SYS_rename},
        {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW},
        {BPF_LD | BPF_W | BPF_ABS, 0, 0, offsetof(seccomp_data, instruction_pointer)},
        {BPF_JMP | BPF_JEQ | BPF_K, 0, 1, static_cast<unsigned>(end)},
        {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW},
        {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_TRAP},
    };
    struct sock_fprog program = {std::size(code), code};
    struct sigaction action {};
    action.sa_sigaction = catch_call;
    action.sa_flags = SA_SIGINFO | SA_NODEFER;
    ::sigaction(SIGSYS, &action, nullptr);
    ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    if (::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0) ::_exit(99);
}

__attribute__((constructor)) void begin() {
    static constexpr const char* names[] = {"none", "call", "space", "part", "signal", "memory"};
    if (::getcwd(directory, sizeof directory) == nullptr) ::_exit(99);
    const char* const text = std::getenv("KOLV_FAULT");
    char name[16] = "none";
    if (text != nullptr) std::sscanf(text, "%15s %ld", name, &place);
    for (int k = 0; k < 6; ++k)
        if (std::strcmp(name, names[k]) == 0) fault = static_cast<kind>(k);
    if (fault != kind::memory) catch_calls();
    is_counting = true;
}

__attribute__((destructor)) void end() {
    is_counting = false;
    std::FILE* const log = std::fopen(std::getenv("KOLV_FAULT_LOG"), "w");
    if (log == nullptr) return;
    std::fprintf(log, "%ld %ld %ld %s\n", calls, bytes, allocations, failed);
    std::fclose(log);
}

}  // namespace

extern "C" void* malloc(std::size_t size) {
    using malloc_t = void* (*)(std::size_t);
    static const auto next = reinterpret_cast<malloc_t>(::dlsym(RTLD_NEXT, "malloc"));
    if (is_counting && ++allocations == place && fault == kind::memory) return errno = ENOMEM, nullptr;
    return next(size);
}
