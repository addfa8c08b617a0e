#include "workbench/formats/NumberAssembly.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <utility>
#include <variant>
#include <vector>

#include "workbench/data/ColumnBuilder.h"
#include "workbench/data/DistinctBound.h"
#include "workbench/formats/PieceCodes.h"

namespace quillara {
namespace {

constexpr double NoValue = std::numeric_limits<double>::quiet_NaN();

/// Codes of whole numbers in a table by the number.
class CodesOfWhole {
  public:
    /// Takes the range of all pieces; false when the table would be too large.
    [[nodiscard]] bool Cover(const std::vector<ColumnPiece>& pieces) {
        constexpr std::int64_t mostNumbers = 1 << 18;
        std::int64_t least = std::numeric_limits<std::int64_t>::max();
        std::int64_t behind = std::numeric_limits<std::int64_t>::min();
        VisitSteps(pieces, [&](const auto& entries) {
            constexpr auto largestStep = std::numeric_limits<typename decltype(entries.Steps)::value_type>::max();
            least = std::min<std::int64_t>(least, entries.Base);
            behind = std::max<std::int64_t>(behind, std::int64_t{entries.Base} + largestStep + 1);
        });
        if (behind > least && behind - least > mostNumbers) {
            return false;
        }
        Least = least;
        Codes.resize(behind > least ? static_cast<std::size_t>(behind - least) : 0);
        return true;
    }

    /// Gives each number of the pieces its code, from the least to the greatest; false when one has none.
    [[nodiscard]] bool Fill(const std::vector<ColumnPiece>& pieces, ValueCodes& distinct) {
        VisitSteps(pieces, [&](const auto& entries) {
            for (const auto step : entries.Steps) {
                Codes[PlaceOf(entries.Base, step)] = 1;
            }
        });
        for (std::size_t place = 0; place < Codes.size(); ++place) {
            if (Codes[place] != 0) {
                const double number = place == 0 ? NoValue : static_cast<double>(Least + static_cast<int>(place));
                const std::optional<std::uint32_t> code = distinct.CodeOf(number);
                if (!code) {
                    return false;
                }
                Codes[place] = *code;
            }
        }
        return true;
    }

    template <typename Step, typename Code>
    void Append(const WholeSteps<Step>& entries, std::vector<Code>& codes) const {
        const std::size_t before = codes.size();
        codes.resize(before + entries.size());
        for (std::size_t i = 0; i < entries.size(); ++i) {
            codes[before + i] = static_cast<Code>(Codes[PlaceOf(entries.Base, entries.Steps[i])]);
        }
    }

  private:
    template <typename Visit>
    static void VisitSteps(const std::vector<ColumnPiece>& pieces, Visit visit) {
        for (const ColumnPiece& piece : pieces) {
            if (const auto* narrow = std::get_if<WholeSteps<std::uint8_t>>(&piece.Entries)) {
                visit(*narrow);
            } else if (const auto* wide = std::get_if<WholeSteps<std::uint16_t>>(&piece.Entries)) {
                visit(*wide);
            }
        }
    }

    /// No number stands at place 0, because steps begin with 1: it is for missing data.
    [[nodiscard]] std::size_t PlaceOf(std::int32_t base, std::size_t step) const {
        return step == 0 ? 0 : static_cast<std::size_t>(base - Least) + step;
    }

    std::int64_t Least = 0;
    std::vector<std::uint32_t> Codes;
};

/// The distinct numbers of all pieces, if they are few enough for codes, and their codes.
class JoinedNumbers {
  public:
    explicit JoinedNumbers(const GatheredColumn& column)
        : AreAll(std::ranges::none_of(column.Pieces, HasOwnNumbers) && OfWhole.Cover(column.Pieces)) {
        for (const ColumnGatherer& worker : column.Workers) {
            std::vector<std::uint32_t>& codes = Codes.emplace_back();
            for (const double number : worker.Numbers().Numbers()) {
                const std::optional<std::uint32_t> code = AreAll ? Distinct.CodeOf(number) : std::nullopt;
                AreAll = code.has_value();
                codes.push_back(code.value_or(0));
            }
        }
        AreAll = AreAll && OfWhole.Fill(column.Pieces, Distinct);
    }

    /// Whether codes take less room than the numbers may: else their narrowest form is to be found.
    [[nodiscard]] bool AreCodes(std::size_t cases) const {
        constexpr std::size_t roomOfCode = sizeof(std::uint16_t);
        return AreAll && sizeof(double) * Distinct.Values().size() < (sizeof(std::int32_t) - roomOfCode) * cases;
    }
    template <typename Entries, typename Code>
    void Append(const Entries& entries, std::size_t worker, std::vector<Code>& codes) const {
        AppendCodes(entries, Codes[worker], codes);
    }
    template <typename Step, typename Code>
    void Append(const WholeSteps<Step>& entries, std::size_t /*worker*/, std::vector<Code>& codes) const {
        OfWhole.Append(entries, codes);
    }
    /// Puts the missing code, which it gives, in place of NaN.
    double EncodeMissing() { return Distinct.EncodeMissing(); }
    [[nodiscard]] std::vector<double> TakeValues() { return Distinct.TakeValues(); }

  private:
    static bool HasOwnNumbers(const ColumnPiece& piece) {
        return std::holds_alternative<std::vector<std::int32_t>>(piece.Entries) ||
               std::holds_alternative<std::vector<double>>(piece.Entries);
    }

    CodesOfWhole OfWhole;
    bool AreAll;
    ValueCodes Distinct;
    std::vector<std::vector<std::uint32_t>> Codes;  // by worker
};

double FromWhole(std::int32_t number) {
    return number == MissingWhole ? NoValue : number;
}

/// Turns the entries of a piece into numbers.
class NumbersOfPiece {
  public:
    explicit NumbersOfPiece(const std::vector<ColumnGatherer>& workers) : Workers(workers) {}

    std::span<const double> operator()(const std::vector<double>& numbers, std::size_t /*worker*/) { return numbers; }
    std::span<const double> operator()(const std::vector<std::int32_t>& whole, std::size_t /*worker*/) {
        return Converted(whole, FromWhole);
    }
    template <typename Step>
    std::span<const double> operator()(const WholeSteps<Step>& entries, std::size_t /*worker*/) {
        return Converted(entries.Steps, [base = entries.Base](std::size_t step) {
            return step == 0 ? NoValue : base + static_cast<double>(step);
        });
    }
    template <typename Code>
    std::span<const double> operator()(const std::vector<Code>& codes, std::size_t worker) {
        const std::vector<double>& numbers = Workers[worker].Numbers().Numbers();
        return Converted(codes, [&](std::size_t code) { return numbers[code]; });
    }

  private:
    template <typename Entry, typename Convert>
    std::span<const double> Converted(const std::vector<Entry>& entries, Convert convert) {
        Room.resize(entries.size());
        std::ranges::transform(entries, Room.begin(), convert);
        return Room;
    }

    const std::vector<ColumnGatherer>& Workers;
    std::vector<double> Room;
};

/// Whether there are certainly more distinct numbers than codes.
bool AreTooManyForCodes(const GatheredColumn& column) {
    NumbersOfPiece numbersOf(column.Workers);
    DistinctBound distinct;
    return std::ranges::any_of(column.Pieces, [&](const ColumnPiece& piece) {
        std::visit([&](const auto& entries) { distinct.Add(numbersOf(entries, piece.Worker)); }, piece.Entries);
        return distinct.AtLeast() > ValueCodes::Most;
    });
}

ValueKind KindOfNumbers(FieldKind kind) {
    return kind == FieldKind::Date       ? ValueKind::Date
           : kind == FieldKind::DateTime ? ValueKind::DateTime
                                         : ValueKind::Number;
}

}  // namespace

void AssembleNumbers(GatheredColumn& column, Variable& variable) {
    variable.Kind = KindOfNumbers(column.Kind);
    const std::size_t cases = CasesOf(column.Pieces);
    if (JoinedNumbers numbers(column); numbers.AreCodes(cases)) {
        variable.MissingCode = numbers.EncodeMissing();
        const auto append = [&](const auto& entries, std::size_t worker, auto& codes) {
            numbers.Append(entries, worker, codes);
        };
        variable.Values = ColumnOfCodes(column.Pieces, append, numbers.TakeValues());
        return;
    }
    ColumnBuilder builder(AreTooManyForCodes(column) ? ColumnForm::Integers : ColumnForm::Codes8);
    builder.Reserve(cases);
    NumbersOfPiece numbersOf(column.Workers);
    TakePieces(column.Pieces,
               [&](const auto& entries, std::size_t worker) { builder.Append(numbersOf(entries, worker)); });
    EncodeNumbers(variable, std::move(builder));
}

}  // namespace quillara
