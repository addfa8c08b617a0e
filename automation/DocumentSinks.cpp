#include "automation/DocumentSinks.h"

#include <new>

#include "automation/OutputTracker.h"
#include "host/ModuleState.h"
#include "platform/CountedPointer.h"
#include "platform/Events.h"

using namespace drilldown;

namespace {

constexpr std::uint32_t MostEventParameters = 18;

/// The place where a document tells the events of a kind; nothing when it has none.
CountedPointer<IConnectionPoint> PointOf(IDispatch* document, const DocumentKind& kind) {
    IConnectionPoint* point = nullptr;
    const auto container = QueryFor<IConnectionPointContainer>(document);
    if (!container || !Succeeded(container->FindConnectionPoint(kind.Events, &point))) {
        return {};
    }
    return CountedPointer<IConnectionPoint>::Adopt(point);
}

bool IsIntegerByReference(const VARIANT& value) {
    const VariantType referred = Without(value.Type, VariantType::ByReference);
    return Has(value.Type, VariantType::ByReference) &&
           (referred == VariantType::Integer || referred == VariantType::MachineInteger);
}

template <typename Sink>
CQCOMDocumentSink* NewSink() {
    return new (std::nothrow) Sink;
}

struct SinkRow {
    const DocumentKind& Kind;
    CQCOMDocumentSink* (*New)();
};

constexpr SinkRow SinkKinds[] = {
    {SpreadsheetKind, NewSink<CQCOMSpreadsheetSink>},
    {GraphKind, NewSink<CQCOMGraphSink>},
};

}  // namespace

CQCOMSink* MakeSink(COutputTracker& tracker, std::uint32_t outputId, std::uint32_t outputSeq, IDispatch* document) {
    for (const SinkRow& row : SinkKinds) {
        if (!QueryFor<IDispatch>(document, row.Kind.Document)) {
            continue;
        }
        auto sink = CountedPointer<CQCOMDocumentSink>::Share(row.New());
        if (!sink) {
            continue;
        }
        sink->Tracker = &tracker;
        sink->OutputId = outputId;
        sink->OutputSeq = outputSeq;
        sink->Document = document;
        if (Succeeded(sink->Connect())) {
            return sink.Detach();
        }
    }
    return nullptr;
}

CQCOMDocumentSink::CQCOMDocumentSink(const DocumentKind& kind) : Kind(kind) {
    ++OrvGetAppModuleState()->Locks;
}

CQCOMDocumentSink::~CQCOMDocumentSink() {
    --OrvGetAppModuleState()->Locks;
}

HRESULT CQCOMDocumentSink::QueryInterface(const GUID& id, void** object) {
    *object = nullptr;
    if (id != IUnknown::Id && id != IDispatch::Id && id != Kind.Events) {
        return E_NOINTERFACE;
    }
    *object = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
}

std::uint32_t CQCOMDocumentSink::Release() {
    const std::uint32_t left = --References;
    if (left == 0) {
        delete this;
    }
    return left;
}

HRESULT CQCOMDocumentSink::GetIDsOfNames(const GUID& /*reserved*/, const char16_t* const* /*names*/,
                                         std::uint32_t /*count*/, LCID /*language*/, DISPID* /*ids*/) {
    return E_NOTIMPL;
}

HRESULT CQCOMDocumentSink::Invoke(DISPID event, const GUID& /*reserved*/, LCID /*language*/, std::uint16_t /*flags*/,
                                  const DISPPARAMS& parameters, VARIANT* /*result*/, EXCEPINFO* /*exception*/,
                                  std::uint32_t* /*badArgument*/) {
    if (parameters.Count > MostEventParameters) {
        return E_FAIL;
    }
    if (event == Kind.ClosingWithChoice) {
        return ClosingWithChoice(parameters);
    }
    if (event != Kind.Closing) {
        return DISP_E_MEMBERNOTFOUND;
    }
    if (parameters.Count != 0) {
        return DISP_E_BADPARAMCOUNT;
    }
    DocumentGone();
    return S_OK;
}

HRESULT CQCOMDocumentSink::ClosingWithChoice(const DISPPARAMS& parameters) {
    if (parameters.Count != 1) {
        return DISP_E_BADPARAMCOUNT;
    }
    const VARIANT& choice = parameters.Arguments[0];
    if (!IsIntegerByReference(choice) || choice.IntegerReference == nullptr) {
        return DISP_E_TYPEMISMATCH;
    }
    if (*choice.IntegerReference == 1) {
        DocumentGone();
    }
    return S_OK;
}

HRESULT CQCOMDocumentSink::Connect() {
    if (Cookie != NotConnected) {
        return E_FAIL;
    }
    if (Document == nullptr) {
        return E_INVALIDARG;
    }
    const CountedPointer<IConnectionPoint> point = PointOf(Document, Kind);
    if (!point) {
        return CONNECT_E_NOCONNECTION;
    }
    std::uint32_t cookie = NotConnected;
    const HRESULT status = point->Advise(static_cast<IDispatch*>(this), &cookie);
    if (Succeeded(status)) {
        Cookie = cookie;
    }
    return status;
}

void CQCOMDocumentSink::Unadvise() {
    Tracker = nullptr;  // an event that still comes in has no tracker to look into, which may be gone
    const std::uint32_t cookie = Cookie;
    Cookie = NotConnected;
    if (Document == nullptr) {
        return;
    }
    if (const CountedPointer<IConnectionPoint> point = PointOf(Document, Kind); point) {
        point->Unadvise(cookie);
    }
}

void CQCOMDocumentSink::DocumentGone() {
    const auto alive = CountedPointer<CQCOMDocumentSink>::Share(this);  // tracker and connection let go of it below
    if (Tracker != nullptr) {
        Tracker->DocumentGone(OutputId, OutputSeq);
    }
    Unadvise();
    Document = nullptr;
}
