#pragma once

#include <string_view>
#include <vector>

namespace quillara {

/// The buttons of the results named in a list, in its order ("summary,frequencies"). Throws UsageError for a name
/// that isn't known, listing those that are, and when none is given; DataError when a quote isn't closed.
[[nodiscard]] std::vector<int> ParseResultList(std::string_view list);

/// The results that are shown when none are named.
[[nodiscard]] std::vector<int> DefaultResults();

/// The button that is enabled when a result applies: its own or, for one that is hidden, that of a like result.
[[nodiscard]] int EnablingButton(int button);

/// What a result needs in order to apply, for people ("a review variable").
[[nodiscard]] std::string_view NeedOf(int button);

/// What gives a result that doesn't apply; a sentence.
[[nodiscard]] std::string_view AdviceFor(int button);

/// What a chart of a result is called in names of files ("review-pie"); empty for a result that makes tables.
[[nodiscard]] std::string_view ChartFileName(int button);

}  // namespace quillara
