#include "automation/DispatchByName.h"

namespace {

HRESULT NumberOf(IDispatch* object, const char16_t* name, DISPID* member) {
    return object == nullptr ? E_POINTER : object->GetIDsOfNames(GUID_NULL, &name, 1, NeutralLanguage, member);
}

bool HoldsObject(const VARIANT& value) {
    return value.Type == VariantType::Dispatch || value.Type == VariantType::Unknown;
}

HRESULT Call(IDispatch* object, DISPID member, DispatchFlag use, const DISPPARAMS& parameters, VARIANT* result) {
    return object->Invoke(member, GUID_NULL, NeutralLanguage, use, parameters, result, nullptr, nullptr);
}

}  // namespace

HRESULT PutProperty(IDispatch* object, const char16_t* name, VARIANT value) {
    DISPID member = 0;
    if (const HRESULT status = NumberOf(object, name, &member); !Succeeded(status)) {
        return status;
    }
    DISPID named = PropertyPutArgument;
    const DISPPARAMS parameters{&value, &named, 1, 1};
    if (HoldsObject(value)) {
        if (const HRESULT status = Call(object, member, DispatchPropertyPutReference, parameters, nullptr);
            Succeeded(status)) {
            return status;
        }
    }
    return Call(object, member, DispatchPropertyPut, parameters, nullptr);
}

CountedPointer<IUnknown> GetObjectProperty(IDispatch* object, const char16_t* name) {
    DISPID member = 0;
    VARIANT value;
    if (!Succeeded(NumberOf(object, name, &member)) ||
        !Succeeded(Call(object, member, DispatchPropertyGet, {}, &value))) {
        return {};
    }
    if (!HoldsObject(value)) {
        VariantClear(value);
        return {};
    }
    IUnknown* held = value.Type == VariantType::Dispatch ? value.Dispatch : value.Unknown;
    return CountedPointer<IUnknown>::Adopt(held);
}

HRESULT CallMethod(IDispatch* object, const char16_t* name) {
    DISPID member = 0;
    const HRESULT status = NumberOf(object, name, &member);
    return Succeeded(status) ? Call(object, member, DispatchMethod, {}, nullptr) : status;
}
