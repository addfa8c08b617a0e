// Values of automation: what they own, and their change from type to type.

#include "platform/Variant.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

#include "platform/OwnedVariant.h"

namespace {

/// A value whose type doesn't matter any more.
using Scalar = std::variant<std::int64_t, double, std::u16string_view>;

constexpr std::u16string_view TrueText = u"True";
constexpr std::u16string_view FalseText = u"False";

/// The value that a reference refers to; what isn't one is itself.
const VARIANT& Referred(const VARIANT& value, VARIANT& room) {
    if (value.Type == (VariantType::Variant | VariantType::ByReference)) {
        return Referred(*value.VariantReference, room);
    }
    if (!Has(value.Type, VariantType::ByReference)) {
        return value;
    }
    room.Type = Without(value.Type, VariantType::ByReference);
    switch (room.Type) {
        case VariantType::Integer:
        case VariantType::MachineInteger:
            room.Integer = *value.IntegerReference;
            break;
        case VariantType::ShortInteger:
        case VariantType::Boolean:
            room.ShortInteger = *value.ShortIntegerReference;
            break;
        case VariantType::Real:
        case VariantType::Date:
            room.Real = *value.RealReference;
            break;
        case VariantType::Text:
            room.Text = *value.TextReference;
            break;
        case VariantType::Dispatch:
        case VariantType::Unknown:
            room.Dispatch = *value.DispatchReference;
            break;
        default:
            room.Type = value.Type;
            room.Reference = value.Reference;
            break;
    }
    return room;
}

std::optional<Scalar> ScalarOf(const VARIANT& value) {
    switch (value.Type) {
        case VariantType::Empty:
            return Scalar(std::int64_t{0});
        case VariantType::Byte:
            return Scalar(std::int64_t{value.Byte});
        case VariantType::ShortInteger:
        case VariantType::Boolean:
            return Scalar(std::int64_t{value.ShortInteger});
        case VariantType::Integer:
        case VariantType::MachineInteger:
            return Scalar(std::int64_t{value.Integer});
        case VariantType::LongInteger:
            return Scalar(value.LongInteger);
        case VariantType::SingleReal:
            return Scalar(static_cast<double>(value.SingleReal));
        case VariantType::Real:
        case VariantType::Date:
            return Scalar(value.Real);
        case VariantType::Text:
            return Scalar(ViewOf(value.Text));
        default:
            return std::nullopt;
    }
}

/// The number that fills a text but for blanks around it.
std::optional<double> NumberIn(std::u16string_view text) {
    if (text == TrueText || text == FalseText) {
        return text == TrueText ? -1.0 : 0.0;
    }
    std::string narrow;
    for (const char16_t unit : text) {
        narrow += unit < 0x80 ? static_cast<char>(unit) : '?';
    }
    const std::size_t first = narrow.find_first_not_of(" \t");
    const std::size_t last = narrow.find_last_not_of(" \t");
    if (first == std::string::npos) {
        return std::nullopt;
    }
    const char* begin = narrow.data() + first + (narrow[first] == '+' ? 1 : 0);
    const char* end = narrow.data() + last + 1;
    double number = 0.0;
    const auto [rest, error] = std::from_chars(begin, end, number);
    return error == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}

std::optional<double> RealOf(const Scalar& value) {
    if (const auto* text = std::get_if<std::u16string_view>(&value)) {
        return NumberIn(*text);
    }
    const auto* whole = std::get_if<std::int64_t>(&value);
    return whole != nullptr ? static_cast<double>(*whole) : std::get<double>(value);
}

/// Writes a whole number of some width.
template <typename Whole>
HRESULT PutWhole(const Scalar& value, Whole& target) {
    if (const auto* whole = std::get_if<std::int64_t>(&value)) {
        if (*whole < std::numeric_limits<Whole>::min() || *whole > std::numeric_limits<Whole>::max()) {
            return DISP_E_OVERFLOW;
        }
        target = static_cast<Whole>(*whole);
        return S_OK;
    }
    const std::optional<double> real = RealOf(value);
    if (!real) {
        return DISP_E_TYPEMISMATCH;
    }
    const double rounded = std::nearbyint(*real);
    const double above = std::ldexp(1.0, std::numeric_limits<Whole>::digits);
    if (!(rounded < above) || rounded < static_cast<double>(std::numeric_limits<Whole>::min())) {
        return DISP_E_OVERFLOW;
    }
    target = static_cast<Whole>(rounded);
    return S_OK;
}

template <typename Real>
HRESULT PutReal(const Scalar& value, Real& target) {
    const std::optional<double> real = RealOf(value);
    if (!real) {
        return DISP_E_TYPEMISMATCH;
    }
    if (std::isfinite(*real) && std::abs(*real) > static_cast<double>(std::numeric_limits<Real>::max())) {
        return DISP_E_OVERFLOW;
    }
    target = static_cast<Real>(*real);
    return S_OK;
}

HRESULT PutBoolean(const Scalar& value, std::int16_t& target) {
    const std::optional<double> real = RealOf(value);
    if (!real) {
        return DISP_E_TYPEMISMATCH;
    }
    target = static_cast<std::int16_t>(*real != 0.0 ? -1 : 0);
    return S_OK;
}

BSTR TextOfNumber(const Scalar& value) {
    char text[64];
    const auto end = std::visit(
        [&text](const auto& number) {
            if constexpr (std::is_arithmetic_v<std::decay_t<decltype(number)>>) {
                return std::to_chars(std::begin(text), std::end(text), number).ptr;
            } else {
                return std::begin(text);
            }
        },
        value);
    return SysAllocString(std::u16string(std::begin(text), end));
}

HRESULT PutText(const VARIANT& source, const Scalar& value, BSTR& target) {
    if (const auto* text = std::get_if<std::u16string_view>(&value)) {
        target = SysAllocString(*text);
    } else if (source.Type == VariantType::Boolean) {
        target = SysAllocString(source.Boolean != 0 ? TrueText : FalseText);
    } else if (source.Type == VariantType::Empty) {
        target = SysAllocString({});
    } else {
        target = TextOfNumber(value);
    }
    return target == nullptr ? E_OUTOFMEMORY : S_OK;
}

HRESULT PutScalar(const VARIANT& source, const Scalar& value, VARIANT& target) {
    switch (target.Type) {
        case VariantType::Byte:
            return PutWhole(value, target.Byte);
        case VariantType::ShortInteger:
            return PutWhole(value, target.ShortInteger);
        case VariantType::Integer:
        case VariantType::MachineInteger:
            return PutWhole(value, target.Integer);
        case VariantType::LongInteger:
            return PutWhole(value, target.LongInteger);
        case VariantType::SingleReal:
            return PutReal(value, target.SingleReal);
        case VariantType::Real:
        case VariantType::Date:
            return PutReal(value, target.Real);
        case VariantType::Boolean:
            return PutBoolean(value, target.Boolean);
        case VariantType::Text:
            return PutText(source, value, target.Text);
        default:
            return DISP_E_TYPEMISMATCH;
    }
}

bool IsPlain(VariantType type) {
    switch (type) {
        case VariantType::Empty:
        case VariantType::Null:
        case VariantType::Status:
            return true;
        default: {
            VARIANT sample;
            sample.Type = type;
            sample.Text = nullptr;
            return ScalarOf(sample).has_value();
        }
    }
}

HRESULT CopyArray(SAFEARRAY*& target, const SAFEARRAY* source) {
    target = nullptr;
    if (source == nullptr) {
        return S_OK;
    }
    const std::uint32_t count = source->Bounds[0].Count;
    target = SafeArrayOfVariants(count);
    HRESULT status = target == nullptr ? E_OUTOFMEMORY : S_OK;
    for (std::uint32_t i = 0; i < count && Succeeded(status); ++i) {
        status = VariantCopy(target->Data[i], source->Data[i]);
    }
    if (!Succeeded(status)) {
        SafeArrayDestroy(target);
        target = nullptr;
    }
    return status;
}

/// Gives a plain copy of a value its own text, array or reference.
HRESULT TakeOwn(VARIANT& copy, const VARIANT& source) {
    if (Has(source.Type, VariantType::ByReference) || source.Type == VariantType::Variant) {
        return S_OK;
    }
    if (Has(source.Type, VariantType::Array)) {
        return CopyArray(copy.Array, source.Array);
    }
    switch (source.Type) {
        case VariantType::Text:
            copy.Text = SysAllocString(ViewOf(source.Text));
            return copy.Text == nullptr ? E_OUTOFMEMORY : S_OK;
        case VariantType::Dispatch:
        case VariantType::Unknown:
            if (source.Unknown != nullptr) {
                source.Unknown->AddRef();
            }
            return S_OK;
        default:
            return IsPlain(source.Type) ? S_OK : DISP_E_BADVARTYPE;
    }
}

}  // namespace

void VariantClear(VARIANT& value) noexcept {
    const VARIANT held = std::exchange(value, VARIANT());
    if (Has(held.Type, VariantType::ByReference)) {
        return;
    }
    if (Has(held.Type, VariantType::Array)) {
        SafeArrayDestroy(held.Array);
    } else if (held.Type == VariantType::Text) {
        SysFreeString(held.Text);
    } else if ((held.Type == VariantType::Dispatch || held.Type == VariantType::Unknown) && held.Unknown != nullptr) {
        held.Unknown->Release();
    }
}

HRESULT VariantCopy(VARIANT& target, const VARIANT& source) noexcept {
    if (&target == &source) {
        return S_OK;
    }
    VARIANT copy = source;
    const HRESULT status = TakeOwn(copy, source);
    VariantClear(target);
    if (Succeeded(status)) {
        target = copy;
    }
    return status;
}

HRESULT VariantCopyInd(VARIANT& target, const VARIANT& source) noexcept {
    VARIANT room;
    const VARIANT& referred = Referred(source, room);
    return VariantCopy(target, referred);
}

HRESULT VariantChangeType(VARIANT& target, const VARIANT& source, VariantType type) noexcept try {
    VARIANT room;
    const VARIANT& value = Referred(source, room);
    OwnedVariant changed;
    if (value.Type == type) {
        if (const HRESULT status = VariantCopy(*changed.Put(), value); !Succeeded(status)) {
            return status;
        }
    } else {
        const std::optional<Scalar> scalar = ScalarOf(value);
        if (!scalar) {
            return DISP_E_TYPEMISMATCH;
        }
        VARIANT made;
        made.Type = type;
        if (const HRESULT status = PutScalar(value, *scalar, made); !Succeeded(status)) {
            return status;
        }
        changed = OwnedVariant(made);
    }
    VariantClear(target);
    target = changed.Detach();
    return S_OK;
} catch (...) {  // nothing but memory can fail
    return E_OUTOFMEMORY;
}

SAFEARRAY* SafeArrayOfVariants(std::uint32_t count) noexcept {
    auto* array = new (std::nothrow) SAFEARRAY{1, 0, sizeof(VARIANT), 0, nullptr, {{count, 0}}};
    if (array != nullptr) {
        array->Data = new (std::nothrow) VARIANT[count];
        if (array->Data == nullptr) {
            delete array;
            return nullptr;
        }
    }
    return array;
}

void SafeArrayDestroy(SAFEARRAY* array) noexcept {
    if (array == nullptr) {
        return;
    }
    std::for_each_n(array->Data, array->Bounds[0].Count, [](VARIANT& element) { VariantClear(element); });
    delete[] array->Data;
    delete array;
}
