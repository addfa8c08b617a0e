#pragma once

#include <string>
#include <string_view>

namespace quillara {

/// A text as it stands in the XML of a workbook: characters that XML has no room for as _xHHHH_.
void AppendXmlText(std::string& xml, std::string_view text);

/// The text of a cell of a workbook, its _xHHHH_ as the characters that they stand for.
[[nodiscard]] std::string WithoutEscapes(std::string text);

}  // namespace quillara
