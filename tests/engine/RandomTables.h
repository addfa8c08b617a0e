#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "tests/engine/DrillBench.h"

namespace drilltest {

using Random = std::mt19937_64;

/// A number of 0 .. count - 1.
inline std::size_t Pick(Random& random, std::size_t count) {
    return random() % count;
}
inline bool Chance(Random& random, std::size_t oneIn) {
    return Pick(random, oneIn) == 0;
}

/// What the values of a random table look like.
enum class TableStyle : std::uint8_t {
    Anything,  ///< near-equal values, infinities, NaN, any missing code, case weights of every kind
    PlainNumbers,  ///< quarters only, so that sums are exact; a missing code outside of the data; positive weights
    ManyValues,  ///< about as many distinct values as a record keeps in the cases in which the first variable is valid;
                 ///< positive weights, or 0 in the others
};

/// A random table; its last variable is made to be the weight.
quillara::DataTable RandomTable(Random& random, TableStyle style, std::int32_t cases);
/// Lists in which each variable may stand in none, in one or in both.
VariableLists RandomLists(Random& random, std::size_t variables);
/// Gives a record a random method with random parameters and cuts it anew. Steps are no method where the values of the
/// variable lie far apart.
void CategorizeAnyhow(Random& random, Drill& record, const quillara::Column& values);

/// Compares two sequences of records to the last bit; names of categories on demand.
void ExpectSame(const std::vector<Drill>& left, const std::vector<Drill>& right, bool names, const std::string& where);
inline std::vector<Drill> Copied(const CDrillDown::DrillSet* set) {
    return {set->begin(), set->end()};
}

}  // namespace drilltest
