#include "automation/LibraryDescription.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "automation/InterfaceDescription.h"
#include "host/ModuleState.h"

namespace drilldown {
namespace {

constexpr char LibraryName[] = "QLADrillDown";
constexpr char LibraryHelp[] = "QUILLARA Drill-Down Explorer Library";
constexpr std::int32_t Portable = 1;  // no system of its own: 32 bits
constexpr TLIBATTR LibraryAttributes{LIBID_QLADrillDown, LibraryLanguage, Portable, 1, 0, 0};

const InterfaceFacts* InterfaceAt(std::uint32_t place) {
    return place < Interfaces().size() ? Interfaces()[place] : nullptr;
}

HRESULT GiveDescription(const InterfaceFacts* interface, ITypeInfo** information) {
    *information = interface == nullptr ? nullptr : &DescriptionAt(interface->Place);
    if (*information == nullptr) {
        return TYPE_E_ELEMENTNOTFOUND;
    }
    (*information)->AddRef();
    return S_OK;
}

/// The member of an interface's own that bears a name, or UnknownMember for the interface's name; false for neither.
bool FindOwn(const InterfaceFacts& interface, std::u16string_view name, DISPID& id) {
    const auto member = std::ranges::find_if(interface.Members,
                                             [name](const AutomationMember& each) { return IsNamed(each.Name, name); });
    id = member == interface.Members.end() ? UnknownMember : member->Id;
    return id != UnknownMember || IsNamed(interface.Name, name);
}

class LibraryDescription final : public ITypeLib {
  public:
    HRESULT QueryInterface(const GUID& id, void** object) override {
        *object = id == IUnknown::Id || id == ITypeLib::Id ? this : nullptr;
        if (*object == nullptr) {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    std::uint32_t AddRef() override { return static_cast<std::uint32_t>(++OrvGetAppModuleState()->Locks); }
    std::uint32_t Release() override { return static_cast<std::uint32_t>(--OrvGetAppModuleState()->Locks); }

    std::uint32_t GetTypeInfoCount() override { return static_cast<std::uint32_t>(Interfaces().size()); }
    HRESULT GetTypeInfo(std::uint32_t index, ITypeInfo** information) override {
        return GiveDescription(InterfaceAt(index), information);
    }
    HRESULT GetTypeInfoType(std::uint32_t index, TypeKind* kind) override {
        *kind = TypeKind::Interface;
        return InterfaceAt(index) == nullptr ? TYPE_E_ELEMENTNOTFOUND : S_OK;
    }
    HRESULT GetTypeInfoOfGuid(const GUID& id, ITypeInfo** information) override {
        const auto found = std::ranges::find_if(
            Interfaces(), [&](const InterfaceFacts* each) { return each->Attributes.Identifier == id; });
        return GiveDescription(found == Interfaces().end() ? nullptr : *found, information);
    }
    HRESULT GetLibAttr(const TLIBATTR** attributes) override {
        *attributes = &LibraryAttributes;
        return S_OK;
    }
    HRESULT GetTypeComp(ITypeComp** /*compiler*/) override { return E_NOTIMPL; }
    HRESULT GetDocumentation(std::int32_t index, BSTR* name, BSTR* help, std::uint32_t* helpContext,
                             BSTR* helpFile) override {
        const Documentation places{name, help, helpContext, helpFile};
        if (index == UnknownMember) {
            return GiveDocumentation(LibraryName, LibraryHelp, places);
        }
        const InterfaceFacts* interface = InterfaceAt(static_cast<std::uint32_t>(index));
        return interface == nullptr ? TYPE_E_ELEMENTNOTFOUND
                                    : GiveDocumentation(interface->Name, interface->Help, places);
    }
    HRESULT IsName(BSTR name, std::uint32_t /*hash*/, std::int32_t* isName) override {
        DISPID ignored = UnknownMember;
        *isName = std::ranges::any_of(
            Interfaces(), [&](const InterfaceFacts* each) { return FindOwn(*each, ViewOf(name), ignored); });
        return S_OK;
    }
    HRESULT FindName(BSTR name, std::uint32_t /*hash*/, ITypeInfo** information, DISPID* members,
                     std::uint16_t* count) override {
        const std::uint16_t room = std::exchange(*count, std::uint16_t{0});
        for (const InterfaceFacts* interface : Interfaces()) {
            if (*count < room && FindOwn(*interface, ViewOf(name), members[*count])) {
                static_cast<void>(GiveDescription(interface, &information[*count]));
                ++*count;
            }
        }
        return S_OK;
    }
    void ReleaseTLibAttr(const TLIBATTR* /*attributes*/) override {}
};

}  // namespace

HRESULT GiveText(std::string_view text, BSTR* place) {
    if (place == nullptr) {
        return S_OK;
    }
    *place = SysAllocStringLen(nullptr, static_cast<std::uint32_t>(text.size()));
    if (*place == nullptr) {
        return E_OUTOFMEMORY;
    }
    std::ranges::copy(text, *place);
    return S_OK;
}

HRESULT GiveDocumentation(const char* name, const char* help, const Documentation& places) {
    if (places.HelpContext != nullptr) {
        *places.HelpContext = 0;
    }
    const HRESULT statuses[]{GiveText(name, places.Name), GiveText(help, places.Help),
                             GiveText(HelpFile, places.HelpFile)};
    if (std::ranges::all_of(statuses, Succeeded)) {
        return S_OK;
    }
    for (BSTR* place : {places.Name, places.Help, places.HelpFile}) {
        if (place != nullptr) {
            SysFreeString(std::exchange(*place, nullptr));
        }
    }
    return E_OUTOFMEMORY;
}

ITypeLib& TheLibrary() {
    static LibraryDescription library;
    return library;
}

}  // namespace drilldown
