#include "engine/CodeCounts.h"

#include <array>
#include <numeric>

using namespace drilldown;

namespace {

/// Tables by turns, as long as they all fit the first cache.
constexpr std::size_t ManyReplicas = 4;
constexpr std::size_t CodesOfManyReplicas = 1024;

constexpr auto One = [](std::size_t) { return std::uint32_t{1}; };

/// Adds up what each row counts in the table of its turn.
template <std::size_t Turns, typename Count, typename CodeOf, typename WeightOf>
void CountByTurns(Count* table, std::size_t rows, CodeOf codeOf, WeightOf weightOf) {
    std::size_t i = 0;
    for (; i + Turns <= rows; i += Turns) {
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): all is written before it is read, for each row
        std::array<std::size_t, Turns> codes;
        for (std::size_t turn = 0; turn < Turns; ++turn) {
            codes[turn] = codeOf(i + turn);
        }
        for (std::size_t turn = 0; turn < Turns; ++turn) {
            table[codes[turn] * Turns + turn] += weightOf(i + turn);
        }
    }
    for (; i < rows; ++i) {
        table[codeOf(i) * Turns] += weightOf(i);
    }
}

template <std::size_t Turns, typename Count, typename Code, typename WeightOf>
void CountRows(Count* table, const Code* codes, const WeightedRows& rows, WeightOf weightOf) {
    if (rows.Rows == nullptr) {
        const auto codeOf = [first = codes + rows.First](std::size_t i) { return std::size_t{first[i]}; };
        CountByTurns<Turns>(table, rows.Count, codeOf, weightOf);
    } else {
        const auto codeOf = [codes, list = rows.Rows](std::size_t i) { return std::size_t{codes[list[i]]}; };
        CountByTurns<Turns>(table, rows.Count, codeOf, weightOf);
    }
}

template <typename Count, typename WeightOf>
void CountColumn(Count* table, std::size_t turns, const TableColumn& column, const WeightedRows& rows,
                 WeightOf weightOf) {
    const auto count = [&](const auto* codes) {
        if (turns == ManyReplicas) {
            CountRows<ManyReplicas>(table, codes, rows, weightOf);
        } else {
            CountRows<1>(table, codes, rows, weightOf);
        }
    };
    if (column.Form == ColumnForm::Codes8) {
        count(column.As<std::uint8_t>());
    } else {
        count(column.As<std::uint16_t>());
    }
}

}  // namespace

CodeCounts::CodeCounts(CAnalysisSupport& host, std::size_t codes, std::size_t threads, bool weighted)
    : Threads(threads),
      Weighted(weighted),
      Replicas(codes <= CodesOfManyReplicas ? ManyReplicas : 1),
      Stride(codes * Replicas + Apart),
      Cases(host, weighted ? 1 : TableOf(threads)),
      Weights(host, weighted ? TableOf(threads) : 1) {}

void CodeCounts::Add(const TableColumn& column, const WeightedRows& rows, std::size_t thread) const {
    if (Weighted) {
        const auto weightOf = [&](std::size_t i) { return rows.WeightAt(i); };
        CountColumn(Weights.data() + TableOf(thread), Replicas, column, rows, weightOf);
    } else {
        CountColumn(Cases.data() + TableOf(thread), Replicas, column, rows, One);
    }
}

double CodeCounts::Of(std::size_t code) const {
    double sum = 0.0;
    for (std::size_t thread = 0; thread < Threads; ++thread) {
        const std::size_t first = TableOf(thread) + code * Replicas;
        for (std::size_t place = first; place < first + Replicas; ++place) {
            sum += Weighted ? Weights[place] : static_cast<double>(Cases[place]);
        }
    }
    return sum;
}
