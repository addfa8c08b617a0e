#include "engine/RowSelection.h"

#include <algorithm>
#include <bit>

#include "engine/GatheredValues.h"
#include "engine/MomentKernel.h"

using namespace drilldown;

namespace {

constexpr std::size_t BitsOfWord = 64;

/// Most cases of a block, so that a cancel is noticed soon also where few of them remain.
constexpr std::int32_t LongestBlock = 1 << 20;

/// Sums of whole numbers are exact below twice this, so that a sum may be added to a count.
constexpr double LargestExactSum = 4503599627370496.0;

/// Lists the set bits of whole words and of the last one.
std::size_t ListWords(const std::uint64_t* words, std::size_t count, std::int32_t* rows) {
    const std::size_t listed = ListSetBits(words, count / BitsOfWord, rows);
    const std::size_t done = count / BitsOfWord * BitsOfWord;
    std::size_t more = 0;
    for (std::size_t row = done; row < count; ++row) {
        rows[listed + more] = static_cast<std::int32_t>(row);
        more += words[row / BitsOfWord] >> row % BitsOfWord & 1;
    }
    return listed + more;
}

/// Lists the set bits among `count` bits from bit `first` on, numbered from 0. Gives how many there are.
std::size_t ListBits(const std::uint64_t* bits, std::size_t first, std::size_t count, std::int32_t* rows) {
    if (first % BitsOfWord == 0 && HasRegisters(MomentRegisters::Widest)) {
        return ListWords(bits + first / BitsOfWord, count, rows);
    }
    std::size_t listed = 0;
    for (std::size_t done = 0; done < count;) {
        const std::size_t shift = (first + done) % BitsOfWord;
        const std::size_t taken = std::min(BitsOfWord - shift, count - done);
        std::uint64_t word = bits[(first + done) / BitsOfWord] >> shift;
        word &= taken == BitsOfWord ? ~std::uint64_t{0} : (std::uint64_t{1} << taken) - 1;
        for (; word != 0; word &= word - 1) {
            rows[listed++] = static_cast<std::int32_t>(done) + std::countr_zero(word);
        }
        done += taken;
    }
    return listed;
}

/// Whether a host's answer has what its form needs.
bool IsReadable(const CaseSubset& cases) {
    return cases.Bits != nullptr || cases.Count == 0 || (cases.Rows != nullptr && cases.Count > 0);
}

bool AllArePositive(const double* weights, std::size_t count) {
    return std::all_of(weights, weights + count, IsPositiveWeight);
}

/// Of a positive weight below 2^63.
bool IsWholeWeight(double weight) {
    return weight == static_cast<double>(static_cast<std::int64_t>(weight));
}

}  // namespace

RowSelection::RowSelection(CDrillDown& analysis, const CompiledFilter* filter, const PassLayout& layout,
                           std::size_t room)
    : Filter(filter),
      Layout(layout),
      Weighing(WeightRuleOf(analysis.CaseWeight, analysis.WeightedMoments)),
      Room(static_cast<std::int32_t>(room)),
      Remaining(analysis, room) {}

/// Nothing is asked when all cases remain.
void RowSelection::FindRemaining(CDrillDown& analysis, const CaseSource& source) {
    CaseConditions* host = source.NumbersCases() ? analysis.GetCaseConditions() : nullptr;
    CaseSubset found;
    if (host != nullptr && Filter != nullptr && !Filter->All().empty() && host->FindCases(Filter->All(), found) &&
        IsReadable(found)) {
        Subset = found;
    }
}

std::int32_t RowSelection::BlockBehind(std::int32_t cases) const {
    if (!Subset || Subset->Bits != nullptr) {
        return Room;
    }
    // Few cases remain, far from each other.
    const std::int32_t* end = Subset->Rows + Subset->Count;
    const std::int32_t* next = std::lower_bound(Subset->Rows, end, cases);
    const bool more = end - next > Room;
    return more ? std::min(next[Room] - cases, LongestBlock) : LongestBlock;
}

WeightedRows RowSelection::Of(const CaseColumns& block) {
    if (Subset) {
        return Weighed(block, RowsInSubset(block));
    }
    WeightedRows rows = RowsBySelection(block);
    std::size_t step = 0;
    for (const CaseCondition& condition : Filter == nullptr ? std::span<const CaseCondition>() : Filter->All()) {
        rows = Thinned(block.Columns[Layout.FilterColumns[step++]], condition, rows);
    }
    return Weighed(block, rows);
}

WeightedRows RowSelection::Listed(std::size_t count, const CaseColumns& block) const {
    return {count == static_cast<std::size_t>(block.Count) ? nullptr : Remaining.Rows.data(), nullptr, count};
}

WeightedRows RowSelection::RowsInSubset(const CaseColumns& block) const {
    const auto count = static_cast<std::size_t>(block.Count);
    if (Subset->Bits != nullptr) {
        const auto before = static_cast<std::size_t>(block.First);
        WeightedRows rows = Listed(ListBits(Subset->Bits, before, count, Remaining.Rows.data()), block);
        rows.Bits = before % BitsOfWord == 0 ? Subset->Bits + before / BitsOfWord : nullptr;
        return rows;
    }
    const std::int32_t* end = Subset->Rows + Subset->Count;
    const std::int32_t* first = std::lower_bound(Subset->Rows, end, block.First);
    const std::int32_t* behind = std::lower_bound(first, end, block.First + block.Count);
    std::transform(first, behind, Remaining.Rows.data(), [&](std::int32_t row) { return row - block.First; });
    return Listed(static_cast<std::size_t>(behind - first), block);
}

WeightedRows RowSelection::RowsBySelection(const CaseColumns& block) const {
    if (block.Results == nullptr) {
        return {nullptr, nullptr, static_cast<std::size_t>(block.Count)};
    }
    std::size_t count = 0;
    for (std::int32_t row = 0; row < block.Count; ++row) {
        Remaining.Rows[count] = row;
        count += block.Results[row] == CaseResult::Use ? 1 : 0;
    }
    return Listed(count, block);
}

/// The rows that meet a condition too; without gaps only where they were so before.
WeightedRows RowSelection::Thinned(const TableColumn& column, const CaseCondition& condition,
                                   const WeightedRows& rows) const {
    const std::size_t kept = WithValues(column, [&](auto valueOf) {
        const CaseCondition tested = condition;
        std::size_t count = 0;
        for (std::size_t i = 0; i < rows.Count; ++i) {
            const std::int32_t row = rows.RowAt(i);
            Remaining.Rows[count] = row;
            count += tested.IsMetBy(valueOf(row)) ? 1 : 0;
        }
        return count;
    });
    return {kept == rows.Count ? rows.Rows : Remaining.Rows.data(), nullptr, kept};
}

/// The rows of a positive weight.
WeightedRows RowSelection::Weighed(const CaseColumns& block, const WeightedRows& rows) {
    if (Weighing == WeightRule::None || block.Weights.Entries == nullptr) {
        return rows;
    }
    const bool asStored = Weighing == WeightRule::Fractional && block.Weights.Form == ColumnForm::Doubles;
    if (asStored && !SumsAreExact && rows.Count > 0) {
        const double* weights = GatherValues(block.Weights, rows, Remaining.Weights.data());
        if (AllArePositive(weights, rows.Count)) {
            return {rows.Rows, weights, rows.Count, rows.First, rows.Bits};
        }
    }
    const std::size_t kept = WithValues(block.Weights, [&](auto weightOf) {
        std::size_t count = 0;
        for (std::size_t i = 0; i < rows.Count; ++i) {
            const std::int32_t row = rows.RowAt(i);
            const double weight = CountingWeight(Weighing, weightOf(row));
            Remaining.Rows[count] = row;
            Remaining.Weights[count] = weight;
            count += IsPositiveWeight(weight) ? 1 : 0;
        }
        return count;
    });
    NoteSums(kept);
    const bool all = kept == rows.Count;
    return {all ? rows.Rows : Remaining.Rows.data(), Remaining.Weights.data(), kept, 0, all ? rows.Bits : nullptr};
}

/// Looks at the weights of a block for as long as all were whole and their sum small.
void RowSelection::NoteSums(std::size_t count) {
    for (std::size_t i = 0; i < count && SumsAreExact; ++i) {
        SumOfWeights += Remaining.Weights[i];
        SumsAreExact = SumOfWeights < LargestExactSum && IsWholeWeight(Remaining.Weights[i]);
    }
}
