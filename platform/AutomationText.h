#pragma once

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

/// A text of automation: UTF-16 with a zero at its end, in front of which its length in bytes stands. Null is an empty
/// text. Allocated and freed by the functions below only; whoever gets one as a result frees it.
using BSTR = char16_t*;

/// A copy of a text; null when memory lacks.
[[nodiscard]] inline BSTR SysAllocStringLen(const char16_t* text, std::uint32_t length) noexcept {
    const std::uint32_t bytes = length * static_cast<std::uint32_t>(sizeof(char16_t));
    auto* block = static_cast<char*>(std::malloc(sizeof(bytes) + bytes + sizeof(char16_t)));
    if (block == nullptr) {
        return nullptr;
    }
    std::memcpy(block, &bytes, sizeof(bytes));
    auto* copy = reinterpret_cast<BSTR>(block + sizeof(bytes));
    if (text != nullptr) {
        std::memcpy(copy, text, bytes);
    }
    copy[length] = u'\0';
    return copy;
}

/// The same of a text by its view; an empty one isn't null.
[[nodiscard]] inline BSTR SysAllocString(std::u16string_view text) noexcept {
    return SysAllocStringLen(text.data(), static_cast<std::uint32_t>(text.size()));
}

/// Frees a text; null is passed over.
inline void SysFreeString(BSTR text) noexcept {
    if (text != nullptr) {
        std::free(reinterpret_cast<char*>(text) - sizeof(std::uint32_t));
    }
}

/// Its length in characters of 16 bits; that of null is 0.
[[nodiscard]] inline std::uint32_t SysStringLen(const char16_t* text) noexcept {
    std::uint32_t bytes = 0;
    if (text != nullptr) {
        std::memcpy(&bytes, reinterpret_cast<const char*>(text) - sizeof(bytes), sizeof(bytes));
    }
    return bytes / static_cast<std::uint32_t>(sizeof(char16_t));
}

/// What it says; valid as long as the text.
[[nodiscard]] inline std::u16string_view ViewOf(const char16_t* text) noexcept {
    return text == nullptr ? std::u16string_view() : std::u16string_view(text, SysStringLen(text));
}
