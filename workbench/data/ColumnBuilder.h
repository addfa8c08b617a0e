#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "workbench/data/Column.h"

namespace quillara {

/// Codes 0, 1, ... of distinct values in the order in which they come, bit by bit: -0.0 and NaN of other bits are other
/// values.
class ValueCodes {
  public:
    static constexpr std::size_t Most = 65536;

    ValueCodes() : Slots(FirstSlots) {}

    /// The code of a value, which becomes known; nothing when it would be one too many.
    [[nodiscard]] std::optional<std::uint32_t> CodeOf(double value) {
        const Slot& slot = Slots[PlaceOf(std::bit_cast<std::uint64_t>(value), Slots.size())];
        const bool isKnown = slot.Bits == std::bit_cast<std::uint64_t>(value) && slot.Code != NoCode;
        return isKnown ? slot.Code : Search(value);
    }
    /// The values by their codes.
    [[nodiscard]] const std::vector<double>& Values() const { return Known; }
    [[nodiscard]] std::vector<double> TakeValues() { return std::exchange(Known, {}); }
    /// Puts the missing code of the values in place of every NaN; no value can be looked up any more.
    double EncodeMissing();

  private:
    static constexpr std::size_t FirstSlots = 1024;
    static constexpr std::uint32_t NoCode = std::numeric_limits<std::uint32_t>::max();

    struct Slot {
        std::uint64_t Bits = 0;
        std::uint32_t Code = NoCode;
    };

    static std::size_t PlaceOf(std::uint64_t bits, std::size_t slots) {
        constexpr std::uint64_t spread = 0x9E3779B97F4A7C15;  // 2^64 / golden ratio
        return static_cast<std::size_t>((bits ^ bits >> 32) * spread >> 40) & (slots - 1);
    }
    Slot& FreeOrKnown(std::uint64_t bits);
    std::optional<std::uint32_t> Search(double value);
    void Grow();

    std::vector<double> Known;
    std::vector<Slot> Slots;  // a power of two, at most half of them in use
};

/// Rows of codes, as narrow as the largest so far allows.
class CodeRows {
  public:
    void Reserve(std::size_t rows);
    void Append(std::uint32_t code) {
        if (Width == 1 && code <= std::numeric_limits<std::uint8_t>::max()) {
            Bytes.push_back(static_cast<std::uint8_t>(code));
        } else {
            AppendWider(code);
        }
    }
    [[nodiscard]] std::size_t Size() const { return Bytes.size() + Words.size() + Wide.size(); }
    /// Bytes of a code: 1, 2 or 4.
    [[nodiscard]] std::size_t BytesEach() const { return Width; }
    [[nodiscard]] std::uint32_t At(std::size_t row) const {
        return Width == 1 ? Bytes[row] : Width == 2 ? Words[row] : Wide[row];
    }
    void Shorten(std::size_t rows);
    /// The rows as a column, when a code has at most 2 bytes; they are gone then.
    [[nodiscard]] Column TakeColumn(std::vector<double> values);
    void Clear() { *this = {}; }

  private:
    void AppendWider(std::uint32_t code);

    std::size_t Width = 1;
    std::size_t Reserved = 0;
    std::vector<std::uint8_t> Bytes;  // the rows are in the one of these that has their width
    std::vector<std::uint16_t> Words;
    std::vector<std::uint32_t> Wide;
};

/// Puts a column together value by value, in the narrowest form that loses nothing: codes while there are few distinct
/// values, else whole numbers of 32 bits, else doubles. A value for which there is no memory isn't appended, and those
/// before stay.
class ColumnBuilder {
  public:
    ColumnBuilder() = default;
    /// Tries no narrower form than this one.
    explicit ColumnBuilder(ColumnForm form);
    /// Begins with these values; if they need doubles they stay in their place.
    explicit ColumnBuilder(std::vector<double> values);

    /// About as many values are to come in all.
    void Reserve(std::size_t rows);
    void Append(double value) {
        const std::optional<std::uint32_t> code = Form == BuildForm::Codes ? Codes.CodeOf(value) : std::nullopt;
        if (code) {
            Rows.Append(*code);
        } else {
            AppendWider(value);
        }
    }
    void Append(std::span<const double> values);
    /// The values of a column that was made of the cases that follow.
    void AppendPart(const Column& part);
    /// Leaves the first `rows` values, of as many or more.
    void Shorten(std::size_t rows);
    [[nodiscard]] std::size_t Size() const { return Rows.Size() + Integers.size() + Doubles.size(); }

    /// Chooses the missing code of the values (MissingCodeFor) and puts it in place of every NaN; nothing can be
    /// appended any more.
    double EncodeMissing();
    /// The values; the builder is empty then.
    [[nodiscard]] Column Finish();

  private:
    enum class BuildForm : std::uint8_t { Codes, Integers, Doubles };

    void AppendWider(double value);
    void AppendCodes(const Column& part);
    void WidenFor(double value);
    void LeaveCodes();
    void WidenToDoubles();

    BuildForm Form = BuildForm::Codes;
    std::size_t Reserved = 0;
    ValueCodes Codes;
    CodeRows Rows;  // the values are in the one of these that Form says
    std::vector<std::int32_t> Integers;
    std::vector<double> Doubles;
};

}  // namespace quillara
