#include "workbench/formats/MemoryLimit.h"

#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <string>

#include "workbench/data/Errors.h"

namespace quillara {
namespace {

std::size_t MemoryOfMachine() {
    const long pages = sysconf(_SC_PHYS_PAGES);
    const long bytesPerPage = sysconf(_SC_PAGESIZE);
    return pages > 0 && bytesPerPage > 0 ? static_cast<std::size_t>(pages) * static_cast<std::size_t>(bytesPerPage)
                                         : MemoryLimit::Unlimited;
}

std::size_t MemoryOfContainer() {
    std::size_t bytes = 0;  // the file may also say "max"
    return std::ifstream("/sys/fs/cgroup/memory.max") >> bytes ? bytes : MemoryLimit::Unlimited;
}

std::size_t ThreeQuartersOfMemory() {
    static const std::size_t memory = std::min(MemoryOfMachine(), MemoryOfContainer());
    return memory == MemoryLimit::Unlimited ? MemoryLimit::Unlimited : memory / 4 * 3;
}

/// 0 where the system doesn't tell.
std::size_t MemoryInUse() {
    std::ifstream status("/proc/self/status");
    std::size_t kibibytes = 0;
    for (std::string word; status >> word;) {
        std::size_t count = 0;
        if ((word == "VmRSS:" || word == "VmSwap:") && status >> count) {
            kibibytes += count;
        }
    }
    return 1024 * kibibytes;
}

std::string InMebibytes(std::size_t bytes) {
    return std::to_string(bytes >> 20) + " MiB";
}

}  // namespace

MemoryLimit::MemoryLimit(std::optional<std::size_t> bytes) : Bytes(bytes.value_or(ThreeQuartersOfMemory())) {}

void MemoryLimit::Require(std::size_t more) const {
    if (Bytes == Unlimited) {
        return;
    }
    const std::size_t used = MemoryInUse();
    if (used > Bytes || more > Bytes - used) {
        throw DataError("Reading takes more memory than the program may have, " + InMebibytes(Bytes) +
                        "; --max-memory sets another limit.");
    }
}

}  // namespace quillara
