#include "python/PythonEvents.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "platform/CountedObject.h"
#include "platform/CountedPointer.h"
#include "platform/Events.h"
#include "platform/Status.h"
#include "python/HostCall.h"
#include "python/PythonObject.h"
#include "workbench/documents/NamedCall.h"
#include "workbench/documents/ResultDocument.h"

namespace py = pybind11;
using quillara::MemberRefusal;

namespace {

/// Reports what a listener has raised, which changes nothing. Ctrl-C is kept for the call that is under way.
void Report(py::error_already_set& raised, const py::object& listener) {
    if (raised.matches(PyExc_KeyboardInterrupt)) {
        PyErr_SetInterrupt();
    } else {
        raised.restore();
        PyErr_WriteUnraisable(listener.ptr());
    }
}

/// A callable as the listener of one event of a document, which holds it. It gets the document and the values of the
/// event; a whole number that it gives is written to a value by reference.
class PythonListener final : public CountedObject<WithoutTypeInfo<IDispatch>> {
  public:
    PythonListener(quillara::ResultDocument& document, DISPID event, py::function called)
        : Document(document), Event(event), Called(std::move(called)) {}
    PythonListener(const PythonListener&) = delete;
    PythonListener& operator=(const PythonListener&) = delete;
    ~PythonListener() override {
        const PyGILState_STATE lock = PyGILState_Ensure();
        Py_XDECREF(Called.release().ptr());
        PyGILState_Release(lock);
    }

    HRESULT QueryInterface(const GUID& id, void** object) override {
        const bool answers = id == IUnknown::Id || id == IDispatch::Id || id == Document.Kind().Events;
        *object = answers ? static_cast<IDispatch*>(this) : nullptr;
        return answers ? (AddRef(), S_OK) : E_NOINTERFACE;
    }
    HRESULT GetIDsOfNames(const GUID& /*reserved*/, const char16_t* const* /*names*/, std::uint32_t /*count*/,
                          LCID /*language*/, DISPID* /*ids*/) override {
        return E_NOTIMPL;
    }
    HRESULT Invoke(DISPID event, const GUID& /*reserved*/, LCID /*language*/, std::uint16_t /*flags*/,
                   const DISPPARAMS& parameters, VARIANT* /*result*/, EXCEPINFO* /*exception*/,
                   std::uint32_t* /*badArgument*/) override {
        if (event == Event) {
            const py::gil_scoped_acquire lock;
            Tell(parameters);
        }
        return S_OK;
    }

  private:
    void Tell(const DISPPARAMS& parameters) try {
        const bool hasChoice = parameters.Count == 1 && Has(parameters.Arguments[0].Type, VariantType::ByReference);
        const py::object document = PythonObject::Wrap(CountedPointer<IDispatch>::Share(&Document));
        const py::object given =
            hasChoice ? Called(document, *parameters.Arguments[0].IntegerReference) : Called(document);
        if (hasChoice && py::isinstance<py::int_>(given)) {
            *parameters.Arguments[0].IntegerReference = given.cast<std::int32_t>();
        }
    } catch (py::error_already_set& raised) {
        Report(raised, Called);
    } catch (const py::cast_error&) {
        // A number that is too large chooses nothing.
    }

    quillara::ResultDocument& Document;  // no reference is held: they would hold each other for ever
    DISPID Event;
    py::function Called;
};

/// Where a document tells its events, and the number of one. Throws MemberRefusal when it tells none of that name.
std::pair<CountedPointer<IConnectionPoint>, DISPID> PointFor(const PythonObject& object, const std::string& name) {
    quillara::ResultDocument* document = quillara::ResultDocument::Of(object.Get());
    const std::optional<DISPID> event =
        document == nullptr ? std::nullopt : quillara::EventNamed(document->Kind(), name);
    const auto container = QueryFor<IConnectionPointContainer>(object.Get());
    IConnectionPoint* point = nullptr;
    if (!event || !container || !Succeeded(container->FindConnectionPoint(document->Kind().Events, &point))) {
        throw MemberRefusal{DISP_E_UNKNOWNNAME};
    }
    return {CountedPointer<IConnectionPoint>::Adopt(point), *event};
}

/// Gives the number of the connection.
std::uint32_t Listen(const PythonObject& object, const std::string& name, py::function called) {
    return CallHost("on", [&] {
        const auto [point, event] = PointFor(object, name);
        if (quillara::ResultDocument::Of(object.Get())->IsGone()) {
            throw MemberRefusal{CO_E_OBJNOTCONNECTED};
        }
        const auto listener = CountedPointer<PythonListener>::Adopt(
            new PythonListener(*quillara::ResultDocument::Of(object.Get()), event, std::move(called)));
        std::uint32_t cookie = 0;
        if (const HRESULT status = point->Advise(listener.Get(), &cookie); !Succeeded(status)) {
            throw MemberRefusal{status};
        }
        return cookie;
    });
}

/// False when there is no such connection any more.
bool StopListening(const PythonObject& object, const std::string& name, std::uint32_t cookie) {
    return CallHost("off", [&] { return Succeeded(PointFor(object, name).first->Unadvise(cookie)); });
}

}  // namespace

void DefineEvents(py::module_& module) {
    module.def("listen", Listen, "Has a callable called at each event of a name");
    module.def("stop_listening", StopListening, "Ends a connection by its number");
}
