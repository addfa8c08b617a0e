#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <variant>
#include <vector>

namespace quillara {

/// What stands for missing data among the whole numbers of a piece.
inline constexpr std::int32_t MissingWhole = std::numeric_limits<std::int32_t>::min();

/// Whole numbers near one another: each is so much more than Base; 0: it is missing.
template <typename Step>
struct WholeSteps {
    using value_type = std::int32_t;

    std::int32_t Base = 0;
    std::vector<Step> Steps;

    [[nodiscard]] std::size_t size() const { return Steps.size(); }
};

/// The values of one variable in one part of a text, in the narrowest form that holds them. Of a text variable: 0 for
/// missing data, else 1 more than the code of the text, by the codes of the worker that read it. Of another: codes of
/// that worker's numbers, whole numbers, or numbers with NaN for missing data.
struct ColumnPiece {
    std::variant<std::vector<std::uint8_t>, std::vector<std::uint16_t>, std::vector<std::uint32_t>,
                 WholeSteps<std::uint8_t>, WholeSteps<std::uint16_t>, std::vector<std::int32_t>, std::vector<double>>
        Entries;
    std::size_t Worker = 0;

    [[nodiscard]] std::size_t Size() const {
        return std::visit([](const auto& entries) { return entries.size(); }, Entries);
    }
};

/// Numbers as one of their narrow types.
template <typename To, typename From>
std::vector<To> Narrowed(std::span<const From> numbers) {
    std::vector<To> narrow(numbers.size());
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        narrow[i] = static_cast<To>(numbers[i]);
    }
    return narrow;
}

}  // namespace quillara
