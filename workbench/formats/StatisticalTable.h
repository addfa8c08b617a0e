#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/data/MissingReasons.h"
#include "workbench/data/Remark.h"
#include "workbench/data/TextColumnBuilder.h"
#include "workbench/formats/WorkMonitor.h"

namespace quillara {

/// The value labels that a statistical file keeps under one name.
struct LabelSet {
    std::map<double, std::string> OfNumbers;
    std::map<std::string, std::string> OfTexts;
    std::map<char, std::string> OfMarks;  ///< of missing data that have a mark (MarkedMissing)
};

/// One variable as a statistical file gives it.
struct StatisticalColumn {
    std::string Name;
    std::string Label;
    std::string Format;
    std::string LabelSetName;
    bool IsText = false;
    std::vector<std::pair<double, double>> MissingNumbers;  ///< ranges, both ends included
    std::vector<std::pair<std::string, std::string>> MissingTexts;  ///< as above, in byte order
    std::vector<double> Numbers;  ///< IsText false: one per case; NaN: missing
    TextColumnBuilder Texts;  ///< IsText true: one per case, missing data among them
    std::map<std::string, std::size_t> ReasonCodes;  ///< of texts within missing ranges, from 1 as they come
    ReasonPlaces ReasonRows;  ///< their codes, one per case, when there are such ranges
};

/// Whether a value lies in one of some ranges, both ends included.
template <typename Value>
bool IsWithinAny(const std::vector<std::pair<Value, Value>>& ranges, const Value& value) {
    return std::ranges::any_of(ranges,
                               [&](const auto& range) { return range.first <= value && value <= range.second; });
}

/// Puts the text of the next case to the others, as missing data where it is empty or within a missing range.
void AppendText(StatisticalColumn& column, const std::string& text);

/// The content of a statistical file, as it is gathered from the file's reader.
struct StatisticalContent {
    std::string FileLabel;
    std::vector<StatisticalColumn> Columns;
    std::map<std::string, LabelSet, std::less<>> LabelSets;
    std::optional<std::int64_t> DeclaredCases;
    std::int64_t Cases = 0;
    std::optional<std::size_t> Weight;  ///< index of the declared weight
    std::vector<std::string> Notes;  ///< line by line
};

/// The table that a statistical file with this extension holds: user-missing values, dates, times, texts and labels are
/// made ours as ReadStatisticalFile says, and what the notes tell is put in its place; `notice` is told what is lost.
/// Throws DataError when it is too large, Interrupted when the monitor's work was cancelled.
[[nodiscard]] DataTable TableOf(StatisticalContent content, std::string_view extension, WorkMonitor& monitor,
                                const std::function<void(const Remark&)>& notice);

}  // namespace quillara
