#include "automation/MemberCall.h"

#include <algorithm>

#include "platform/CountedPointer.h"
#include "platform/ErrorInfo.h"
#include "platform/OwnedVariant.h"

namespace drilldown {
namespace {

/// The function of a member that a call is for; null when there is none. Putting an object by reference is no use of
/// any member.
const MemberFunction* FunctionFor(const AutomationMember& member, std::uint16_t uses) {
    const auto function = std::ranges::find_if(member.Functions, [uses](const MemberFunction& each) {
        return each.Call != nullptr && (each.Use & uses) != 0;
    });
    return function == member.Functions.end() ? nullptr : &*function;
}

/// What a failing member has left, also as the caller's exception record. The error object stays where it is.
HRESULT ToException(HRESULT status, EXCEPINFO* exception) {
    if (exception == nullptr) {
        return status;
    }
    *exception = {};
    exception->Status = status;
    IErrorInfo* left = nullptr;
    if (GetErrorInfo(0, &left) == S_OK) {
        const auto error = CountedPointer<IErrorInfo>::Adopt(left);
        error->GetSource(&exception->Source);
        error->GetDescription(&exception->Description);
        SetErrorInfo(0, error.Get());
    }
    return DISP_E_EXCEPTION;
}

bool IsNameOfPut(const DISPPARAMS& parameters) {
    return parameters.NamedCount == 1 && parameters.NamedArguments[0] == PropertyPutArgument;
}

HRESULT Write(IDispatch& object, const MemberFunction& function, const DISPPARAMS& parameters, EXCEPINFO* exception,
              std::uint32_t* badArgument) {
    if (parameters.Count != 1) {
        return DISP_E_BADPARAMCOUNT;
    }
    if (parameters.NamedCount != 0 && !IsNameOfPut(parameters)) {
        return DISP_E_PARAMNOTFOUND;
    }
    OwnedVariant value;
    const VARIANT& given = parameters.Arguments[0];
    const HRESULT converted = function.Kind == ValueKind::Value
                                  ? VariantCopyInd(*value.Put(), given)
                                  : VariantChangeType(*value.Put(), given, TypeOf(function.Kind));
    if (!Succeeded(converted)) {
        if (badArgument != nullptr) {
            *badArgument = 0;
        }
        return converted == E_OUTOFMEMORY ? converted : DISP_E_TYPEMISMATCH;
    }
    VARIANT passed = value.Get();
    const HRESULT status = function.Call(object, passed);
    return Succeeded(status) ? status : ToException(status, exception);
}

HRESULT Read(IDispatch& object, const MemberFunction& function, const DISPPARAMS& parameters, VARIANT* result,
             EXCEPINFO* exception) {
    if (parameters.Count != 0) {
        return DISP_E_BADPARAMCOUNT;
    }
    OwnedVariant value;
    const HRESULT status = function.Call(object, *value.Put());
    if (!Succeeded(status)) {
        return ToException(status, exception);
    }
    if (result != nullptr) {
        VariantClear(*result);
        *result = value.Detach();
    }
    return status;
}

}  // namespace

HRESULT CallMember(IDispatch& object, const AutomationMember& member, std::uint16_t uses, const DISPPARAMS& parameters,
                   VARIANT* result, EXCEPINFO* exception, std::uint32_t* badArgument) {
    const MemberFunction* function = FunctionFor(member, uses);
    if (function == nullptr) {
        return DISP_E_MEMBERNOTFOUND;
    }
    SetErrorInfo(0, nullptr);  // what an earlier call has left is none of this one's failure
    return function->Use == DispatchPropertyPut ? Write(object, *function, parameters, exception, badArgument)
                                                : Read(object, *function, parameters, result, exception);
}

}  // namespace drilldown
