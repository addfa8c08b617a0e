#include "engine/Drill.h"

#include <iterator>
#include <utility>

using namespace drilldown;

Drill::Drill(std::int16_t varNo, std::int16_t varType, std::int16_t order, std::string name)
    : VarNo(varNo),
      VarType(varType),
      Name(std::move(name)),
      Method(varType > CategoricalVariable ? NeatIntervals : DistinctValues),
      Order(order) {}

bool Drill::TakesDistinctValues() const {
    return FactsOf(Method).Values != ValuesTaken::None;
}

std::int32_t Drill::IntervalCount() const {
    const auto count = FactsOf(Method).Count;
    return count != nullptr ? this->*count : NeatCount;
}

std::set<Categories>::const_iterator Drill::FindDistinctValue(double value) const {
    Categories key;
    key.Upper = value;
    // More than one category is looked at only beside infinities, which are equal to nothing.
    auto it = CategorySet.lower_bound(key);
    while (it != CategorySet.end() && !NearlyEqual(it->Upper, value)) {
        it = ClearlyBelow(value, it->Upper) ? CategorySet.end() : std::next(it);
    }
    return it;
}

int Drill::AddDistinctValue(double value, std::int16_t kind, double weight, const std::string& name) {
    // Intended: the limit is tested before the value is looked up, unlike a plain insert; a full set is given up
    // whatever value arrives, and which variables turn to neat intervals depends on it.
    if (CategorySet.size() >= DistinctValueLimit) {
        CategorySet.clear();
        Method = NeatIntervals;
        return SetEmptied;
    }
    if (const auto category = FindDistinctValue(value); category != CategorySet.end()) {
        Editable(*category).Count += weight;
        return ValueCounted;
    }
    CategorySet.insert({kind, weight, value, name, value});
    return ValueInserted;
}

int Drill::AddToInterval(double value, double weight) {
    const bool closedBelow = FactsOf(Method).Rule == KeepRule::ClosedOpen;
    for (const Categories& category : CategorySet) {
        // Intended: no test of Lower, unlike the drill filter; what lies below the first interval counts in it.
        if (closedBelow ? category.Upper > value : category.Upper >= value) {
            Editable(category).Count += weight;
            break;
        }
    }
    return 1;
}
