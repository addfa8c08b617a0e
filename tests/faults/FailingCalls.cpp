// Preloaded into a program, makes one of its calls fail. QUILLARA_FAIL says which: CALL:FIRST:LAST:ERROR:SIGNAL, such
// as write:3:3:28:0 (the third), malloc:500:1000000:12:0 (the 500th and those after it), read:1:1:0:0 (half of what is
// asked is done) or rename:1:1:0:15 (nothing fails, but SIGTERM comes before the call). Calls on files of the system
// aren't counted. When it has happened, the file that QUILLARA_FAIL_MARK names is there; it holds "library" once memory
// has failed within a call of the library that reads statistical files.

#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <stdio.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <string_view>

extern "C" {
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);
}

namespace {

struct Plan {
    char Call[16] = {};
    long First = 0;
    long Last = 0;
    int Error = 0;  ///< 0: half of what is asked is done
    int Signal = 0;  ///< 0: none
};

Plan ReadPlan() {
    Plan plan;
    if (const char* const text = getenv("QUILLARA_FAIL")) {
        sscanf(text, "%15[^:]:%ld:%ld:%d:%d", plan.Call, &plan.First, &plan.Last, &plan.Error, &plan.Signal);
    }
    return plan;
}

std::atomic<const Plan*> ThePlan = nullptr;
std::atomic<long> Count = 0;
std::array<std::atomic<bool>, 1024> IsCounted = {};  ///< by descriptor

std::array<void*, 64> Callers = {};

using MainFunction = int(int, char**, char**);
MainFunction* ProgramMain = nullptr;

/// Nothing fails before the program's main.
int MainWithPlan(int count, char** arguments, char** environment) {
    static const Plan plan = ReadPlan();
    IsCounted[STDOUT_FILENO] = true;
    backtrace(Callers.data(), static_cast<int>(Callers.size()));  // takes memory the first time
    ThePlan = &plan;
    return ProgramMain(count, arguments, environment);
}

bool IsCalledByLibrary() {
    const int depth = backtrace(Callers.data(), static_cast<int>(Callers.size()));
    return std::any_of(Callers.data(), Callers.data() + depth, [](const void* caller) {
        Dl_info object{};
        return dladdr(caller, &object) != 0 && std::strstr(object.dli_fname, "/libreadstat.") != nullptr;
    });
}

void Mark(bool isOfLibrary) {
    constexpr std::string_view library = "library";
    if (const char* const path = getenv("QUILLARA_FAIL_MARK")) {
        const auto file = syscall(SYS_openat, AT_FDCWD, path, O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
        if (isOfLibrary) {
            syscall(SYS_write, file, library.data(), library.size());
        }
        syscall(SYS_close, file);
    }
}

/// Whether this call is the one to fail; errno is set then.
bool Fails(const char* call) {
    const Plan* const plan = ThePlan;
    if (plan == nullptr || std::strcmp(plan->Call, call) != 0) {
        return false;
    }
    const long number = ++Count;
    if (number < plan->First || number > plan->Last) {
        return false;
    }
    Mark(plan->Call == std::string_view("malloc") && IsCalledByLibrary());
    if (plan->Signal != 0) {
        raise(plan->Signal);
        return false;
    }
    errno = plan->Error;
    return true;
}

bool IsSystemFile(const char* path) {
    for (const char* const folder : {"/usr/", "/etc/", "/proc/", "/sys/", "/dev/", "/var/", "/lib"}) {
        if (std::strncmp(path, folder, std::strlen(folder)) == 0) {
            return true;
        }
    }
    return false;
}

bool Counts(int descriptor) {
    return descriptor >= 0 && descriptor < static_cast<int>(IsCounted.size()) && IsCounted[descriptor];
}

int Opened(const char* path, int descriptor) {
    if (descriptor >= 0 && descriptor < static_cast<int>(IsCounted.size())) {
        IsCounted[descriptor] = !IsSystemFile(path);
    }
    return descriptor;
}

template <typename Function>
Function* Next(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

/// What a call on a descriptor gives that reads or writes `size` bytes when it isn't cut short.
template <typename Call>
ssize_t Transfer(const char* name, int descriptor, size_t size, const Call& call) {
    if (!Counts(descriptor) || !Fails(name)) {
        return call(size);
    }
    return errno != 0 ? -1 : call(size > 1 ? size / 2 : size);
}

}  // namespace

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the names of the system's headers are reserved
extern "C" {

int __libc_start_main(MainFunction* main, int count, char** arguments, void (*start)(), void (*end)(),
                      void (*linkerEnd)(), void* stackEnd) {
    using Function = int(MainFunction*, int, char**, void (*)(), void (*)(), void (*)(), void*);
    static auto* const next = Next<Function>("__libc_start_main");
    ProgramMain = main;
    return next(MainWithPlan, count, arguments, start, end, linkerEnd, stackEnd);
}

int open(const char* path, int flags, ...) {
    static auto* const next = Next<int(const char*, int, ...)>("open64");
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return !IsSystemFile(path) && Fails("open") ? -1 : Opened(path, next(path, flags, mode));
}

int open64(const char* path, int flags, ...) __attribute__((alias("open")));

int mkostemp(char* path, int flags) {
    static auto* const next = Next<int(char*, int)>("mkostemp64");
    return Fails("open") ? -1 : Opened(path, next(path, flags));
}

FILE* fopen(const char* path, const char* mode) {
    static auto* const next = Next<FILE*(const char*, const char*)>("fopen64");
    FILE* const file = !IsSystemFile(path) && Fails("open") ? nullptr : next(path, mode);
    Opened(path, file == nullptr ? -1 : fileno(file));
    return file;
}
FILE* fopen64(const char* path, const char* mode) __attribute__((alias("fopen")));

ssize_t read(int descriptor, void* data, size_t size) {
    static auto* const next = Next<ssize_t(int, void*, size_t)>("read");
    return Transfer("read", descriptor, size, [&](size_t part) { return next(descriptor, data, part); });
}

ssize_t write(int descriptor, const void* data, size_t size) {
    static auto* const next = Next<ssize_t(int, const void*, size_t)>("write");
    return Transfer("write", descriptor, size, [&](size_t part) { return next(descriptor, data, part); });
}

ssize_t writev(int descriptor, const struct iovec* pieces, int count) {
    static auto* const next = Next<ssize_t(int, const struct iovec*, int)>("writev");
    return Counts(descriptor) && Fails("write") && errno != 0 ? -1 : next(descriptor, pieces, count);
}

int fsync(int descriptor) {
    static auto* const next = Next<int(int)>("fsync");
    return Counts(descriptor) && Fails("fsync") ? -1 : next(descriptor);
}

int rename(const char* from, const char* to) {
    static auto* const next = Next<int(const char*, const char*)>("rename");
    return Fails("rename") ? -1 : next(from, to);
}

int close(int descriptor) {
    static auto* const next = Next<int(int)>("close");
    const bool fails = Counts(descriptor) && Fails("close");
    const int error = errno;
    const int result = next(descriptor);
    errno = fails ? error : errno;
    return fails ? -1 : result;
}

#ifndef QUILLARA_SANITIZE  // which brings its own memory
void* malloc(size_t size) {
    return Fails("malloc") ? nullptr : __libc_malloc(size);
}

void* calloc(size_t count, size_t size) {
    return Fails("malloc") ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* block, size_t size) {
    return Fails("malloc") ? nullptr : __libc_realloc(block, size);
}
#endif

}  // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
