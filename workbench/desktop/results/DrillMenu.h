#pragma once

class QMenu;

namespace quillara {

class ExplorationModel;
class ResultDocument;
struct DocumentPlace;

/// Adds the drill steps of a place to a menu; those that can't be taken stand there with the reason. The model outlives
/// the menu.
void AddDrillOffers(QMenu& menu, ExplorationModel& model, const ResultDocument& document, const DocumentPlace& place);

}  // namespace quillara
