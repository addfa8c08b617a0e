#include "workbench/command/StandardStreams.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "workbench/data/Errors.h"

namespace quillara {

void WriteToStandardOutput(std::string_view text) {
    const bool isWritten = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    if (!isWritten || std::fflush(stdout) != 0) {
        throw DataError("Standard output can't be written: " + std::string(std::strerror(errno)) + ".");
    }
}

void WriteMessage(std::string_view text) {
    std::fprintf(stderr, "%s\n", OnOneLine(text).c_str());
}

std::string OnOneLine(std::string_view text) {
    std::string line;
    for (const char character : text) {
        const auto code = static_cast<unsigned char>(character);
        const bool isControl = code < 0x20 || code == 0x7F;
        if (!isControl) {
            line += character;
        } else if (!line.empty() && line.back() != ' ') {
            line += ' ';
        }
    }
    return line;
}

}  // namespace quillara
