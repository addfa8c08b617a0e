#pragma once

#include <array>
#include <cstdint>
#include <string_view>

/// Identifier of an interface, a class or a library.
struct GUID {
    std::uint32_t Data1 = 0;
    std::uint16_t Data2 = 0;
    std::uint16_t Data3 = 0;
    std::array<std::uint8_t, 8> Data4{};

    friend constexpr bool operator==(const GUID&, const GUID&) = default;
};

/// The identifier of nothing.
inline constexpr GUID GUID_NULL{};

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
