#pragma once

#include <string_view>
#include <utility>

#include "platform/AutomationText.h"

/// A text of automation that is freed at its end.
class OwnedText {
  public:
    OwnedText() = default;
    /// Takes over a text.
    explicit OwnedText(BSTR text) : Held(text) {}
    OwnedText(const OwnedText&) = delete;
    OwnedText& operator=(const OwnedText&) = delete;
    ~OwnedText() { SysFreeString(Held); }

    [[nodiscard]] BSTR Get() const { return Held; }
    [[nodiscard]] std::u16string_view View() const { return ViewOf(Held); }
    /// Where a call writes its result; what was held is freed.
    [[nodiscard]] BSTR* Put() {
        SysFreeString(std::exchange(Held, nullptr));
        return &Held;
    }
    /// Hands the text over.
    [[nodiscard]] BSTR Detach() { return std::exchange(Held, nullptr); }

  private:
    BSTR Held = nullptr;
};
