#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "tests/engine/DrillBench.h"
#include "tests/engine/ReferencePasses.h"

namespace drilltest {

using Random = std::mt19937_64;

/// A number of 0 .. count - 1.
std::size_t Pick(Random& random, std::size_t count);
inline bool Chance(Random& random, std::size_t oneIn) {
    return Pick(random, oneIn) == 0;
}

/// What the values of a random table look like.
enum class TableStyle : std::uint8_t {
    Anything,  ///< near-equal values, infinities, NaN, any missing code, case weights of every kind
    PlainNumbers,  ///< quarters only, so that sums are exact; a missing code outside of the data; positive weights
    ManyValues,  ///< more distinct values than a record keeps; positive weights
};

/// A random table; its last variable is made to be the weight.
quillara::DataTable RandomTable(Random& random, TableStyle style, std::int32_t cases);

/// One thing that a user does. Places are taken modulo what there is, so any operation fits any state.
struct Operation {
    enum Verb : std::uint8_t {
        Choose,
        Review,
        Settings,
        Categorize,
        Select,
        Weigh,
        Down,
        Up,
        ReadAfterDrill,
        ReadBeforeDrill,
        FillNeatIntervals,
        FillContinuousIntervals,
        SetContinuousIntervals,
        SetNeatIntervals,
        MarkStale,
        Verbs,
    };

    Verb What = ReadAfterDrill;
    quillara::VariableLists Lists;  ///< Choose, Review
    std::array<std::int16_t, 4> Flags{};  ///< Settings: weighted moments, two casewise options, DataChanged
    std::size_t Place = 0;  ///< Categorize, Down, Up: which record
    std::size_t Row = 0;  ///< Down: which row of its list
    bool InReviews = false;  ///< Categorize
    Drill Method{0, 0, 0, ""};  ///< Categorize: carries the method and its parameters
    std::vector<CaseResult> Selection;  ///< Select
    std::optional<std::size_t> Weight;  ///< Weigh
};

Operation RandomOperation(Random& random, const quillara::DataTable& table, Operation::Verb verb);
std::string Text(const Operation& operation);

/// Gives a record the method and the parameters of another.
void Categorize(Drill& record, const Drill& method);

/// The first field in which two records differ, with both values; empty when they are the same to the last bit. All
/// NaN count as the same. Names of categories are compared on demand.
std::string Difference(const Drill& left, const Drill& right, bool names);

/// The same operations on the module on every road and on the reference.
class Exploration {
  public:
    explicit Exploration(const quillara::DataTable& table);
    void Apply(const Operation& operation);
    /// Cancels at the n-th poll from now on; 0: never.
    void CancelAt(int poll);
    [[nodiscard]] int Polls() const { return Plain.Polls; }
    /// What differs between the roads or from the reference; empty when nothing does.
    [[nodiscard]] std::string Differences() const;

  private:
    DrillBench Cases{Road::CaseByCase};
    DrillBench Columns{Road::Columns};
    ReferencePasses Plain;
};

}  // namespace drilltest
