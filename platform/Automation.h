#pragma once

#include <cstdint>

#include "platform/AutomationText.h"
#include "platform/Guid.h"
#include "platform/Handles.h"
#include "platform/Status.h"
#include "platform/Variant.h"

// The automation interfaces of the contract between the module and its host: counted objects, objects called by the
// names of their members, and events. They follow the layout that component automation gives them everywhere.

/// A counted object: it lives as long as somebody holds a reference.
struct IUnknown {
    static constexpr GUID Id = GuidOf("{00000000-0000-0000-C000-000000000046}");

    /// Writes the interface of that identifier, with a reference for the caller, or null and E_NOINTERFACE.
    virtual HRESULT QueryInterface(const GUID& id, void** object) = 0;
    virtual std::uint32_t AddRef() = 0;
    virtual std::uint32_t Release() = 0;

  protected:
    ~IUnknown() = default;
};

struct ITypeInfo;

/// Number of a member of a dispatch interface.
using DISPID = std::int32_t;

/// The member that a name alone stands for.
inline constexpr DISPID DefaultMember = 0;
/// A name that isn't known.
inline constexpr DISPID UnknownMember = -1;
/// The fixed named argument of a property put.
inline constexpr DISPID PropertyPutArgument = -3;

/// A language of names and texts. All objects here answer alike in any.
using LCID = std::uint32_t;
inline constexpr LCID NeutralLanguage = 0;

/// What Invoke is to do with a member; may be combined.
enum DispatchFlag : std::uint16_t {
    DispatchMethod = 1,
    DispatchPropertyGet = 2,
    DispatchPropertyPut = 4,
    DispatchPropertyPutReference = 8,
};

/// The arguments of a call, last one first; the named ones lead. They stay the caller's.
struct DISPPARAMS {
    VARIANT* Arguments = nullptr;
    DISPID* NamedArguments = nullptr;
    std::uint32_t Count = 0;
    std::uint32_t NamedCount = 0;
};

/// What a failing member says of its failure; the texts are the caller's to free.
struct EXCEPINFO {
    std::uint16_t Code = 0;
    std::uint16_t Reserved = 0;
    BSTR Source = nullptr;
    BSTR Description = nullptr;
    BSTR HelpFile = nullptr;
    std::uint32_t HelpContext = 0;
    void* ReservedPointer = nullptr;
    HRESULT (*DeferredFillIn)(EXCEPINFO*) = nullptr;
    HRESULT Status = S_OK;
};

/// An object that is called by the names of its members.
struct IDispatch : IUnknown {
    static constexpr GUID Id = GuidOf("{00020400-0000-0000-C000-000000000046}");

    /// 1 when the object tells of its members, else 0.
    virtual HRESULT GetTypeInfoCount(std::uint32_t* count) = 0;
    /// What the object tells of its members, with a reference for the caller. DISP_E_BADINDEX for any index but 0,
    /// E_POINTER without a place for it, E_NOTIMPL from an object that tells nothing.
    virtual HRESULT GetTypeInfo(std::uint32_t index, LCID language, ITypeInfo** information) = 0;
    /// Numbers of `count` names, each of UTF-16 with a zero at its end; DISP_E_UNKNOWNNAME when one isn't known. The
    /// first name is that of a member, the others are those of its arguments. `reserved` is GUID_NULL.
    virtual HRESULT GetIDsOfNames(const GUID& reserved, const char16_t* const* names, std::uint32_t count,
                                  LCID language, DISPID* ids) = 0;
    /// Calls a member, reads it or writes it. `result`, `exception` and `badArgument` may be null; the last gets the
    /// index of the argument that can't be used. `reserved` is GUID_NULL.
    virtual HRESULT Invoke(DISPID member, const GUID& reserved, LCID language, std::uint16_t flags,
                           const DISPPARAMS& parameters, VARIANT* result, EXCEPINFO* exception,
                           std::uint32_t* badArgument) = 0;

  protected:
    ~IDispatch() = default;
};

/// Its part of an object that is called by names and tells nothing of them.
template <typename Interface>
struct WithoutTypeInfo : Interface {
    HRESULT GetTypeInfoCount(std::uint32_t* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT GetTypeInfo(std::uint32_t /*index*/, LCID /*language*/, ITypeInfo** information) override {
        *information = nullptr;
        return E_NOTIMPL;
    }
};
