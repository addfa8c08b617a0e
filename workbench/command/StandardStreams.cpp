#include "workbench/command/StandardStreams.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

#include "workbench/data/Errors.h"
#include "workbench/views/ShownText.h"

namespace quillara {

void WriteToStandardOutput(std::string_view text) {
    const bool isWritten = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    if (!isWritten || std::fflush(stdout) != 0) {
        throw DataError("Standard output can't be written: " + std::string(std::strerror(errno)) + ".");
    }
}

void WriteMessage(std::string_view text) {
    std::fprintf(stderr, "%s\n", ShownLine(text).c_str());
}

}  // namespace quillara
