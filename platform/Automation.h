#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "platform/Handles.h"

// The automation types of the contract between the module and its host: status codes, identifiers, counted interfaces
// and values. They follow the layout that component automation gives them everywhere.

/// Status of a call: negative values are failures.
using HRESULT = std::int32_t;

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;
inline constexpr HRESULT E_NOTIMPL = static_cast<HRESULT>(0x80004001U);
inline constexpr HRESULT E_NOINTERFACE = static_cast<HRESULT>(0x80004002U);
inline constexpr HRESULT E_POINTER = static_cast<HRESULT>(0x80004003U);
inline constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005U);
inline constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000EU);
inline constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057U);
inline constexpr HRESULT DISP_E_MEMBERNOTFOUND = static_cast<HRESULT>(0x80020003U);
inline constexpr HRESULT DISP_E_TYPEMISMATCH = static_cast<HRESULT>(0x80020005U);
inline constexpr HRESULT DISP_E_UNKNOWNNAME = static_cast<HRESULT>(0x80020006U);
inline constexpr HRESULT DISP_E_BADINDEX = static_cast<HRESULT>(0x8002000BU);
inline constexpr HRESULT DISP_E_BADPARAMCOUNT = static_cast<HRESULT>(0x8002000EU);
inline constexpr HRESULT CONNECT_E_NOCONNECTION = static_cast<HRESULT>(0x80040200U);

[[nodiscard]] constexpr bool Succeeded(HRESULT status) noexcept {
    return status >= 0;
}

/// Identifier of an interface, a class or a library.
struct GUID {
    std::uint32_t Data1 = 0;
    std::uint16_t Data2 = 0;
    std::uint16_t Data3 = 0;
    std::array<std::uint8_t, 8> Data4{};

    friend constexpr bool operator==(const GUID&, const GUID&) = default;
};

namespace automation {

/// The number that the hexadecimal digits of a text stand for; dashes and braces are passed over.
consteval std::uint64_t HexadecimalValue(std::string_view digits) {
    std::uint64_t value = 0;
    for (const char digit : digits) {
        if (digit >= '0' && digit <= '9') {
            value = value * 16 + static_cast<std::uint64_t>(digit - '0');
        } else if (digit >= 'A' && digit <= 'F') {
            value = value * 16 + static_cast<std::uint64_t>(digit - 'A') + 10;
        }
    }
    return value;
}

}  // namespace automation

/// The identifier that a text of the form {C9E2A006-3D45-11D4-9FF4-00C04FA0D540} stands for.
consteval GUID GuidOf(std::string_view text) {
    GUID guid;
    guid.Data1 = static_cast<std::uint32_t>(automation::HexadecimalValue(text.substr(1, 8)));
    guid.Data2 = static_cast<std::uint16_t>(automation::HexadecimalValue(text.substr(10, 4)));
    guid.Data3 = static_cast<std::uint16_t>(automation::HexadecimalValue(text.substr(15, 4)));
    std::uint64_t last = automation::HexadecimalValue(text.substr(20, 17));
    for (auto byte = guid.Data4.rbegin(); byte != guid.Data4.rend(); ++byte) {
        *byte = static_cast<std::uint8_t>(last & 0xFF);
        last >>= 8;
    }
    return guid;
}

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

/// What a value of automation holds.
enum class VariantType : std::uint16_t {
    Empty = 0,
    Integer = 3,  ///< 32 bits
    Real = 5,
    Text = 8,
    Dispatch = 9,
    Boolean = 11,
    Unknown = 13,
    IntegerByReference = 0x4003,
    MachineIntegerByReference = 0x4016,  ///< the same 32 bits by another name
};

/// A value of automation. It owns nothing: interfaces, texts and references are the caller's; an interface that is a
/// result carries a reference for the caller.
struct VARIANT {
    VariantType Type = VariantType::Empty;
    union {
        std::int32_t Integer = 0;
        double Real;
        const char16_t* Text;
        IDispatch* Dispatch;
        IUnknown* Unknown;
        std::int16_t Boolean;  ///< -1 true, 0 false
        std::int32_t* IntegerReference;
    };
};

/// A boolean of automation: all bits set for true.
[[nodiscard]] constexpr VARIANT BooleanVariant(bool value) noexcept {
    VARIANT variant;
    variant.Type = VariantType::Boolean;
    variant.Boolean = static_cast<std::int16_t>(value ? -1 : 0);
    return variant;
}

/// Number of a member of a dispatch interface.
using DISPID = std::int32_t;

/// The fixed named argument of a property put.
inline constexpr DISPID PropertyPutArgument = -3;

/// What Invoke is to do with a member; may be combined.
enum DispatchFlag : std::uint16_t {
    DispatchMethod = 1,
    DispatchPropertyGet = 2,
    DispatchPropertyPut = 4,
    DispatchPropertyPutReference = 8,
};

/// The arguments of a call, last one first; the named ones lead.
struct DISPPARAMS {
    VARIANT* Arguments = nullptr;
    DISPID* NamedArguments = nullptr;
    std::uint32_t Count = 0;
    std::uint32_t NamedCount = 0;
};

/// An object that is called by the names of its members.
struct IDispatch : IUnknown {
    static constexpr GUID Id = GuidOf("{00020400-0000-0000-C000-000000000046}");

    /// Numbers of `count` names, each of UTF-16 with a zero at its end; DISP_E_UNKNOWNNAME when one isn't known.
    virtual HRESULT GetIDsOfNames(const char16_t* const* names, std::uint32_t count, DISPID* ids) = 0;
    /// Calls a member, reads it or writes it. `result` may be null.
    virtual HRESULT Invoke(DISPID member, std::uint16_t flags, const DISPPARAMS& parameters, VARIANT* result) = 0;

  protected:
    ~IDispatch() = default;
};

/// A place where listeners are told the events of one interface.
struct IConnectionPoint : IUnknown {
    static constexpr GUID Id = GuidOf("{B196B286-BAB4-101A-B69C-00AA00341D07}");

    /// Connects a listener, of which a reference is taken, and writes the number of the connection.
    virtual HRESULT Advise(IUnknown* listener, std::uint32_t* cookie) = 0;
    /// Ends a connection; CONNECT_E_NOCONNECTION when there is none of that number.
    virtual HRESULT Unadvise(std::uint32_t cookie) = 0;

  protected:
    ~IConnectionPoint() = default;
};

/// An object that has connection points.
struct IConnectionPointContainer : IUnknown {
    static constexpr GUID Id = GuidOf("{B196B284-BAB4-101A-B69C-00AA00341D07}");

    /// The point of an events interface, with a reference for the caller; CONNECT_E_NOCONNECTION when there is none.
    virtual HRESULT FindConnectionPoint(const GUID& events, IConnectionPoint** point) = 0;

  protected:
    ~IConnectionPointContainer() = default;
};
