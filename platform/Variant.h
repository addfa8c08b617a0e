#pragma once

#include <cstdint>

#include "platform/AutomationText.h"
#include "platform/Status.h"

struct IDispatch;
struct IUnknown;
struct VARIANT;

/// What a value of automation holds. By reference and in arrays: the type of the value with a flag.
enum class VariantType : std::uint16_t {
    Empty = 0,
    Null = 1,
    ShortInteger = 2,  ///< 16 bits
    Integer = 3,  ///< 32 bits
    SingleReal = 4,
    Real = 5,
    Date = 7,  ///< days since 1899-12-30, as a real number
    Text = 8,
    Dispatch = 9,
    Status = 10,
    Boolean = 11,
    Variant = 12,
    Unknown = 13,
    Byte = 17,
    LongInteger = 20,  ///< 64 bits
    MachineInteger = 22,  ///< 32 bits by another name
    Array = 0x2000,
    ByReference = 0x4000,
};

[[nodiscard]] constexpr VariantType operator|(VariantType left, VariantType right) noexcept {
    return static_cast<VariantType>(static_cast<unsigned>(left) | static_cast<unsigned>(right));
}
[[nodiscard]] constexpr bool Has(VariantType type, VariantType flag) noexcept {
    return (static_cast<unsigned>(type) & static_cast<unsigned>(flag)) != 0;
}
/// The type of what is referred to or stands in the array.
[[nodiscard]] constexpr VariantType Without(VariantType type, VariantType flag) noexcept {
    return static_cast<VariantType>(static_cast<unsigned>(type) & ~static_cast<unsigned>(flag));
}

/// Elements of an array of automation along one dimension.
struct SAFEARRAYBOUND {
    std::uint32_t Count;
    std::int32_t LowerBound;
};

/// An array of automation. Ours have one dimension and hold values (VARIANT) that they own.
struct SAFEARRAY {
    std::uint16_t Dimensions;
    std::uint16_t Features;
    std::uint32_t ElementSize;
    std::uint32_t Locks;
    VARIANT* Data;
    SAFEARRAYBOUND Bounds[1];
};

/// A value of automation. It owns its text, its array, and a reference of its object: VariantClear lets go of them. One
/// that is given to a call stays the caller's; one that is a result is the caller's from then on. What it refers to is
/// somebody else's.
struct VARIANT {  // NOLINT(cppcoreguidelines-pro-type-member-init): one member of the union is set
    VariantType Type = VariantType::Empty;
    std::uint16_t Reserved[3] = {};
    union {
        std::int32_t Integer = 0;
        std::int16_t ShortInteger;
        std::uint8_t Byte;
        std::int64_t LongInteger;
        float SingleReal;
        double Real;
        double Date;
        BSTR Text;
        IDispatch* Dispatch;
        IUnknown* Unknown;
        HRESULT Status;
        std::int16_t Boolean;  ///< -1 true, 0 false
        SAFEARRAY* Array;
        std::int32_t* IntegerReference;
        std::int16_t* ShortIntegerReference;
        double* RealReference;
        BSTR* TextReference;
        IDispatch** DispatchReference;
        std::int16_t* BooleanReference;
        SAFEARRAY** ArrayReference;
        VARIANT* VariantReference;
        void* Reference;
    };
};

/// Lets go of what a value owns and makes it empty.
void VariantClear(VARIANT& value) noexcept;
/// Replaces a value by a copy of another, with a text, an array and a reference of its own. E_OUTOFMEMORY when memory
/// lacks, DISP_E_BADVARTYPE for a type that isn't listed above; the target is then empty.
HRESULT VariantCopy(VARIANT& target, const VARIANT& source) noexcept;
/// The same, of the value that a reference refers to when it is one.
HRESULT VariantCopyInd(VARIANT& target, const VARIANT& source) noexcept;
/// Replaces `target` by `source` as another type; both may be the same. Between numbers, booleans (-1 and 0), dates and
/// texts, the last in the notation of the language; a reference counts as what it refers to. DISP_E_TYPEMISMATCH when
/// it can't be, DISP_E_OVERFLOW when it doesn't fit; the target then stays as it was. Numbers are rounded half to even.
HRESULT VariantChangeType(VARIANT& target, const VARIANT& source, VariantType type) noexcept;

/// An array of empty values, counted from 0; null when memory lacks.
[[nodiscard]] SAFEARRAY* SafeArrayOfVariants(std::uint32_t count) noexcept;
/// Clears the elements and frees the array; null is passed over.
void SafeArrayDestroy(SAFEARRAY* array) noexcept;

[[nodiscard]] inline VARIANT BooleanVariant(bool value) noexcept {
    VARIANT variant;
    variant.Type = VariantType::Boolean;
    variant.Boolean = static_cast<std::int16_t>(value ? -1 : 0);
    return variant;
}
