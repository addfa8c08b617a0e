#include "workbench/data/TextColumnBuilder.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <numeric>
#include <utility>

#include "workbench/data/MissingCodes.h"

namespace quillara {
namespace {

/// The values of rows of codes that are too many for a column of codes.
Column WideColumn(const CodeRows& rows, const std::vector<double>& values) {
    ColumnBuilder column;
    column.Reserve(rows.Size());
    for (std::size_t row = 0; row < rows.Size(); ++row) {
        column.Append(values[rows.At(row)]);
    }
    return column.Finish();
}

}  // namespace

TextColumnBuilder::Slot& TextColumnBuilder::FreeOrKnown(std::string_view text, std::size_t hash) {
    std::size_t place = hash & (Slots.size() - 1);
    while (Slots[place].Code != MissingCode && (Slots[place].Hash != hash || Texts[Slots[place].Code - 1] != text)) {
        place = (place + 1) & (Slots.size() - 1);
    }
    return Slots[place];
}

std::uint32_t TextColumnBuilder::CodeOf(std::string_view text) {
    const std::size_t hash = std::hash<std::string_view>()(text);
    if (const Slot& found = FreeOrKnown(text, hash); found.Code != MissingCode) {
        return found.Code;
    }
    if (2 * Texts.size() >= Slots.size()) {
        Grow();
    }
    Texts.emplace_back(text);
    const auto code = static_cast<std::uint32_t>(Texts.size());
    FreeOrKnown(text, hash) = {hash, code};
    return code;
}

void TextColumnBuilder::Grow() {
    constexpr std::size_t factor = 4;
    const std::vector<Slot> before = std::exchange(Slots, std::vector<Slot>(factor * Slots.size()));
    for (const Slot& slot : before) {
        std::size_t place = slot.Hash & (Slots.size() - 1);
        while (Slots[place].Code != MissingCode) {
            place = (place + 1) & (Slots.size() - 1);
        }
        Slots[place] = slot;
    }
}

void TextColumnBuilder::AppendPart(const TextColumnBuilder& part) {
    std::vector<std::uint32_t> ours{MissingCode};
    ours.reserve(part.Texts.size() + 1);
    for (const std::string& text : part.Texts) {
        ours.push_back(CodeOf(text));
    }
    for (std::size_t row = 0; row < part.Rows.Size(); ++row) {
        Rows.Append(ours[part.Rows.At(row)]);
    }
}

/// Moves the texts to the variable in byte order. Gives the value of each code.
std::vector<double> TextColumnBuilder::SortTexts(Variable& variable) {
    std::vector<std::uint32_t> order(Texts.size());
    std::iota(order.begin(), order.end(), 0U);
    std::ranges::sort(order, {}, [this](std::uint32_t text) -> const std::string& { return Texts[text]; });
    std::vector<double> values(Texts.size() + 1, std::numeric_limits<double>::quiet_NaN());
    variable.Texts.clear();
    variable.Texts.reserve(Texts.size());
    for (const std::uint32_t text : order) {
        variable.Texts.push_back(std::move(Texts[text]));
        values[text + 1] = static_cast<double>(variable.Texts.size());
    }
    return values;
}

void TextColumnBuilder::Finish(Variable& variable) {
    variable.Kind = ValueKind::Text;
    std::vector<double> values = SortTexts(variable);
    variable.MissingCode = EncodeMissing(values);
    variable.Values = Rows.BytesEach() <= 2 ? Rows.TakeColumn(std::move(values)) : WideColumn(Rows, values);
    *this = {};
}

}  // namespace quillara
