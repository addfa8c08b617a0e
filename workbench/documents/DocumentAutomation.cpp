// What automation sees of a result document.

#include <algorithm>
#include <array>
#include <string_view>

#include "workbench/documents/ResultDocument.h"
#include "workbench/documents/Walk.h"

namespace quillara {
namespace {

// Numbers of the members; scripts may keep them.
enum Member : DISPID { SavedMember = 1, VisibleMember = 2, WindowMember = 3, ActivateMember = 4 };

struct MemberRow {
    std::u16string_view Name;
    DISPID Number;
    std::uint16_t Uses;  ///< what may be done with it
};

constexpr std::uint16_t ReadAndWrite = DispatchPropertyGet | DispatchPropertyPut;

// clang-format off
constexpr std::array<MemberRow, 4> Members{{
    // Name       Number          Uses
    {u"Saved",    SavedMember,    ReadAndWrite},
    {u"Visible",  VisibleMember,  ReadAndWrite},
    {u"Window",   WindowMember,   DispatchPropertyGet},
    {u"Activate", ActivateMember, DispatchMethod},
}};
// clang-format on

}  // namespace

HRESULT ResultDocument::QueryInterface(const GUID& id, void** object) {
    *object = nullptr;
    if (void* face = Faces.Find(id)) {
        *object = face;
    } else if (id == IUnknown::Id || id == IDispatch::Id || id == Kind().Document) {
        *object = static_cast<IDispatch*>(this);
    } else if (id == IConnectionPointContainer::Id) {
        *object = static_cast<IConnectionPointContainer*>(this);
    } else {
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

HRESULT ResultDocument::EnumConnectionPoints(IEnumConnectionPoints** points) {
    return MakeWalk(points, std::vector{CountedPointer<IConnectionPoint>::Share(&Point)});
}

HRESULT ResultDocument::FindConnectionPoint(const GUID& events, IConnectionPoint** point) {
    *point = nullptr;
    if (events != Kind().Events) {
        return CONNECT_E_NOCONNECTION;
    }
    *point = &Point;
    AddRef();
    return S_OK;
}

HRESULT ResultDocument::GetIDsOfNames(const GUID& /*reserved*/, const char16_t* const* names, std::uint32_t count,
                                      LCID /*language*/, DISPID* ids) {
    std::fill_n(ids, count, UnknownMember);
    if (count == 0) {
        return E_INVALIDARG;
    }
    const auto* row = std::ranges::find(Members, std::u16string_view(names[0]), &MemberRow::Name);
    if (row == Members.end()) {
        return DISP_E_UNKNOWNNAME;
    }
    ids[0] = row->Number;
    return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;  // no member has an argument with a name
}

HRESULT ResultDocument::Invoke(DISPID member, const GUID& /*reserved*/, LCID /*language*/, std::uint16_t flags,
                               const DISPPARAMS& parameters, VARIANT* result, EXCEPINFO* /*exception*/,
                               std::uint32_t* badArgument) {
    const auto* row = std::ranges::find(Members, member, &MemberRow::Number);
    const unsigned use = row == Members.end() ? 0U : static_cast<unsigned>(flags & row->Uses);
    if (use == 0) {
        return DISP_E_MEMBERNOTFOUND;
    }
    if ((use & DispatchPropertyPut) != 0) {
        const HRESULT status = Put(member, parameters);
        if (status == DISP_E_TYPEMISMATCH && badArgument != nullptr) {
            *badArgument = 0;
        }
        return status;
    }
    if (parameters.Count != 0) {
        return DISP_E_BADPARAMCOUNT;
    }
    if (use == DispatchMethod) {
        return Activate() ? S_OK : E_FAIL;
    }
    return result == nullptr ? E_POINTER : Get(member, result);
}

HRESULT ResultDocument::Get(DISPID member, VARIANT* result) {
    if (member == WindowMember) {
        result->Type = VariantType::Unknown;
        result->Unknown = &Window;
        AddRef();
    } else {
        *result = BooleanVariant(member == SavedMember ? Saved : Visible);
    }
    return S_OK;
}

HRESULT ResultDocument::Put(DISPID member, const DISPPARAMS& parameters) {
    if (parameters.Count != 1) {
        return DISP_E_BADPARAMCOUNT;
    }
    const VARIANT& value = parameters.Arguments[0];
    if (value.Type != VariantType::Boolean) {
        return DISP_E_TYPEMISMATCH;
    }
    if (member == VisibleMember) {
        return SetVisible(value.Boolean != 0) ? S_OK : E_FAIL;
    }
    Saved = value.Boolean != 0;
    return S_OK;
}

}  // namespace quillara
