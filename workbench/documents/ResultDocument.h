#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "host/DocumentInterfaces.h"
#include "platform/Automation.h"
#include "platform/CountedPointer.h"
#include "platform/Events.h"
#include "workbench/documents/DocumentEvents.h"
#include "workbench/documents/DocumentPart.h"
#include "workbench/documents/GraphDocument.h"
#include "workbench/documents/GraphFaces.h"
#include "workbench/documents/MemberTable.h"
#include "workbench/documents/SpreadsheetDocument.h"

namespace quillara {

class OpenDocuments;

/// What a result document holds.
using DocumentContent = std::variant<SpreadsheetDocument, GraphDocument>;

/// Where a result document comes from.
struct DocumentOrigin {
    int Command = 0;  ///< the command that ran when it was made, an update's outer one; 0: none
    int Sequence = 0;  ///< its place among the documents of that command, from 1
    std::string Result{};  ///< the name of a result that the host makes itself; empty: that of the command
};

/// A result of an analysis as a document of the host: its content, its window, and what automation sees of them. It
/// lives as long as somebody holds a reference; a window does. A document is made without a window and unsaved.
///
/// What scripts can do with it by name stands in the tables of DocumentAutomation.cpp.
class ResultDocument final : public ByMembers<IDispatch>, public IConnectionPointContainer {
  public:
    /// Makes a document and enters it among `documents`, to which it reports no more once they have gone.
    [[nodiscard]] static CountedPointer<ResultDocument> Create(DocumentContent content, DocumentOrigin origin,
                                                               OpenDocuments& documents);
    ResultDocument(const ResultDocument&) = delete;
    ResultDocument& operator=(const ResultDocument&) = delete;

    /// The document behind an interface; null when that is something else's.
    [[nodiscard]] static ResultDocument* Of(IDispatch* document);

    // Automation

    HRESULT QueryInterface(const GUID& id, void** object) override;
    std::uint32_t AddRef() override { return ++References; }
    std::uint32_t Release() override;
    HRESULT EnumConnectionPoints(IEnumConnectionPoints** points) override;
    HRESULT FindConnectionPoint(const GUID& events, IConnectionPoint** point) override;

    // What a user does

    /// Closes the document: it fires the event, its analysis forgets it, and its window goes. Once closed it stays so.
    void Close();
    /// The same by way of a question whose answer listeners see and may change: the document closes when it is 1
    /// in the end. A listener that saw 1 counts on it, also when a later one says no.
    void CloseWithChoice(int choice);
    /// Shows the document in a window if it has none, and brings that in front. Not of a closed one: false.
    bool Activate();
    void SetSaved(bool saved) { Saved = saved; }
    void Minimize() { State = WindowState::Minimized; }

    // What the host does

    /// Shows or hides the window. Showing a closed document fails: false.
    bool SetVisible(bool visible);
    /// Moves the content of another document here, which leaves that one empty. False, and nothing moves, when this one
    /// is closed, is the other one or is of another kind.
    bool TakeContentOf(ResultDocument& fresh);
    /// Tells listeners that its content has been replaced; for want of memory they don't hear of it.
    void TellChange() noexcept;
    /// How many drill steps, down and up, were taken before its content was made.
    void SetStep(int step) { MadeBehind = step; }
    /// Whether the bars of a graph can be picked.
    void SetBrushable(bool brushable) { Brushable = brushable; }
    /// The documents that it was entered in have gone.
    void Detach() { Documents = nullptr; }

    // State

    [[nodiscard]] const DocumentContent& Content() const { return Held; }
    /// The content of a spreadsheet, or of a graph; null for the other.
    [[nodiscard]] const SpreadsheetDocument* Spreadsheet() const { return std::get_if<SpreadsheetDocument>(&Held); }
    [[nodiscard]] const GraphDocument* Graph() const { return std::get_if<GraphDocument>(&Held); }
    /// The first line of its title; empty when it has none.
    [[nodiscard]] std::string Name() const;
    /// Its window as automation sees it; no reference is given.
    [[nodiscard]] IDispatch* WindowObject() { return &Window; }
    [[nodiscard]] const DocumentOrigin& Origin() const { return MadeBy; }
    [[nodiscard]] const DocumentKind& Kind() const { return Graph() != nullptr ? GraphKind : SpreadsheetKind; }
    /// Its place among all documents made in this run, from 1.
    [[nodiscard]] std::uint64_t Number() const { return MadeAs; }
    [[nodiscard]] int Step() const { return MadeBehind; }
    [[nodiscard]] bool IsSaved() const { return Saved; }
    [[nodiscard]] bool IsVisible() const { return Visible; }
    [[nodiscard]] bool IsMinimized() const { return State == WindowState::Minimized; }
    [[nodiscard]] bool IsBrushable() const { return Brushable; }
    [[nodiscard]] bool IsClosed() const { return Closed; }
    /// Closed, and its listeners have heard of it: scripts can't use it any more.
    [[nodiscard]] bool IsGone() const { return Gone; }
    [[nodiscard]] const DocumentEvents& Events() const { return Point; }

  private:
    /// The window as automation sees it.
    class OutputWindow final : public ByMembers<DocumentPart<IOutputWindow>> {
      public:
        explicit OutputWindow(ResultDocument& document)
            : ByMembers(static_cast<IDispatch&>(document)), Document(document) {}
        HRESULT QueryInterface(const GUID& id, void** object) override;
        HRESULT GetState(WindowState* state) override;
        HRESULT PutState(WindowState state) override;

      private:
        [[nodiscard]] const ObjectKind& MembersOf() const override;
        [[nodiscard]] void* ServedObject() override { return this; }
        static void ServeState(OutputWindow& window, NamedCall& call);

        ResultDocument& Document;
    };

    ResultDocument(DocumentContent content, DocumentOrigin origin);
    ~ResultDocument();
    void LeaveForGood();
    [[nodiscard]] const ObjectKind& MembersOf() const override;
    [[nodiscard]] void* ServedObject() override;

    DocumentContent Held;
    DocumentOrigin MadeBy;
    std::uint64_t MadeAs;
    int MadeBehind = 0;
    OpenDocuments* Documents = nullptr;  // not owned; null once they have gone
    DocumentEvents Point;
    OutputWindow Window;
    GraphFaces Faces;
    WindowState State = WindowState::Normal;
    std::uint32_t References = 0;
    bool Saved = false;
    bool Visible = false;
    bool Brushable = false;
    bool Closed = false;
    bool Gone = false;
};

}  // namespace quillara
