#include "automation/OutputTracker.h"

#include <algorithm>
#include <exception>
#include <new>
#include <utility>
#include <vector>

#include "automation/DispatchByName.h"
#include "automation/DocumentSinks.h"
#include "engine/DrillDown.h"
#include "host/ActiveCommand.h"
#include "host/AnalysisDoc.h"
#include "host/Application.h"
#include "host/DocumentInterfaces.h"
#include "host/WindowServices.h"
#include "platform/WindowMessages.h"

using namespace drilldown;

namespace {

/// Runs what a document or the host does. For want of memory it is passed over like any other failure there: a document
/// never stops a drill step.
template <typename Act>
void PassOver(Act act) {
    try {
        act();
    } catch (const std::bad_alloc&) {
        // The document stays as it is.
    }
}

void ForgetInAnalysis(CDrillDown& owner, IDispatch* document) {
    if (CAnalysisDoc* host = owner.GetDocument(); host != nullptr) {
        PassOver([&] { host->RemoveFromAnalysisList(document); });
    }
}

void MarkAsSaved(IDispatch* document) {
    PassOver([&] { PutProperty(document, u"Saved", BooleanVariant(true)); });
}

void SetVisible(IDispatch* document, bool visible) {
    PassOver([&] { PutProperty(document, u"Visible", BooleanVariant(visible)); });
}

void BringToFront(IDispatch* document) {
    PassOver([&] { CallMethod(document, u"Activate"); });
}

void RestoreIfMinimized(IDispatch* document) {
    const CountedPointer<IUnknown> held = GetObjectProperty(document, u"Window");
    const auto window = QueryFor<IOutputWindow>(held.Get());
    WindowState state = WindowState::Normal;
    if (window && Succeeded(window->GetState(&state)) && state == WindowState::Minimized) {
        window->PutState(WindowState::Normal);
    }
}

/// Changes the host's wait cursor. A failure there is shown and then dropped.
void ChangeCursor(CDrillDown& owner, void (*change)()) {
    try {
        change();
    } catch (const std::exception& failure) {
        PassOver([&] { owner.dsplst(0, failure.what()); });
    }
}

/// Counts the outputs of the running command from 0 as long as it lives, then on from where they were.
class OutputsFromZero {
  public:
    explicit OutputsFromZero(CDrillDown& owner) : Owner(owner) { Index = Exchange(0); }
    OutputsFromZero(const OutputsFromZero&) = delete;
    OutputsFromZero& operator=(const OutputsFromZero&) = delete;
    ~OutputsFromZero() { Exchange(Index); }

  private:
    std::int32_t Exchange(std::int32_t index) {
        ActiveCommand* command = Owner.GetActiveCommand();
        return command == nullptr ? 0 : std::exchange(command->OutputIndex, index);
    }

    CDrillDown& Owner;
    std::int32_t Index;
};

}  // namespace

COutputTracker::OutputList::iterator COutputTracker::FindOutput(const OutputKey& key) {
    return std::ranges::find(Outputs, key, &TrackedOutput::Key);
}

void COutputTracker::AddOutput(const OutputKey& key, IDispatch* document) {
    OutputList entry(1, {key.OutputId, key.OutputSeq, document, nullptr});
    entry.front().Sink = MakeSink(*this, key.OutputId, key.OutputSeq, document);
    Outputs.splice(Outputs.end(), entry);
}

void COutputTracker::RemoveOutput(OutputList::iterator entry, bool hide) {
    if (CQCOMSink* sink = std::exchange(entry->Sink, nullptr); sink != nullptr) {
        PassOver([&] { sink->Unadvise(); });
        sink->Release();
    }
    if (hide && entry->Document != nullptr) {
        ForgetInAnalysis(*Owner, entry->Document);
        SetVisible(entry->Document, false);
    }
    Outputs.erase(entry);
}

void COutputTracker::RemoveAll(bool hide) {
    while (!Outputs.empty()) {
        RemoveOutput(Outputs.begin(), hide);
    }
}

void COutputTracker::DocumentGone(std::uint32_t outputId, std::uint32_t outputSeq) {
    if (const auto entry = FindOutput({outputId, outputSeq}); entry != Outputs.end()) {
        RemoveOutput(entry, false);
    }
}

// Routing

bool COutputTracker::BeforeRoute(IDispatch* document) {
    const ActiveCommand* command = Owner->GetActiveCommand();
    const bool commandRuns = command != nullptr && command->Message == WindowMessage::Command;
    if (!commandRuns && Updating == 0) {
        return false;
    }
    const OutputKey key = TakeNextKey();
    Pending.remove(key);
    const auto old = FindOutput(key);
    const bool hasOld = old != Outputs.end() && old->Document != nullptr;
    if (!hasOld || !ReplaceInPlace(old->Document, document)) {
        TakeNew(key, document);
    }
    document->Release();
    return true;
}

/// The key of the document that is being routed. What was set as the next output counts once.
OutputKey COutputTracker::TakeNextKey() {
    OutputKey key;
    if (const ActiveCommand* command = Owner->GetActiveCommand(); command != nullptr) {
        key = {static_cast<std::uint32_t>(command->CommandId), static_cast<std::uint32_t>(command->OutputIndex)};
    }
    if (Updating != 0 && CurrentCommand != 0) {
        key.OutputId = CurrentCommand;
    }
    const OutputKey next{std::exchange(NextId, 0), std::exchange(NextSeq, 0)};
    key.OutputId = next.OutputId != 0 ? next.OutputId : key.OutputId;
    key.OutputSeq = next.OutputSeq != 0 ? next.OutputSeq : key.OutputSeq;
    return key;
}

/// Takes a document that hasn't replaced another one. The old one is looked for anew, because the user may have closed
/// it while it was being replaced.
void COutputTracker::TakeNew(const OutputKey& key, IDispatch* document) {
    if (const auto old = FindOutput(key); old != Outputs.end()) {
        RemoveOutput(old, true);
        AddOutput(key, document);
        MarkAsSaved(document);
        // Intended: a window in place of an old one is shown without being brought to the front, unlike a new one; this
        // road is also that of an update.
        SetVisible(document, true);
    } else if (Updating == 0) {
        AddOutput(key, document);
        MarkAsSaved(document);
        BringToFront(document);
    } else {
        // Intended: an update drops a document that wasn't tracked, unlike a pressed button; an update makes no new
        // windows, so that a document that the user has closed stays closed.
    }
}

bool COutputTracker::ReplaceInPlace(IDispatch* old, IDispatch* fresh) {
    const auto alive = CountedPointer<IDispatch>::Share(old);  // the user may close it on the way
    bool replaced = false;
    PassOver([&] { replaced = Owner->ReplaceContentOfDoc(old, fresh); });
    if (replaced) {
        ForgetInAnalysis(*Owner, fresh);
    }
    MarkAsSaved(old);  // also when it couldn't be replaced: it isn't offered for saving
    // Intended: an update brings no window to the front, unlike a pressed button; the user goes on in the dialog.
    if (Updating == 0) {
        PassOver([&] { RestoreIfMinimized(old); });
        BringToFront(old);
    }
    return replaced;
}

// Updates

void COutputTracker::Update() {
    if (Owner->GetStartupWindow() == nullptr || Updating == 1) {
        return;
    }
    Updating = 1;
    if (CAnalysisDoc* host = Owner->GetDocument(); host != nullptr) {
        ++host->UpdateCounter;
    }
    ChangeCursor(*Owner, BeginWaitCursor);
    try {
        RunAllAgain();
    } catch (const std::bad_alloc&) {
        // No document of the old subset may stay where none could be made of the new one.
        RemoveAll(true);
    } catch (...) {
        EndUpdate();
        throw;
    }
    EndUpdate();
}

void COutputTracker::RunAllAgain() {
    std::vector<std::uint32_t> commands;
    for (const TrackedOutput& output : Outputs) {
        Pending.push_back(output.Key());
        if (std::ranges::find(commands, output.OutputId) == commands.end()) {
            commands.push_back(output.OutputId);
        }
    }
    for (const std::uint32_t command : commands) {
        if (!RunAgain(command)) {
            return;
        }
    }
}

/// False when the dialog has closed on the way: it takes its documents along as they are.
bool COutputTracker::RunAgain(std::uint32_t command) {
    const OutputsFromZero outputs(*Owner);
    CurrentCommand = command;
    // What a command without memory hasn't made is dropped below, as after any other failure.
    PassOver([&] { SendWindowMessage(Owner->GetStartupWindow(), WindowMessage::Command, command, 0); });
    if (Owner->GetStartupWindow() == nullptr) {
        return false;
    }
    DropStale(command);
    ChangeCursor(*Owner, RestoreWaitCursor);
    CurrentCommand = 0;
    return true;
}

/// Hides the documents that a command has made no more.
void COutputTracker::DropStale(std::uint32_t command) {
    const auto isStale = [command](const OutputKey& key) { return key.OutputId == command; };
    auto stale = Pending.begin();
    while ((stale = std::find_if(Pending.begin(), Pending.end(), isStale)) != Pending.end()) {
        const OutputKey key = *stale;
        Pending.erase(stale);  // first, because hiding a document may end in another change of the list
        if (const auto entry = FindOutput(key); entry != Outputs.end()) {
            RemoveOutput(entry, true);
        }
    }
}

void COutputTracker::EndUpdate() {
    if (CAnalysisDoc* host = Owner->GetDocument(); host != nullptr) {
        --host->UpdateCounter;
    }
    Pending.clear();  // holds something only when the update has failed
    CurrentCommand = 0;
    Updating = 0;
    ChangeCursor(*Owner, EndWaitCursor);
}
