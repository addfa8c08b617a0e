// Preloaded into a program, makes one of its calls fail. QUILLARA_FAIL says which: CALL:NUMBER:HOW, such as
// write:3:ENOSPC (the third), malloc:500:ENOMEM+ (the 500th and all after it), read:1:SHORT (half of what is asked).
// Calls on files of the system aren't counted. When it has happened, the file that QUILLARA_FAIL_MARK names is there;
// it holds "library" once memory has failed within a call of the library that reads statistical files.

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
    long Number = 0;
    int Error = 0;  ///< 0: half of what is asked is done
    bool Lasts = false;
};

struct NamedError {
    std::string_view Name;
    int Error;
};
constexpr std::array<NamedError, 6> Errors = {{
    {"SHORT", 0},
    {"EINTR", EINTR},
    {"EIO", EIO},
    {"ENOSPC", ENOSPC},
    {"EMFILE", EMFILE},
    {"ENOMEM", ENOMEM},
}};

Plan ReadPlan() {
    Plan plan;
    const char* const text = getenv("QUILLARA_FAIL");
    char how[16] = {};
    if (text != nullptr && sscanf(text, "%15[^:]:%ld:%15s", plan.Call, &plan.Number, how) == 3) {
        std::string_view name = how;
        plan.Lasts = name.ends_with('+');
        name.remove_suffix(plan.Lasts ? 1 : 0);
        for (const auto& [known, error] : Errors) {
            plan.Error = known == name ? error : plan.Error;
        }
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
    if (number < plan->Number || (number > plan->Number && !plan->Lasts)) {
        return false;
    }
    Mark(plan->Call == std::string_view("malloc") && IsCalledByLibrary());
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

int Open(const char* path, int flags, mode_t mode) {
    static auto* const next = Next<int(const char*, int, ...)>("open64");
    return !IsSystemFile(path) && Fails("open") ? -1 : Opened(path, next(path, flags, mode));
}

FILE* OpenStream(const char* path, const char* mode) {
    static auto* const next = Next<FILE*(const char*, const char*)>("fopen64");
    if (!IsSystemFile(path) && Fails("open")) {
        return nullptr;
    }
    FILE* const file = next(path, mode);
    if (file != nullptr) {
        Opened(path, fileno(file));
    }
    return file;
}

mode_t ModeOf(int flags, va_list arguments) {
    return (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
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
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return Open(path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return Open(path, flags, mode);
}

int mkostemp(char* path, int flags) {
    static auto* const next = Next<int(char*, int)>("mkostemp64");
    return Fails("open") ? -1 : Opened(path, next(path, flags));
}

FILE* fopen(const char* path, const char* mode) {
    return OpenStream(path, mode);
}

FILE* fopen64(const char* path, const char* mode) {
    return OpenStream(path, mode);
}

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
