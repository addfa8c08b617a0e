// The application, its analyses and their lists of documents, as automation sees them.

#include "workbench/hosting/ObjectModel.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "host/AnalysisDoc.h"
#include "host/GraphAutomation.h"
#include "platform/CountedPointer.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/hosting/AnalysisState.h"
#include "workbench/hosting/LongTexts.h"

using quillara::AnalysisState;
using quillara::OpenAnalyses;
using quillara::ResultDocument;

namespace {

constexpr std::int32_t CommonWindow = 1;  // where results that don't stand alone go

using Items = std::vector<CountedPointer<IDispatch>>;

/// A counted object with one interface.
template <typename Interface>
class Counted : public Interface {
  public:
    HRESULT QueryInterface(const GUID& id, void** object) override {
        *object = id == IUnknown::Id || Answers(id) ? static_cast<Interface*>(this) : nullptr;
        if (*object == nullptr) {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    std::uint32_t AddRef() override { return ++References; }
    std::uint32_t Release() override {
        const std::uint32_t left = --References;
        if (left == 0) {
            delete this;
        }
        return left;
    }

  protected:
    Counted() = default;
    virtual ~Counted() = default;
    [[nodiscard]] virtual bool Answers(const GUID& /*id*/) const { return false; }

  private:
    std::uint32_t References = 1;  // the maker's
};

class Collection final : public Counted<IDocumentCollection> {
  public:
    explicit Collection(Items items) : Documents(std::move(items)) {}
    HRESULT GetCount(std::int32_t* count) override {
        *count = static_cast<std::int32_t>(Documents.size());
        return S_OK;
    }
    HRESULT GetItem(const VARIANT& index, IDispatch** item) override {
        *item = nullptr;
        if (index.Type != VariantType::Integer) {
            return DISP_E_TYPEMISMATCH;
        }
        if (index.Integer < 1 || static_cast<std::size_t>(index.Integer) > Documents.size()) {
            return DISP_E_BADINDEX;
        }
        *item = CountedPointer(Documents[static_cast<std::size_t>(index.Integer) - 1]).Detach();
        return S_OK;
    }

  private:
    Items Documents;
};

Items ItemsOf(const std::vector<ResultDocument*>& documents) {
    Items items;
    for (ResultDocument* document : documents) {
        items.push_back(CountedPointer<IDispatch>::Share(document));
    }
    return items;
}

class AnalysisAutomation final : public Counted<IAnalysisAutomation> {
  public:
    explicit AnalysisAutomation(AnalysisState& state) : State(state) {}
    HRESULT GetAnalysisOutputs(IDocumentCollection** outputs) override {
        *outputs = new Collection(ItemsOf(State.Results.Documents.OfAnalysis()));
        return S_OK;
    }

  private:
    [[nodiscard]] bool Answers(const GUID& id) const override { return id == IAnalysisAutomation::Id; }

    AnalysisState& State;
};

class Application final : public Counted<IApplication> {
  public:
    HRESULT GetGraphCollection(IDocumentCollection** graphs) override {
        std::vector<ResultDocument*> found;
        for (const AnalysisState* state : OpenAnalyses()) {
            std::ranges::copy_if(state->Results.Documents.InWindows(), std::back_inserter(found),
                                 [](const ResultDocument* document) { return document->Graph() != nullptr; });
        }
        std::ranges::sort(found, {}, &ResultDocument::Number);
        *graphs = new Collection(ItemsOf(found));
        return S_OK;
    }
    HRESULT GetResultPlacement(std::int32_t* placement) override {
        *placement = CommonWindow;
        return S_OK;
    }
    /// The document that came last into the common window.
    HRESULT GetActiveItem(IDispatch** item) override {
        CountedPointer<ResultDocument> last;
        for (const AnalysisState* state : OpenAnalyses()) {
            if (state->Results.LastRouted && (!last || last->Number() < state->Results.LastRouted->Number())) {
                last = state->Results.LastRouted;
            }
        }
        *item = last.Detach();
        return S_OK;
    }
};

std::vector<AnalysisState*>& States() {
    static std::vector<AnalysisState*> states;
    return states;
}

}  // namespace

IApplication* OleAGetApplication() {
    return new Application;
}

IUnknown* OleAGetAnalysis(CAnalysisDoc* document) {
    return document == nullptr ? nullptr : new AnalysisAutomation(quillara::StateOf(document));
}

void Replace8CharGrow(CAnalysisSupport& /*analysis*/, std::string& text, bool /*nested*/) {
    text = quillara::Replace8CharGrow(text);
}

namespace quillara {

const std::vector<AnalysisState*>& OpenAnalyses() {
    return States();
}

void EnterAnalysis(AnalysisState& state) {
    States().push_back(&state);
}

void LeaveAnalysis(const AnalysisState& state) {
    std::erase(States(), &state);
}

AnalysisState* AnalysisOf(const ResultDocument& document) {
    const auto holds = [&](const AnalysisState* state) {
        const auto& known = state->Results.Documents.OfAnalysis();
        return std::ranges::find(known, &document) != known.end();
    };
    const auto owner = std::ranges::find_if(States(), holds);
    return owner == States().end() ? nullptr : *owner;
}

}  // namespace quillara
