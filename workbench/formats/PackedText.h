#pragma once

#include <string>
#include <string_view>

#include "workbench/formats/WorkMonitor.h"

namespace quillara {

/// Whether bytes begin as a text packed by gzip or zstd does.
[[nodiscard]] bool IsPacked(std::string_view bytes);

/// The text that was packed, piece by piece, all that stand one behind the other. Throws DataError, naming the file,
/// when the bytes are damaged or cut short, when what comes out is no delimited text (as TextOfFile.h has it; with an
/// encoding, null bytes pass) and when it takes more memory than it may, before the rest comes out; Interrupted.
[[nodiscard]] std::string UnpackedText(const std::string& path, std::string_view bytes, const std::string& encoding,
                                       WorkMonitor& monitor);

}  // namespace quillara
