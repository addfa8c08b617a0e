#include "workbench/documents/ResultDocument.h"

#include <new>
#include <utility>

#include "workbench/documents/OpenDocuments.h"

namespace quillara {
namespace {

std::uint64_t NextNumber() {
    static std::uint64_t last = 0;
    return ++last;
}

}  // namespace

ResultDocument::ResultDocument(DocumentContent content, DocumentOrigin origin)
    : Held(std::move(content)),
      MadeBy(origin),
      MadeAs(NextNumber()),
      Point(*this, Kind().Events),
      Window(*this),
      Faces(*this) {}

ResultDocument::~ResultDocument() {
    if (Documents != nullptr) {
        Documents->WentAway(*this);
    }
}

CountedPointer<ResultDocument> ResultDocument::Create(DocumentContent content, DocumentOrigin origin,
                                                      OpenDocuments& documents) {
    auto document = CountedPointer<ResultDocument>::Share(new ResultDocument(std::move(content), origin));
    documents.Add(*document);
    document->Documents = &documents;
    return document;
}

ResultDocument* ResultDocument::Of(IDispatch* document) {
    return dynamic_cast<ResultDocument*>(document);
}

std::uint32_t ResultDocument::Release() {
    const std::uint32_t left = --References;
    if (left == 0) {
        delete this;
    }
    return left;
}

void ResultDocument::Close() {
    if (std::exchange(Closed, true)) {
        return;
    }
    const auto alive = CountedPointer<ResultDocument>::Share(this);
    if (Documents != nullptr && Documents->Closing) {
        Documents->Closing(*this);
    }
    Point.Fire(Kind().Closing, {});
    LeaveForGood();
}

void ResultDocument::CloseWithChoice(int choice) {
    if (Closed) {
        return;
    }
    const auto alive = CountedPointer<ResultDocument>::Share(this);
    std::int32_t answer = choice;
    VARIANT argument;
    argument.Type = VariantType::Integer | VariantType::ByReference;
    argument.IntegerReference = &answer;
    Point.Fire(Kind().ClosingWithChoice, {&argument, nullptr, 1, 0});
    if (answer == 1) {
        Close();  // a listener that was asked before the answer became 1 hears of it now
    }
}

void ResultDocument::LeaveForGood() {
    if (Documents != nullptr) {
        Documents->RemoveFromAnalysis(this);
    }
    SetVisible(false);
    Gone = true;
}

bool ResultDocument::Activate() {
    if (!SetVisible(true)) {
        return false;
    }
    if (Documents != nullptr) {
        Documents->CameToFront(*this);
    }
    return true;
}

bool ResultDocument::SetVisible(bool visible) {
    if (visible && Closed) {
        return false;
    }
    if (std::exchange(Visible, visible) != visible && Documents != nullptr) {
        visible ? Documents->Showed(*this) : Documents->Hid(*this);
    }
    return true;
}

bool ResultDocument::TakeContentOf(ResultDocument& fresh) {
    if (Closed || &fresh == this || Held.index() != fresh.Held.index()) {
        return false;
    }
    std::swap(Held, fresh.Held);
    std::visit([](auto& left) { left = {}; }, fresh.Held);
    return true;
}

void ResultDocument::TellChange() noexcept try {
    const auto alive = CountedPointer<ResultDocument>::Share(this);
    Point.Fire(ChangedEvent, {});
} catch (const std::bad_alloc&) {
    // The document shows its content all the same.
}

HRESULT ResultDocument::OutputWindow::QueryInterface(const GUID& id, void** object) {
    return DocumentPart::QueryInterface(id == IDispatch::Id ? IOutputWindow::Id : id, object);
}

const ObjectKind& ResultDocument::OutputWindow::MembersOf() const {
    static constexpr MemberRow state{u"State",
                                     0,
                                     ReadAndWrite,
                                     0,
                                     0,
                                     VariantType::Integer,
                                     RunFor<OutputWindow, ServeState>,
                                     "1: minimized, 2: as usual"};
    static constexpr ObjectKind kind{u"OutputWindow", "The window of a document", IOutputWindow::Id, {&state, 1}};
    return kind;
}

void ResultDocument::OutputWindow::ServeState(OutputWindow& window, NamedCall& call) {
    if (window.Document.IsGone()) {
        throw MemberRefusal{CO_E_OBJNOTCONNECTED};
    }
    if (!call.Writes()) {
        call.Give(static_cast<std::int32_t>(window.Document.State));
    } else if (const HRESULT status = window.PutState(static_cast<WindowState>(call.Integer(0))); !Succeeded(status)) {
        throw MemberRefusal{status, 0};
    }
}

HRESULT ResultDocument::OutputWindow::GetState(WindowState* state) {
    if (state == nullptr) {
        return E_POINTER;
    }
    *state = Document.State;
    return S_OK;
}

HRESULT ResultDocument::OutputWindow::PutState(WindowState state) {
    if (state != WindowState::Minimized && state != WindowState::Normal) {
        return E_INVALIDARG;
    }
    Document.State = state;
    return S_OK;
}

}  // namespace quillara
