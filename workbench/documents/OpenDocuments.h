#pragma once

#include <functional>
#include <vector>

#include "platform/CountedPointer.h"
#include "platform/Handles.h"

namespace quillara {

class ResultDocument;

/// The result documents of an analysis. A document is known to its analysis from the time it is made until it is
/// removed, is closed or goes away; while it is visible it also stands in a window of its own, which holds a reference.
class OpenDocuments {
  public:
    OpenDocuments() = default;
    OpenDocuments(const OpenDocuments&) = delete;
    OpenDocuments& operator=(const OpenDocuments&) = delete;
    /// Lets all go; no events are fired. Documents that others hold live on without windows.
    ~OpenDocuments();

    /// A new document of the analysis; no reference is taken.
    void Add(ResultDocument& document);
    /// The analysis forgets a document; one that it doesn't know is passed over.
    void RemoveFromAnalysis(IDispatch* document);
    /// Drops the references to hidden documents that the analysis has forgotten. Not at once, because whoever hides a
    /// document may go on to use it.
    void LetHiddenGo();
    /// The number of the next document that no command makes, from 1.
    int NextNumber() { return ++LastNumber; }

    /// The documents that the analysis knows, in the order in which they were made.
    [[nodiscard]] const std::vector<ResultDocument*>& OfAnalysis() const { return Known; }
    /// The documents in windows, the one in front last.
    [[nodiscard]] const std::vector<ResultDocument*>& InWindows() const { return Shown; }

    // What documents report of themselves. None fails: room for a document is made when it is added.

    void Showed(ResultDocument& document);
    void Hid(ResultDocument& document);
    void CameToFront(ResultDocument& document);
    void WentAway(ResultDocument& document);

    /// Told when somebody closes a document, before it closes.
    std::function<void(ResultDocument& document)> Closing;

  private:
    std::vector<ResultDocument*> Living;
    std::vector<ResultDocument*> Known;
    std::vector<ResultDocument*> Shown;  // each holds a reference
    std::vector<ResultDocument*> Hidden;  // each holds a reference
    int LastNumber = 0;
};

}  // namespace quillara
