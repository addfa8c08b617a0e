#include <algorithm>
#include <string>
#include <vector>

#include "engine/DrillDown.h"
#include "engine/HostBuffer.h"
#include "engine/NewPlaces.h"
#include "host/WindowServices.h"
#include "resources/ControlIds.h"

using namespace drilldown;

namespace {

/// Texts of the rows of a list, closed by null; they aren't copied.
using RowTexts = HostBuffer<const char*>;

/// A list with the button that acts on its selection.
struct ListWithButton {
    int List;
    int Button;
};

constexpr ListWithButton DrillDownList{DrillDownListControl, BrushButton};
constexpr ListWithButton PresentOrder{CurrentOrderList, PlaceButton};
constexpr ListWithButton NewOrder{NewOrderList, TakeBackButton};

void ShowList(HWND dialog, int list, const RowTexts& rows, bool enabled) {
    EnableWindow(GetDlgItem(dialog, list), enabled);
    InitStaticListBox(GetDlgItem(dialog, list), rows.data());
}

void ShowList(HWND dialog, const ListWithButton& control, const RowTexts& rows, bool enabled) {
    EnableWindow(GetDlgItem(dialog, control.Button), enabled);
    ShowList(dialog, control.List, rows, enabled);
}

/// What a step is called in the list: the variable, and the category kept.
/// Intended: "Missing" is a literal here, unlike in the caption and the summary, which take it from the string table;
/// scripts that look rows up by their text depend on it.
std::string StepText(const Drill& step) {
    const auto categories = static_cast<std::int32_t>(step.CategorySet.size());
    if (step.ChosenCategory == categories) {
        return step.Name + " (Missing)";
    }
    if (step.ChosenCategory < 0 || step.ChosenCategory > categories) {
        return step.Name;
    }
    return step.Name + " (" + std::next(step.CategorySet.begin(), step.ChosenCategory)->Name + ")";
}

std::vector<std::string> StepTexts(const CDrillDown::DrillSet& steps) {
    std::vector<std::string> texts(steps.size());
    std::transform(steps.begin(), steps.end(), texts.begin(), StepText);
    return texts;
}

}  // namespace

int CDrillDown::RefreshListBoxes(HWND dialog) {
    const RowTexts open(*this, DrillDowns->size() + 1);
    const RowTexts steps(*this, DrillUps->size() + 1);
    if (!open || !steps) {
        return 0;
    }
    // Before the first list is filled, so that no failure leaves the two lists of different steps.
    const std::vector<std::string> texts = StepTexts(*DrillUps);
    std::transform(DrillDowns->begin(), DrillDowns->end(), open.data(),
                   [](const Drill& record) { return record.Name.c_str(); });
    ShowList(dialog, DrillDownList, open, !DrillDowns->empty());
    std::transform(texts.begin(), texts.end(), steps.data(), [](const std::string& text) { return text.c_str(); });
    ShowList(dialog, DrillUpListControl, steps, !DrillUps->empty());
    return 1;
}

int CDrillDown::LeftAndRight(HWND dialog, const std::int32_t* request, int entries) {
    const auto left = std::count(request, request + entries, NotPlaced);
    const auto right = entries - left;
    const RowTexts open(*this, static_cast<std::size_t>(left) + 1);
    const RowTexts placed(*this, static_cast<std::size_t>(right) + 1);
    if (!open || !placed) {
        return 0;
    }
    const char** nextOpen = open.data();
    const std::int32_t* end = request + entries;
    for (auto record = DrillDowns->begin(); record != DrillDowns->end() && request != end; ++record, ++request) {
        if (*request == NotPlaced) {
            *nextOpen++ = record->Name.c_str();
        } else if (*request >= 0 && *request < right) {
            placed[static_cast<std::size_t>(*request)] = record->Name.c_str();
        }
    }
    ShowList(dialog, PresentOrder, open, left > 0);
    ShowList(dialog, NewOrder, placed, right > 0);
    return 1;
}
