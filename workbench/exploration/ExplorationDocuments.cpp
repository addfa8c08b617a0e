// The documents of an exploration: made by its commands, told at their end, closed by the user.

#include <algorithm>
#include <utility>

#include "resources/ControlIds.h"
#include "workbench/exploration/Exploration.h"
#include "workbench/hosting/TableInUse.h"
#include "workbench/windows/Control.h"

namespace quillara {
namespace {

auto PlaceOf(std::vector<CountedPointer<ResultDocument>>& documents, const ResultDocument& document) {
    return std::ranges::find(documents, &document, &CountedPointer<ResultDocument>::Get);
}

}  // namespace

/// The analysis is in the midst of its result.
void Exploration::Take(ResultDocument& document, bool standsAlone) {
    const auto isIt = [&](const FreshDocument& fresh) { return fresh.Document.Get() == &document; };
    if (std::ranges::none_of(Fresh, isIt)) {
        Fresh.push_back({CountedPointer<ResultDocument>::Share(&document), standsAlone, Document.UpdateCounter != 0});
    }
}

/// A closed window doesn't come back because a step has moved what it showed to another document.
bool Exploration::PutsAway(const FreshDocument& fresh) {
    const CountedPointer<ResultDocument>& document = fresh.Document;
    const bool isUnwanted = fresh.IsUpdated && ClosedSubjects.contains(SubjectKeyOf(*document));
    if (isUnwanted && PlaceOf(Shown, *document) != Shown.end()) {
        document->SetVisible(false);
        PutAway.push_back(document);
    }
    return isUnwanted;
}

/// The analysis itself shows what stands alone; what it has dropped in an update has no window.
bool Exploration::Appears(const FreshDocument& fresh) {
    const auto away = PlaceOf(PutAway, *fresh.Document);
    const bool isAnalysisToShow = fresh.StandsAlone && away == PutAway.end();
    if (away != PutAway.end()) {
        PutAway.erase(away);
    }
    return !fresh.Document->IsClosed() &&
           (isAnalysisToShow ? fresh.Document->IsVisible() : fresh.Document->SetVisible(true));
}

void Exploration::Tell(const FreshDocument& fresh) {
    const CountedPointer<ResultDocument>& document = fresh.Document;
    if (PutsAway(fresh)) {
        return;
    }
    fresh.StandsAlone && !document->IsBrushable() ? Bases.Note(*document, CasesInForceNow()) : Bases.Forget(*document);
    if (PlaceOf(Shown, *document) != Shown.end()) {
        Listener.DocumentChanged(*document);
        if (!fresh.IsUpdated) {
            Listener.DocumentCameToFront(*document);
        }
    } else if (Appears(fresh)) {
        ClosedSubjects.erase(SubjectKeyOf(*document));
        Shown.push_back(document);
        Listener.DocumentAppeared(*document);
    }
}

void Exploration::TellDocuments() {
    for (const FreshDocument& fresh : std::exchange(Fresh, {})) {
        Tell(fresh);
    }
    const auto gone = std::stable_partition(Shown.begin(), Shown.end(), [](const auto& document) {
        return document->IsVisible() && !document->IsClosed();
    });
    const std::vector<CountedPointer<ResultDocument>> went(gone, Shown.end());
    Shown.erase(gone, Shown.end());
    for (const CountedPointer<ResultDocument>& document : went) {
        Listener.DocumentWent(*document);
    }
    Listener.DocumentsTold();
}

void Exploration::Close(ResultDocument& document) {
    const auto held = CountedPointer<ResultDocument>::Share(&document);
    const auto place = static_cast<double>(PlaceOf(Shown, document) - Shown.begin());
    Recorder.Note({JournalEntry::NoDialog, {JournalEntry::CloseCall, {place}}});
    ClosedSubjects.insert(SubjectKeyOf(document));
    held->Close();
    TellDocuments();
    if (HasEnded()) {
        Listener.Changed();
    }
}

bool Exploration::HasOldResults() {
    return !HasEnded() && At(AutoUpdateBox).Checked && Bases.HasOther(Shown, CasesInForceNow());
}

CasesInForce Exploration::CasesInForceNow() {
    return CasesInForceOf(TableOf(&Document));
}

}  // namespace quillara
