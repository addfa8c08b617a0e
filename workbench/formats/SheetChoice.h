#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "workbench/formats/ReadOptions.h"

namespace quillara {

/// A sheet of a workbook.
struct SheetEntry {
    std::string Name{};
    bool IsHidden = false;
    std::string Place{};  ///< its part of the file
};

/// The place of the sheet that the options choose; tells when there was a choice and nobody made it. Throws DataError,
/// naming the file and its sheets, when there is none.
[[nodiscard]] std::size_t ChosenSheet(const std::vector<SheetEntry>& sheets, const std::string& path,
                                      const ReadOptions& options);

}  // namespace quillara
