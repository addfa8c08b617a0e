#pragma once

#include <optional>
#include <string>
#include <vector>

namespace quillara {

/// How a data file is to be read. All but Encoding count for delimited text only.
struct ReadOptions {
    std::optional<char> Separator{};  ///< nothing: found from the text
    char Decimal = '.';
    std::string Encoding{};  ///< empty: what the file says; delimited text: UTF-8, else Windows-1252
    bool HasHeader = true;
    std::optional<std::vector<std::string>> MissingTexts{};  ///< in place of NA, N/A, NaN, ...
};

}  // namespace quillara
