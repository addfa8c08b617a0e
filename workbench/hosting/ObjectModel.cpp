// The application, its analyses and their lists of documents, as automation sees them.

#include "workbench/hosting/ObjectModel.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "host/AnalysisDoc.h"
#include "host/AnalysisSupport.h"
#include "host/GraphAutomation.h"
#include "platform/CountedObject.h"
#include "platform/CountedPointer.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/hosting/CurrentAnalysis.h"
#include "workbench/hosting/LongTexts.h"
#include "workbench/hosting/RoutedResults.h"

using quillara::OpenAnalyses;
using quillara::ResultDocument;
using quillara::ResultsOf;

namespace {

constexpr std::int32_t CommonWindow = 1;  // where results that don't stand alone go

using Items = std::vector<CountedPointer<IDispatch>>;

/// A counted object that answers as IUnknown, and by its own identifier if it has one.
template <typename Interface>
class Counted : public CountedObject<Interface> {
  public:
    HRESULT QueryInterface(const GUID& id, void** object) override {
        *object = id == IUnknown::Id || Answers(id) ? static_cast<Interface*>(this) : nullptr;
        if (*object == nullptr) {
            return E_NOINTERFACE;
        }
        this->AddRef();
        return S_OK;
    }

  private:
    [[nodiscard]] virtual bool Answers(const GUID& /*id*/) const { return false; }
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
    explicit AnalysisAutomation(quillara::RoutedResults& results) : Results(results) {}
    HRESULT GetAnalysisOutputs(IDocumentCollection** outputs) override {
        *outputs = new Collection(ItemsOf(Results.Documents.OfAnalysis()));
        return S_OK;
    }

  private:
    [[nodiscard]] bool Answers(const GUID& id) const override { return id == IAnalysisAutomation::Id; }

    quillara::RoutedResults& Results;
};

class Application final : public Counted<IApplication> {
  public:
    HRESULT GetGraphCollection(IDocumentCollection** graphs) override {
        std::vector<ResultDocument*> found;
        CAnalysisDoc* current = quillara::DocumentOfCurrentAnalysis();
        for (CAnalysisDoc* analysis : current == nullptr ? OpenAnalyses() : std::vector{current}) {
            std::ranges::copy_if(ResultsOf(analysis).Documents.InWindows(), std::back_inserter(found),
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
        for (CAnalysisDoc* analysis : OpenAnalyses()) {
            const auto& routed = ResultsOf(analysis).LastRouted;
            if (routed && (!last || last->Number() < routed->Number())) {
                last = routed;
            }
        }
        *item = last.Detach();
        return S_OK;
    }
};

std::vector<CAnalysisDoc*>& Open() {
    static std::vector<CAnalysisDoc*> documents;
    return documents;
}

}  // namespace

IApplication* OleAGetApplication() {
    return new Application;
}

IUnknown* OleAGetAnalysis(CAnalysisDoc* document) {
    return document == nullptr ? nullptr : new AnalysisAutomation(ResultsOf(document));
}

void CAnalysisSupport::Replace8CharGrow(std::string& text, bool /*nested*/) {
    text = quillara::Replace8CharGrow(text);
}

namespace quillara {

const std::vector<CAnalysisDoc*>& OpenAnalyses() {
    return Open();
}

void EnterAnalysis(CAnalysisDoc& document) {
    Open().push_back(&document);
}

void LeaveAnalysis(const CAnalysisDoc& document) {
    std::erase(Open(), &document);
}

CAnalysisDoc* AnalysisOf(const ResultDocument& result) {
    const auto holds = [&](CAnalysisDoc* document) {
        const auto& known = ResultsOf(document).Documents.OfAnalysis();
        return std::ranges::find(known, &result) != known.end();
    };
    const auto owner = std::ranges::find_if(Open(), holds);
    return owner == Open().end() ? nullptr : *owner;
}

}  // namespace quillara
