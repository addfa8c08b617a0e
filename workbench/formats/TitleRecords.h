#pragma once

#include <cstddef>

#include "workbench/formats/TextLayout.h"
#include "workbench/formats/TextSource.h"

namespace quillara {

/// Passes over `count` records above the names, empty ones too, and over records behind them whose fields are all
/// empty: `layout` begins behind them. Throws UnexpectedBytes. A quote that is opened there and never closed is its
/// first fault.
void PassOverTitles(const TextSource& source, std::size_t count, TextLayout& layout);

/// How many records there seem to be above the names, with those that are passed over already; 0 where the first
/// record that is left may well hold the names. Told by the first records of the text: most have as many fields as the
/// names have, and the names are no values and have no gap but perhaps in front.
[[nodiscard]] std::size_t RecordsAboveNames(const TextSource& source, const TextLayout& layout);

}  // namespace quillara
