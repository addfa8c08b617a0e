#include "workbench/exploration/ScriptFaults.h"

#include <charconv>
#include <string>

namespace quillara {

std::optional<int> LineOfFault(std::string_view output, std::string_view script) {
    const std::string place = "  File \"" + std::string(script) + "\", line ";
    const std::size_t found = output.rfind(place);
    if (found == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view number = output.substr(found + place.size());
    int line = 0;
    const auto read = std::from_chars(number.data(), number.data() + number.size(), line);
    return read.ec == std::errc() ? std::optional(line) : std::nullopt;
}

}  // namespace quillara
