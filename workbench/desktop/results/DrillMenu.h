#pragma once

#include <vector>

class QMenu;

namespace quillara {

class ExplorationModel;
class ResultDocument;
struct DocumentPlace;
struct DrillOffer;

/// Adds drill steps to a menu; those that can't be taken stand there with the reason. The model outlives
/// the menu.
void AddDrillOffers(QMenu& menu, ExplorationModel& model, const std::vector<DrillOffer>& offers);
/// The same with those of a place.
void AddDrillOffers(QMenu& menu, ExplorationModel& model, const ResultDocument& document, const DocumentPlace& place);

}  // namespace quillara
