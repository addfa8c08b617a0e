#include "workbench/data/ConditionIndex.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

namespace quillara {
namespace {

constexpr std::size_t RowsPerWord = RowSet::RowsPerWord;

/// Equal bits of bounds; a bound that is NaN is one like any other.
bool IsSameCondition(const CaseCondition& left, const CaseCondition& right) {
    const auto bits = [](double value) { return std::bit_cast<std::uint64_t>(value); };
    return left.Variable == right.Variable && left.Rule == right.Rule && bits(left.Lower) == bits(right.Lower) &&
           bits(left.Upper) == bits(right.Upper);
}

/// A bit for each of 64 bytes that are 0 or 1.
std::uint64_t Packed(const std::array<unsigned char, RowsPerWord>& flags) {
    constexpr std::uint64_t gather = 0x0102040810204080;  // brings the lowest bits of eight bytes into the highest byte
    std::uint64_t bits = 0;
    for (std::size_t group = 0; group < RowsPerWord / 8; ++group) {
        std::uint64_t bytes = 0;
        std::memcpy(&bytes, &flags[group * 8], sizeof(bytes));
        bits |= (bytes * gather >> 56) << group * 8;
    }
    return bits;
}

/// Fills a set with the rows whose entry passes a test.
template <typename Entry, typename Test>
void FillSet(RowSet& cases, const Entry* entries, Test test) {
    const std::size_t rows = cases.TableRows();
    for (std::size_t word = 0; word < rows / RowsPerWord; ++word) {
        const Entry* run = entries + word * RowsPerWord;
        std::array<unsigned char, RowsPerWord> flags{};
        for (std::size_t i = 0; i < RowsPerWord; ++i) {
            flags[i] = test(run[i]) ? 1 : 0;
        }
        cases.Bits()[word] = Packed(flags);
    }
    for (std::size_t row = rows / RowsPerWord * RowsPerWord; row < rows; ++row) {
        if (test(entries[row])) {
            cases.Insert(row);
        }
    }
}

/// With a rule that is known while the loop runs.
template <typename Entry>
void FillByRule(RowSet& cases, const Entry* entries, const CaseCondition& condition) {
    const auto fill = [&]<ConditionRule rule>() {
        FillSet(cases, entries, [lower = condition.Lower, upper = condition.Upper](Entry entry) {
            return CaseCondition{0, rule, lower, upper}.IsMetBy(static_cast<double>(entry));
        });
    };
    switch (condition.Rule) {
        case ConditionRule::Equal:
            return fill.template operator()<ConditionRule::Equal>();
        case ConditionRule::OpenClosed:
            return fill.template operator()<ConditionRule::OpenClosed>();
        case ConditionRule::OpenClosedNumber:
            return fill.template operator()<ConditionRule::OpenClosedNumber>();
        case ConditionRule::ClosedOpen:
            return fill.template operator()<ConditionRule::ClosedOpen>();
        case ConditionRule::Closed:
            return fill.template operator()<ConditionRule::Closed>();
        case ConditionRule::Nothing:
            return;
        case ConditionRule::Everything:
            cases = RowSet::All(cases.TableRows());
    }
}

/// Tests each value of codes once.
template <typename Code>
void FillByCodes(RowSet& cases, const TableColumn& column, const CaseCondition& condition) {
    std::vector<unsigned char> isMet(static_cast<std::size_t>(column.ValueCount));
    std::transform(column.Values, column.Values + column.ValueCount, isMet.begin(),
                   [&](double value) { return condition.IsMetBy(value) ? 1 : 0; });
    const Code* codes = column.As<Code>();
    if (std::ranges::count(isMet, 1) == 1) {
        const auto wanted = static_cast<Code>(std::ranges::find(isMet, 1) - isMet.begin());
        FillSet(cases, codes, [wanted](Code code) { return code == wanted; });
    } else {
        FillSet(cases, codes, [&isMet](Code code) { return isMet[code] != 0; });
    }
}

RowSet SelectedCases(std::size_t rows, std::span<const CaseResult> selection) {
    if (selection.empty()) {
        return RowSet::All(rows);
    }
    RowSet selected(rows);
    FillSet(selected, selection.data(), [](CaseResult result) { return result == CaseResult::Use; });
    return selected;
}

}  // namespace

RowSet CasesThatMeet(const DataTable& table, const CaseCondition& condition) {
    RowSet cases(static_cast<std::size_t>(table.Cases));
    const auto index = static_cast<std::size_t>(condition.Variable) - 1;
    if (condition.Variable < 1 || index >= table.Variables.size()) {
        return condition.IsMetBy(0.0) ? RowSet::All(cases.TableRows()) : cases;
    }
    const TableColumn& column = table.Variables[index].Values.Stored();
    switch (column.Form) {
        case ColumnForm::Doubles:
            FillByRule(cases, column.As<double>(), condition);
            break;
        case ColumnForm::Integers:
            FillByRule(cases, column.As<std::int32_t>(), condition);
            break;
        case ColumnForm::Codes8:
            FillByCodes<std::uint8_t>(cases, column, condition);
            break;
        case ColumnForm::Codes16:
            FillByCodes<std::uint16_t>(cases, column, condition);
            break;
    }
    return cases;
}

const RowSet& ConditionIndex::Find(const DataTable& table, std::span<const CaseResult> selection,
                                   std::span<const CaseCondition> conditions) {
    if (IsFound && std::ranges::equal(Joined, conditions, IsSameCondition)) {
        return Found;
    }
    IsFound = false;
    if (!IsSelectionKnown) {
        Selected = SelectedCases(static_cast<std::size_t>(table.Cases), selection);
        IsSelectionKnown = true;
    }
    Joined.assign(conditions.begin(), conditions.end());
    Found = Selected;
    for (const CaseCondition& condition : conditions) {
        Found.Intersect(CasesOf(table, condition));
    }
    IsFound = true;
    return Found;
}

const RowSet& ConditionIndex::CasesOf(const DataTable& table, const CaseCondition& condition) {
    const auto known =
        std::ranges::find_if(Known, [&](const Entry& entry) { return IsSameCondition(entry.Condition, condition); });
    if (known != Known.end()) {
        Known.splice(Known.begin(), Known, known);
    } else {
        MakeRoom(Selected.Bits().size_bytes());
        Known.push_front({condition, CasesThatMeet(table, condition)});
        ++ReadCount;
    }
    return Known.front().Cases;
}

/// Leaves room for a further set.
void ConditionIndex::MakeRoom(std::size_t bytes) {
    const std::size_t most = bytes == 0 ? Known.size() : MostBytes / bytes;
    while (!Known.empty() && Known.size() + 1 > most) {
        Known.pop_back();
    }
}

void ConditionIndex::Forget() {
    Known.clear();
    IsSelectionKnown = false;
    Selected = {};
    IsFound = false;
    Joined.clear();
    Found = {};
}

}  // namespace quillara
