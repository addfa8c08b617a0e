#include "workbench/data/Column.h"

#include <algorithm>
#include <utility>

namespace quillara {
namespace {

template <typename Entry>
std::shared_ptr<const std::vector<Entry>> Shared(std::vector<Entry> entries) {
    return std::make_shared<const std::vector<Entry>>(std::move(entries));
}

template <typename Entry>
TableColumn EntriesOf(ColumnForm form, const std::vector<Entry>& entries) {
    return {form, entries.data(), nullptr, 0};
}

template <typename Entry>
Column CodedColumn(ColumnForm form, std::vector<Entry> codes, std::vector<double> values) {
    const auto owner = Shared(std::move(codes));
    return Column::Borrowed(EntriesOf(form, *owner), owner->size(), owner).WithValues(std::move(values));
}

template <typename Entry>
void Decode(const TableColumn& stored, std::size_t first, std::span<double> room) {
    const Entry* codes = stored.As<Entry>() + first;
    for (std::size_t i = 0; i < room.size(); ++i) {
        room[i] = stored.Values[codes[i]];
    }
}

template <typename Entry>
std::vector<bool> CodesIn(std::span<const Entry> codes, std::size_t count) {
    std::vector<unsigned char> isUsed(count);
    for (const Entry code : codes) {
        isUsed[code] = 1;
    }
    return {isUsed.begin(), isUsed.end()};
}

}  // namespace

Column::Column(std::vector<double> values) {
    const auto owner = Shared(std::move(values));
    *this = Borrowed(*owner, owner);
}

Column Column::OfIntegers(std::vector<std::int32_t> values) {
    const auto owner = Shared(std::move(values));
    return Borrowed(EntriesOf(ColumnForm::Integers, *owner), owner->size(), owner);
}

Column Column::OfCodes(std::vector<std::uint8_t> codes, std::vector<double> values) {
    return CodedColumn(ColumnForm::Codes8, std::move(codes), std::move(values));
}

Column Column::OfCodes(std::vector<std::uint16_t> codes, std::vector<double> values) {
    return CodedColumn(ColumnForm::Codes16, std::move(codes), std::move(values));
}

Column Column::Borrowed(const TableColumn& stored, std::size_t count, std::shared_ptr<const void> owner) {
    Column column;
    column.Entries = stored;
    column.Count = count;
    column.Owner = std::move(owner);
    return column;
}

Column Column::Borrowed(std::span<const double> values, std::shared_ptr<const void> owner) {
    return Borrowed({ColumnForm::Doubles, values.data(), nullptr, 0}, values.size(), std::move(owner));
}

Column Column::WithValues(std::vector<double> values) const {
    const auto owner = Shared(std::move(values));
    Column column = *this;
    column.Entries.Values = owner->data();
    column.Entries.ValueCount = static_cast<std::int32_t>(owner->size());
    column.ValueOwner = owner;
    return column;
}

std::span<const double> Column::Run(std::size_t first, std::span<double> room) const {
    switch (Entries.Form) {
        case ColumnForm::Integers:
            std::copy_n(Entries.As<std::int32_t>() + first, room.size(), room.begin());
            return room;
        case ColumnForm::Codes8:
            Decode<std::uint8_t>(Entries, first, room);
            return room;
        case ColumnForm::Codes16:
            Decode<std::uint16_t>(Entries, first, room);
            return room;
        case ColumnForm::Doubles:
            break;
    }
    return {Entries.As<double>() + first, room.size()};
}

std::span<const double> Column::Doubles() const {
    return Entries.Form == ColumnForm::Doubles ? std::span(Entries.As<double>(), Count) : std::span<const double>();
}

std::span<const double> Column::ValuesOfCodes() const {
    return {Entries.Values, static_cast<std::size_t>(Entries.ValueCount)};
}

std::vector<bool> Column::UsedCodes() const {
    switch (Entries.Form) {
        case ColumnForm::Codes8:
            return CodesIn(std::span(Entries.As<std::uint8_t>(), Count), ValuesOfCodes().size());
        case ColumnForm::Codes16:
            return CodesIn(std::span(Entries.As<std::uint16_t>(), Count), ValuesOfCodes().size());
        case ColumnForm::Integers:
        case ColumnForm::Doubles:
            break;
    }
    return {};
}

bool operator==(const Column& left, const Column& right) {
    return std::ranges::equal(left, right);
}

}  // namespace quillara
