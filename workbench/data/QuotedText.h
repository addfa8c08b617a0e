#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillara {

/// At most the first 200 characters of a text, with "..." for the others.
[[nodiscard]] std::string Shortened(std::string_view text);

/// A name, a path or another text of the user's, as it stands in a message: shortened.
[[nodiscard]] std::string Quoted(std::string_view text);

/// Several of them with commas between; of many the first 10, and how many more there are.
[[nodiscard]] std::string QuotedList(const std::vector<std::string>& texts);

}  // namespace quillara
