#include "workbench/command/ReportFacts.h"

#include <array>
#include <ctime>
#include <string_view>

namespace quillara {
namespace {

/// In single quotes where a shell would read anything into it.
std::string ForShell(const std::string& argument) {
    constexpr std::string_view plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_./:,=@%+";
    if (!argument.empty() && argument.find_first_not_of(plain) == std::string::npos) {
        return argument;
    }
    std::string quoted = "'";
    for (const char character : argument) {
        quoted += character == '\'' ? "'\\''" : std::string(1, character);
    }
    return quoted + '\'';
}

/// YYYY-MM-DD, as the clock of this place has it.
std::string Today() {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    std::array<char, 16> text{};
    const std::size_t length =
        localtime_r(&now, &parts) == nullptr ? 0 : std::strftime(text.data(), text.size(), "%Y-%m-%d", &parts);
    return {text.data(), length};
}

}  // namespace

std::string ShellCall(std::span<const std::string> arguments) {
    std::string call = "quillara";
    for (const std::string& argument : arguments) {
        call += ' ' + ForShell(argument);
    }
    return call;
}

std::string MadeToday() {
    return "Made on " + Today() + " with Quillara " QUILLARA_VERSION;
}

}  // namespace quillara
