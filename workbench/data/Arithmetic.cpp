#include "workbench/data/Arithmetic.h"

#include <muParser.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "workbench/data/Errors.h"

namespace quillara {
namespace {

/// Stands for the sign /, whose built-in meaning can't be changed.
constexpr char QuotientSign[] = "%";

/// Not a number for a divisor that is zero or not finite: 1 / (1 / 0) would come out as a plain zero otherwise.
double Quotient(double dividend, double divisor) {
    const bool divides = divisor != 0 && std::isfinite(divisor);
    return divides ? dividend / divisor : std::numeric_limits<double>::quiet_NaN();
}

}  // namespace

struct Arithmetic::Engine {
    struct Input {
        const Column* Values;
        double Current;
    };

    mu::Parser Parser;
    std::vector<Input> Inputs;  // the parser holds the addresses of their Current

    void AddInput(const DataTable& table, std::size_t variable) {
        Inputs.push_back({&table.Variables[variable].Values, 0});
        Parser.DefineVar(ArithmeticName(variable), &Inputs.back().Current);
    }

    double ComputeCase(std::size_t index) {
        for (Input& input : Inputs) {
            input.Current = (*input.Values)[index];
        }
        return Parser.Eval();
    }
};

std::string ArithmeticName(std::size_t variable) {
    return std::string("v").append(std::to_string(variable));
}

Arithmetic::Arithmetic(const DataTable& table, const ArithmeticText& text) : Computing(std::make_unique<Engine>()) {
    std::vector<std::size_t> variables = text.Variables;
    std::ranges::sort(variables);
    variables.erase(std::unique(variables.begin(), variables.end()), variables.end());
    Computing->Inputs.reserve(variables.size());
    for (const std::size_t variable : variables) {
        Computing->AddInput(table, variable);
    }
    std::string expression = text.Expression;
    std::ranges::replace(expression, '/', QuotientSign[0]);
    // The optimizer regroups terms, so that sums would be rounded otherwise than written.
    Computing->Parser.EnableOptimizer(false);
    try {
        Computing->Parser.DefineOprt(QuotientSign, Quotient, mu::prMUL_DIV, mu::oaLEFT);
        Computing->Parser.SetExpr(expression);
        static_cast<void>(Computing->Parser.Eval());
    } catch (const mu::ParserError& error) {
        throw UsageError("The selection formula has arithmetic that can't be computed: " + error.GetMsg());
    }
}

Arithmetic::Arithmetic(Arithmetic&&) noexcept = default;
Arithmetic& Arithmetic::operator=(Arithmetic&&) noexcept = default;
Arithmetic::~Arithmetic() = default;

// Case by case: the parser's mode for many values at once reads the expression anew and wakes a team of threads at
// every call, which takes longer than the arithmetic.
void Arithmetic::Compute(std::size_t first, std::span<double> results) {
    for (double& result : results) {
        result = Computing->ComputeCase(first++);
    }
}

}  // namespace quillara
