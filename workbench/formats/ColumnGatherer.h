#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "workbench/data/DateTimes.h"
#include "workbench/formats/ColumnPiece.h"
#include "workbench/formats/FieldRules.h"
#include "workbench/formats/FieldRun.h"
#include "workbench/formats/NumberCodes.h"
#include "workbench/formats/TextCodes.h"

namespace quillara {

/// As what the fields of a variable are read.
enum class FieldKind : unsigned char { Number, Date, DateTime, Text, PassedOver };

/// Turns the fields of one variable into values, part by part of the text.
class ColumnGatherer {
  public:
    /// The rules must outlive the gatherer.
    ColumnGatherer(FieldKind kind, const FieldRules& rules, std::size_t mostNumberCodes)
        : Kind(kind), Rules(&rules), NumbersMet(mostNumberCodes) {}

    /// Takes the fields of a variable for the next cases; RoomBehindDecimal bytes behind each can be read. False when
    /// one isn't of the kind: the variable isn't what it is read as, and all that was gathered of it is void.
    [[nodiscard]] bool Take(const FieldRun& run, std::size_t variable);
    /// Takes no more fields.
    void PassOver();
    /// The values gathered since the last call.
    [[nodiscard]] ColumnPiece Finish();

    [[nodiscard]] FieldKind ReadAs() const { return Kind; }
    /// The texts that codes of a text variable stand for.
    [[nodiscard]] const TextCodes& Texts() const { return TextsMet; }
    [[nodiscard]] TextCodes TakeTexts() { return std::move(TextsMet); }
    /// No more fields come: what only they need is freed.
    void Close();
    /// The numbers that codes of another variable stand for.
    [[nodiscard]] const NumberCodes& Numbers() const { return NumbersMet; }
    /// Where the first record begins whose number is too large for a double, and its field.
    struct TooLarge {
        std::size_t Place = 0;
        std::string Field;
    };
    [[nodiscard]] const std::optional<TooLarge>& FirstTooLarge() const { return Large; }
    /// Whether some numbers begin with a zero that says nothing about them: "007".
    [[nodiscard]] bool HasLeadingZeros() const { return MetLeadingZero; }
    /// Of date-times.
    [[nodiscard]] const ZonesMet& Zones() const { return ZonesOfTimes; }

  private:
    bool TakeNumbers(const FieldRun& run, std::size_t variable);
    bool TakeUnusual(std::string_view field, std::size_t place, double& value);
    bool TakeDates(const FieldRun& run, std::size_t variable);
    bool TakeDateTimes(const FieldRun& run, std::size_t variable);
    void TakeText(std::string_view field);

    [[nodiscard]] ColumnPiece FinishTexts() const;
    [[nodiscard]] ColumnPiece FinishNumbers();
    [[nodiscard]] ColumnPiece FinishWhole();
    /// Nothing when the numbers have no codes.
    [[nodiscard]] std::optional<ColumnPiece> FinishCodes();

    FieldKind Kind;
    const FieldRules* Rules;
    std::vector<double> Values;  // of numbers and date-times
    std::vector<std::int32_t> Whole;  // of dates, and numbers that are all whole ones
    std::vector<std::uint32_t> TextNumbers;  // 0: missing; else 1 more than the code
    TextCodes TextsMet;
    std::vector<bool> IsMissingText;  // by code
    NumberCodes NumbersMet;
    std::optional<TooLarge> Large;
    ZonesMet ZonesOfTimes;
    bool MetLeadingZero = false;
};

}  // namespace quillara
