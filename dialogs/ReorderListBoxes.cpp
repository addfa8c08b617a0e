#include "dialogs/ReorderListBoxes.h"

#include <string>

#include "engine/HostBuffer.h"
#include "engine/NewPlaces.h"
#include "engine/OutOfMemory.h"
#include "host/WindowServices.h"

using namespace drilldown;

namespace {

constexpr int ReorderMode = 0;
constexpr int ReorderFlags = 1;

constexpr ReorderedSet DrillDownRows{&CDrillDown::DrillDowns, &CDrillDown::ReorderDrillDowns};
constexpr ReorderedSet DrillUpRows{&CDrillDown::DrillUps, &CDrillDown::ReorderDrillUps};

/// A row of a list that was taken to stand before another one; `Before` may be the number of rows.
struct Drop {
    int From;
    int Before;

    [[nodiscard]] bool MovesUp() const { return Before < From; }
    /// Where the row stands afterwards.
    [[nodiscard]] int Row() const { return MovesUp() ? Before : Before - 1; }
    /// The row that gives the list its old order back.
    [[nodiscard]] Drop Reversed() const { return {Row(), MovesUp() ? From + 1 : From}; }
    /// Rows that the request places: those that stand before the end of what moves.
    [[nodiscard]] int Placed() const { return MovesUp() ? Before + 1 : Before; }
    /// The new place of a row, or NotPlaced for one that stays behind what moves.
    [[nodiscard]] std::int32_t PlaceOf(int row) const {
        if (row == From) {
            return Row();
        }
        if (row >= Before) {
            return NotPlaced;
        }
        return row < From ? row : row - 1;
    }
};

void MoveText(HWND listBox, const Drop& drop) {
    InsertListText(listBox, drop.Before, GetListText(listBox, drop.From));
    DeleteListRow(listBox, drop.MovesUp() ? drop.From + 1 : drop.From);
}

}  // namespace

DrillSetListBox::DrillSetListBox(CDrillDown& analysis, const ReorderedSet& reordered)
    : CReorderListBox(ReorderMode, ReorderFlags), Analysis(analysis), Reordered(reordered) {}

void DrillSetListBox::AttachTo(HWND listBox) {
    ListHandle = listBox;
    Attach(listBox);
}

void DrillSetListBox::EndOfWindow() {
    delete this;
}

void DrillSetListBox::MoveSelectionTo(int target) {
    const auto rows = static_cast<int>((Analysis.*Reordered.Set)->size());
    const Drop drop{GetListSelection(ListHandle), target};
    if (drop.From < 0 || drop.From >= rows || target < 0 || target > rows || drop.From == target) {
        return;
    }
    MoveText(ListHandle, drop);
    const HostBuffer<std::int32_t> request(Analysis, static_cast<std::size_t>(rows));
    if (!request) {
        MoveText(ListHandle, drop.Reversed());
        SetListSelection(ListHandle, drop.From);
        ReportNotEnoughMemory(Analysis);
        return;
    }
    for (int row = 0; row < rows; ++row) {
        request[static_cast<std::size_t>(row)] = drop.PlaceOf(row);
    }
    (Analysis.*Reordered.Reorder)(request.data(), rows, drop.Placed());
    SetListSelection(ListHandle, drop.Row());
}

CDrillReorderListBox::CDrillReorderListBox(CDrillDown& analysis) : DrillSetListBox(analysis, DrillDownRows) {}

CDrillUpReorderListBox::CDrillUpReorderListBox(CDrillDown& analysis) : DrillSetListBox(analysis, DrillUpRows) {}
