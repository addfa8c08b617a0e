#pragma once

#include <string>
#include <string_view>

#include "workbench/formats/WorkMonitor.h"

namespace quillara {

/// How much of reading a table is done when its file is in memory as text.
inline constexpr double ShareOfText = 0.2;

/// Throws DataError, naming the file, when the beginning of its bytes can't be delimited text in UTF-8 or Windows-1252.
void CheckIsText(const std::string& path, std::string_view beginning);

/// The error of a text with a null byte and this beginning.
[[noreturn]] void RefuseNull(const std::string& path, std::string_view beginning);

/// The encoding that was asked for; for none that of the file where its mark tells UTF-16, else none.
[[nodiscard]] std::string EncodingOfFile(const std::string& path, const std::string& asked, WorkMonitor& monitor);

/// Whether a file is packed by gzip or zstd, told by its first bytes.
[[nodiscard]] bool IsPackedFile(const std::string& path, WorkMonitor& monitor);

/// The bytes of a file of delimited text, unpacked where gzip or zstd packed them. Throws DataError, naming the file,
/// when it can't be read or is no text.
[[nodiscard]] std::string BytesOfText(const std::string& path, const std::string& encoding, WorkMonitor& monitor);

/// The text of a file's bytes in UTF-8, as DecodeText says. Throws as above, and UsageError for an unknown encoding.
[[nodiscard]] std::string DecodedText(const std::string& path, std::string bytes, const std::string& encoding,
                                      WorkMonitor& monitor);

/// Both in turn. The monitor takes reading and decoding as the share of the work above.
[[nodiscard]] std::string TextOfFile(const std::string& path, const std::string& encoding, WorkMonitor& monitor);

}  // namespace quillara
