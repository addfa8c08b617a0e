#pragma once

#include <cstdint>
#include <string>

#include "engine/DrillDown.h"
#include "platform/OrderedBits.h"
#include "resources/StringTable.h"

namespace drilldown {

/// The bars or slices that show a variable: one a category in set order, empty ones too, then one for missing data, if
/// that is counted and there is any. Refers to the categories.
class VariableBars {
  public:
    VariableBars(CDrillDown& analysis, const CDrillDown::CategorySetType& categories, double missingWeight)
        : Analysis(analysis), Categories(categories), MissingWeight(missingWeight) {}

    // Intended: missing data of review variables is counted by the same option as that of drill variables, unlike their
    // casewise deletion, which has its own; the dialog shows the option with the drill variables alone.
    [[nodiscard]] bool HasMissingBar() const { return Analysis.GetCountMD() == 1 && IsNonZero(MissingWeight); }
    [[nodiscard]] std::int32_t Count() const {
        return static_cast<std::int32_t>(Categories.size() + (HasMissingBar() ? 1 : 0));
    }

    /// Calls `visit(index, name, height)` for each bar in turn; index counts from 0.
    template <typename Visitor>
    void Visit(Visitor visit) const {
        std::int32_t index = 0;
        for (const ::Categories& category : Categories) {
            visit(index++, category.Name, category.Count);
        }
        if (HasMissingBar()) {
            visit(index, std::string(Analysis.GetResourceString(MissingText)), MissingWeight);
        }
    }

  private:
    CDrillDown& Analysis;
    const CDrillDown::CategorySetType& Categories;
    double MissingWeight;
};

}  // namespace drilldown
