#pragma once

#include <string_view>

#include "workbench/windows/Control.h"

namespace quillara {

/// Whether a row of a list of variables answers a search: each word that is sought stands somewhere in its cells, in
/// letters of either case. Every row answers an empty search.
[[nodiscard]] bool AnswersSearch(const ReportRow& row, std::string_view sought);

}  // namespace quillara
