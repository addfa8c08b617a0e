// What objects tell of their members.

#include <algorithm>
#include <array>
#include <new>
#include <vector>

#include "platform/CountedObject.h"
#include "platform/OwnedText.h"
#include "platform/TypeInformation.h"
#include "workbench/documents/MemberTable.h"
#include "workbench/documents/WideText.h"

namespace quillara {
namespace {

constexpr std::uint16_t TypeNumber(VariantType type) {
    return type == VariantType::Empty ? NoType : static_cast<std::uint16_t>(type);
}

/// Writes a text where there is room for it.
HRESULT Write(std::u16string_view text, BSTR* place) {
    if (place == nullptr) {
        return S_OK;
    }
    *place = SysAllocString(text);
    return *place == nullptr ? E_OUTOFMEMORY : S_OK;
}

/// One use of a member: a function of the interface.
struct Function {
    const MemberRow* Row;
    std::array<ELEMDESC, 4> Arguments{};
    FUNCDESC Description;
};

class MemberTypes final : public CountedObject<ITypeInfo> {
  public:
    explicit MemberTypes(const ObjectKind& kind) : Kind(kind) {
        for (const MemberRow& row : kind.Members) {
            for (const int use : {DispatchMethod, DispatchPropertyGet, DispatchPropertyPut}) {
                if ((row.Uses & use) != 0) {
                    Add(row, use);
                }
            }
        }
        for (Function& function : Functions) {
            function.Description.Parameters = function.Arguments.data();
        }
        Attributes.Identifier = kind.Id;
        Attributes.FunctionCount = static_cast<std::uint16_t>(Functions.size());
        Attributes.Flags = DispatchableType;
    }

    HRESULT QueryInterface(const GUID& id, void** object) override {
        *object = id == IUnknown::Id || id == ITypeInfo::Id ? static_cast<ITypeInfo*>(this) : nullptr;
        return *object == nullptr ? E_NOINTERFACE : (AddRef(), S_OK);
    }
    HRESULT GetTypeAttr(const TYPEATTR** attributes) override {
        *attributes = &Attributes;
        return S_OK;
    }
    HRESULT GetFuncDesc(std::uint32_t index, const FUNCDESC** function) override {
        *function = index < Functions.size() ? &Functions[index].Description : nullptr;
        return *function == nullptr ? TYPE_E_ELEMENTNOTFOUND : S_OK;
    }
    HRESULT GetNames(DISPID member, BSTR* names, std::uint32_t room, std::uint32_t* count) override {
        const MemberRow* row = RowOf(member);
        *count = row != nullptr && room > 0 ? 1 : 0;
        return row == nullptr ? TYPE_E_ELEMENTNOTFOUND : *count == 0 ? S_OK : Write(row->Name, names);
    }
    HRESULT GetIDsOfNames(const char16_t* const* names, std::uint32_t count, DISPID* ids) override {
        return FindMember(Kind, names, count, ids);
    }
    HRESULT Invoke(void* object, DISPID member, std::uint16_t flags, const DISPPARAMS& parameters, VARIANT* result,
                   EXCEPINFO* exception, std::uint32_t* badArgument) override {
        return static_cast<IDispatch*>(object)->Invoke(member, GUID_NULL, NeutralLanguage, flags, parameters, result,
                                                       exception, badArgument);
    }
    HRESULT GetDocumentation(DISPID member, BSTR* name, BSTR* help, std::uint32_t* helpContext,
                             BSTR* helpFile) override {
        const MemberRow* row = RowOf(member);
        if (row == nullptr && member != UnknownMember) {
            return TYPE_E_ELEMENTNOTFOUND;
        }
        if (helpContext != nullptr) {
            *helpContext = 0;
        }
        if (helpFile != nullptr) {
            *helpFile = nullptr;
        }
        const HRESULT status = Write(row == nullptr ? Kind.Name : row->Name, name);
        return Succeeded(status) ? Write(WideText(row == nullptr ? Kind.Help : row->Help), help) : status;
    }

    // Nothing here needs these.

    HRESULT GetTypeComp(ITypeComp** compiler) override { return Lacking(compiler); }
    HRESULT GetVarDesc(std::uint32_t /*index*/, const VARDESC** variable) override {
        *variable = nullptr;
        return TYPE_E_ELEMENTNOTFOUND;
    }
    HRESULT GetRefTypeOfImplType(std::uint32_t /*index*/, std::uint32_t* /*reference*/) override { return E_NOTIMPL; }
    HRESULT GetImplTypeFlags(std::uint32_t /*index*/, std::int32_t* /*flags*/) override { return E_NOTIMPL; }
    HRESULT GetDllEntry(DISPID /*member*/, std::int32_t /*use*/, BSTR* /*library*/, BSTR* /*name*/,
                        std::uint16_t* /*number*/) override {
        return E_NOTIMPL;
    }
    HRESULT GetRefTypeInfo(std::uint32_t /*reference*/, ITypeInfo** information) override {
        return Lacking(information);
    }
    HRESULT AddressOfMember(DISPID /*member*/, std::int32_t /*use*/, void** address) override {
        return Lacking(address);
    }
    HRESULT CreateInstance(IUnknown* /*outer*/, const GUID& /*id*/, void** object) override { return Lacking(object); }
    HRESULT GetMops(DISPID /*member*/, BSTR* text) override { return Lacking(text); }
    HRESULT GetContainingTypeLib(ITypeLib** library, std::uint32_t* /*index*/) override { return Lacking(library); }
    void ReleaseTypeAttr(const TYPEATTR* /*attributes*/) override {}
    void ReleaseFuncDesc(const FUNCDESC* /*function*/) override {}
    void ReleaseVarDesc(const VARDESC* /*variable*/) override {}

  private:
    template <typename Thing>
    static HRESULT Lacking(Thing** thing) {
        *thing = nullptr;
        return E_NOTIMPL;
    }
    [[nodiscard]] const MemberRow* RowOf(DISPID member) const {
        const auto row = std::ranges::find(Kind.Members, member, &MemberRow::Number);
        return row == Kind.Members.end() ? nullptr : &*row;
    }
    void Add(const MemberRow& row, int use) {
        Function function{&row, {}, {}};
        const bool isPut = use == DispatchPropertyPut;
        function.Description.Member = row.Number;
        function.Description.Use = use;
        function.Description.ParameterCount = isPut ? std::int16_t{1} : row.Most;
        function.Arguments.fill({{nullptr, TypeNumber(isPut ? row.Value : VariantType::Variant)}, ParameterIn});
        function.Description.Result.Type.Type = isPut ? NoType : TypeNumber(row.Value);
        Functions.push_back(function);
    }

    const ObjectKind& Kind;
    std::vector<Function> Functions;
    TYPEATTR Attributes;
};

}  // namespace

HRESULT TellMembers(const ObjectKind& kind, std::uint32_t index, ITypeInfo** information) noexcept try {
    *information = nullptr;
    if (index != 0) {
        return DISP_E_BADINDEX;
    }
    *information = new MemberTypes(kind);
    return S_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

}  // namespace quillara
