#include "automation/InterfaceDescription.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "automation/LibraryDescription.h"
#include "automation/MemberCall.h"
#include "host/ModuleState.h"

namespace drilldown {
namespace {

/// The only reference to another interface that a description gives: to its base.
constexpr std::uint32_t BaseReference = 1;
constexpr DISPID ResultArgument = 0;

/// Tells of one interface. Constant, and as long there as the module: a reference is a lock on that.
class InterfaceDescription final : public ITypeInfo {
  public:
    constexpr explicit InterfaceDescription(const InterfaceFacts& facts) : Facts(facts) {}

    HRESULT QueryInterface(const GUID& id, void** object) override {
        *object = id == IUnknown::Id || id == ITypeInfo::Id ? this : nullptr;
        if (*object == nullptr) {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    std::uint32_t AddRef() override { return static_cast<std::uint32_t>(++OrvGetAppModuleState()->Locks); }
    std::uint32_t Release() override { return static_cast<std::uint32_t>(--OrvGetAppModuleState()->Locks); }

    HRESULT GetTypeAttr(const TYPEATTR** attributes) override {
        *attributes = &Facts.Attributes;
        return S_OK;
    }
    HRESULT GetFuncDesc(std::uint32_t index, const FUNCDESC** function) override {
        *function = index < Facts.Functions.size() ? &Facts.Functions[index] : nullptr;
        return *function == nullptr ? TYPE_E_ELEMENTNOTFOUND : S_OK;
    }
    HRESULT GetNames(DISPID member, BSTR* names, std::uint32_t room, std::uint32_t* count) override;
    HRESULT GetRefTypeOfImplType(std::uint32_t index, std::uint32_t* reference) override {
        *reference = BaseReference;
        return index == 0 && Facts.Base != nullptr ? S_OK : TYPE_E_ELEMENTNOTFOUND;
    }
    HRESULT GetImplTypeFlags(std::uint32_t index, std::int32_t* flags) override {
        *flags = 0;
        return index == 0 && Facts.Base != nullptr ? S_OK : TYPE_E_ELEMENTNOTFOUND;
    }
    HRESULT GetIDsOfNames(const char16_t* const* names, std::uint32_t count, DISPID* ids) override;
    HRESULT Invoke(void* object, DISPID member, std::uint16_t flags, const DISPPARAMS& parameters, VARIANT* result,
                   EXCEPINFO* exception, std::uint32_t* badArgument) override {
        const AutomationMember* row = FindMember(Facts, member);
        return row == nullptr ? DISP_E_MEMBERNOTFOUND
                              : CallMember(*static_cast<IDispatch*>(object), *row, flags, parameters, result, exception,
                                           badArgument);
    }
    HRESULT GetDocumentation(DISPID member, BSTR* name, BSTR* help, std::uint32_t* helpContext,
                             BSTR* helpFile) override;
    HRESULT GetRefTypeInfo(std::uint32_t reference, ITypeInfo** information) override {
        if (reference != BaseReference || Facts.Base == nullptr) {
            return TYPE_E_ELEMENTNOTFOUND;
        }
        *information = &DescriptionAt(Facts.Base->Place);
        (*information)->AddRef();
        return S_OK;
    }
    HRESULT GetContainingTypeLib(ITypeLib** library, std::uint32_t* index) override {
        *library = &TheLibrary();
        (*library)->AddRef();
        if (index != nullptr) {
            *index = Facts.Place;
        }
        return S_OK;
    }

    // Descriptions are constant: nothing is released.

    void ReleaseTypeAttr(const TYPEATTR* /*attributes*/) override {}
    void ReleaseFuncDesc(const FUNCDESC* /*function*/) override {}
    void ReleaseVarDesc(const VARDESC* /*variable*/) override {}

    // What nothing here needs

    HRESULT GetTypeComp(ITypeComp** /*compiler*/) override { return E_NOTIMPL; }
    HRESULT GetVarDesc(std::uint32_t /*index*/, const VARDESC** /*variable*/) override { return E_NOTIMPL; }
    HRESULT GetDllEntry(DISPID /*member*/, std::int32_t /*use*/, BSTR* /*library*/, BSTR* /*name*/,
                        std::uint16_t* /*number*/) override {
        return E_NOTIMPL;
    }
    HRESULT AddressOfMember(DISPID /*member*/, std::int32_t /*use*/, void** /*address*/) override { return E_NOTIMPL; }
    HRESULT CreateInstance(IUnknown* /*outer*/, const GUID& /*id*/, void** /*object*/) override { return E_NOTIMPL; }
    HRESULT GetMops(DISPID /*member*/, BSTR* /*text*/) override { return E_NOTIMPL; }

  private:
    const InterfaceFacts& Facts;
};

/// Whether a member has something to give, which then has a name.
bool GivesResult(const AutomationMember& member) {
    const MemberFunction& first = member.Functions.front();
    return first.Use != DispatchPropertyPut && first.Kind != ValueKind::None;
}

HRESULT InterfaceDescription::GetNames(DISPID member, BSTR* names, std::uint32_t room, std::uint32_t* count) {
    *count = 0;
    const AutomationMember* row = FindMember(Facts, member);
    if (row == nullptr) {
        return TYPE_E_ELEMENTNOTFOUND;
    }
    const std::array texts{row->Name, row->Result};
    const std::uint32_t told = std::min(room, GivesResult(*row) ? 2U : 1U);
    for (; *count < told; ++*count) {
        if (const HRESULT status = GiveText(texts[*count], &names[*count]); !Succeeded(status)) {
            return status;
        }
    }
    return S_OK;
}

HRESULT InterfaceDescription::GetIDsOfNames(const char16_t* const* names, std::uint32_t count, DISPID* ids) {
    std::fill_n(ids, count, UnknownMember);
    const AutomationMember* member = count == 0 ? nullptr : FindMember(Facts, std::u16string_view(names[0]));
    if (member == nullptr) {
        return count == 0 ? S_OK : DISP_E_UNKNOWNNAME;
    }
    ids[0] = member->Id;
    for (std::uint32_t i = 1; i < count; ++i) {
        if (GivesResult(*member) && IsNamed(member->Result, names[i])) {
            ids[i] = ResultArgument;
        }
    }
    return std::ranges::find(ids, ids + count, UnknownMember) == ids + count ? S_OK : DISP_E_UNKNOWNNAME;
}

HRESULT InterfaceDescription::GetDocumentation(DISPID member, BSTR* name, BSTR* help, std::uint32_t* helpContext,
                                               BSTR* helpFile) {
    const AutomationMember* row = FindMember(Facts, member);
    if (row == nullptr && member != UnknownMember) {
        return TYPE_E_ELEMENTNOTFOUND;
    }
    return GiveDocumentation(row == nullptr ? Facts.Name : row->Name, row == nullptr ? Facts.Help : row->Help,
                             {name, help, helpContext, helpFile});
}

}  // namespace

ITypeInfo& DescriptionAt(std::uint32_t place) {
    static InterfaceDescription dialog(*Interfaces()[0]);
    static InterfaceDescription startup(*Interfaces()[1]);
    return place == 0 ? dialog : startup;
}

ITypeInfo& StartupDescription() {
    return DescriptionAt(1);
}

}  // namespace drilldown
