#include "workbench/data/FormulaTerms.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/OrderedBits.h"
#include "workbench/data/MissingReasons.h"

namespace quillara {
namespace {

constexpr std::size_t BlockSize = 1024;  // the values of a few terms stay in the processor's cache

class Constant : public FormulaTerm {
  public:
    explicit Constant(double value) : Value(value) {}
    void Compute(const FormulaBlock&, std::span<double> values) const override { std::ranges::fill(values, Value); }

  private:
    double Value;
};

class ColumnOf : public FormulaTerm {
  public:
    explicit ColumnOf(const Variable& variable)
        : Values(variable.Values), Missing(RangeNearlyEqualTo(variable.MissingCode)) {}

    void Compute(const FormulaBlock& block, std::span<double> values) const override {
        const std::span<const double> run = Values.Run(block.First, values);
        for (std::size_t i = 0; i < values.size(); ++i) {
            values[i] = Missing.Contains(run[i]) ? NoValue : run[i];
        }
    }

  private:
    Column Values;
    NearlyEqualRange Missing;
};

class HasReason : public FormulaTerm {
  public:
    HasReason(std::shared_ptr<const MissingReasons> reasons, const std::vector<std::size_t>& places)
        : Reasons(std::move(reasons)), IsMeant(Reasons->Reasons.size() + 1) {
        for (const std::size_t place : places) {
            IsMeant[place] = true;
        }
    }

    void Compute(const FormulaBlock& block, std::span<double> values) const override {
        for (std::size_t i = 0; i < values.size(); ++i) {
            values[i] = IsMeant[Reasons->PlaceAt(block.First + i)] ? 1.0 : 0.0;
        }
    }

  private:
    std::shared_ptr<const MissingReasons> Reasons;
    std::vector<bool> IsMeant;  // by place
};

class Changed : public FormulaTerm {
  public:
    Changed(TermPointer term, BlockChange change) : Term(std::move(term)), Change(std::move(change)) {}

    void Compute(const FormulaBlock& block, std::span<double> values) const override {
        Term->Compute(block, values);
        Change(values);
    }

  private:
    TermPointer Term;
    BlockChange Change;
};

class Joined : public FormulaTerm {
  public:
    Joined(TermPointer first, std::vector<std::pair<JoinRule, TermPointer>> further)
        : First(std::move(first)), Further(std::move(further)) {}

    void Compute(const FormulaBlock& block, std::span<double> values) const override {
        First->Compute(block, values);
        std::vector<double> right(values.size());
        for (const auto& [rule, term] : Further) {
            term->Compute(block, right);
            (block.IsLenient ? rule.Lenient : rule.Strict)(values.data(), right.data(), values.size());
        }
    }

  private:
    TermPointer First;
    std::vector<std::pair<JoinRule, TermPointer>> Further;
};

class Choice : public FormulaTerm {
  public:
    Choice(TermPointer condition, TermPointer then, TermPointer otherwise)
        : Condition(std::move(condition)), Then(std::move(then)), Otherwise(std::move(otherwise)) {}

    void Compute(const FormulaBlock& block, std::span<double> values) const override {
        std::vector<double> condition(values.size());
        Condition->Compute(block, condition);
        std::vector<double> otherwise(values.size());
        Otherwise->Compute(block, otherwise);
        Then->Compute(block, values);
        for (std::size_t i = 0; i < values.size(); ++i) {
            const double chosen = condition[i] != 0 ? values[i] : otherwise[i];
            values[i] = std::isnan(condition[i]) ? NoValue : chosen;
        }
    }

  private:
    TermPointer Condition;
    TermPointer Then;
    TermPointer Otherwise;
};

}  // namespace

TermPointer ConstantTerm(double value) {
    return std::make_shared<Constant>(value);
}

TermPointer ColumnTerm(const Variable& variable) {
    return std::make_shared<ColumnOf>(variable);
}

TermPointer MissingTerm(const Variable& variable) {
    return ChangedTerm(ColumnTerm(variable), ChangeEach([](double value) { return std::isnan(value) ? 1.0 : 0.0; }));
}

TermPointer ReasonTerm(const Variable& variable, const std::vector<std::size_t>& places) {
    return std::make_shared<HasReason>(variable.Reasons, places);
}

TermPointer ChangedTerm(TermPointer term, BlockChange change) {
    return std::make_shared<Changed>(std::move(term), std::move(change));
}

TermPointer JoinedTerm(TermPointer first, std::vector<std::pair<JoinRule, TermPointer>> further) {
    return std::make_shared<Joined>(std::move(first), std::move(further));
}

TermPointer ChoiceTerm(TermPointer condition, TermPointer then, TermPointer otherwise) {
    return std::make_shared<Choice>(std::move(condition), std::move(then), std::move(otherwise));
}

std::vector<double> ValuesOf(const FormulaTerm& term, std::size_t cases, bool isLenient) {
    std::vector<double> values(cases);
    for (std::size_t first = 0; first < cases; first += BlockSize) {
        term.Compute({first, isLenient}, std::span(values).subspan(first, std::min(BlockSize, cases - first)));
    }
    return values;
}

}  // namespace quillara
