#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

// Optional service of a host: an analysis says what its next result is about, so that the host needn't guess it from
// titles and labels. An analysis that says nothing is served alike, but for names that only it knows.

/// The list of variables that a result is about.
enum class ResultSide : std::uint8_t { Unknown, Drill, Review };

/// The bounds of an interval; of a single value the upper one is it.
struct CategoryBounds {
    double Lower = 0.0;
    double Upper = 0.0;
};

/// A variable of a result and what stands for it there.
struct SubjectVariable {
    std::int16_t Number = 0;  ///< of the variable, from 1
    /// The whole names of its rows, bars, slices or layers, in the order of its categories, without missing data.
    std::vector<std::string> Categories;
    bool HasMissing = false;  ///< behind the categories one more row, bar, slice or layer stands for missing data
    std::vector<CategoryBounds> Bounds{};  ///< of the categories, in their order; empty: not known
};

/// What a table or a chart shows: the variables in the order of its rows, columns or places.
struct ResultSubject {
    ResultSide Side = ResultSide::Unknown;
    std::vector<SubjectVariable> Variables;
    /// Of a table with a row for each variable: the columns, from 0, that hold values of it, as its mean is one.
    /// Outlives the call.
    std::span<const std::size_t> ValueColumns{};
};
