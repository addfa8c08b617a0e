#include "workbench/data/SelectionProgram.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <memory>

#include "platform/OrderedBits.h"

namespace quillara {
namespace {

constexpr std::size_t BlockSize = 4096;  // the answers and operands of a block stay in the processor's cache

/// One answer per case of a block: 0 or 1.
using Answers = std::array<unsigned char, BlockSize>;
using Numbers = std::array<double, BlockSize>;

/// Runs a program for one block of cases after the other.
class BlockRun {
  public:
    BlockRun(const DataTable& table, SelectionProgram& program) : Table(table), Program(program) {}

    void Run(std::size_t first, std::span<CaseResult> results) {
        First = first;
        Count = results.size();
        Depth = 0;
        Computable.fill(1);
        for (const std::size_t variable : Program.Required) {
            LeaveOutMissing(Table.Variables[variable]);
        }
        for (SelectionStep& step : Program.Steps) {
            std::visit([this](auto& content) { Take(content); }, step);
        }
        const Answers& answers = Stack[Depth - 1];
        for (std::size_t i = 0; i < Count; ++i) {
            results[i] = (answers[i] & Computable[i]) != 0 ? CaseResult::Use : CaseResult::Skip;
        }
    }

  private:
    /// The values of a variable in the block; where they don't stand as such, in `room`.
    const double* ColumnOf(const Variable& variable, Numbers& room) const {
        return variable.Values.Run(First, std::span(room).first(Count)).data();
    }

    Answers& Push() {
        if (Depth == Stack.size()) {
            Stack.emplace_back();
        }
        return Stack[Depth++];
    }

    void LeaveOutMissing(const Variable& variable) {
        const NearlyEqualRange missing = RangeNearlyEqualTo(variable.MissingCode);
        const double* values = ColumnOf(variable, LeftNumbers);
        for (std::size_t i = 0; i < Count; ++i) {
            if (missing.Contains(values[i])) {
                Computable[i] = 0;
            }
        }
    }

    void Take(MissingTest& test) {
        const Variable& variable = Table.Variables[test.Variable];
        const NearlyEqualRange missing = RangeNearlyEqualTo(variable.MissingCode);
        Answer([&, values = ColumnOf(variable, LeftNumbers)](std::size_t i) { return missing.Contains(values[i]); });
    }

    void Take(LabelTest& test) {
        const double* values = ColumnOf(Table.Variables[test.Variable], LeftNumbers);
        Answer([&](std::size_t i) { return std::ranges::binary_search(test.Bearers, values[i]) == test.Wanted; });
    }

    void Take(Comparison& comparison) {
        const double* left = ValuesOf(comparison.Left, LeftNumbers);
        const double* right = ValuesOf(comparison.Right, RightNumbers);
        const auto compare = [&](auto holds) { Answer([=](std::size_t i) { return holds(left[i], right[i]); }); };
        switch (comparison.Between) {
            case Relation::Equal:
                return compare(std::equal_to<>());
            case Relation::NotEqual:
                return compare(std::not_equal_to<>());
            case Relation::Less:
                return compare(std::less<>());
            case Relation::LessOrEqual:
                return compare(std::less_equal<>());
            case Relation::Greater:
                return compare(std::greater<>());
            case Relation::GreaterOrEqual:
                return compare(std::greater_equal<>());
        }
    }

    void Take(Connective& connective) {
        if (connective == Connective::Not) {
            Answers& answers = Stack[Depth - 1];
            std::ranges::transform(answers, answers.begin(), std::logical_not<>());
            return;
        }
        --Depth;
        Answers& left = Stack[Depth - 1];
        const Answers& right = Stack[Depth];
        if (connective == Connective::And) {
            std::ranges::transform(left, right, left.begin(), std::bit_and<>());
        } else {
            std::ranges::transform(left, right, left.begin(), std::bit_or<>());
        }
    }

    template <class Test>
    void Answer(Test test) {
        Answers& answers = Push();
        for (std::size_t i = 0; i < Count; ++i) {
            answers[i] = test(i) ? 1 : 0;
        }
    }

    const double* ValuesOf(Operand& operand, Numbers& room) {
        if (const auto* column = std::get_if<ColumnOperand>(&operand)) {
            return ColumnOf(Table.Variables[column->Variable], room);
        }
        if (const auto* number = std::get_if<double>(&operand)) {
            room.fill(*number);
            return room.data();
        }
        std::get<Arithmetic>(operand).Compute(First, std::span(room).first(Count));
        for (std::size_t i = 0; i < Count; ++i) {
            if (!std::isfinite(room[i])) {
                Computable[i] = 0;
            }
        }
        return room.data();
    }

    const DataTable& Table;
    SelectionProgram& Program;
    std::size_t First = 0;
    std::size_t Count = 0;
    Answers Computable;
    std::vector<Answers> Stack;
    std::size_t Depth = 0;
    Numbers LeftNumbers;
    Numbers RightNumbers;
};

}  // namespace

std::vector<CaseResult> RunSelection(const DataTable& table, SelectionProgram& program) {
    std::vector<CaseResult> results(static_cast<std::size_t>(table.Cases), CaseResult::Skip);
    const auto run = std::make_unique<BlockRun>(table, program);
    for (std::size_t first = 0; first < results.size(); first += BlockSize) {
        run->Run(first, std::span(results).subspan(first, std::min(BlockSize, results.size() - first)));
    }
    return results;
}

}  // namespace quillara
