#include "workbench/data/ColumnBuilder.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "workbench/data/MissingCodes.h"

namespace quillara {
namespace {

constexpr double Missing = std::numeric_limits<double>::quiet_NaN();
/// Stands for Missing among whole numbers, of which it is none itself.
constexpr std::int32_t MissingInteger = std::numeric_limits<std::int32_t>::min();

bool IsSame(double left, double right) {
    return std::bit_cast<std::uint64_t>(left) == std::bit_cast<std::uint64_t>(right);
}

/// Whether a value comes back from a whole number of 32 bits as it is; MissingInteger has none.
bool IsInteger(double value) {
    const bool isInRange = value > MissingInteger && value <= std::numeric_limits<std::int32_t>::max();
    return isInRange && IsSame(value, static_cast<std::int32_t>(value));
}

bool FitsIntegers(double value) {
    return IsInteger(value) || IsSame(value, Missing);
}

std::int32_t ToInteger(double value) {
    return std::isnan(value) ? MissingInteger : static_cast<std::int32_t>(value);
}

double FromInteger(std::int32_t value) {
    return value == MissingInteger ? Missing : value;
}

template <typename Value>
void GiveBackRoom(std::vector<Value>& values) {
    if (values.capacity() - values.size() > values.size() / 8) {
        values.shrink_to_fit();
    }
}

template <typename Wider, typename Narrow>
std::vector<Wider> Widened(std::vector<Narrow>& rows, std::size_t reserved) {
    std::vector<Wider> wider;
    wider.reserve(std::max(reserved, rows.size() + 1));
    wider.assign(rows.begin(), rows.end());
    rows = {};
    return wider;
}

}  // namespace

ValueCodes::Slot& ValueCodes::FreeOrKnown(std::uint64_t bits) {
    std::size_t place = PlaceOf(bits, Slots.size());
    while (Slots[place].Code != NoCode && Slots[place].Bits != bits) {
        place = (place + 1) & (Slots.size() - 1);
    }
    return Slots[place];
}

std::optional<std::uint32_t> ValueCodes::Search(double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const Slot& found = FreeOrKnown(bits);
    if (found.Code != NoCode) {
        return found.Code;
    }
    if (Known.size() == Most) {
        return std::nullopt;
    }
    if (2 * Known.size() >= Slots.size()) {
        Grow();
    }
    Known.push_back(value);
    FreeOrKnown(bits) = {bits, static_cast<std::uint32_t>(Known.size() - 1)};
    return static_cast<std::uint32_t>(Known.size() - 1);
}

void ValueCodes::Grow() {
    constexpr std::size_t factor = 4;
    Slots.assign(factor * Slots.size(), Slot());
    for (std::size_t i = 0; i < Known.size(); ++i) {
        const auto bits = std::bit_cast<std::uint64_t>(Known[i]);
        FreeOrKnown(bits) = {bits, static_cast<std::uint32_t>(i)};
    }
}

double ValueCodes::EncodeMissing() {
    return quillara::EncodeMissing(Known);
}

void CodeRows::Reserve(std::size_t rows) {
    Reserved = rows;
    Bytes.reserve(rows);
}

void CodeRows::AppendWider(std::uint32_t code) {
    if (Width == 1) {
        Words = Widened<std::uint16_t>(Bytes, Reserved);
        Width = 2;
    }
    if (Width == 2 && code > std::numeric_limits<std::uint16_t>::max()) {
        Wide = Widened<std::uint32_t>(Words, Reserved);
        Width = 4;
    }
    if (Width == 2) {
        Words.push_back(static_cast<std::uint16_t>(code));
    } else {
        Wide.push_back(code);
    }
}

void CodeRows::Shorten(std::size_t rows) {
    Bytes.resize(std::min(rows, Bytes.size()));
    Words.resize(std::min(rows, Words.size()));
    Wide.resize(std::min(rows, Wide.size()));
}

Column CodeRows::TakeColumn(std::vector<double> values) {
    GiveBackRoom(Bytes);
    GiveBackRoom(Words);
    Column column = Width == 1 ? Column::OfCodes(std::move(Bytes), std::move(values))
                               : Column::OfCodes(std::move(Words), std::move(values));
    Clear();
    return column;
}

ColumnBuilder::ColumnBuilder(std::vector<double> values) {
    constexpr std::size_t run = 1024;
    Reserve(values.size());
    for (std::size_t first = 0; first < values.size() && Form != BuildForm::Doubles; first += run) {
        Append(std::span(values).subspan(first, std::min(run, values.size() - first)));
    }
    if (Form == BuildForm::Doubles) {
        Doubles = std::move(values);
    }
}

ColumnBuilder::ColumnBuilder(ColumnForm form)
    : Form(form == ColumnForm::Doubles    ? BuildForm::Doubles
           : form == ColumnForm::Integers ? BuildForm::Integers
                                          : BuildForm::Codes) {}

void ColumnBuilder::Reserve(std::size_t rows) {
    Reserved = rows;
    switch (Form) {
        case BuildForm::Codes:
            Rows.Reserve(rows);
            break;
        case BuildForm::Integers:
            Integers.reserve(rows);
            break;
        case BuildForm::Doubles:
            Doubles.reserve(rows);
            break;
    }
}

void ColumnBuilder::Shorten(std::size_t rows) {
    Rows.Shorten(rows);
    Integers.resize(std::min(rows, Integers.size()));
    Doubles.resize(std::min(rows, Doubles.size()));
}

void ColumnBuilder::Append(std::span<const double> values) {
    const auto* next = values.data();
    const auto* const end = next + values.size();
    for (; next != end && Form == BuildForm::Codes; ++next) {
        Append(*next);
    }
    for (; next != end && Form == BuildForm::Integers && FitsIntegers(*next); ++next) {
        Integers.push_back(ToInteger(*next));
    }
    if (next != end) {
        AppendWider(*next++);
        Doubles.insert(Doubles.end(), next, end);
    }
}

void ColumnBuilder::AppendPart(const Column& part) {
    if (Form == BuildForm::Codes && !part.ValuesOfCodes().empty()) {
        AppendCodes(part);
    } else {
        VisitRuns(part, [this](std::span<const double> values) { Append(values); });
    }
}

/// Looks up each value once; one that no case has isn't taken over.
void ColumnBuilder::AppendCodes(const Column& part) {
    constexpr std::uint32_t unknown = std::numeric_limits<std::uint32_t>::max();
    const TableColumn& stored = part.Stored();
    std::vector<std::uint32_t> ours(part.ValuesOfCodes().size(), unknown);
    for (std::size_t row = 0; row < part.size(); ++row) {
        const std::size_t code =
            stored.Form == ColumnForm::Codes8 ? stored.As<std::uint8_t>()[row] : stored.As<std::uint16_t>()[row];
        if (ours[code] == unknown && Form == BuildForm::Codes) {
            ours[code] = Codes.CodeOf(stored.Values[code]).value_or(unknown);
        }
        if (ours[code] != unknown && Form == BuildForm::Codes) {
            Rows.Append(ours[code]);
        } else {
            AppendWider(stored.Values[code]);
        }
    }
}

void ColumnBuilder::AppendWider(double value) {
    if (Form != BuildForm::Doubles) {
        WidenFor(value);
    }
    if (Form == BuildForm::Integers) {
        Integers.push_back(ToInteger(value));
    } else {
        Doubles.push_back(value);
    }
}

void ColumnBuilder::WidenFor(double value) {
    if (Form == BuildForm::Codes) {
        LeaveCodes();
    }
    if (Form == BuildForm::Integers && !FitsIntegers(value)) {
        WidenToDoubles();
    }
}

void ColumnBuilder::LeaveCodes() {
    const std::vector<double>& values = Codes.Values();
    const std::size_t rows = Rows.Size();
    if (std::ranges::all_of(values, FitsIntegers)) {
        Integers.reserve(std::max(Reserved, rows + 1));
        Form = BuildForm::Integers;
        for (std::size_t row = 0; row < rows; ++row) {
            Integers.push_back(ToInteger(values[Rows.At(row)]));
        }
    } else {
        Doubles.reserve(std::max(Reserved, rows + 1));
        Form = BuildForm::Doubles;
        for (std::size_t row = 0; row < rows; ++row) {
            Doubles.push_back(values[Rows.At(row)]);
        }
    }
    Rows.Clear();
    Codes = {};
}

void ColumnBuilder::WidenToDoubles() {
    Doubles.reserve(std::max(Reserved, Integers.size() + 1));
    Form = BuildForm::Doubles;
    std::ranges::transform(Integers, std::back_inserter(Doubles), FromInteger);
    Integers = {};
}

double ColumnBuilder::EncodeMissing() {
    if (Form == BuildForm::Codes) {
        return Codes.EncodeMissing();
    }
    if (Form == BuildForm::Integers) {
        std::array range{Missing, Missing};
        for (const std::int32_t value : Integers) {
            range[0] = std::fmin(range[0], FromInteger(value));
            range[1] = std::fmax(range[1], FromInteger(value));
        }
        const double code = MissingCodeFor(range);
        if (IsInteger(code)) {
            std::ranges::replace(Integers, MissingInteger, ToInteger(code));
            return code;
        }
        WidenToDoubles();
    }
    return quillara::EncodeMissing(Doubles);
}

Column ColumnBuilder::Finish() {
    // Codes of nearly as many values as there are cases would take more room than the values.
    const std::size_t bytes = std::ranges::all_of(Codes.Values(), IsInteger) ? sizeof(std::int32_t) : sizeof(double);
    const std::size_t table = sizeof(double) * Codes.Values().size();
    if (Form == BuildForm::Codes && table + Rows.BytesEach() * Rows.Size() > bytes * Rows.Size()) {
        LeaveCodes();
    }
    if (Form == BuildForm::Integers && std::ranges::find(Integers, MissingInteger) != Integers.end()) {
        WidenToDoubles();
    }
    GiveBackRoom(Integers);
    GiveBackRoom(Doubles);
    Column column = Form == BuildForm::Codes      ? Rows.TakeColumn(Codes.TakeValues())
                    : Form == BuildForm::Integers ? Column::OfIntegers(std::move(Integers))
                                                  : Column(std::move(Doubles));
    *this = {};
    return column;
}

}  // namespace quillara
