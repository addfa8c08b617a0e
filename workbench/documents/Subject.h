#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/ResultSubject.h"
#include "workbench/data/DataTable.h"

namespace quillara {

/// A variable that a document shows.
struct ShownVariable {
    int Number = 0;  ///< of the table, from 1
    std::string Name;
    std::string LongName;  ///< may be empty
    ValueKind Kind = ValueKind::Number;  ///< how its values are written
    /// Whole names for people, dates as YYYY-MM-DD, without missing data; empty: not known.
    std::vector<std::string> Categories;
    /// Of a date with a time: the bounds of the step that was taken on it, which its category has lost digits of.
    std::optional<CategoryBounds> Step{};
    bool HasMissing = false;  ///< behind the categories one more row, bar, slice or layer stands for missing data

    /// Rows, bars, slices or layers that show it; 0 when they aren't known.
    [[nodiscard]] std::size_t Parts() const { return Categories.size() + (HasMissing ? 1 : 0); }
};

/// How a document takes the weight that is in force.
enum class WeightUse {
    None,  ///< none is in force, or the document counts nothing
    Exact,  ///< as it is
    Rounded,  ///< to whole numbers, which makes a difference
    Unused,  ///< each case counts once
};

/// What a document is about; set once, where the result arrives.
struct Subject {
    ResultSide Side = ResultSide::Unknown;
    std::vector<ShownVariable> Variables;  ///< in the order of the rows, columns or places; empty: not known
    /// Of a table with a row for each variable: the columns that hold values of it, as its mean is one.
    std::vector<std::size_t> ValueColumns{};
    /// Names of the variables whose categories make the rows, of groups and cross tables; of a cross table those of the
    /// rows come first.
    std::vector<std::string> By{};
    std::string Aspect{};  ///< which of several tables of the same it is: "row percents"; empty: there is one
    bool IsEmptied = false;  ///< of a plot that the host computes: the steps drop every case that is selected
    WeightUse Weights = WeightUse::None;

    /// The one variable whose categories the document shows; null when it shows several or none that is known.
    [[nodiscard]] const ShownVariable* OnlyVariable() const {
        return Variables.size() == 1 ? Variables.data() : nullptr;
    }
    /// The variable that it shows, those by whose categories it does, and which table of them it is: "sex", "age by
    /// sex", "sex by city counts"; empty: it shows several.
    [[nodiscard]] std::string Name() const;
    /// What stands behind the title where it would mislead otherwise: " (weights rounded)", " (unweighted)" or nothing.
    [[nodiscard]] std::string_view WeightNote() const;
    /// A title on one line with that behind it, once.
    [[nodiscard]] std::string Noted(std::string title) const;
    /// A word for programs: "exact", "rounded", "unused"; empty: no weight matters.
    [[nodiscard]] std::string_view WeightWord() const;
    /// How the values of a variable are written, by its place among them.
    [[nodiscard]] ValueKind KindOf(std::size_t place) const {
        return place < Variables.size() ? Variables[place].Kind : ValueKind::Number;
    }
};

}  // namespace quillara
