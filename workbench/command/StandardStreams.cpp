#include "workbench/command/StandardStreams.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>

#include <sys/ioctl.h>
#include <unistd.h>

#include "workbench/data/Errors.h"
#include "workbench/numbers/DecimalNumber.h"
#include "workbench/views/ShownText.h"

namespace quillara {

void WriteToStandardOutput(std::string_view text) {
    const bool isWritten = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    if (!isWritten || std::fflush(stdout) != 0) {
        throw DataError("Standard output can't be written: " + std::string(std::strerror(errno)) + ".");
    }
}

bool IsTerminal() {
    return isatty(STDOUT_FILENO) == 1;
}

std::size_t TerminalWidth() {
    winsize size{};
    if (IsTerminal() && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0) {
        return size.ws_col;
    }
    const char* columns = std::getenv("COLUMNS");
    const std::optional<int> count = columns == nullptr ? std::nullopt : WholeNumber(columns);
    return static_cast<std::size_t>(std::max(count.value_or(0), 0));
}

void WriteMessage(std::string_view text) {
    std::fprintf(stderr, "%s\n", ShownLine(text).c_str());
}

}  // namespace quillara
