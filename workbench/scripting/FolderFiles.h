#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/documents/OutputCollection.h"

namespace quillara {

/// A file as it goes to a folder.
struct FolderFile {
    std::string Name;  ///< without the folder: step1-histogram-02-age.svg
    std::string Bytes;
};

/// A text in lower-case letters, digits, single hyphens and the letters of other scripts, at most 40 bytes.
[[nodiscard]] std::string PlainFileName(std::string_view text);

/// How the names of files end that are of a group side by side: "-female", its categories; empty: of none.
[[nodiscard]] std::string GroupEnding(const OutputCollection& outputs, int step);

/// A number in at least two digits.
[[nodiscard]] std::string TwoDigits(int number);

/// Writes one file.
using FileWriter = std::function<void(const std::string& path, const std::string& bytes)>;

/// Writes files into a folder, which is made when it isn't there; other files of the folder stay. Throws DataError when
/// it can't be made, and what `write` throws.
void WriteFolder(const std::string& folder, const std::vector<FolderFile>& files, const FileWriter& write);

}  // namespace quillara
