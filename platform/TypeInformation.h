#pragma once

#include <cstdint>

#include "platform/Automation.h"

// What objects tell of their members: names, numbers, kinds, types, help. The structures are the common ones of
// component automation as far as interfaces need them.

struct ITypeComp;
struct ITypeLib;

/// Kind of a type.
enum class TypeKind : std::int32_t { Interface = 3, Dispatch = 4 };

/// The type of an argument or a result. Pointers stand before what they point to, in Pointed.
struct TYPEDESC {
    const TYPEDESC* Pointed = nullptr;  ///< of a pointer
    std::uint16_t Type = 0;  ///< a VariantType, or PointerType
};

inline constexpr std::uint16_t PointerType = 26;
inline constexpr std::uint16_t StatusType = 25;
inline constexpr std::uint16_t NoType = 24;

/// Use of an argument; may be combined.
enum ParameterFlag : std::uint16_t { ParameterIn = 1, ParameterOut = 2, ParameterResult = 8 };

struct ELEMDESC {
    TYPEDESC Type;
    std::uint16_t Flags = 0;
};

/// One function of an interface.
struct FUNCDESC {
    DISPID Member = 0;
    std::int32_t Use = 0;  ///< one DispatchFlag
    std::int16_t ParameterCount = 0;
    std::int16_t Slot = 0;  ///< its place in the table of the interface, in bytes
    const ELEMDESC* Parameters = nullptr;
    ELEMDESC Result;
};

/// An interface as a whole.
struct TYPEATTR {
    GUID Identifier;
    LCID Language = 0;
    TypeKind Kind = TypeKind::Dispatch;
    std::uint16_t FunctionCount = 0;
    std::uint16_t VariableCount = 0;
    std::uint16_t BaseCount = 0;
    std::uint16_t MajorVersion = 0;
    std::uint16_t MinorVersion = 0;
    std::uint16_t Flags = 0;  ///< TypeFlag
};

/// Of an interface: also called directly; only with types of automation.
enum TypeFlag : std::uint16_t { DualType = 0x40, AutomationType = 0x100, DispatchableType = 0x1000 };

struct VARDESC;

/// What is told of one interface. Descriptions that are given out stay valid until they are released. Where the common
/// interface has slots that nothing here needs, they answer E_NOTIMPL.
struct ITypeInfo : IUnknown {
    static constexpr GUID Id = GuidOf("{00020401-0000-0000-C000-000000000046}");

    virtual HRESULT GetTypeAttr(const TYPEATTR** attributes) = 0;
    virtual HRESULT GetTypeComp(ITypeComp** compiler) = 0;
    /// The function at a place from 0, those of the base interface left out; TYPE_E_ELEMENTNOTFOUND beyond.
    virtual HRESULT GetFuncDesc(std::uint32_t index, const FUNCDESC** function) = 0;
    virtual HRESULT GetVarDesc(std::uint32_t index, const VARDESC** variable) = 0;
    /// The name of a member, and those of its arguments behind it, as many as there is room for.
    virtual HRESULT GetNames(DISPID member, BSTR* names, std::uint32_t room, std::uint32_t* count) = 0;
    virtual HRESULT GetRefTypeOfImplType(std::uint32_t index, std::uint32_t* reference) = 0;
    virtual HRESULT GetImplTypeFlags(std::uint32_t index, std::int32_t* flags) = 0;
    virtual HRESULT GetIDsOfNames(const char16_t* const* names, std::uint32_t count, DISPID* ids) = 0;
    /// Calls a member of `object`, which has the interface.
    virtual HRESULT Invoke(void* object, DISPID member, std::uint16_t flags, const DISPPARAMS& parameters,
                           VARIANT* result, EXCEPINFO* exception, std::uint32_t* badArgument) = 0;
    /// Name and help of a member, of the interface itself for UnknownMember. Each place may be null.
    virtual HRESULT GetDocumentation(DISPID member, BSTR* name, BSTR* help, std::uint32_t* helpContext,
                                     BSTR* helpFile) = 0;
    virtual HRESULT GetDllEntry(DISPID member, std::int32_t use, BSTR* library, BSTR* name, std::uint16_t* number) = 0;
    /// The base interface, by a reference that GetRefTypeOfImplType gave.
    virtual HRESULT GetRefTypeInfo(std::uint32_t reference, ITypeInfo** information) = 0;
    virtual HRESULT AddressOfMember(DISPID member, std::int32_t use, void** address) = 0;
    virtual HRESULT CreateInstance(IUnknown* outer, const GUID& id, void** object) = 0;
    virtual HRESULT GetMops(DISPID member, BSTR* text) = 0;
    /// The library that holds the interface, and its place there.
    virtual HRESULT GetContainingTypeLib(ITypeLib** library, std::uint32_t* index) = 0;
    virtual void ReleaseTypeAttr(const TYPEATTR* attributes) = 0;
    virtual void ReleaseFuncDesc(const FUNCDESC* function) = 0;
    virtual void ReleaseVarDesc(const VARDESC* variable) = 0;

  protected:
    ~ITypeInfo() = default;
};

/// A library as a whole.
struct TLIBATTR {
    GUID Identifier;
    LCID Language = 0;
    std::int32_t System = 0;
    std::uint16_t MajorVersion = 0;
    std::uint16_t MinorVersion = 0;
    std::uint16_t Flags = 0;
};

/// What is told of a library of interfaces.
struct ITypeLib : IUnknown {
    static constexpr GUID Id = GuidOf("{00020402-0000-0000-C000-000000000046}");

    virtual std::uint32_t GetTypeInfoCount() = 0;
    virtual HRESULT GetTypeInfo(std::uint32_t index, ITypeInfo** information) = 0;
    virtual HRESULT GetTypeInfoType(std::uint32_t index, TypeKind* kind) = 0;
    virtual HRESULT GetTypeInfoOfGuid(const GUID& id, ITypeInfo** information) = 0;
    virtual HRESULT GetLibAttr(const TLIBATTR** attributes) = 0;
    virtual HRESULT GetTypeComp(ITypeComp** compiler) = 0;
    /// Name and help of an interface by its place, of the library itself for -1.
    virtual HRESULT GetDocumentation(std::int32_t index, BSTR* name, BSTR* help, std::uint32_t* helpContext,
                                     BSTR* helpFile) = 0;
    virtual HRESULT IsName(BSTR name, std::uint32_t hash, std::int32_t* isName) = 0;
    virtual HRESULT FindName(BSTR name, std::uint32_t hash, ITypeInfo** information, DISPID* members,
                             std::uint16_t* count) = 0;
    virtual void ReleaseTLibAttr(const TLIBATTR* attributes) = 0;

  protected:
    ~ITypeLib() = default;
};
