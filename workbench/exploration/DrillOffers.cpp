#include "workbench/exploration/DrillOffers.h"

#include <algorithm>

#include "resources/ControlIds.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/exploration/Exploration.h"
#include "workbench/exploration/PlaceMeaning.h"
#include "workbench/scripting/CategoryLookup.h"
#include "workbench/windows/Control.h"

namespace quillara {
namespace {

/// Picking bars is left for what is taken.
bool IsBarred(const Exploration& exploration) {
    return exploration.IsBusy() && !exploration.IsPicking();
}

OfferBar BarOf(Exploration& exploration, const PlacedVariable& variable) {
    if (IsBarred(exploration)) {
        return OfferBar::Busy;
    }
    if (exploration.CanGoUp(variable.Name)) {
        return OfferBar::HasStep;
    }
    if (!exploration.CanGoDown(variable.Name)) {
        return OfferBar::NoDrillVariable;
    }
    return variable.Category && variable.Category->IsEmpty ? OfferBar::NoCases : OfferBar::None;
}

DrillOffer DownOn(Exploration& exploration, const PlacedVariable& variable) {
    DrillOffer offer{OfferKind::DownByList, variable.Name};
    offer.BarredBy = BarOf(exploration, variable);
    if (variable.Category) {
        offer.Kind = OfferKind::Down;
        offer.Category = variable.Category->Name;
        offer.IsMissing = variable.Category->IsMissing;
        offer.Before = variable.Category->Before;
    }
    return offer;
}

DrillOffer UpOn(const Exploration& exploration, const std::string& variable) {
    DrillOffer offer{OfferKind::Up, variable};
    offer.BarredBy = IsBarred(exploration) ? OfferBar::Busy : OfferBar::None;
    return offer;
}

bool IsAbout(const std::vector<PlacedVariable>& meaning, const std::string& variable) {
    return std::ranges::find(meaning, variable, &PlacedVariable::Name) != meaning.end();
}

/// Behind the offers of a place: the steps in force that can be undone.
void AddStepsUp(Exploration& exploration, const std::vector<PlacedVariable>& meaning, std::vector<DrillOffer>& offers) {
    std::vector<StepTaken> steps = exploration.Steps();
    std::ranges::reverse(steps);
    std::stable_partition(steps.begin(), steps.end(),
                          [&](const StepTaken& step) { return IsAbout(meaning, step.Variable); });
    for (const StepTaken& step : steps) {
        offers.push_back(UpOn(exploration, step.Variable));
    }
}

/// Whether a row of the list of categories is the one that was shown.
bool IsRowOf(const DrillOffer& offer, const CategoryList& list, const CategoryRow& row) {
    if (offer.IsMissing || !row.Range) {
        return offer.IsMissing && !row.Range;
    }
    return NameForPeople(list, row) == offer.Category || row.Name == offer.Category;
}

/// Of several rows of a name the one that stands at the same place among them.
std::size_t RowFor(const DrillOffer& offer, const CategoryList& list) {
    std::vector<std::size_t> rows;
    for (std::size_t row = 0; row < list.Rows.size(); ++row) {
        if (IsRowOf(offer, list, list.Rows[row])) {
            rows.push_back(row);
        }
    }
    return rows.empty() ? FindCategory(list, offer.Category) : rows[std::min(offer.Before, rows.size() - 1)];
}

void OpenList(Exploration& exploration, const std::string& variable) {
    const std::vector<std::string>& rows = exploration.At(DrillDownListControl).Rows;
    const auto row = std::ranges::find(rows, variable);
    if (row != rows.end()) {
        exploration.ClickRow(DrillDownListControl, static_cast<int>(row - rows.begin()));
        exploration.Press(DownButton);
    }
}

}  // namespace

std::vector<DrillOffer> OffersAt(Exploration& exploration, const ResultDocument& document, const DocumentPlace& place) {
    std::vector<DrillOffer> offers;
    if (exploration.HasEnded()) {
        return offers;
    }
    const std::vector<PlacedVariable> meaning = MeaningOf(document, place);
    for (const PlacedVariable& variable : meaning) {
        offers.push_back(DownOn(exploration, variable));
    }
    AddStepsUp(exploration, meaning, offers);
    return offers;
}

std::vector<DrillOffer> OffersAtRow(Exploration& exploration, int list, int row) {
    std::vector<DrillOffer> offers;
    const std::string variable = exploration.HasEnded() ? std::string() : exploration.VariableAt(list, row);
    if (variable.empty()) {
        return offers;
    }
    const std::vector<PlacedVariable> meaning{{variable, {}}};
    if (list == DrillDownListControl) {
        offers.push_back(DownOn(exploration, meaning.front()));
    }
    AddStepsUp(exploration, meaning, offers);
    return offers;
}

void TakeOffer(Exploration& exploration, const DrillOffer& offer) {
    switch (offer.Kind) {
        case OfferKind::Down:
            return exploration.Down(offer.Variable, [&](const CategoryList& list) { return RowFor(offer, list); });
        case OfferKind::DownByList:
            return OpenList(exploration, offer.Variable);
        case OfferKind::Up:
            return exploration.Up(offer.Variable);
    }
}

}  // namespace quillara
