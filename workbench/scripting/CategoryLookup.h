#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/ListControls.h"
#include "workbench/data/DataTable.h"
#include "workbench/data/Errors.h"
#include "workbench/documents/Remarks.h"

namespace quillara {

/// One row of the list from which the category of a drill step is chosen.
struct CategoryRow {
    std::string Name;
    std::optional<RowRange> Range;  ///< the values that a step on it keeps; nothing: the missing data
};

/// The category list of one variable as it is shown: categories with cases, then the missing data.
struct CategoryList {
    std::string Variable;
    ValueKind Kind = ValueKind::Number;  ///< what the variable's values stand for
    std::vector<CategoryRow> Rows;
    std::span<const std::string> Texts{};  ///< of a text variable: what its values 1, 2, ... are stored as
    bool HasLabels = false;  ///< rows are named by labels
};

/// A step that can't be taken as asked: no such variable, category, or step to undo.
class ImpossibleStep : public DataError {
  public:
    using DataError::DataError;
};

/// What a row is called for people: of dates and times its name with them in place of numbers.
[[nodiscard]] std::string NameForPeople(const CategoryList& list, const CategoryRow& row);

/// The row that a text names. Tried in this order: `Missing`, when the list has that row; `#K`, row K from 0; the first
/// row with exactly that name; the first without regard to case; the one that documents show under that name; of a date
/// variable a day YYYY-MM-DD, of date-times one (DateTimes.h) or such a day, of times of day a time HH:MM:SS or HH:MM,
/// and of both, as of numbers, a decimal number, that an interval admits or that is the value of a row; of texts with
/// labels the text itself, and of all texts a decimal number that an interval of their numbers admits. Throws
/// ImpossibleStep, listing what is shown, when there is none.
[[nodiscard]] std::size_t FindCategory(const CategoryList& list, std::string_view text);

/// What to tell when a text names several rows of a list, of which a step takes the first: nothing else can be meant by
/// a name, but rows can be told apart by `#K`.
[[nodiscard]] std::optional<Remark> RemarkOnEqualNames(const CategoryList& list, std::size_t taken,
                                                       std::string_view text);
/// A remark on a row that a text names: that its number has picked an interval. Nothing for other rows and texts.
[[nodiscard]] std::optional<Remark> RemarkOnChoice(const CategoryList& list, std::string_view text, std::size_t row);

}  // namespace quillara
