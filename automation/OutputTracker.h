#pragma once

#include <cstdint>
#include <list>

#include "platform/Handles.h"

class CDrillDown;
class CQCOMSink;

namespace drilldown {

/// Name of an output: the command id of the button that made it, and its place among the outputs of that command.
struct OutputKey {
    std::uint32_t OutputId = 0;
    std::uint32_t OutputSeq = 0;

    friend bool operator==(const OutputKey&, const OutputKey&) = default;
};

}  // namespace drilldown

/// A document that stands alone.
struct TrackedOutput {
    std::uint32_t OutputId = 0;
    std::uint32_t OutputSeq = 0;
    IDispatch* Document = nullptr;  ///< no reference is held: the host keeps it until it closes or is hidden
    CQCOMSink* Sink = nullptr;  ///< one reference; null: the document isn't watched

    [[nodiscard]] drilldown::OutputKey Key() const { return {OutputId, OutputSeq}; }
};

/// The memory of the result documents that stand alone: takes them from the host's routing, and after a drill step
/// presses again the buttons that made them, so that their content is replaced in place. Document failures never stop a
/// drill step: they are passed over.
class COutputTracker {
  public:
    using OutputList = std::list<TrackedOutput>;

    /// The analysis outlives its tracker.
    explicit COutputTracker(CDrillDown& owner) : Owner(&owner) {}
    COutputTracker(const COutputTracker&) = delete;
    COutputTracker& operator=(const COutputTracker&) = delete;
    /// Lets go of all documents, which stay as they are.
    ~COutputTracker() { RemoveAll(false); }

    /// Decides about a document that the host is about to route. True: it is taken, and the reference that came with
    /// it is used up. False: it takes the host's way, and the reference is still the caller's.
    bool BeforeRoute(IDispatch* document);
    /// Makes all tracked documents anew by the commands that made them. Does nothing without a startup dialog, or while
    /// an update runs.
    void Update();

    /// The document of a key; the end of Outputs when there is none.
    OutputList::iterator FindOutput(const drilldown::OutputKey& key);
    /// Forgets a document; `hide`: its analysis forgets it too, and it is hidden.
    void RemoveOutput(OutputList::iterator entry, bool hide);
    void RemoveAll(bool hide);
    /// What a sink tells: the document of a key is going away by itself.
    void DocumentGone(std::uint32_t outputId, std::uint32_t outputSeq);

    OutputList Outputs;  ///< oldest first; keys are unique
    CDrillDown* Owner;  ///< not owned
    std::uint8_t Updating = 0;  ///< 1: an update is running
    std::uint32_t CurrentCommand = 0;  ///< command that the update runs again; 0: none
    std::uint32_t NextId = 0;  ///< not 0: the key part that the next document takes in place of its own
    std::uint32_t NextSeq = 0;  ///< the same for the sequence
    std::list<drilldown::OutputKey> Pending;  ///< keys of an update that haven't been made anew yet

  private:
    drilldown::OutputKey TakeNextKey();
    void AddOutput(const drilldown::OutputKey& key, IDispatch* document);
    void TakeNew(const drilldown::OutputKey& key, IDispatch* document);
    bool ReplaceInPlace(IDispatch* old, IDispatch* fresh);
    void RunAllAgain();
    bool RunAgain(std::uint32_t command);
    void DropStale(std::uint32_t command);
    void EndUpdate();
};
