#include "python/PythonObject.h"

#include <cstdint>
#include <utility>

#include "platform/ErrorInfo.h"
#include "platform/OwnedText.h"
#include "platform/TextEncodings.h"
#include "platform/TypeInformation.h"
#include "python/HostCall.h"
#include "python/MemberList.h"
#include "python/PythonValues.h"
#include "workbench/documents/NamedCall.h"
#include "workbench/hosting/StatusTexts.h"

namespace py = pybind11;

namespace {

/// The arguments of a call, last one first.
class Arguments {
  public:
    Arguments(const py::args& values, bool isPut) : IsPut(isPut) {
        for (std::size_t i = values.size(); i > 0; --i) {
            Held.push_back(VariantOf(values[i - 1]));
            Given.push_back(Held.back().Get());
        }
    }

    [[nodiscard]] DISPPARAMS Parameters() {
        return {Given.data(), IsPut ? &Named : nullptr, static_cast<std::uint32_t>(Given.size()), IsPut ? 1U : 0U};
    }

  private:
    bool IsPut;
    DISPID Named = PropertyPutArgument;
    std::vector<OwnedVariant> Held;
    std::vector<VARIANT> Given;  // borrowed
};

/// What the error object says that a failing member has left.
std::string TextOfError() {
    IErrorInfo* left = nullptr;
    if (GetErrorInfo(0, &left) != S_OK) {
        return {};
    }
    const auto error = CountedPointer<IErrorInfo>::Adopt(left);
    OwnedText text;
    error->GetDescription(text.Put());
    return NarrowText(text.View());
}

/// Code and text of a failing call: of the exception record, of the error object, or the standard ones.
std::pair<HRESULT, std::string> FailureOf(HRESULT status, const EXCEPINFO& exception) {
    const OwnedText source(exception.Source);
    const OwnedText description(exception.Description);
    const OwnedText help(exception.HelpFile);
    const bool hasRecord = status == DISP_E_EXCEPTION;
    const HRESULT code = !hasRecord ? status : exception.Status != S_OK ? exception.Status : E_FAIL;
    std::string text = hasRecord ? NarrowText(description.View()) : "";
    text = text.empty() ? TextOfError() : text;
    return {code, text.empty() ? quillara::StandardMessage(code) : text};
}

OwnedVariant Call(IDispatch& object, DISPID member, std::uint16_t use, Arguments& arguments) {
    SetErrorInfo(0, nullptr);
    OwnedVariant result;
    EXCEPINFO exception;
    const HRESULT status = object.Invoke(member, GUID_NULL, NeutralLanguage, use, arguments.Parameters(), result.Put(),
                                         &exception, nullptr);
    if (!Succeeded(status)) {
        auto [code, text] = FailureOf(status, exception);
        throw ScriptError{code, std::move(text), {}};
    }
    return result;
}

py::list Members(const ToldObject& told) {
    py::list members;
    for (const ToldMember& member : told.Members) {
        members.append(
            py::make_tuple(member.Name, member.Number, member.Use, member.Arguments, member.Value, member.Help));
    }
    return members;
}

/// Its name, its help, and its members.
py::tuple Tell(const PythonObject& object) {
    const ToldObject told = CallHost("", [&object] { return MembersOf(*object.Get()); });
    return py::make_tuple(told.Name, told.Help, Members(told));
}

}  // namespace

PythonObject::~PythonObject() {
    const HostScope scope;
    Face = {};
}

py::object PythonObject::Wrap(CountedPointer<IDispatch> face) {
    return face ? py::cast(std::make_unique<PythonObject>(std::move(face))) : py::none();
}

std::string PythonObject::NameOf(DISPID member) const {
    ITypeInfo* given = nullptr;
    OwnedText name;
    if (!Succeeded(Face->GetTypeInfo(0, NeutralLanguage, &given))) {
        return {};
    }
    CountedPointer<ITypeInfo>::Adopt(given)->GetDocumentation(member, name.Put(), nullptr, nullptr, nullptr);
    return NarrowText(name.View());
}

py::object PythonObject::Invoke(DISPID member, std::uint16_t use, const py::args& arguments) const {
    Arguments given(arguments, use == DispatchPropertyPut);
    return ObjectOf(CallHost("", [&] {
        try {
            return Call(*Face, member, use, given);
        } catch (ScriptError& error) {
            error.Member = NameOf(member);
            throw;
        }
    }));
}

void PythonObject::Define(py::module_& module) {
    py::class_<PythonObject>(module, "Object", "An object of the host, called by the numbers of its members")
        .def("invoke", &PythonObject::Invoke, "Calls (1), reads (2) or writes (4) a member")
        .def("tell", Tell, "Name, help and members: name, number, use, arguments, type of the value, help")
        .def("__eq__", [](const PythonObject& one, const PythonObject& other) { return one.Get() == other.Get(); })
        .def("__hash__", [](const PythonObject& one) { return reinterpret_cast<std::intptr_t>(one.Get()); });
}
