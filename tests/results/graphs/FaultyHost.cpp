// The host's object model, passed on with one answer left out. The definitions of a program come before those of its
// libraries, so that the module asks the ones here.

#include "tests/results/graphs/FaultyHost.h"

#include <dlfcn.h>

#include "host/GraphAutomation.h"
#include "platform/CountedObject.h"
#include "platform/CountedPointer.h"

namespace {

using drilltest::FaultyHost;

bool Fails() {
    return ++FaultyHost::Questions == FaultyHost::FailingQuestion;
}

/// Stands before an object of the host. `Interface` is what it shows; other interfaces are the object's own.
template <typename Interface>
struct Before : CountedObject<Interface> {
    explicit Before(Interface* object) : Object(CountedPointer<Interface>::Adopt(object)) {}
    HRESULT QueryInterface(const GUID& id, void** object) override {
        if (id == Interface::Id) {
            this->AddRef();
            *object = static_cast<Interface*>(this);
            return S_OK;
        }
        return Object->QueryInterface(id, object);
    }
    HRESULT GetTypeInfoCount(std::uint32_t* count) override { return Object->GetTypeInfoCount(count); }
    HRESULT GetTypeInfo(std::uint32_t index, LCID language, ITypeInfo** information) override {
        return Object->GetTypeInfo(index, language, information);
    }
    HRESULT GetIDsOfNames(const GUID& reserved, const char16_t* const* names, std::uint32_t count, LCID language,
                          DISPID* ids) override {
        return Object->GetIDsOfNames(reserved, names, count, language, ids);
    }
    HRESULT Invoke(DISPID member, const GUID& reserved, LCID language, std::uint16_t flags,
                   const DISPPARAMS& parameters, VARIANT* result, EXCEPINFO* exception,
                   std::uint32_t* badArgument) override {
        return Object->Invoke(member, reserved, language, flags, parameters, result, exception, badArgument);
    }

    CountedPointer<Interface> Object;
};

struct Graph final : Before<IGraph> {
    using Before::Before;
    HRESULT QueryInterface(const GUID& id, void** object) override {
        if (id == IMFCPointer::Id && Fails()) {
            *object = nullptr;
            return E_NOINTERFACE;
        }
        return Before::QueryInterface(id, object);
    }
    HRESULT GetTitle(BSTR* title) override { return Fails() ? E_FAIL : Object->GetTitle(title); }
    HRESULT GetFirstPlot(IUnknown** plot) override { return Fails() ? E_FAIL : Object->GetFirstPlot(plot); }
};

struct Documents final : Before<IDocumentCollection> {
    using Before::Before;
    HRESULT GetCount(std::int32_t* count) override { return Fails() ? E_FAIL : Object->GetCount(count); }
    HRESULT GetItem(const VARIANT& index, IDispatch** item) override {
        const HRESULT status = Fails() ? E_FAIL : Object->GetItem(index, item);
        if (auto graph = Succeeded(status) ? QueryFor<IGraph>(*item) : CountedPointer<IGraph>()) {
            (*item)->Release();
            *item = new Graph(graph.Detach());
        }
        return status;
    }
};

HRESULT Passed(HRESULT status, IDocumentCollection** documents) {
    if (Succeeded(status)) {
        *documents = new Documents(*documents);
    }
    return status;
}

struct Analysis final : Before<IAnalysisAutomation> {
    using Before::Before;
    HRESULT GetAnalysisOutputs(IDocumentCollection** outputs) override {
        return Fails() ? E_FAIL : Passed(Object->GetAnalysisOutputs(outputs), outputs);
    }
};

struct Application final : Before<IApplication> {
    using Before::Before;
    HRESULT GetGraphCollection(IDocumentCollection** graphs) override {
        return Fails() ? E_FAIL : Passed(Object->GetGraphCollection(graphs), graphs);
    }
    HRESULT GetResultPlacement(std::int32_t* placement) override {
        *placement = FaultyHost::Placement;
        return Fails() ? E_FAIL : S_OK;
    }
    HRESULT GetActiveItem(IDispatch** item) override { return Fails() ? E_FAIL : Object->GetActiveItem(item); }
};

/// The host's own function of the same name.
template <typename Function>
Function* HostFunction(Function* own) {
    Dl_info symbol{};
    dladdr(reinterpret_cast<void*>(own), &symbol);
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, symbol.dli_sname));
}

}  // namespace

IApplication* OleAGetApplication() {
    return Fails() ? nullptr : new Application(HostFunction(&OleAGetApplication)());
}

IUnknown* OleAGetAnalysis(CAnalysisDoc* document) {
    if (Fails()) {
        return nullptr;
    }
    const auto object = CountedPointer<IUnknown>::Adopt(HostFunction(&OleAGetAnalysis)(document));
    return new Analysis(QueryFor<IAnalysisAutomation>(object.Get()).Detach());
}
