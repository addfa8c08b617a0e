#pragma once

#include <string>
#include <string_view>

#include "workbench/formats/WorkMonitor.h"

namespace quillara {

/// The byte that keys of long texts begin with; no text of a file keeps it.
inline constexpr char KeyMark = '\x01';

/// The bytes of a byte-order mark of UTF-8 that a text begins with; 0: it begins with none.
[[nodiscard]] std::size_t BytesOfMark(std::string_view text);
inline constexpr std::size_t LongestMark = 3;

/// Whether a text is well-formed UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF.
[[nodiscard]] bool IsUtf8(std::string_view text);

/// The text as it stands when it is UTF-8, else read as Windows-1252; its five unused bytes become the control
/// characters of the same number.
[[nodiscard]] std::string ToUtf8(std::string text);

/// The text of Windows-1252 bytes, as ToUtf8 reads them.
[[nodiscard]] std::string TextOfWindows1252(std::string_view bytes);

/// The text of a file's bytes in UTF-8, without a byte-order mark. An empty encoding means: as ToUtf8. Otherwise any
/// name that the system knows ("latin1", "cp1252", "utf-16"), in any case of letters.
/// Throws UsageError when the encoding isn't known, DataError when the bytes are no text of that encoding, Interrupted
/// when the monitor's work was cancelled.
/// Surprise: bytes that are UTF-8 and begin with its byte-order mark are read as such whatever encoding is given.
[[nodiscard]] std::string DecodeText(std::string bytes, const std::string& encoding, WorkMonitor& monitor);

/// The text with U+FFFD in place of every KeyMark: a text that held one would be taken for one that a cut has broken.
[[nodiscard]] std::string WithoutKeyMarks(std::string_view text);

/// The given encoding's name as the character conversion of the system knows it. Throws UsageError for none.
[[nodiscard]] std::string SystemEncodingName(const std::string& encoding);

}  // namespace quillara
