#pragma once

#include <array>
#include <cstdint>
#include <type_traits>

#include "platform/Automation.h"

// What is known of the members of an automation interface, and how one is called by what is known of it.

namespace drilldown {

/// What a member gives or takes.
enum class ValueKind : std::uint8_t { None, Integer, Real, Text, Object, Value };

/// The kind of a type; None of one that isn't a value of members.
template <typename Type>
inline constexpr ValueKind KindOf = ValueKind::None;
template <>
inline constexpr ValueKind KindOf<int> = ValueKind::Integer;
template <>
inline constexpr ValueKind KindOf<double> = ValueKind::Real;
template <>
inline constexpr ValueKind KindOf<BSTR> = ValueKind::Text;
template <>
inline constexpr ValueKind KindOf<IDispatch*> = ValueKind::Object;
template <>
inline constexpr ValueKind KindOf<VARIANT> = ValueKind::Value;

/// The type of a value of automation that holds a kind.
[[nodiscard]] constexpr VariantType TypeOf(ValueKind kind) noexcept {
    constexpr std::array types{VariantType::Empty, VariantType::Integer,  VariantType::Real,
                               VariantType::Text,  VariantType::Dispatch, VariantType::Variant};
    return types[static_cast<std::size_t>(kind)];
}

/// Where a value holds one of a kind.
template <typename Type>
[[nodiscard]] Type& PlaceIn(VARIANT& value) {
    if constexpr (std::is_same_v<Type, int>) {
        return value.Integer;
    } else if constexpr (std::is_same_v<Type, double>) {
        return value.Real;
    } else if constexpr (std::is_same_v<Type, BSTR>) {
        return value.Text;
    } else if constexpr (std::is_same_v<Type, IDispatch*>) {
        return value.Dispatch;
    } else {
        static_assert(std::is_same_v<Type, VARIANT>);
        return value;
    }
}

/// One function of a member.
struct MemberFunction {
    DispatchFlag Use{};
    ValueKind Kind = ValueKind::None;  ///< of the result of a getter or method, or of what a setter takes
    /// Calls it on an object that has the interface: with a value of its kind, or an empty one that gets its result.
    HRESULT (*Call)(IDispatch& object, VARIANT& value) = nullptr;
};

template <typename Interface>
HRESULT CallFunction(HRESULT (Interface::*function)(), IDispatch& object, VARIANT& /*value*/) {
    return (static_cast<Interface&>(object).*function)();
}

template <typename Interface, typename Argument>
HRESULT CallFunction(HRESULT (Interface::*function)(Argument), IDispatch& object, VARIANT& value) {
    if constexpr (KindOf<Argument> != ValueKind::None) {
        return (static_cast<Interface&>(object).*function)(PlaceIn<Argument>(value));
    } else {
        using Result = std::remove_pointer_t<Argument>;
        value.Type = TypeOf(KindOf<Result>);
        PlaceIn<Result>(value) = {};
        return (static_cast<Interface&>(object).*function)(&PlaceIn<Result>(value));
    }
}

template <typename Interface>
consteval ValueKind KindOfArgument(HRESULT (Interface::* /*function*/)()) {
    return ValueKind::None;
}

template <typename Interface, typename Argument>
consteval ValueKind KindOfArgument(HRESULT (Interface::* /*function*/)(Argument)) {
    constexpr ValueKind taken = KindOf<Argument>;
    return taken != ValueKind::None ? taken : KindOf<std::remove_pointer_t<Argument>>;
}

template <DispatchFlag Use, auto Function>
inline constexpr MemberFunction FunctionOf{Use, KindOfArgument(Function), [](IDispatch& object, VARIANT& value) {
                                               return CallFunction(Function, object, value);
                                           }};

template <auto Function>
inline constexpr MemberFunction Get = FunctionOf<DispatchPropertyGet, Function>;
template <auto Function>
inline constexpr MemberFunction Put = FunctionOf<DispatchPropertyPut, Function>;
template <auto Function>
inline constexpr MemberFunction Method = FunctionOf<DispatchMethod, Function>;

/// A member of an interface.
struct AutomationMember {
    const char* Name = nullptr;
    DISPID Id = 0;
    std::uint16_t Control = 0;  ///< the control that stands for it; 0: none, it has code of its own
    std::array<MemberFunction, 2> Functions;  ///< in the order of their slots; one without a call isn't there
    const char* Help = nullptr;
    const char* Result = "pVal";  ///< name of what it gives
};

}  // namespace drilldown
