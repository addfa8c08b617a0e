#include <algorithm>
#include <cassert>
#include <limits>

#include "engine/DrillDown.h"

namespace {

/// Numbers the records of a set by their place, counted from `first`.
void Renumber(CDrillDown::DrillSet& set, std::int16_t first) {
    for (const Drill& record : set) {
        Editable(record).Order = first++;
    }
}

/// The same from the last record to the first, so that no record passes another on the way up.
void MakeRoomAtHead(CDrillDown::DrillSet& set) {
    auto order = static_cast<std::int16_t>(set.size());
    for (auto it = set.rbegin(); it != set.rend(); ++it) {
        Editable(*it).Order = order--;
    }
}

/// Moves a record to the head of another set. The record itself moves, so that nothing fails on the way.
void PutAtHead(CDrillDown::DrillSet& from, CDrillDown::DrillSet::const_iterator record, CDrillDown::DrillSet& to,
               std::int32_t chosenCategory) noexcept {
    auto moved = from.extract(record);
    moved.value().Order = 0;
    moved.value().ChosenCategory = chosenCategory;
    MakeRoomAtHead(to);
    to.insert(std::move(moved));
    Renumber(from, 0);
}

std::int16_t FirstVariable(const CDrillDown::DrillSet& set) {
    return set.empty() ? std::int16_t{-1} : set.begin()->VarNo;
}

/// Turns a row of the list of non-empty categories into an index over all categories. The row behind the list, which
/// is Missing, gives the size of the set.
std::int32_t CategoryOfRow(const std::set<Categories>& categories, std::int32_t row) {
    std::int32_t listed = 0;
    std::int32_t empty = 0;
    for (const Categories& category : categories) {
        if (!IsNonZero(category.Count)) {
            ++empty;
        } else if (listed == row) {
            break;
        } else {
            ++listed;
        }
    }
    // A script can select any row; the sum stays a number that no category has.
    constexpr std::int64_t largest = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::min(std::int64_t{row} + empty, largest));
}

}  // namespace

int CDrillDown::MoveToDrillUps() {
    const auto moved = LookFor(GetCurrentDrillDown(), DrillDowns);
    assert(moved != DrillDowns->end());
    if (moved == DrillDowns->end()) {
        return 1;
    }
    PutAtHead(*DrillDowns, moved, *DrillUps, CategoryOfRow(moved->CategorySet, Selected));
    CurrentDown = FirstVariable(*DrillDowns);
    return 1;
}

int CDrillDown::MoveBackToDrillDowns() {
    const auto moved = LookFor(GetCurrentDrillUp(), DrillUps);
    assert(moved != DrillUps->end());
    if (moved == DrillUps->end()) {
        return 1;
    }
    PutAtHead(*DrillUps, moved, *DrillDowns, -1);
    // Intended: CurrentDown stays, unlike CurrentUp and unlike in the other move; the dialog's list sets it anew.
    CurrentUp = FirstVariable(*DrillUps);
    return 1;
}
