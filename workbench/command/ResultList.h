#pragma once

#include <string_view>
#include <vector>

namespace quillara {

/// The buttons of the results named in a list, in its order ("summary,frequencies"). Throws UsageError for a name
/// that isn't known, listing those that are, and when none is given; DataError when a quote isn't closed.
[[nodiscard]] std::vector<int> ParseResultList(std::string_view list);

/// The results that are shown when none are named.
[[nodiscard]] std::vector<int> DefaultResults();

}  // namespace quillara
