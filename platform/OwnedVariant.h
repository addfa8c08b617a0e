#pragma once

#include <cstdint>
#include <new>
#include <string_view>
#include <utility>

#include "platform/Automation.h"
#include "platform/Variant.h"

/// A value of automation that lets go of what it owns at its end.
class OwnedVariant {
  public:
    OwnedVariant() = default;
    /// Takes over what the value owns.
    explicit OwnedVariant(VARIANT value) : Held(value) {}
    OwnedVariant(const OwnedVariant&) = delete;
    OwnedVariant(OwnedVariant&& other) noexcept : Held(other.Detach()) {}
    OwnedVariant& operator=(OwnedVariant other) noexcept {
        std::swap(Held, other.Held);
        return *this;
    }
    ~OwnedVariant() { VariantClear(Held); }

    [[nodiscard]] static OwnedVariant OfInteger(std::int32_t value) {
        OwnedVariant made;
        made.Held.Type = VariantType::Integer;
        made.Held.Integer = value;
        return made;
    }
    [[nodiscard]] static OwnedVariant OfReal(double value) {
        OwnedVariant made;
        made.Held.Type = VariantType::Real;
        made.Held.Real = value;
        return made;
    }
    /// Throws std::bad_alloc when memory lacks.
    [[nodiscard]] static OwnedVariant OfText(std::u16string_view value) {
        OwnedVariant made;
        made.Held.Text = SysAllocString(value);
        if (made.Held.Text == nullptr) {
            throw std::bad_alloc();
        }
        made.Held.Type = VariantType::Text;
        return made;
    }
    /// Takes a reference of its own; null may stand for no object.
    [[nodiscard]] static OwnedVariant OfObject(IDispatch* object) {
        OwnedVariant made;
        made.Held.Type = VariantType::Dispatch;
        made.Held.Dispatch = object;
        if (object != nullptr) {
            object->AddRef();
        }
        return made;
    }

    [[nodiscard]] const VARIANT& Get() const { return Held; }
    /// Where a call writes its result; what was held is let go.
    [[nodiscard]] VARIANT* Put() {
        VariantClear(Held);
        return &Held;
    }
    /// Hands over what it owns.
    [[nodiscard]] VARIANT Detach() noexcept { return std::exchange(Held, VARIANT()); }

  private:
    VARIANT Held;
};
